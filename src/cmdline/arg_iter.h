#pragma once

#include <iosfwd>
#include <memory>
#include <string>

// A source of argument strings.
class CmdLineArgIter {
public:
    virtual ~CmdLineArgIter() = default;

    // The next string, or null after the last.
    virtual const char* next() = 0;

    // Whether the strings may go before the arguments that took them do.
    virtual bool isTemporary() const = 0;
};

// The strings of an argument vector, which must outlive the arguments.
class CmdArgvIter : public CmdLineArgIter {
public:
    CmdArgvIter(int count, const char* const* vector) : left_(count), next_(vector) {}

    const char* next() override { return left_ > 0 ? (--left_, *next_++) : nullptr; }
    bool isTemporary() const override { return false; }

private:
    int left_;
    const char* const* next_;
};

// The words of one text. They live as long as the iterator, until it is given another text.
class CmdStrTokIter : public CmdLineArgIter {
public:
    static constexpr const char* whiteSpace = " \t\n\r\v\f";

    // A null text counts as an empty one; null delimiters mean white space.
    explicit CmdStrTokIter(const char* text, const char* delimiters = nullptr);

    void reset(const char* text);

    const char* next() override;
    bool isTemporary() const override { return true; }

private:
    std::string text_;
    std::string delimiters_;
    std::size_t position_ = 0;
};

// The words of a stream, line by line. Empty lines and lines that begin with '!' are passed over, and what a
// line holds beyond 1023 characters is dropped.
class CmdIstreamIter : public CmdLineArgIter {
public:
    explicit CmdIstreamIter(std::istream& in) : in_(in), words_("") {}

    const char* next() override;
    bool isTemporary() const override { return true; }

private:
    bool readLine();

    std::istream& in_;
    CmdStrTokIter words_;
};
