#include "run/format_text.h"

#include <istream>
#include <sstream>
#include <streambuf>
#include <utility>

#include "engine/format_job.h"
#include "layout/passes.h"
#include "textstream/byte_order_mark.h"
#include "textstream/text_encoding.h"

namespace Run {

namespace {

// There is nobody who could stop a run half way.
class NeverCancels : public Tessel::UpdateFunctor {
public:
    bool operator()(const std::string&) override { return true; }
};

// Reads a text where it stands.
class ViewBuffer : public std::streambuf {
public:
    explicit ViewBuffer(std::string_view text) {
        char* const start = const_cast<char*>(text.data());  // the interface's type; nothing is put back or written
        setg(start, start, start + text.size());
    }
};

}  // namespace

FormattedText formatText(const Tessel::FormatOptions& options, std::string_view text,
                         Tessel::LayoutObserver* observer) {
    const Zelmor::TextEncoding encoding = Zelmor::detectEncoding(text);
    if (encoding.hasByteOrderMark) text.remove_prefix(Zelmor::BYTE_ORDER_MARK.size());
    ViewBuffer buffer(text);
    std::istream in(&buffer);
    std::ostringstream out;
    out.exceptions(std::ios::badbit);  // want of memory must not pass for a short text
    const Tessel::Passes passes;
    NeverCancels progress;
    FormattedText result;
    Tessel::FormatJob(passes, observer).format(options, in, out, result.messages, progress);
    if (!result.messages.empty()) return result;
    result.text = encoding.hasCarriageReturns ? Zelmor::addCarriageReturns(out.view()) : std::move(out).str();
    if (encoding.hasByteOrderMark) result.text.insert(0, Zelmor::BYTE_ORDER_MARK);
    return result;
}

}  // namespace Run
