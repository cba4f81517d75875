#include "engine/list_commas.h"

#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

// The switches that line elements up have each begin a line.
OptionalText behindComma(const PropertySet& scheme, KeyId alignment, KeyId key) {
    return readSwitch(scheme, alignment) ? OptionalText{true, "\n", alignment} : readText(scheme, key);
}

}  // namespace

ListCommas::ListCommas(const PropertySet& scheme, const ExtensionSettings& extensions)
    : parameters{readText(scheme, Keys::WS_BEFORE_FN_COMMA),
                 behindComma(scheme, Keys::ALIGN_FN_PARAMS_LEFT, Keys::WS_BETWEEN_FN_PARAMS)},
      templateParameters{readText(scheme, Keys::WS_BEFORE_TP_COMMA),
                         behindComma(scheme, Keys::ALIGN_TP_PARAMS_LEFT, Keys::WS_BETWEEN_TP_PARAMS)},
      baseClauses{readText(scheme, Keys::WS_BEFORE_BASE_CLAUSES_COMMA),
                  behindComma(scheme, Keys::ALIGN_BASE_CLAUSES_LEFT, Keys::WS_BETWEEN_BASE_CLAUSES)},
      initializers{readText(scheme, Keys::WS_BEFORE_CLASS_INITS_COMMA), readText(scheme, Keys::WS_BETWEEN_CLASS_INITS)},
      enumerators{readText(scheme, Keys::WS_BEFORE_ENUM_COMMA), readText(scheme, Keys::WS_BETWEEN_ENUM_ELEMENTS)},
      callArguments{readText(scheme, Keys::WS_BEFORE_FN_CALL_COMMA),
                    behindComma(scheme, Keys::ALIGN_FN_CALL_ARGS_LEFT, Keys::WS_BETWEEN_FN_CALL_ARGS)},
      templateArguments{kAsInInput, readText(scheme, Keys::WS_BETWEEN_TP_PARAMS)},
      elements{readText(scheme, Keys::WS_BEFORE_DD_COMMA), readText(scheme, Keys::WS_BETWEEN_DD_ELEMENTS)},
      rowElements{elements.before, extensions.betweenRowElements},
      innerElements{kAsInInput, rowElements.behind},
      captures{kAsInInput, extensions.betweenCaptures},
      declarators{firstPresent(extensions.beforeDeclaratorComma, elements.before),
                  firstPresent(extensions.betweenDeclarators, elements.behind)} {}

}  // namespace Tessel
