#include "tool/learn_page.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "files/read_file.h"
#include "scheme/key_guide.h"
#include "tool/escape.h"
#include "tool/html_page.h"

namespace Tool {

namespace {

using Learn::Decision;

constexpr std::string_view kStyle =
    "body { font: 16px/1.5 sans-serif; max-width: 70em; margin: 2em auto; padding: 0 1em; color: #222; }\n"
    "table { border-collapse: collapse; width: 100%; }\n"
    "td, th { text-align: left; padding: 0.15em 0.6em; border-bottom: 1px solid #ddd; }\n"
    "td.number { text-align: right; white-space: nowrap; }\n"
    "code, pre { font: 14px/1.4 monospace; white-space: pre; }\n"
    "pre { background: #f4f4f4; padding: 0.6em; overflow-x: auto; margin: 0.3em 0 1em; }\n"
    ".bar { background: #e4e4e4; width: 10em; height: 0.8em; }\n"
    ".bar div { background: #2a7f62; height: 100%; }\n"
    ".open .bar div { background: #c4622d; }\n";

constexpr std::string_view kCopy =
    "<button onclick=\"getSelection().selectAllChildren(document.getElementById('scheme'));"
    "navigator.clipboard.writeText(document.getElementById('scheme').textContent)\">Copy</button>\n";

// Lines of the files that were learned from, each file read once.
class SourceLines {
public:
    explicit SourceLines(const std::vector<std::string>& names) : names_(names) {}

    // The line, and the one in front of it where white space is about where it begins.
    std::string around(const Learn::Place& place) {
        const std::string& text = textOf(place.file);
        std::string lines;
        std::size_t start = 0;
        for (std::uint32_t line = 1; line <= place.line && start < text.size(); ++line) {
            const std::size_t end = std::min(text.find('\n', start), text.size());
            if (line + 1 >= place.line) lines += cut(text.substr(start, end - start)) + '\n';
            start = end + 1;
        }
        return lines;
    }

private:
    static constexpr std::size_t kWidest = 160;

    // Not within a character of UTF-8.
    static std::string cut(std::string line) {
        constexpr unsigned char continues = 0x80, continuesMask = 0xC0;
        if (line.size() <= kWidest) return line;
        std::size_t length = kWidest;
        while (length > 0 && (static_cast<unsigned char>(line[length]) & continuesMask) == continues) --length;
        line.resize(length);
        return line;
    }

    const std::string& textOf(std::size_t file) {
        const auto [entry, isNew] = texts_.try_emplace(file);
        if (!isNew) return entry->second;
        try {
            entry->second = Files::readFile(names_[file]).text;
        } catch (const Files::ReadFailure&) {
            entry->second.clear();  // it is gone by now: there is nothing to show
        }
        return entry->second;
    }

    const std::vector<std::string>& names_;
    std::map<std::size_t, std::string> texts_;
};

class Page {
public:
    explicit Page(const LearnReport& report) : report_(report), lines_(*report.fileNames) {}

    std::string text() && {
        text_ = "<p>From " + withThousands(report_.files) + " files, " + withThousands(report_.lines) +
                " lines. The scheme would still change " + changedPerHundred(report_) + " lines of 100.</p>\n";
        addOpen();
        for (const Tessel::KeyGroup group : Tessel::keyGroups()) addGroup(group);
        text_ += "<h2>The scheme</h2>\n" + std::string(kCopy) + "<pre id=\"scheme\">" +
                 markup(learnedSchemeText(report_)) + "</pre>\n";
        return htmlPage("A style, learned", kStyle, text_);
    }

private:
    const Decision& decisionOf(std::string_view key) const {
        return report_.learned.decisions[Tessel::KeyId::find(key).place()];
    }

    void addOpen() {
        text_ += "<h2>Left open</h2>\n"
                 "<p>The places of these keys do not agree, so that the scheme leaves them alone.</p>\n";
        for (const Decision& decision : report_.learned.decisions) {
            if (decision.origin == Learn::Origin::Disputed) addSides(decision);
        }
    }

    void addSides(const Decision& decision) {
        constexpr std::size_t sides = 3;
        const Tessel::KeyGuide* const guide = Tessel::findKeyGuide(decision.key.name());
        text_ += "<h3>" + std::string(decision.key.name()) + "</h3>\n<p>" + markup(guide ? guide->meaning : "") +
                 "</p>\n";
        for (std::size_t i = 0; i < std::min(decision.sightings.size(), sides); ++i) {
            const Learn::Sighting& sighting = decision.sightings[i];
            const Learn::Place& place = sighting.found.first;
            text_ += "<div><code>" + markup(Tessel::valueText(sighting.value)) + "</code> in " +
                     percentText(sighting.found.count, decision.sightingCount()) + " of " +
                     withThousands(decision.sightingCount()) + ", as in " +
                     markup((*report_.fileNames)[place.file]) + ':' + std::to_string(place.line) + "</div>\n<pre>" +
                     markup(lines_.around(place)) + "</pre>\n";
        }
    }

    void addGroup(Tessel::KeyGroup group) {
        std::string rows;
        for (const Tessel::KeyGuide& guide : Tessel::keyGuides()) {
            if (guide.group == group) rows += row(guide, decisionOf(guide.key()));
        }
        if (rows.empty()) return;
        text_ += "<h2>" + markup(Tessel::groupTitle(group)) +
                 "</h2>\n<table>\n<tr><th>Key</th><th>Value</th><th>Agreement</th><th></th><th>Why</th></tr>\n" + rows +
                 "</table>\n";
    }

    std::string row(const Tessel::KeyGuide& guide, const Decision& decision) const {
        const bool isOpen = decision.origin == Learn::Origin::Disputed;
        const bool isTold = isOpen || decision.origin == Learn::Origin::Found;
        if (!isOpen && !decision.value) return {};
        const std::string value = decision.value ? Tessel::valueText(*decision.value) : "open";
        const std::string share = percentText(decision.agreeing, decision.places);
        const std::string bar = isTold ? "<div class=\"bar\"><div style=\"width: " + share.substr(0, share.find(' ')) +
                                             "%\"></div></div>"
                                       : std::string();
        return std::string("<tr") + (isOpen ? " class=\"open\"" : "") + "><td title=\"" + markup(guide.meaning) +
               "\">" + guide.key() + "</td><td><code>" + markup(value) + "</code></td><td>" + bar +
               "</td><td class=\"number\">" + (isTold ? share : "") + "</td><td>" +
               (isTold ? withThousands(decision.places) + " places" : markup(reasonText(decision))) + "</td></tr>\n";
    }

    const LearnReport& report_;
    SourceLines lines_;
    std::string text_;
};

}  // namespace

std::string learnPage(const LearnReport& report) {
    return Page(report).text();
}

}  // namespace Tool
