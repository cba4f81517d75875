#include "cmdline/text_match.h"

#include <algorithm>

char toLowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() && startsWithIgnoringCase(left, right);
}

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char one, char other) { return toLowerCase(one) == toLowerCase(other); });
}
