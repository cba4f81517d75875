#include "cmdline/arg_iter.h"

#include <istream>
#include <limits>

namespace {

constexpr std::size_t maximumLineLength = 1023;
constexpr char commentMark = '!';

}  // namespace

CmdStrTokIter::CmdStrTokIter(const char* text, const char* delimiters)
    : delimiters_(delimiters ? delimiters : whiteSpace) {
    reset(text);
}

void CmdStrTokIter::reset(const char* text) {
    text_ = text ? text : "";
    position_ = 0;
}

const char* CmdStrTokIter::next() {
    const std::size_t start = text_.find_first_not_of(delimiters_, position_);
    if (start == std::string::npos) return nullptr;
    const std::size_t end = text_.find_first_of(delimiters_, start);
    if (end == std::string::npos) {
        position_ = text_.size();
    } else {
        text_[end] = '\0';
        position_ = end + 1;
    }
    return text_.c_str() + start;
}

const char* CmdIstreamIter::next() {
    for (;;) {
        if (const char* word = words_.next()) return word;
        if (!readLine()) return nullptr;
    }
}

bool CmdIstreamIter::readLine() {
    char buffer[maximumLineLength + 1];
    in_.getline(buffer, sizeof buffer);
    if (in_.fail() && !in_.eof() && !in_.bad() && in_.gcount() > 0) {
        in_.clear();
        in_.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    } else if (in_.fail()) {
        return false;
    }
    const std::string line(buffer);
    const std::size_t first = line.find_first_not_of(CmdStrTokIter::whiteSpace);
    const bool isIgnored = first == std::string::npos || line[first] == commentMark;
    words_.reset(isIgnored ? "" : line.c_str() + first);
    return true;
}
