#include "case_file.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "format_text.h"
#include "scheme/known_keys.h"
#include "textstream/string_escape.h"

namespace TestSupport {

namespace {

using Tessel::PropertyType;

// Behind "<<<": the input comes back.
constexpr std::string_view kStays = " as it is";

Tessel::PropertySet defaultScheme() {
    Tessel::PropertySet scheme("cases");
    scheme.setString(Tessel::Keys::VANTREL_VERSION, "1.2.1");
    scheme.setString(Tessel::Keys::LEFT_MARGIN, "");
    return scheme;
}

// The words of a line of settings; a word ends at a blank outside of quotes.
std::vector<std::string> wordsOf(std::string_view line) {
    std::vector<std::string> words;
    std::string word;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\' && quoted && i + 1 < line.size()) {
            word += line[i++];
            word += line[i];
        } else if (line[i] == ' ' && !quoted) {
            if (!word.empty()) words.push_back(std::move(word));
            word.clear();
        } else {
            if (line[i] == '"') quoted = !quoted;
            word += line[i];
        }
    }
    if (!word.empty()) words.push_back(std::move(word));
    return words;
}

std::string nameFrom(const std::string& text) {
    std::string name;
    for (const char c : text) {
        const bool isLetter = std::isalnum(static_cast<unsigned char>(c)) != 0;
        if (isLetter) {
            name += c;
        } else if (!name.empty() && name.back() != '_') {
            name += '_';
        }
    }
    while (!name.empty() && name.back() == '_') name.pop_back();
    return name;
}

class CaseReader {
public:
    explicit CaseReader(const std::string& path)
        : file_(std::filesystem::path(path).stem().string()), in_(contentOfFile(path)) {}

    std::vector<FormatCase> read() {
        Tessel::PropertySet scheme = defaultScheme();
        nextLine();
        while (line_ && !line_->starts_with(">>>")) {
            readHeaderLine(scheme, *line_);
            nextLine();
        }
        while (line_) readTitled(scheme);
        return std::move(cases_);
    }

private:
    void readTitled(const Tessel::PropertySet& fileScheme) {
        const std::string title = line_->substr(3);
        FormatCase common;
        common.scheme = fileScheme;
        nextLine();
        while (line_ && readHeaderLine(common.scheme, *line_)) {
            if (line_->starts_with("#once")) common.checksSecondRun = false;
            nextLine();
        }
        common.input = readText();
        if (!line_ || !line_->starts_with("<<<")) fail("A case without \"<<<\"");
        while (line_ && line_->starts_with("<<<")) {
            FormatCase variant = common;
            variant.place = file_ + ".txt:" + std::to_string(number_);
            variant.name = uniqueName(nameFrom(file_ + ' ' + title));
            std::string_view settings = std::string_view(*line_).substr(3);
            const bool stays = settings.starts_with(kStays);
            if (stays) settings.remove_prefix(kStays.size());
            if (settings.starts_with(" #")) {
                readHeaderLine(variant.scheme, std::string(settings.substr(1)));
            } else {
                applySettings(variant.scheme, settings);
            }
            nextLine();
            variant.expected = readText();
            if (stays && !std::ranges::all_of(variant.expected, [](char c) { return c == '\n'; })) fail("Two results");
            if (stays) variant.expected = common.input;
            cases_.push_back(std::move(variant));
        }
    }

    // True when the line belongs to the head of a case.
    bool readHeaderLine(Tessel::PropertySet& scheme, const std::string& line) const {
        if (line.starts_with("#base ")) {
            scheme = shippedScheme(line.substr(6));
        } else if (line.starts_with("#scheme ")) {
            applySettings(scheme, std::string_view(line).substr(8));
        } else {
            return line.starts_with("#once ");
        }
        return true;
    }

    // The lines up to the next mark. A blank line before a title is there for the reader.
    std::string readText() {
        std::string text;
        while (line_ && !line_->starts_with(">>>") && !line_->starts_with("<<<")) {
            text += *line_ + '\n';
            nextLine();
        }
        const bool isLast = !line_ || line_->starts_with(">>>");
        if (isLast && text.ends_with("\n\n")) text.pop_back();
        return text;
    }

    void applySettings(Tessel::PropertySet& scheme, std::string_view settings) const {
        for (const std::string& word : wordsOf(settings)) {
            const std::size_t equals = word.find('=');
            if (word[0] == '-') {
                requireKey(word.substr(1));
                scheme.erase(word.substr(1));
            } else if (equals == std::string::npos) {
                fail("No setting: " + word);
            } else {
                set(scheme, word.substr(0, equals), word.substr(equals + 1));
            }
        }
    }

    void set(Tessel::PropertySet& scheme, const std::string& key, const std::string& value) const {
        if (value == "true" || value == "false") {
            requireKey(key, PropertyType::Boolean);
            scheme.setBool(key, value == "true");
        } else if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
            requireKey(key, PropertyType::String);
            std::string text = value.substr(1, value.size() - 2);
            Zelmor::unescape(text);
            scheme.setString(key, text);
        } else {
            requireKey(key, PropertyType::Integer);
            scheme.setInt(key, std::stoi(value));
        }
    }

    // A misspelt key would leave a case that tests nothing.
    void requireKey(const std::string& key, std::optional<PropertyType> type = {}) const {
        if (!Tessel::Keys::isKnown(key)) fail("No such key: " + key);
        if (type && Tessel::Keys::typeOf(key) != *type) fail("No such value for " + key);
    }

    std::string uniqueName(const std::string& name) {
        const int count = ++uses_[name];
        return count == 1 ? name : name + '_' + std::to_string(count);
    }

    void nextLine() {
        std::string text;
        line_ = std::getline(in_, text) ? std::optional(text) : std::nullopt;
        ++number_;
    }

    [[noreturn]] void fail(const std::string& problem) const {
        throw std::runtime_error(file_ + ".txt:" + std::to_string(number_) + ": " + problem);
    }

    std::string file_;
    std::istringstream in_;
    std::optional<std::string> line_;
    int number_ = 0;
    std::map<std::string, int> uses_;
    std::vector<FormatCase> cases_;
};

}  // namespace

std::vector<FormatCase> readCaseFile(const std::string& path) {
    return CaseReader(path).read();
}

}  // namespace TestSupport
