#include "engine/formatter_settings.h"

#include <algorithm>
#include <iterator>

#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

FormatterSettings::FormatterSettings(const PropertySet& scheme)
    : ExtensionSettings(scheme), commas(scheme, *this) {
    const auto text = [&scheme](KeyId key) { return readText(scheme, key); };
    const auto indent = [&scheme](KeyId key) { return readIndent(scheme, key); };
    const auto isOn = [&scheme](KeyId key) { return readSwitch(scheme, key); };

    leftMargin = indent(Keys::LEFT_MARGIN);

    global = {text(Keys::GLOBAL_WS_BEFORE_OPEN_BRACE), text(Keys::GLOBAL_WS_AFTER_OPEN_BRACE),
              indent(Keys::GLOBAL_INDENT_CONTENT), text(Keys::GLOBAL_WS_BEFORE_CLOSE_BRACE)};
    linkage = global;
    linkage.beforeOpen = firstPresent(beforeLinkageOpen, global.beforeOpen);
    linkage.indent = firstPresent(linkageIndent, global.indent);
    namespaces = {text(Keys::WS_BEFORE_NS_OPEN_BRACE), text(Keys::WS_AFTER_NS_OPEN_BRACE),
                  indent(Keys::INDENT_NS_CONTENT), text(Keys::WS_BEFORE_NS_CLOSE_BRACE)};
    classes = {text(Keys::WS_BEFORE_CLASS_OPEN_BRACE), text(Keys::WS_AFTER_CLASS_OPEN_BRACE),
               indent(Keys::INDENT_CLASS_CONTENT), text(Keys::WS_BEFORE_CLASS_CLOSE_BRACE)};
    functions = {text(Keys::WS_BEFORE_FN_OPEN_BRACE), text(Keys::WS_AFTER_FN_OPEN_BRACE),
                 indent(Keys::INDENT_FN_CONTENT), text(Keys::WS_BEFORE_FN_CLOSE_BRACE)};
    statements = {text(Keys::WS_BEFORE_CS_OPEN_BRACE), text(Keys::WS_AFTER_CS_OPEN_BRACE),
                  indent(Keys::INDENT_CS_CONTENT), text(Keys::WS_BEFORE_CS_CLOSE_BRACE)};
    enums = {text(Keys::WS_BEFORE_ENUM_OPEN_BRACE), text(Keys::WS_AFTER_ENUM_OPEN_BRACE),
             indent(Keys::INDENT_ENUM_CONTENT), text(Keys::WS_BEFORE_ENUM_CLOSE_BRACE)};

    constexpr int inDeclarations = 1;
    constexpr int everywhere = 2;
    constexpr int betweenParts = 3;
    constexpr int inFrontOfBraces = 4;
    for (BraceSettings* braces : {&linkage, &namespaces, &classes, &enums}) {
        braces->keepsBlankLines = blankLines >= inDeclarations;
    }
    for (BraceSettings* braces : {&global, &functions, &statements}) {
        braces->keepsBlankLines = blankLines >= everywhere;
    }
    keepsBlankLinesBetweenParts = blankLines >= betweenParts;
    keepsBlankLinesInFront = blankLines >= inFrontOfBraces;

    afterClassName = text(Keys::WS_AFTER_CLASS_NAME);
    beforeBaseClauses = text(Keys::WS_BEFORE_BASE_CLAUSES);
    beforeAccessLabel = text(Keys::WS_BEFORE_ACCESS_SPECS);
    accessLabelIndent = indent(Keys::INDENT_ACCESS_SPEC_LABEL);
    beforeInitializerList = text(Keys::WS_BEFORE_CLASS_INIT_LIST);
    beforeInitializers = text(Keys::WS_BEFORE_CLASS_INITS);
    afterInitializerList = text(Keys::WS_AFTER_CLASS_INIT_LIST);

    afterDeclarationReturnType = text(Keys::WS_AFTER_FN_DECL_RETURN_TYPE);
    afterDefinitionReturnType = text(Keys::WS_AFTER_FN_DEFN_RETURN_TYPE);
    afterFunctionName = text(Keys::WS_AFTER_FN_NAME);
    afterParameterOpen = text(Keys::WS_AFTER_FN_OPEN_PAREN);
    beforeParameterClose = text(Keys::WS_BEFORE_FN_CLOSE_PAREN);
    afterParameterType = text(Keys::WS_AFTER_PARAM_TYPE_ID);

    afterDataType = text(Keys::WS_AFTER_DD_TYPE_ID);
    afterDataName = text(Keys::WS_AFTER_DD_NAME);
    afterDataBracket = text(Keys::WS_AFTER_DD_RBRACKET);
    afterCallName = text(Keys::WS_AFTER_FN_CALL_NAME);

    beforeTemplateOpen = text(Keys::WS_BEFORE_TP_OPEN_BRACKET);
    afterTemplateOpen = text(Keys::WS_AFTER_TP_OPEN_BRACKET);
    beforeTemplateClose = text(Keys::WS_BEFORE_TP_CLOSE_BRACKET);
    afterTemplateClose = text(Keys::WS_AFTER_TP_CLOSE_BRACKET);

    afterControlKeyword = text(Keys::WS_AFTER_CS_KEY);
    afterControlOpenParen = text(Keys::WS_AFTER_CS_OPEN_PAREN);
    beforeControlCloseParen = text(Keys::WS_BEFORE_CS_CLOSE_PAREN);
    betweenControlParts = text(Keys::WS_BETWEEN_CS);
    alignsForClauses = isOn(Keys::ALIGN_CS_FOR_CLAUSES_LEFT);
    betweenForClauses = alignsForClauses ? OptionalText{true, "\n", alignsForClauses.key}
                                         : text(Keys::WS_BETWEEN_CS_FOR_CLAUSES);
    caseIndent = indent(Keys::INDENT_CS_CASE_LABELS);
    caseContentIndent = indent(Keys::INDENT_CS_CASE_CONTENT);
    afterCaseLabel = text(Keys::WS_AFTER_CS_CASE_LABELS);

    wrapMargin = readWrapMargin(scheme);
    joiningMargin = readJoiningMargin(scheme);
    alignsDataNames = isOn(Keys::ALIGN_DD_NAMES_LEFT);
    alignsDataInitializers = isOn(Keys::ALIGN_DD_INITIALIZERS);
    alignsFunctionNames = isOn(Keys::ALIGN_FN_DECL_NAMES_LEFT);
    alignsMemberNames = isOn(Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT);
    alignsEnumInitializers = isOn(Keys::ALIGN_ENUM_INITIALIZERS);
    keepsData = isOn(Keys::DATA_DO_NOT_FORMAT);
    keepsFunctions = isOn(Keys::FN_DO_NOT_FORMAT);
}

bool FormatterSettings::laysOutStatements() const {
    const OptionalText* texts[] = {&leftMargin,
                                   &statements.beforeOpen,
                                   &statements.afterOpen,
                                   &statements.indent,
                                   &statements.beforeClose,
                                   &afterControlKeyword,
                                   &afterControlOpenParen,
                                   &beforeControlCloseParen,
                                   &betweenControlParts,
                                   &betweenForClauses};
    return alignsForClauses || std::any_of(std::begin(texts), std::end(texts),
                                           [](const OptionalText* text) { return text->present; });
}

}  // namespace Tessel
