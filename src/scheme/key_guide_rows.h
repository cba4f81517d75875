#pragma once

#include <vector>

#include "scheme/key_guide.h"

// The rows of the guide to the keys, in the order of their groups: a file to a family of groups.
namespace Tessel {

void addLayoutKeys(std::vector<KeyGuide>& rows);
void addDeclarationKeys(std::vector<KeyGuide>& rows);
void addStatementKeys(std::vector<KeyGuide>& rows);

}  // namespace Tessel
