#include "scheme/scheme_lint.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "scheme/key_guide.h"
#include "scheme/known_keys.h"
#include "scheme/property_set.h"
#include "scheme/scheme_check.h"
#include "scheme/scheme_conversion.h"
#include "textstream/byte_order_mark.h"

namespace TesselUI {

namespace {

using Tessel::Property;
using Tessel::PropertyType;
namespace Keys = Tessel::Keys;

const char* typeName(PropertyType type) {
    switch (type) {
        case PropertyType::Boolean: return "1 (switch)";
        case PropertyType::Integer: return "2 (number)";
        case PropertyType::String: return "3 (text)";
    }
    return "";
}

std::string unknownKey(const std::string& key) {
    const std::string_view meant = Tessel::nearestKey(key);
    return "unknown key " + key + (meant.empty() ? "" : "; is " + std::string(meant) + " meant?");
}

// What is wrong with a line that can be read; empty when nothing is.
std::string faultOf(const Property& property) {
    if (!Keys::isKnown(property.key)) return unknownKey(property.key);
    const PropertyType expected = Keys::typeOf(property.key);
    if (property.type() != expected) {
        return property.key + " has the type " + typeName(expected) + ": with another it acts as absent";
    }
    if (const int* number = std::get_if<int>(&property.value)) {
        const Tessel::NumberRange range = Tessel::numberRange(property.key);
        if (!range.contains(*number)) {
            return property.key + " is " + std::to_string(*number) + ": values are from " +
                   std::to_string(range.lowest) + " to " + std::to_string(range.highest);
        }
    }
    Tessel::PropertySet alone("alone");
    alone.set(property);
    const auto unusable = findUnusableText(alone);
    return unusable ? unusable->key + ' ' + unusable->problem : "";
}

class SchemeReader {
public:
    void take(std::size_t line, std::string_view text) {
        if (++lines_ <= Tessel::kSchemeHeadLines) return;
        const Tessel::PropertyLine content = Tessel::readPropertyLine(text);
        if (!content.property) return add(line, "neither a comment nor a property: type, key, value");
        const Property& property = *content.property;
        const std::string fault = faultOf(property);
        if (!fault.empty()) add(line, fault);
        const auto [first, isNew] = lineOf_.emplace(property.key, line);
        if (!isNew) add(line, property.key + " stands in line " + std::to_string(first->second) + " already");
    }

    std::vector<SchemeFault> result() {
        if (!lineOf_.contains(Keys::VANTREL_VERSION)) {
            add(0, "there is no " + std::string(Keys::VANTREL_VERSION) + ": the scheme is taken for one of version "
                   "1.1.0, and converted; \"vantrel scheme upgrade FILE\" does so once for all");
        }
        return std::move(faults_);
    }

private:
    void add(std::size_t line, std::string text) { faults_.push_back({line, std::move(text)}); }

    int lines_ = 0;
    std::map<std::string, std::size_t, std::less<>> lineOf_;
    std::vector<SchemeFault> faults_;
};

}  // namespace

std::vector<SchemeFault> lintScheme(std::string_view text) {
    std::istringstream in{std::string(text)};
    if (const Tessel::PropertySet scheme(in); in.fail()) {
        return {{0, "this is no scheme: it has to begin with the lines \"Tessel::PropertySet\", \"1\" and a name, and "
                    "each further line with the type of its property"}};
    }
    SchemeReader reader;
    if (text.starts_with(Zelmor::BYTE_ORDER_MARK)) text.remove_prefix(Zelmor::BYTE_ORDER_MARK.size());
    for (std::size_t line = 1; !text.empty(); ++line) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        const std::string_view content = Tessel::significantPart(text.substr(0, length));
        if (!content.empty()) reader.take(line, content);
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return reader.result();
}

}  // namespace TesselUI
