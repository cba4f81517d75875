#pragma once

#include <utility>

#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "scheme/single_line.h"

// void f() { return; }    stays so, whatever the scheme puts behind "{" and in front of "}"
//
// What stands on one line in the source, and is to stay there if it fits.
namespace Tessel {

// What a rule that turns out to have gone wrong is to be undone of.
struct CppFormatter::Place {
    explicit Place(CppFormatter& formatter)
        : offset(formatter.writer_.in().offset()),
          pending(formatter.pendingWhitespace_),
          templateColumn(formatter.templateColumn_),
          previousSibling(formatter.previousSibling_),
          lastClosedClass(formatter.lastClosedClass_),
          lastLabel(formatter.lastLabel_),
          keptParts(formatter.keptParts_.size()) {}

    void restore(CppFormatter& formatter) {
        formatter.writer_.in().moveTo(offset);
        formatter.pendingWhitespace_ = std::move(pending);
        formatter.templateColumn_ = templateColumn;
        formatter.previousSibling_ = previousSibling;
        formatter.lastClosedClass_ = lastClosedClass;
        formatter.lastLabel_ = lastLabel;
        formatter.keptParts_.resize(keptParts);
    }

    std::size_t offset;
    std::vector<OptionalText> pending;
    std::optional<int> templateColumn;
    const Cpp::SyntaxNode* previousSibling;
    const Cpp::SyntaxNode* lastClosedClass;
    const Cpp::SyntaxNode* lastLabel;
    std::size_t keptParts;
};

class CppFormatter::OneLineSettingsScope {
public:
    explicit OneLineSettingsScope(CppFormatter& formatter) : formatter_(formatter) {
        if (!formatter.oneLineSettings_) formatter.oneLineSettings_.emplace(withoutLineEnds(formatter.scheme_));
        exchange();
    }
    OneLineSettingsScope(const OneLineSettingsScope&) = delete;
    OneLineSettingsScope& operator=(const OneLineSettingsScope&) = delete;
    ~OneLineSettingsScope() { exchange(); }

private:
    void exchange() { std::swap(formatter_.settings_, *formatter_.oneLineSettings_); }

    CppFormatter& formatter_;
};

// Where the node stands on one line, `format` writes it, and what it finds in front, without line ends. Says
// whether it did; nothing has been written otherwise.
template <typename Format>
bool CppFormatter::tryOnOneLine(const Cpp::SyntaxNode& node, KeyId keptBy, const Format& format) {
    if (!standsOnOneLine(node)) return false;
    if (isOnOneLine_) {
        format();
        return true;
    }
    return mayFitOnLine(node) && tryLine(settings_.wrapMargin, keptBy, format);
}

// The same for what may stand on several lines, up to the margin, where there is one.
template <typename Format>
bool CppFormatter::tryLine(int margin, KeyId keptBy, const Format& format) {
    Place place(*this);
    Zelmor::OIndentBuf line(state());
    {
        SourceWriter::OutputScope scratch(writer_, line);
        ValueScope<bool> oneLine(isOnOneLine_, true);
        OneLineSettingsScope settings(*this);
        LogScope log(*this);
        log.setOneLine(keptBy);
        format();
    }
    int end = line.column() + widthBehind();
    std::string text = line.takeText();
    // What is empty needs no blank that it has no room for.
    if (text.ends_with("{ }") && runsOver(margin, end, text)) {
        text.erase(text.size() - 2, 1);
        --end;
    }
    if (runsOver(margin, end, text) || text.find('\n') != std::string::npos) {
        place.restore(*this);
        return false;
    }
    writeRendered(text);
    return true;
}

// Formats a body with `ahead`, which may ask for line ends, in front of it.
template <typename Format>
void CppFormatter::formatBody(Cpp::BracketedNode& body, const OptionalText& ahead, const Keyed<bool>& isKept,
                              const Format& format) {
    measureOneLine(body, isKept.key);
    const std::string_view gap = isKept ? gapBefore(body) : std::string_view();
    // Below a comment or a directive, "{}" is not parted either.
    const bool isEmptyBelow =
        isKept && body.size() == 0 && endsWithLineEndToken(gap) && writer_.peek(gap.size()) == '{';
    if (isKept && (isAllWhitespace(gap) || isEmptyBelow)) {
        const char first = writer_.peek(gap.size());
        if (gap.find('\n') == std::string_view::npos) {
            const bool isEmptyStatement = first == ';';
            const auto formatWithGap = [&] {
                if (!isEmptyStatement) pend(ahead);
                format();
            };
            // The head in front of an empty body is broken, not the body.
            const bool staysWhole = settings_.weighsWholes() && body.size() == 0 && standsOnOneLine(body);
            if (staysWhole && tryLine(0, isKept.key, formatWithGap)) return;
            if (tryOnOneLine(body, isKept.key, formatWithGap)) return;
        } else if (first == '{') {
            pend(withLinesInFront(body, ahead));
            applyPendingWhitespace(body);
            if (!tryOnOneLine(body, isKept.key, format)) format();
            return;
        }
    }
    pend(withLinesInFront(body, ahead));
    format();
}

}  // namespace Tessel
