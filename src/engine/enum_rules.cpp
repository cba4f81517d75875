// enum E{A,B=2};
//
// enum E
// {
//     A,
//     B = 2
// };
#include <algorithm>

#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/one_line_rules.h"

namespace Tessel {

using Zelmor::OIndentBuf;

void CppFormatter::visit(Cpp::EnumDeclNode* declaration) {
    applyPendingWhitespace(*declaration);
    takeTemplateColumn();
    formatHeadAndBody(declaration->head(), declaration->body(), settings_.enums.beforeOpen,
                      settings_.keepsOneLineLists);
    if (settings_.formatsOtherGaps) copyThrough(*declaration);
}

void CppFormatter::visit(Cpp::EnumBodyNode* body) {
    applyPendingWhitespace(*body);
    const bool hasEnumerators =
        std::any_of(body->childBegin(), body->childEnd(), [](const auto& child) {
            return Cpp::as<Cpp::ExprNode>(child.get()) != nullptr;
        });
    if (!hasEnumerators) {
        formatBlock(*body, settings_.enums);
        return;
    }
    writer_.copyThrough(body->start());
    const Cpp::SyntaxNode& first = **body->childBegin();
    const std::string_view gap = writer_.readGap(first.start());
    const OptionalText& afterOpen = settings_.enums.afterOpen;
    if (afterOpen.present && !isDirective(first) && !staysBehindBrace(first, afterOpen)) {
        ContentScope content(*this, settings_.enums.indent);
        const std::string_view blanks =
            settings_.enums.keepsBlankLines ? leadingBlanks(gap) : std::string_view();
        writeWithBlankLines(gap, afterOpen, blanks);
    } else {
        WantedText absent = afterOpen.present ? kAsInInput : afterOpen;
        absent.isOnOneLine = standsOnOneLine(*body);
        LogScope log(*this);
        log.setConstruct(*this, &first);
        writer_.leave(leadingBlanks(gap), absent);
        writer_.write(gap);
    }
    formatEnumerators(*body);
    writeEnumEnd(*body);
}

void CppFormatter::formatEnumerators(Cpp::EnumBodyNode& body) {
    CommaTexts commas = settings_.commas.enumerators;
    // What does not fit on the line that it stands on is parted into lines of one enumerator each.
    const bool isParted =
        settings_.weighsWholes() && standsOnOneLine(body) && !isOnOneLine_ && settings_.enums.afterOpen.hasLineFeed();
    if (isParted && settings_.wrapMargin > 0) commas.behind = kLineFeed;
    ContentScope content(*this, settings_.enums.indent);
    measureEnumerators(body);
    const bool hasColumns = settings_.alignsEnumInitializers && settings_.commas.enumerators.breaksLines();
    if (!hasColumns || body.size() < 2) {
        formatEnumeratorList(body, commas);
        return;
    }
    const Zelmor::IndentState start = state();
    OIndentBuf enumerators(start);
    keptParts_.clear();  // of those written elsewhere
    {
        SourceWriter::OutputScope scratch(writer_, enumerators);
        formatEnumeratorList(body, commas);
    }
    writeRendered(exprFormatter_.alignEnumInitializers(enumerators.takeText(), keptParts_, start));
}

// Enumerators on lines of their own stand below the first one; where a comment or directive comes before that,
// at the indentation.
void CppFormatter::formatEnumeratorList(Cpp::EnumBodyNode& body, const CommaTexts& commas) {
    if (Cpp::as<Cpp::ExprNode>(body.childBegin()->get())) {
        formatSeparatedList(body, commas);
    } else {
        formatElements(body, commas);
    }
}

// A "," behind the last enumerator stands in the gap in front of the "}".
void CppFormatter::writeEnumEnd(Cpp::EnumBodyNode& body) {
    writeClosingGap(body, settings_.enums, settings_.enums.indent);
    copyThrough(body);
}

void CppFormatter::visit(Cpp::EnumHeadNode* head) {
    const std::string_view text = writer_.readThrough(head->end());
    const bool isLaidOut = settings_.formatsOtherGaps && !writer_.holdsOpaque(text);
    isLaidOut ? exprFormatter_.formatExpression(text, out()) : writer_.write(text);
}

}  // namespace Tessel
