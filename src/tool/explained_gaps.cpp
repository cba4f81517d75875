#include "tool/explained_gaps.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "cpp/lexer.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/layout_observer.h"
#include "engine/scheme_values.h"
#include "run/format_text.h"
#include "scheme/key_guide.h"
#include "scheme/key_value.h"
#include "scheme/property_keys.h"
#include "textstream/byte_order_mark.h"
#include "textstream/text_document.h"
#include "tool/wrap_keys.h"

namespace Tool {

namespace {

using Tessel::KeyId;

// Of the gaps, by where they end, what was told last.
class Decisions : public Tessel::LayoutObserver {
public:
    struct Decision {
        KeyId key;
        KeyId indentKey;
    };

    explicit Decisions(const Tessel::PropertySet& scheme) : scheme_(scheme) {}

    void begin(const Zelmor::TextDocument& source) override {
        source_ = &source;
        decisions_.clear();
    }
    void decided(const Tessel::DecidedGap& gap) override {
        Decision& decision = decisions_[gap.end()];
        decision = {causeOf(gap, decision.key), gap.indentKey};
    }
    void measured(const Tessel::Measured&) override {}

    Decision at(std::size_t end) const {
        const auto found = decisions_.find(end);
        return found == decisions_.end() ? Decision() : found->second;
    }

private:
    // Where the margin breaks a line, the key before it tells between what, and so which key says how.
    KeyId causeOf(const Tessel::DecidedGap& gap, KeyId earlier) const {
        const bool breaksLine = gap.written.find('\n') != std::string_view::npos;
        if (gap.key != KeyId(Tessel::Keys::RIGHT_MARGIN) || !breaksLine) return gap.key;
        const std::string_view text = source_->text();
        const KeyId key = wrapKeyOf(earlier, text.substr(0, gap.offset), text.substr(gap.end()));
        return key && Tessel::valueOf(scheme_, key) ? key : gap.key;
    }

    const Tessel::PropertySet& scheme_;
    const Zelmor::TextDocument* source_ = nullptr;
    std::unordered_map<std::size_t, Decision> decisions_;
};

class Walk {
public:
    Walk(const Tessel::PropertySet& scheme, const Decisions& decisions, const Zelmor::TextDocument& source,
         std::string_view result)
        : scheme_(scheme),
          tabSize_(Tessel::readTabSize(scheme)),
          placesDirectives_(Tessel::valueOf(scheme, Tessel::Keys::ALIGN_PPD_LEFT_MOST).has_value()),
          decisions_(decisions),
          source_(source),
          result_(result),
          opaque_(Cpp::opaqueTokensOf(source.text())) {}

    std::vector<ExplainedGap> gaps() && {
        const std::string_view text = source_.text();
        std::size_t place = 0;
        std::size_t placeAfter = 0;
        while (place < text.size()) {
            const std::string_view before = Tessel::leadingBlanks(text.substr(place));
            const std::string_view after =
                Tessel::leadingBlanks(result_.substr(std::min(placeAfter, result_.size())));
            add(place, before, after);
            place += before.size() + 1;
            placeAfter += after.size() + 1;
        }
        return std::move(gaps_);
    }

private:
    void add(std::size_t offset, std::string_view before, std::string_view after) {
        Decisions::Decision decision = decisions_.at(offset + before.size());
        if (placesDirectives_ && beginsDirective(offset, before)) {
            decision.indentKey = directiveKey(decision.indentKey, before == after);
        }
        const KeyId key = cause(decision, before, after);
        if ((!key && before == after) || (!decision.key && isInComment(offset))) return;
        const Zelmor::TextPosition start = source_.positionOf(offset);
        const Zelmor::TextPosition end = source_.positionOf(offset + before.size());
        const auto number = [](int position) { return static_cast<std::size_t>(position); };
        gaps_.push_back({number(end.line), number(end.column) + 1, number(start.line), number(start.column) + 1,
                         std::string(before), std::string(after), key});
    }

    bool beginsDirective(std::size_t offset, std::string_view gap) const {
        const bool beginsLine = offset == 0 || gap.find('\n') != gap.npos;
        return beginsLine && source_.text().substr(offset + gap.size()).starts_with('#');
    }

    // One that stays at the margin, where the code around it stands too, is there whatever the key of directives says.
    KeyId directiveKey(KeyId indentKey, bool stays) const {
        const KeyId margin = Tessel::Keys::LEFT_MARGIN;
        const bool indents = Tessel::valueOf(scheme_, indentKey) != Tessel::PropertyValue(std::string());
        const bool isAtMargin = indentKey == margin || (indentKey && !indents);
        return stays && isAtMargin ? margin : Tessel::Keys::ALIGN_PPD_LEFT_MOST;
    }

