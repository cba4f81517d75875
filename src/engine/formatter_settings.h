#pragma once

#include "engine/extension_settings.h"
#include "engine/list_commas.h"
#include "scheme/property_set.h"

namespace Tessel {

// How a body in braces is laid out.
struct BraceSettings {
    OptionalText beforeOpen;
    OptionalText afterOpen;
    OptionalText indent;
    OptionalText beforeClose;
    bool keepsBlankLines = false;  // those behind "{" and in front of "}"
};

// The scheme's values for the formatter's rules.
struct FormatterSettings : ExtensionSettings {
    explicit FormatterSettings(const PropertySet& scheme);

    const OptionalText& indentOfBody(bool isBraced) const {
        return isBraced ? statements.indent : firstPresent(singleIndent, statements.indent);
    }

    // Whether the scheme has anything to say about the lines that control statements are made of.
    bool laysOutStatements() const;

    OptionalText leftMargin;
    ListCommas commas;

    BraceSettings global;
    BraceSettings linkage;
    BraceSettings namespaces;
    BraceSettings classes;
    BraceSettings functions;
    BraceSettings statements;
    BraceSettings enums;

    OptionalText afterClassName;
    OptionalText beforeBaseClauses;
    OptionalText beforeAccessLabel;
    OptionalText accessLabelIndent;
    OptionalText beforeInitializerList;
    OptionalText beforeInitializers;
    OptionalText afterInitializerList;

    OptionalText afterDeclarationReturnType;
    OptionalText afterDefinitionReturnType;
    bool keepsBlankLinesBetweenParts = false;
    bool keepsBlankLinesInFront = false;
    OptionalText afterFunctionName;
    OptionalText afterParameterOpen;
    OptionalText beforeParameterClose;
    OptionalText afterParameterType;

    OptionalText afterDataType;
    OptionalText afterDataName;
    OptionalText afterDataBracket;
    OptionalText afterCallName;

    OptionalText beforeTemplateOpen;
    OptionalText afterTemplateOpen;
    OptionalText beforeTemplateClose;
    OptionalText afterTemplateClose;

    OptionalText afterControlKeyword;
    OptionalText afterControlOpenParen;
    OptionalText beforeControlCloseParen;
    OptionalText betweenControlParts;
    OptionalText betweenForClauses;
    OptionalText caseIndent;
    OptionalText caseContentIndent;
    OptionalText afterCaseLabel;

    int wrapMargin;     // 0 where no line is too long
    int joiningMargin;  // of lines that come of several
    Keyed<bool> alignsForClauses;
    Keyed<bool> alignsDataNames;
    Keyed<bool> alignsDataInitializers;
    Keyed<bool> alignsFunctionNames;
    Keyed<bool> alignsMemberNames;
    Keyed<bool> alignsEnumInitializers;
    Keyed<bool> keepsData;       // DATA_DO_NOT_FORMAT
    Keyed<bool> keepsFunctions;  // FN_DO_NOT_FORMAT
};

}  // namespace Tessel
