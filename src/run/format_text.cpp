#include "run/format_text.h"

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

}  // namespace

FormattedText formatText(const Tessel::FormatOptions& options, std::string_view text,
                         Tessel::LayoutObserver* observer) {
    const Zelmor::TextEncoding encoding = Zelmor::detectEncoding(text);
    if (encoding.hasByteOrderMark) text.remove_prefix(Zelmor::BYTE_ORDER_MARK.size());
    const Tessel::Passes passes;
    NeverCancels progress;
    FormattedText result;
    Tessel::FormatJob(passes, observer).format(options, text, result.text, result.messages, progress);
    if (!result.messages.empty()) return result;
    if (encoding.hasCarriageReturns) result.text = Zelmor::addCarriageReturns(result.text);
    if (encoding.hasByteOrderMark) result.text.insert(0, Zelmor::BYTE_ORDER_MARK);
    return result;
}

}  // namespace Run
