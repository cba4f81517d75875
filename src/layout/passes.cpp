#include "layout/passes.h"

#include "engine/scheme_values.h"
#include "layout/cpp_line_wrapper.h"
#include "layout/data_offset_calculator.h"
#include "layout/long_lines.h"
#include "layout/name_offset_calculator.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

bool alignsNames(const PropertySet& scheme) {
    return readSwitch(scheme, Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT) ||
           readSwitch(scheme, Keys::ALIGN_FN_DECL_NAMES_LEFT) || readSwitch(scheme, Keys::ALIGN_DD_NAMES_LEFT);
}

bool alignsInitializers(const PropertySet& scheme) { return readSwitch(scheme, Keys::ALIGN_DD_INITIALIZERS); }

}  // namespace

DeclarationColumns Passes::measure(const PropertySet& scheme, const Zelmor::TextDocument& source,
                                   Cpp::RootNode& root) const {
    DeclarationColumns columns;
    if (alignsNames(scheme)) {
        NameOffsetCalculator calculator(scheme, source);
        root.accept(calculator);
        columns.dataNames = calculator.takeDataOffsets();
        columns.functionNames = calculator.takeFunctionOffsets();
    }
    if (alignsInitializers(scheme)) {
        DataOffsetCalculator calculator(scheme, source);
        root.accept(calculator);
        columns.initializers = calculator.takeOffsets();
    }
    return columns;
}

bool Passes::alignsDeclarations(const PropertySet& scheme) const {
    return alignsNames(scheme) || alignsInitializers(scheme);
}

bool Passes::hasLongLines(const FormatOptions& options, std::string_view formatted) const {
    const WrapSettings settings(options.scheme);
    return LongLines(formatted, settings).next() != 0;
}

std::string Passes::wrapLines(const FormatOptions& options, const Zelmor::TextDocument& formatted,
                              Cpp::RootNode& root) const {
    CppLineWrapper wrapper(options, formatted);
    root.accept(wrapper);
    return wrapper.takeText();
}

}  // namespace Tessel
