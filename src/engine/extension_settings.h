#pragma once

#include <algorithm>
#include <utility>

#include "engine/optional_text.h"
#include "engine/scheme_values.h"
#include "scheme/extension_keys.h"
#include "scheme/property_set.h"

namespace Tessel {

// Of things that a scheme does not limit.
inline constexpr int kAnyNumber = -1;

// The scheme's values of the extension keys, for the rules of every pass. Each member names its key.
struct ExtensionSettings {
    explicit ExtensionSettings(const PropertySet& scheme) : from_(scheme) {}

private:
    class Reader {
    public:
        explicit Reader(PropertySet scheme) : scheme_(std::move(scheme)) {}

        Keyed<bool> isOn(TypedKeyId<PropertyType::Boolean> key) const { return readSwitch(scheme_, key); }
        Keyed<int> number(TypedKeyId<PropertyType::Integer> key, int whenAbsent = 0) const {
            return readInt(scheme_, key, whenAbsent);
        }
        // As the least where it is absent, or below that.
        Keyed<int> atLeast(TypedKeyId<PropertyType::Integer> key, int least) const {
            const Keyed<int> value = number(key, least);
            return {std::max(value.value, least), key};
        }
        OptionalText text(TypedKeyId<PropertyType::String> key) const { return readText(scheme_, key); }
        // Absent where it would end the line.
        OptionalText lineText(TypedKeyId<PropertyType::String> key) const {
            const OptionalText value = text(key);
            return value.hasLineFeed() ? OptionalText{false, {}, key} : value;
        }
        OptionalText indent(TypedKeyId<PropertyType::String> key) const { return readIndent(scheme_, key); }

    private:
        PropertySet scheme_;
    };

    Reader from_;  // for the members below; those that are texts are views of its scheme

public:
    Keyed<bool> keepsUnrecognized = from_.isOn(Keys::KEEP_UNRECOGNIZED);

    OptionalText beforeLinkageOpen = from_.text(Keys::WS_BEFORE_LINKAGE_OPEN_BRACE);
    OptionalText linkageIndent = from_.indent(Keys::INDENT_LINKAGE_CONTENT);
    OptionalText beforeStructOpen = from_.text(Keys::WS_BEFORE_STRUCT_OPEN_BRACE);
    OptionalText beforeUnionOpen = from_.text(Keys::WS_BEFORE_UNION_OPEN_BRACE);
    Keyed<bool> keepsNamespaceIndent = from_.isOn(Keys::KEEP_NS_INDENT);
    Keyed<bool> indentsInnerNamespaces = from_.isOn(Keys::INDENT_INNER_NS_ONLY);
    OptionalText singleIndent = from_.indent(Keys::INDENT_CS_SINGLE);

    OptionalText beforeCaseOpen = from_.text(Keys::WS_BEFORE_CASE_OPEN_BRACE);

    Keyed<int> oneLineFunctions = from_.number(Keys::KEEP_ONE_LINE_FUNCTIONS);
    Keyed<int> joinedFunctions = from_.number(Keys::JOIN_SHORT_FUNCTIONS);
    Keyed<bool> keepsOneLineInits = from_.isOn(Keys::KEEP_ONE_LINE_INITS);
    Keyed<bool> joinsStatements = from_.isOn(Keys::JOIN_SHORT_STATEMENTS);
    Keyed<bool> keepsOneLineStatements = from_.isOn(Keys::KEEP_ONE_LINE_STATEMENTS);
    Keyed<bool> keepsOneLineBlocks = from_.isOn(Keys::KEEP_ONE_LINE_BLOCKS);
    Keyed<bool> keepsOneLineLists = from_.isOn(Keys::KEEP_ONE_LINE_LISTS);

    Keyed<bool> keepsLineBreaks = from_.isOn(Keys::KEEP_LINE_BREAKS);

