#include "scheme/scheme_text.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include "scheme/property_line.h"
#include "textstream/byte_order_mark.h"

namespace TesselUI {

namespace {

using Tessel::Property;
using Tessel::PropertySet;

constexpr std::size_t HEAD_LINES =
    3;  // what says that this is a scheme, the form's version, the scheme's name

std::optional<PropertySet> parse(std::string_view text) {
    std::istringstream in{std::string(text)};
    PropertySet scheme(in);
    if (in.fail()) return std::nullopt;
    return scheme;
}

std::string written(const PropertySet& scheme) {
    std::ostringstream out;
    scheme.write(out);
    return std::move(out).str();
}

// The lines, each with its line end.
std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

// The index of the first line behind the head.
std::size_t endOfHead(const std::vector<std::string>& lines) {
    std::size_t seen = 0;
    std::size_t line = 0;
    while (line < lines.size() && seen < HEAD_LINES) seen += !Tessel::significantPart(lines[line++]).empty();
    return line;
}

// What `changed` has and `former` has not, in the order of its lines.
std::vector<Property> newProperties(const PropertySet& former, const PropertySet& changed) {
    const std::vector<Property> before = former.properties();
    const std::vector<Property> after = changed.properties();
    std::vector<Property> added;
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(), std::back_inserter(added),
                        Tessel::comesBefore);
    return added;
}

// Goes through a file's lines from the last to the first: a new property has its place behind the first line
// met that is to stand before it.
class BackwardUpdate {
public:
    BackwardUpdate(const PropertySet& former, const PropertySet& changed, std::string lineEnd)
        : properties_(changed.properties()),
          added_(newProperties(former, changed)),
          lineEnd_(std::move(lineEnd)) {}

    void takeLine(std::string line) {
        const std::optional<Property> property =
            Tessel::readPropertyLine(Tessel::significantPart(line)).property;
        if (!property) return lines_.push_back(std::move(line));
        while (!added_.empty() && Tessel::comesBefore(*property, added_.back())) putLastAdded();
        const auto current =
            std::lower_bound(properties_.begin(), properties_.end(), *property, Tessel::comesBefore);
        const bool isErased = current == properties_.end() || Tessel::comesBefore(*property, *current);
        if (isErased) return;
        lines_.push_back(*current == *property ? std::move(line) : newLine(*current));
    }

    void takeHeadLine(std::string line) {
        while (!added_.empty()) putLastAdded();
        lines_.push_back(std::move(line));
    }

    std::string text() const {
        std::string text;
        for (auto line = lines_.rbegin(); line != lines_.rend(); ++line) text += *line;
        return text;
    }

private:
    std::string newLine(const Property& property) const { return Tessel::propertyLine(property) + lineEnd_; }

    void putLastAdded() {
        lines_.push_back(newLine(added_.back()));
        added_.pop_back();
    }

    std::vector<Property> properties_;
    std::vector<Property> added_;
    std::string lineEnd_;
    std::vector<std::string> lines_;  // the result, the last line first
};

}  // namespace

std::string updatedSchemeText(std::string_view text, const PropertySet& scheme) {
    const std::optional<PropertySet> former = parse(text);
    if (!former || former->getName() != scheme.getName()) return written(scheme);
    if (*former == scheme) return std::string(text);

    const std::string_view mark = text.starts_with(Zelmor::BYTE_ORDER_MARK) ? Zelmor::BYTE_ORDER_MARK : "";
    std::vector<std::string> lines = linesOf(text.substr(mark.size()));
    const std::string lineEnd = lines.front().ends_with("\r\n") ? "\r\n" : "\n";
    if (!lines.back().ends_with('\n')) lines.back() += lineEnd;

    const std::size_t firstProperty = endOfHead(lines);
    BackwardUpdate update(*former, scheme, lineEnd);
    for (std::size_t line = lines.size(); line-- > firstProperty;) update.takeLine(std::move(lines[line]));
    for (std::size_t line = firstProperty; line-- > 0;) update.takeHeadLine(std::move(lines[line]));
    return std::string(mark) + update.text();
}

}  // namespace TesselUI
