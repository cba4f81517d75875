#pragma once

#include "cpp/item_scanner.h"
#include "cpp/words.h"

namespace Cpp {

// What has been read of a declaration.
struct ItemScanner::Progress {
    Index start = kNone;     // the first token
    Index previous = kNone;  // the last token that is no comment
    Index second = kNone;    // the one in front of that, but for what stands in brackets
    Index third = kNone;     // and the one in front of the second
    int typeWords = 0;       // words in front of the last one that are no specifiers
    int lastWords = 0;       // 1 when the last word may be the name, or a part of the type
    int wordsBehindKey = 0;  // since the class key
    bool sawGroup = false;   // in parentheses
    bool sawOperator = false;
    bool sawEnum = false;
    bool sawTypedef = false;
    bool sawClassKey = false;
    bool sawColon = false;
    bool sawBases = false;  // of a class whose key a macro makes
    bool followsType = false;  // of ItemContext
    Index callsEnd = 0;        // of the calls behind a group that have been looked behind last
    HeadTail tail;             // behind the last parentheses that have been looked behind

    void takeWord(int kind) {
        if (isStorageWord(kind)) return;
        typeWords += lastWords;
        lastWords = 1;
        ++wordsBehindKey;
    }
    // The last word and its argument are a specifier.
    void takeSpecifier() {
        lastWords = 0;
        sawGroup = true;
    }
    void pass(Index place) {
        third = second;
        second = previous;
        previous = place;
    }
    // Only specifiers stand in front of the name.
    bool isAlone() const { return typeWords == 0 && !sawOperator; }
};

}  // namespace Cpp