    // Where only the indentation changes, what indents the line is the cause; where that only looks otherwise, how tabs
    // are written.
    KeyId cause(const Decisions::Decision& decision, std::string_view before, std::string_view after) const {
        if (before == after) return decision.key ? decision.key : decision.indentKey;
        const std::size_t indent = before.rfind('\n') + 1;
        const std::size_t indentAfter = after.rfind('\n') + 1;
        const bool losesTabs = before.find('\t') != before.npos && after.find('\t') == after.npos;
        if (indent == 0 && !decision.key && losesTabs) return Tessel::Keys::CONVERT_WS;
        if (indent == 0 || indentAfter == 0) return decision.key;
        const bool breaksAlike = before.substr(0, indent) == after.substr(0, indentAfter);
        if (!breaksAlike) return decision.key ? decision.key : decision.indentKey;
        const int column = Tessel::columnAfter(before.substr(indent), 0, tabSize_);
        const bool looksSame = Tessel::columnAfter(after.substr(indentAfter), 0, tabSize_) == column;
        if (looksSame) return Tessel::Keys::CONVERT_WS;
        return decision.indentKey ? decision.indentKey : decision.key;
    }

    // Inside a comment, whose lines move as one.
    bool isInComment(std::size_t offset) {
        while (comment_ < opaque_.size() && opaque_[comment_].offset + opaque_[comment_].length <= offset) ++comment_;
        return comment_ < opaque_.size() && opaque_[comment_].offset < offset &&
               Cpp::isComment(opaque_[comment_].kind);
    }

    const Tessel::PropertySet& scheme_;
    int tabSize_;
    bool placesDirectives_;
    const Decisions& decisions_;
    const Zelmor::TextDocument& source_;
    std::string_view result_;
    Cpp::OpaqueTokens opaque_;
    std::size_t comment_ = 0;  // the first of these that ends behind the place
    std::vector<ExplainedGap> gaps_;
};

std::string_view withoutMark(std::string_view text) {
    if (text.starts_with(Zelmor::BYTE_ORDER_MARK)) text.remove_prefix(Zelmor::BYTE_ORDER_MARK.size());
    return text;
}

}  // namespace

ExplainedText explainText(const Tessel::FormatOptions& options, std::string_view text) {
    Decisions decisions(options.scheme);
    Run::FormattedText formatted = Run::formatText(options, text, decisions);
    if (!formatted.messages.empty()) return {{}, std::move(formatted.messages)};
    const Zelmor::TextDocument source{std::string(withoutMark(text))};
    const Zelmor::TextDocument result{std::string(withoutMark(formatted.text))};
    return {Walk(options.scheme, decisions, source, result.text()).gaps(), {}};
}

const ExplainedGap* gapAt(const std::vector<ExplainedGap>& gaps, std::size_t line, std::size_t column) {
    const auto position = std::pair(line, column);
    const auto isBehind = [&position](const ExplainedGap& gap) {
        return std::pair(gap.firstLine, gap.firstColumn) > position;
    };
    const auto behind = std::find_if(gaps.begin(), gaps.end(), isBehind);
    if (behind == gaps.begin() || (behind - 1)->line < line) return nullptr;
    return &*(behind - 1);
}

std::string keyWithValue(KeyId key, const Tessel::PropertySet& scheme) {
    const std::optional<Tessel::PropertyValue> value = Tessel::valueOf(scheme, key);
    return std::string(key.name()) + (value ? ' ' + Tessel::valueText(*value) : ", which the scheme lacks");
}

std::string drawn(std::string_view blanks) {
    if (blanks.empty()) return "nothing";
    std::string text;
    for (const char c : blanks) text += c == '\n' ? "↵" : c == '\t' ? "→" : "·";
    return text;
}

std::string explanation(const ExplainedGap& gap, const Tessel::PropertySet& scheme) {
    std::string text = gap.key ? keyWithValue(gap.key, scheme) : "no key";
    if (isOfWrapping(gap.key)) {
        if (gap.key != KeyId(Tessel::Keys::RIGHT_MARGIN)) {
            text += ", " + keyWithValue(Tessel::Keys::RIGHT_MARGIN, scheme);
        }
        text += ", " + keyWithValue(Tessel::Keys::WRAP_STYLE, scheme);
    }
    text += '\n';
    const Tessel::KeyGuide* const guide = gap.key ? Tessel::findKeyGuide(gap.key.name()) : nullptr;
    if (guide) text += "    " + guide->meaning + '\n';
    text += "    " + drawn(gap.before);
    text += gap.isChanged() ? " becomes " + drawn(gap.after) : " stays";
    return text + '\n';
}

}  // namespace Tool
