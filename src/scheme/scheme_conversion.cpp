#include "scheme/scheme_conversion.h"

#include <string_view>
#include <vector>

#include "scheme/property_keys.h"
#include "textstream/string_escape.h"

namespace TesselUI {

namespace {

using Tessel::PropertySet;
namespace Keys = Tessel::Keys;

constexpr char ONE_READ_ONLY_SCHEME[] =
    "The scheme '%s' was created using a previous version of Vantrel C++. "
    "The file is marked read-only and so cannot be converted. "
    "Please ensure the file is read-write and run Vantrel C++ again. "
    "Once the scheme has been converted, the file can be set read-only again.";
constexpr char SEVERAL_READ_ONLY_SCHEMES[] =
    "The following schemes were created using a previous version of Vantrel C++:\r\n%s"
    "The files are read-only and so cannot be converted. "
    "Please ensure that the scheme files listed are read-write and run Vantrel C++ again. "
    "Once the schemes have been converted, the files can be set read-only again.";

bool hasString(const PropertySet& scheme, std::string_view key) {
    std::string value;
    return scheme.getString(key, value);
}

bool isOn(const PropertySet& scheme, std::string_view key) {
    bool value = false;
    return scheme.getBool(key, value) && value;
}

// Where the scheme has no string `from`, the copy is empty.
void copyString(PropertySet& scheme, std::string_view from, std::string_view to) {
    std::string value;
    scheme.getString(from, value);
    scheme.setString(to, value);
}

void renameString(PropertySet& scheme, std::string_view from, std::string_view to) {
    if (!hasString(scheme, from)) return;
    copyString(scheme, from, to);
    scheme.erase(from);
}

// Whatever the key's type was.
void replaceByString(PropertySet& scheme, std::string_view key, std::string_view source) {
    while (scheme.erase(key)) {
    }
    copyString(scheme, source, key);
}

// "One to a line" used to be a switch; it is a line break between the items now.
void convertAlignmentSwitches(PropertySet& scheme) {
    if (isOn(scheme, Keys::ALIGN_FN_PARAMS_LEFT)) scheme.setString(Keys::WS_BETWEEN_FN_PARAMS, "\n");
    if (isOn(scheme, Keys::ALIGN_CS_FOR_CLAUSES_LEFT))
        scheme.setString(Keys::WS_BETWEEN_CS_FOR_CLAUSES, "\n");
    for (const std::string_view key :
         {Keys::WS_AFTER_DD_NAME, Keys::ALIGN_FN_PARAMS_LEFT, Keys::ALIGN_FN_PARAMS_LEFT_ON_WRAP,
          Keys::ALIGN_CS_FOR_CLAUSES_LEFT, std::string_view("ALIGN_CS_FOR_CLAUSES_LEFT_ON_WRAP")}) {
        scheme.erase(key);
    }
}

void addLineWrapping(PropertySet& scheme) {
    scheme.setInt(Keys::LINE_WRAP_DO_NOT_FORMAT, 0);
    scheme.setBool(Keys::LINE_WRAP, false);
    scheme.setInt(Keys::RIGHT_MARGIN, 78);
    replaceByString(scheme, Keys::WRAP_INDENT, Keys::GLOBAL_INDENT_CONTENT);
    scheme.setInt(Keys::COMMA_WRAP_STYLE, 2);
    scheme.setInt(Keys::EXPR_WRAP_STYLE, 2);
    scheme.setInt(Keys::LIST_WRAP_STRATEGY, 1);
    scheme.setInt(Keys::SHIFT_WRAP_STYLE, 1);
    scheme.setInt(Keys::WRAP_STYLE, 1);
}

// Braces of initialisers used to be laid out like any other brace.
void addDataDeclarations(PropertySet& scheme) {
    scheme.setBool(Keys::DATA_DO_NOT_FORMAT, false);
    copyString(scheme, Keys::GLOBAL_WS_BEFORE_OPEN_BRACE, Keys::WS_BEFORE_DD_OPEN_BRACE);
    copyString(scheme, Keys::GLOBAL_WS_AFTER_OPEN_BRACE, Keys::WS_AFTER_DD_OPEN_BRACE);
    copyString(scheme, Keys::GLOBAL_WS_BEFORE_CLOSE_BRACE, Keys::WS_BEFORE_DD_CLOSE_BRACE);
    copyString(scheme, Keys::GLOBAL_INDENT_CONTENT, Keys::INDENT_DD_CONTENT);
    scheme.setString(Keys::WS_BETWEEN_DD_ELEMENTS, " ");
}

void addCommas(PropertySet& scheme) {
    for (const std::string_view key :
         {Keys::GLOBAL_WS_BEFORE_COMMA, Keys::WS_BEFORE_CLASS_INITS_COMMA, Keys::WS_BEFORE_DD_COMMA,
          Keys::WS_BEFORE_ENUM_COMMA, Keys::WS_BEFORE_FN_CALL_COMMA, Keys::WS_BEFORE_FN_COMMA,
          Keys::WS_BEFORE_TP_COMMA, Keys::WS_BEFORE_BASE_CLAUSES_COMMA}) {
        scheme.setString(key, "");
    }
}

// Calls used to be laid out like declarations.
void addCalls(PropertySet& scheme) {
    copyString(scheme, Keys::WS_AFTER_FN_NAME, Keys::WS_AFTER_FN_CALL_NAME);
    copyString(scheme, Keys::WS_BETWEEN_FN_PARAMS, Keys::WS_BETWEEN_FN_CALL_ARGS);
}

void renameKeys(PropertySet& scheme) {
    constexpr std::string_view oldTabSize = "SPACES_PER_TAB";
    int tabSize = 0;
    if (scheme.getInt(oldTabSize, tabSize)) {
        scheme.setInt(Keys::TAB_SIZE, tabSize);
        scheme.erase(oldTabSize);
    }
    renameString(scheme, "WS_AFTER_CLASS_HEAD", Keys::WS_BEFORE_CLASS_OPEN_BRACE);
    renameString(scheme, "WS_AFTER_NS_HEAD", Keys::WS_BEFORE_NS_OPEN_BRACE);
    renameString(scheme, "WS_AFTER_ENUM_HEAD", Keys::WS_BEFORE_ENUM_OPEN_BRACE);
    renameString(scheme, "WS_AFTER_FN_HEAD", Keys::WS_BEFORE_FN_OPEN_BRACE);
    renameString(scheme, "WS_AFTER_CS_HEAD", Keys::WS_BEFORE_CS_OPEN_BRACE);
}

std::string readOnlyMessage(const std::vector<std::string>& names) {
    if (names.empty()) return {};
    if (names.size() == 1) return Zelmor::formatString(ONE_READ_ONLY_SCHEME, names.front().c_str());
    std::string list;
    for (const std::string& name : names) list += name + "\r\n";
    return Zelmor::formatString(SEVERAL_READ_ONLY_SCHEMES, list.c_str());
}

}  // namespace

bool isOldScheme(const PropertySet& scheme) {
    return !hasString(scheme, Keys::VANTREL_VERSION);
}

// In this order: the copies for calls take what the alignment switches have set.
void convertScheme(PropertySet& scheme) {
    convertAlignmentSwitches(scheme);
    addLineWrapping(scheme);
    addDataDeclarations(scheme);
    addCommas(scheme);
    addCalls(scheme);
    renameKeys(scheme);
    scheme.setString(Keys::VANTREL_VERSION, CURRENT_VERSION);
}

std::string convertSchemes(PropertySetStore& store) {
    bool changed = false;
    std::vector<std::string> readOnlyNames;
    for (PropertySetStore::Entry& entry : store) {
        if (!isOldScheme(entry.scheme)) continue;
        if (entry.readOnly) {
            readOnlyNames.push_back(entry.scheme.getName());
            continue;
        }
        convertScheme(entry.scheme);
        changed = true;
    }
    if (changed) store.write();
    return readOnlyMessage(readOnlyNames);
}

}  // namespace TesselUI
