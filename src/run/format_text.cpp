#include "run/format_text.h"

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include "engine/format_job.h"
#include "layout/passes.h"
#include "run/side_threads.h"
#include "textstream/byte_order_mark.h"
#include "textstream/text_encoding.h"
#include "textstream/view_stream.h"

namespace Run {

namespace {

// There is nobody who could stop a run half way.
class NeverCancels : public Tessel::UpdateFunctor {
public:
    bool operator()(const std::string&) override { return true; }
};

// Adds what is written to a text.
class StringBuffer : public std::streambuf {
public:
    explicit StringBuffer(std::string& text) : text_(text) {}

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        text_.append(text, static_cast<std::size_t>(size));
        return size;
    }
    int_type overflow(int_type c) override {
        if (!traits_type::eq_int_type(c, traits_type::eof())) text_ += traits_type::to_char_type(c);
        return traits_type::not_eof(c);
    }

private:
    std::string& text_;
};

FormattedText format(const Tessel::FormatOptions& options, std::string_view text, std::size_t threads,
                     Tessel::LayoutObserver* observer) {
    const Zelmor::TextEncoding encoding = Zelmor::detectEncoding(text);
    if (encoding.hasByteOrderMark) text.remove_prefix(Zelmor::BYTE_ORDER_MARK.size());
    Zelmor::ViewStream in(text);
    FormattedText result;
    result.text.reserve(text.size() + text.size() / 4);  // it is seldom much longer, and comes in parts
    StringBuffer buffer(result.text);
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);  // want of memory must not pass for a short text
    const Tessel::Passes passes;
    NeverCancels progress;
    SideThreads tasks(threads);
    Tessel::FormatJob(passes, tasks, observer).format(options, in, out, result.messages, progress);
    if (!result.messages.empty()) return result;
    if (encoding.hasCarriageReturns) result.text = Zelmor::addCarriageReturns(result.text);
    if (encoding.hasByteOrderMark) result.text.insert(0, Zelmor::BYTE_ORDER_MARK);
    return result;
}

}  // namespace

FormattedText formatText(const Tessel::FormatOptions& options, std::string_view text, std::size_t threads) {
    return format(options, text, threads, nullptr);
}

FormattedText formatText(const Tessel::FormatOptions& options, std::string_view text,
                         Tessel::LayoutObserver& observer) {
    return format(options, text, 1, &observer);
}

}  // namespace Run
