// The proof of a result: whatever white space is taken out of a source or put into it, the proof sees it when
// the tokens are not the same any more. The first bytes say what is done and where.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "cpp/lexer.h"
#include "engine/token_proof.h"
#include "promises.h"
#include "support/token_compare.h"
#include "textstream/text_document.h"

namespace {

constexpr std::size_t kDamageBytes = 6;
constexpr std::string_view kWhite = " \t\n";
constexpr std::string_view kPutIn[] = {" ", "\n", "\t", "\\\n"};

// Two bytes give a place; what is done there, the last one.
void damage(std::string& text, const std::uint8_t* bytes) {
    const std::size_t place = (bytes[0] * std::size_t{256} + bytes[1]) % (text.size() + 1);
    const std::size_t white = text.find_first_of(kWhite, place);
    const std::string_view putIn = kPutIn[bytes[2] / 4 % std::size(kPutIn)];
    switch (bytes[2] % 4) {
        case 0:
            text.insert(place, putIn);
            break;
        case 1:
            if (white != std::string::npos) text.replace(white, 1, putIn);
            break;
        case 2:
            if (white != std::string::npos) text.erase(white, 1);
            break;
        default:
            if (white != std::string::npos) text.erase(white, text.find_first_not_of(kWhite, white) - white);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < kDamageBytes) return 0;
    const Zelmor::TextDocument source(
        std::string(reinterpret_cast<const char*>(data) + kDamageBytes, size - kDamageBytes));
    // The ends of the texts do not matter, so nothing that does stands there.
    const std::string before = std::string(source.text()) + "\nend;\n";
    std::string after(source.text());
    damage(after, data);
    damage(after, data + kDamageBytes / 2);
    after += "\nend;\n";
    const std::string difference = TestSupport::tokenDifference(before, after);
    if (!difference.empty() && !Tessel::findLostToken(before, Cpp::opaqueTokensOf(before), after)) {
        Fuzz::failUnlessTolerant("The proof does not see that the tokens changed.", difference + "\n" + after);
    }
    return 0;
}
