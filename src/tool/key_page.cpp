#include "tool/key_page.h"

#include <list>
#include <limits>
#include <utility>
#include <vector>

#include "engine/format_options.h"
#include "run/format_text.h"
#include "scheme/extension_keys.h"
#include "scheme/property_set.h"
#include "tool/escape.h"
#include "tool/html_page.h"

namespace Tool {

namespace {

using Tessel::KeyGuide;
using Tessel::Property;
using Tessel::PropertyType;

constexpr std::string_view introduction =
    "A text is the white space to write at one place: \"\\n\" for a line break, \" \" for a blank, \"\" for nothing at "
    "all. A key that is absent leaves its place as it is; a switch that is absent is off.";

// What the example looks like with and without the key.
struct Example {
    std::string lines;  // of the scheme
    std::string without;
    std::string with;
};

std::string formatted(const KeyGuide& guide, bool hasKey) {
    Tessel::PropertySet scheme(guide.key());
    for (const Property& property : guide.base) scheme.set(property);
    if (hasKey) scheme.set(guide.shown);
    const Run::FormattedText result =
        Run::formatText({std::move(scheme), Tessel::protectedRegionMarkers()}, guide.source);
    return result.messages.empty() ? result.text : "refused: " + result.messages.front().text + '\n';
}

Example exampleOf(const KeyGuide& guide) {
    Example example;
    for (const Property& property : guide.base) example.lines += Tessel::propertyLine(property) + '\n';
    example.lines += Tessel::propertyLine(guide.shown) + '\n';
    example.without = formatted(guide, false);
    example.with = formatted(guide, true);
    return example;
}

std::string typeText(const KeyGuide& guide) {
    switch (guide.shown.type()) {
        case PropertyType::Boolean: return "switch (1): 0 or 1";
        case PropertyType::String: return "text (3)";
        case PropertyType::Integer: break;
    }
    const Tessel::NumberRange range = Tessel::numberRange(guide.key());
    if (range.lowest == std::numeric_limits<int>::min()) return "number (2)";
    const bool isOpen = range.highest == std::numeric_limits<int>::max();
    return "number (2): from " + std::to_string(range.lowest) + (isOpen ? "" : " to " + std::to_string(range.highest));
}

const char* shortType(const KeyGuide& guide) {
    switch (guide.shown.type()) {
        case PropertyType::Boolean: return "switch";
        case PropertyType::Integer: return "number";
        case PropertyType::String: break;
    }
    return "text";
}

std::string origin(const KeyGuide& guide) {
    return Tessel::Keys::findExtension(guide.key()) ? ", extension" : "";
}

std::string indented(const std::string& text) {
    std::string result;
    bool startsLine = true;
    for (const char c : text) {
        if (startsLine && c != '\n') result += "    ";
        result += c;
        startsLine = c == '\n';
    }
    return result;
}

std::string wrapped(const std::string& text, std::size_t indent, std::size_t width) {
    std::string result;
    std::size_t column = indent;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        if (column > indent && column + 1 + end - start > width) {
            result += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            result += ' ';
            ++column;
        }
        result += text.substr(start, end - start);
        column += end - start;
        start = end + 1;
    }
    return result;
}

// Calls back for each group and for each key in it.
template <typename ForGroup, typename ForKey>
void walkKeys(ForGroup forGroup, ForKey forKey) {
    for (const Tessel::KeyGroup group : Tessel::keyGroups()) {
        forGroup(std::string(Tessel::groupTitle(group)), std::string(Tessel::groupIntroduction(group)));
        for (const KeyGuide& guide : Tessel::keyGuides()) {
            if (guide.group == group) forKey(guide);
        }
    }
}

}  // namespace

std::string keyList() {
    constexpr std::size_t meaningColumn = 8;
    constexpr std::size_t width = 100;
    std::string text;
    const auto addTitle = [&text](const std::string& title, const std::string&) {
        if (!text.empty()) text += '\n';
        text += title + '\n';
    };
    walkKeys(addTitle,
             [&](const KeyGuide& guide) {
                 text += "    " + guide.key() + " (" + shortType(guide) + origin(guide) + ")\n" +
                         std::string(meaningColumn, ' ') + wrapped(guide.meaning, meaningColumn, width) + '\n';
             });
    return text + "\nvantrel keys KEY tells more of one, with an example.\n";
}

std::string keyText(const KeyGuide& guide) {
    std::string text = guide.key() + "\n    " + wrapped(guide.meaning, 4, 100) + "\n\nType: " + typeText(guide) +
                       origin(guide) + '\n';
    if (guide.source.empty()) return text + "A line of it: " + Tessel::propertyLine(guide.shown) + '\n';
    const Example example = exampleOf(guide);
    return text + "\nWith a scheme that holds\n\n" + indented(example.lines) + "\nthis comes out as\n\n" +
           indented(example.with) + "\nand without the " + (guide.base.empty() ? "line" : "last line") + " as\n\n" +
           indented(example.without);
}

std::string keyPageMarkdown() {
    std::string text =
        "# The keys of schemes\n\n<!-- Made by \"vantrel keys --markdown\" from the guide to the keys. -->\n\n" +
        wrapped(std::string(introduction), 0, 120) + '\n';
    const auto addTitle = [&text](const std::string& title, const std::string& about) {
        text += "\n## " + title + '\n';
        if (!about.empty()) text += '\n' + wrapped(about, 0, 120) + '\n';
    };
    walkKeys(addTitle,
             [&](const KeyGuide& guide) {
                 text += "\n### " + guide.key() + "\n\n" + wrapped(guide.meaning, 0, 120) + "\n\nType: " +
                         typeText(guide) + origin(guide) + ".\n";
                 if (guide.source.empty()) return;
                 const Example example = exampleOf(guide);
                 text += "\n```\n" + example.lines + "```\n\nwithout:\n\n```cpp\n" + example.without +
                         "```\n\nwith:\n\n```cpp\n" + example.with + "```\n";
             });
    return text;
}

std::string keyPageHtml() {
    constexpr std::string_view style =
        "body { font: 16px/1.5 sans-serif; max-width: 60em; margin: 2em auto; padding: 0 1em; }\n"
        "pre { background: #f4f4f4; padding: 0.6em; overflow-x: auto; }\n"
        ".pair { display: grid; grid-template-columns: 1fr 1fr; gap: 1em; }\n";
    std::string text = "<p>" + markup(introduction) + "</p>\n";
    const auto addTitle = [&text](const std::string& title, const std::string& about) {
        text += "<h2>" + markup(title) + "</h2>\n<p>" + markup(about) + "</p>\n";
    };
    walkKeys(addTitle,
             [&](const KeyGuide& guide) {
                 text += "<h3 id=\"" + guide.key() + "\">" + guide.key() + "</h3>\n<p>" + markup(guide.meaning) +
                         "</p>\n<p>Type: " + typeText(guide) + origin(guide) + ".</p>\n";
                 if (guide.source.empty()) return;
                 const Example example = exampleOf(guide);
                 text += "<pre>" + markup(example.lines) + "</pre>\n<div class=\"pair\">\n<div>without<pre>" +
                         markup(example.without) + "</pre></div>\n<div>with<pre>" + markup(example.with) +
                         "</pre></div>\n</div>\n";
             });
    return htmlPage("The keys of schemes", style, text);
}

}  // namespace Tool
