#include "tool/source_text.h"

#include "files/descriptor.h"
#include "files/read_file.h"
#include "textstream/text_encoding.h"
#include "tool/failure.h"

namespace Tool {

std::string readSource(const std::string& file) {
    try {
        std::string text = Files::readFile(file).text;
        if (Zelmor::isUtf16(text)) throw Failure(file + " is stored as UTF-16; convert it to UTF-8");
        return text;
    } catch (const Files::ReadFailure& failure) {
        throw Failure(file + ": " + Files::errorText(failure.error));
    }
}

}  // namespace Tool
