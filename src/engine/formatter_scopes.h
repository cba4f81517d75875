#pragma once

#include <string>
#include <utility>
#include <vector>

#include "engine/cpp_formatter.h"

namespace Tessel {

// The column at which the construct being formatted begins; contents are indented from it.
class CppFormatter::BaseColumnScope {
public:
    BaseColumnScope(CppFormatter& formatter, int column) : columns_(formatter.baseColumns_) {
        columns_.push_back(column);
    }
    BaseColumnScope(const BaseColumnScope&) = delete;
    BaseColumnScope& operator=(const BaseColumnScope&) = delete;
    ~BaseColumnScope() { columns_.pop_back(); }

private:
    std::vector<int>& columns_;
};

// Indentation and treatment of leading space for the contents of a body.
class CppFormatter::ContentScope {
public:
    ContentScope(CppFormatter& formatter, const OptionalText& indent)
        : leadingSpace_(formatter.out(), indent.present ? false : formatter.out().keepLeadingSpace()),
          indent_(formatter.out(), formatter.contentIndent(indent)) {}

private:
    Zelmor::LeadingSpaceScope leadingSpace_;
    Zelmor::IndentScope indent_;
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