    OptionalText operandIndent = from_.indent(Keys::HANGING_OPERAND_INDENT);
    Keyed<bool> hangsFromStatement = from_.isOn(Keys::HANGING_FROM_STATEMENT);
    Keyed<bool> hangsFromLine = from_.isOn(Keys::HANGING_FROM_LINE);
    Keyed<bool> hangsCommas = from_.isOn(Keys::HANGING_COMMAS);
    Keyed<bool> keepsLineIndent = from_.isOn(Keys::KEEP_LINE_INDENT);
    Keyed<int> blankLines = from_.number(Keys::KEEP_BLANK_LINES);
    Keyed<bool> keepsColumns = from_.isOn(Keys::KEEP_COLUMNS);
    Keyed<bool> keepsTabs = from_.isOn(Keys::KEEP_TABS);
    Keyed<bool> keepsReturnTypeBreak = from_.isOn(Keys::KEEP_FN_RETURN_TYPE_BREAK);
    OptionalText labelIndent = from_.indent(Keys::INDENT_LABEL);
    Keyed<bool> keepsFirstColumnLabels = from_.isOn(Keys::KEEP_FIRST_COLUMN_LABELS);
    OptionalText afterControlMacro = from_.lineText(Keys::WS_AFTER_CS_MACRO);
    OptionalText beforeControlMacroBrace = from_.text(Keys::WS_BEFORE_CS_MACRO_OPEN_BRACE);
    OptionalText beforeDoWhile = from_.text(Keys::WS_BEFORE_DO_WHILE);
    OptionalText betweenEmptyForClauses = from_.text(Keys::WS_BETWEEN_EMPTY_FOR_CLAUSES);
    Keyed<bool> keepsRegionIndent = from_.isOn(Keys::KEEP_REGION_INDENT);
    Keyed<bool> keepsDirectiveComments = from_.isOn(Keys::KEEP_DIRECTIVE_COMMENTS);
    Keyed<bool> formatsDirectives = from_.isOn(Keys::FORMAT_DIRECTIVES);
    Keyed<bool> formatsConditions = from_.isOn(Keys::FORMAT_CONDITIONS);
    Keyed<bool> formatsMacroBodies = from_.isOn(Keys::FORMAT_MACRO_BODIES);
    OptionalText aroundPaste = from_.lineText(Keys::WS_AROUND_PASTE);
    OptionalText beforeFunctionQualifier = from_.text(Keys::WS_BEFORE_FN_QUALIFIER);
    OptionalText beforeEndedBody = from_.lineText(Keys::WS_BEFORE_ENDED_FN_BODY);
    OptionalText afterOperatorKeyword = from_.lineText(Keys::WS_AFTER_OPERATOR_KEY);
    OptionalText afterOperatorName = from_.lineText(Keys::WS_AFTER_OPERATOR_NAME);
    OptionalText beforeConvention = from_.lineText(Keys::WS_BEFORE_FN_CONVENTION);
    OptionalText beforeBracketedName = from_.lineText(Keys::WS_BEFORE_BRACKETED_NAME);
    OptionalText betweenDeclarators = from_.text(Keys::WS_BETWEEN_DECLARATORS);
    OptionalText beforeCastParen = from_.text(Keys::WS_BEFORE_CAST_OPEN_PAREN);
    OptionalText afterShortCallName = from_.text(Keys::WS_AFTER_SHORT_CALL_NAME);

    Keyed<int> mostBlankLines = from_.atLeast(Keys::MAX_BLANK_LINES, kAnyNumber);
    Keyed<bool> stripsLineEnds = from_.isOn(Keys::STRIP_TRAILING_WS);
    OptionalText beforeLineComment = from_.lineText(Keys::WS_BEFORE_LINE_COMMENT);
    Keyed<bool> alignsLineComments = from_.isOn(Keys::ALIGN_LINE_COMMENTS);
    Keyed<bool> alignsLists = from_.isOn(Keys::ALIGN_LIST_COLUMNS);
    Keyed<bool> alignsAssignments = from_.isOn(Keys::ALIGN_ASSIGNMENTS);

    Keyed<bool> indentsFromLine = from_.isOn(Keys::INDENT_FROM_LINE);
    OptionalText betweenStatements = from_.text(Keys::WS_BETWEEN_STATEMENTS);
    OptionalText beforeDeclaratorComma = from_.lineText(Keys::WS_BEFORE_DECLARATOR_COMMA);
    OptionalText betweenRowElements = from_.lineText(Keys::WS_BETWEEN_ROW_ELEMENTS);
    OptionalText inEmptyBraces = from_.lineText(Keys::WS_IN_EMPTY_BRACES);
    OptionalText inListBraces = from_.lineText(Keys::WS_IN_LIST_BRACES);
    OptionalText betweenCaptures = from_.lineText(Keys::WS_BETWEEN_CAPTURES);
    OptionalText beforeEllipsis = from_.lineText(Keys::WS_BEFORE_ELLIPSIS);
    Keyed<bool> formatsMacroCalls = from_.isOn(Keys::FORMAT_MACRO_CALLS);
    Keyed<bool> formatsLabels = from_.isOn(Keys::FORMAT_LABELS);
    Keyed<bool> formatsOtherGaps = from_.isOn(Keys::FORMAT_OTHER_GAPS);
    Keyed<bool> keepsUnaryBlanks = from_.isOn(Keys::KEEP_UNARY_BLANKS);
    OptionalText aroundBitFieldColon = from_.lineText(Keys::WS_AROUND_BITFIELD_COLON);
    OptionalText afterCast = from_.lineText(Keys::WS_AFTER_CAST);
    Keyed<bool> formatsTypeArguments = from_.isOn(Keys::FORMAT_TYPE_ARGUMENTS);
    OptionalText afterDeleteBrackets = from_.lineText(Keys::WS_AFTER_DELETE_BRACKETS);
    Keyed<bool> alignsDataOnly = from_.isOn(Keys::ALIGN_DATA_ONLY);

    Keyed<int> callArgumentStrategy = from_.number(Keys::CALL_ARGS_WRAP_STRATEGY, kAnyNumber);
    Keyed<int> expressionStrategy = from_.number(Keys::EXPR_WRAP_STRATEGY, kAnyNumber);
    Keyed<bool> breaksAsLastResort = from_.isOn(Keys::WRAP_LAST_RESORT);
    Keyed<bool> keepsPartsWhole = from_.isOn(Keys::WRAP_WHOLE_PARTS);
    Keyed<int> wrapWeighing = from_.number(Keys::WRAP_BY_WEIGHT);
    Keyed<bool> literalsMayRunOver = from_.isOn(Keys::LITERALS_BEYOND_MARGIN);
    // Whether the ways to break a text are weighed against each other as wholes.
    bool weighsWholes() const { return wrapWeighing > 0 && operandIndent.present && keepsLineBreaks; }
    // Lists of values stand close to their braces, and these to what they are the value of.
    bool closesLists() const { return inListBraces.present && inListBraces.text.empty(); }

    OptionalText beforeOperator = from_.text(Keys::WS_BEFORE_EXPR_OP);
};

}  // namespace Tessel
