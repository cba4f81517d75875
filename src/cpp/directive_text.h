#pragma once

#include <string>
#include <string_view>

namespace Cpp {

// Whether a directive's text begins with `start` once its white space is taken out.
bool directiveStartsWith(std::string_view text, std::string_view start);

// Whether it is "#else", "#elif" or one of the kin of that.
bool beginsBranch(std::string_view directive);

// How a directive changes the number of conditional groups that are open: by 1, -1 or 0.
int conditionalStep(std::string_view directive);

// What a conditional directive tests, as "X" or "!X", so that `#ifdef X`, `#if defined(X)` and the negation of
// `#ifndef X` are the same; empty for "#else" and directives that test nothing.
std::string testedCondition(std::string_view directive);

}  // namespace Cpp
