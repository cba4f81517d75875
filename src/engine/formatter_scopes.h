#pragma once

#include <string>
#include <utility>
#include <vector>

#include "engine/cpp_formatter.h"

namespace Tessel {

// What the log is told of the place that is being written, for the time of a scope.
class CppFormatter::LogScope {
public:
    explicit LogScope(CppFormatter& formatter)
        : log_(formatter.log_ ? &*formatter.log_ : nullptr), saved_(log_ ? log_->place() : LayoutLog::Place()) {}
    LogScope(const LogScope&) = delete;
    LogScope& operator=(const LogScope&) = delete;
    ~LogScope() {
        if (log_) log_->place() = saved_;
    }

    void setIndent(KeyId key) {
        if (log_) log_->place().indent = key;
    }
    void setOneLine(KeyId key) {
        if (log_) log_->place().oneLine = key;
    }
    void setConstruct(const CppFormatter& formatter, const Cpp::SyntaxNode* node) {
        if (!log_ || !node) return;
        log_->place().baseColumn = formatter.sourceColumnOf(*node);
        log_->place().lineColumn = log_->place().baseColumn;
    }

private:
    LayoutLog* log_;
    LayoutLog::Place saved_;
};

// The column at which the construct being formatted begins; contents are indented from it.
class CppFormatter::BaseColumnScope {
public:
    // `construct` may be null, as part of the one around it.
    BaseColumnScope(CppFormatter& formatter, int column, const Cpp::SyntaxNode* construct)
        : columns_(formatter.baseColumns_), log_(formatter) {
        columns_.push_back(column);
        log_.setConstruct(formatter, construct);
    }
    BaseColumnScope(const BaseColumnScope&) = delete;
    BaseColumnScope& operator=(const BaseColumnScope&) = delete;
    ~BaseColumnScope() { columns_.pop_back(); }

private:
    std::vector<int>& columns_;
    LogScope log_;
};

// Indentation and treatment of leading space for the contents of a body.
class CppFormatter::ContentScope {
public:
    ContentScope(CppFormatter& formatter, const OptionalText& indent)
        : leadingSpace_(formatter.out(), indent.present ? false : formatter.out().keepLeadingSpace()),
          indent_(formatter.out(), formatter.contentIndent(indent)),
          log_(formatter) {
        log_.setIndent(indent.key);
    }

private:
    Zelmor::LeadingSpaceScope leadingSpace_;
    Zelmor::IndentScope indent_;
    LogScope log_;
};

// The same for a label, which is the setting's to indent.
class CppFormatter::LabelScope {
public:
    LabelScope(CppFormatter& formatter, const Cpp::SyntaxNode& label, const OptionalText& setting,
               std::string indentation)
        : leadingSpace_(formatter.out(), setting.present ? false : formatter.out().keepLeadingSpace()),
          indent_(formatter.out(), std::move(indentation)),
          log_(formatter) {
        log_.setIndent(setting.key);
        if (!formatter.log_) return;
        formatter.measureIndent(label, setting.key);
        formatter.log_->indented(formatter.sourceFrom(label), setting.key);
    }

private:
    Zelmor::LeadingSpaceScope leadingSpace_;
    Zelmor::IndentScope indent_;
    LogScope log_;
};

// A value for the time of a scope.
template <typename Value>
class ValueScope {
public:
    ValueScope(Value& variable, Value value) : variable_(variable), saved_(std::exchange(variable, value)) {}
    ValueScope(const ValueScope&) = delete;
    ValueScope& operator=(const ValueScope&) = delete;
    ~ValueScope() { variable_ = saved_; }

private:
    Value& variable_;
    Value saved_;
};

}  // namespace Tessel
