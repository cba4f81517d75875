#pragma once

#include <string_view>

#include "trn/token.h"

// Where regions begin and end that are kept as they are, by single tokens:
//
//     #if 0 … #endif
//     // VANTREL-OFF … // VANTREL-ON
//
// Both nest: a step tells how a token inside of one changes the number of those that are open.
namespace Cpp {

inline constexpr std::string_view kRegionOff = "VANTREL-OFF";
inline constexpr std::string_view kRegionOn = "VANTREL-ON";

bool opensUnusedBlock(const Trn::Lexeme& token);
int unusedBlockStep(const Trn::Lexeme& token);

bool opensProtectedRegion(const Trn::Lexeme& token);
int protectedRegionStep(const Trn::Lexeme& token);

}  // namespace Cpp
