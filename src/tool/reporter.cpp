#include "tool/reporter.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "edits/changed_lines.h"
#include "edits/unified_diff.h"
#include "scheme/scheme_conversion.h"
#include "tool/escape.h"

namespace Tool {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t shownMessages = 10;  // of one file, where people read
constexpr std::size_t shownColumns = 160;
constexpr const char* notFormatted = "not laid out as the scheme says";

const char* severityName(Message::Severity severity) {
    switch (severity) {
        case Message::Severity::Note: return "note";
        case Message::Severity::Warning: return "warning";
        case Message::Severity::Error: break;
    }
    return "error";
}

const char* outcomeName(Outcome outcome) {
    switch (outcome) {
        case Outcome::Unchanged: return "unchanged";
        case Outcome::Changed: return "changed";
        case Outcome::Refused: return "refused";
        case Outcome::Failed: break;
    }
    return "failed";
}

std::string place(const std::string& file, const Message& message) {
    std::string text = file;
    if (message.line > 0) text += ':' + std::to_string(message.line) + ':' + std::to_string(message.column);
    return text;
}

std::string_view lineOf(std::string_view text, std::size_t line) {
    for (; line > 1 && !text.empty(); --line) text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    text = text.substr(0, text.find('\n'));
    if (text.ends_with('\r')) text.remove_suffix(1);
    return text;
}

// The line with a caret below; of a long one, what is around the caret.
std::string quotedLine(const Message& message, std::string_view source) {
    std::string_view line = lineOf(source, message.line);
    std::size_t column = std::min(message.column - 1, line.size());
    if (column > shownColumns / 2) {
        const std::size_t cut = column - shownColumns / 2;
        line.remove_prefix(cut);
        column -= cut;
    }
    line = line.substr(0, shownColumns);
    std::string indent(line.substr(0, column));
    std::replace_if(indent.begin(), indent.end(), [](char c) { return c != '\t'; }, ' ');
    const std::string number = std::to_string(message.line);
    const std::string margin(number.size() < 5 ? 5 - number.size() : 0, ' ');
    return margin + number + " | " + std::string(line) + '\n' + margin + std::string(number.size(), ' ') + " | " +
           indent;
}

// As tools that apply a diff in the current folder want it.
std::string diffName(const std::string& name) {
    namespace fs = std::filesystem;
    fs::path path = fs::path(name).lexically_normal();
    if (path.is_absolute()) {
        const fs::path relative = path.lexically_relative(fs::current_path());
        path = relative.native().starts_with("..") ? path.relative_path() : relative;
    }
    return path.string();
}

// What would change, a message for each run of lines.
std::vector<Message> changeMessages(const FileResult& result) {
    std::vector<Message> messages;
    for (const Edits::ChangedLines& lines : Edits::changedLines(result.source, result.replacements())) {
        std::string text = notFormatted;
        if (lines.end > lines.first + 1) {
            text += " (lines " + std::to_string(lines.first + 1) + '-' + std::to_string(lines.end) + ')';
        }
        messages.push_back({Message::Severity::Warning, lines.first + 1, 1, std::move(text)});
    }
    return messages;
}

// ---- for people, and for what reads compilers' messages

class TextReporter : public Reporter {
public:
    TextReporter(const Options& options, const ReportPlace& place) : options_(options), place_(place) {}

    void report(const FileResult& result) override {
        std::size_t shown = 0;
        for (const Message& message : result.messages) {
            if (!isGcc() && ++shown > shownMessages) break;
            place_.errors << text(result.name, message, result.source);
        }
        if (result.messages.size() > shown && !isGcc()) {
            place_.errors << result.name << ": note: " << result.messages.size() - shown << " more messages\n";
        }
        if (result.outcome == Outcome::Refused && !isGcc()) {
            place_.errors << "  \"vantrel why " << result.name << "\" tells more, and what gets it through\n";
        }
        if (result.outcome == Outcome::Changed) reportChange(result);
    }

    void note(const std::string& file, const Message& message) override { place_.errors << text(file, message, {}); }
    void finish() override { place_.errors.flush(); }

private:
    bool isGcc() const { return options_.format == MessageFormat::Gcc; }

    std::string text(const std::string& file, const Message& message, std::string_view source) const {
        return messageText(file, message, isGcc() ? std::string_view() : source, place_.isColored);
    }

    void reportChange(const FileResult& result) {
        if (options_.mode == Mode::List) place_.output.write(result.name + '\n');
        if (options_.mode == Mode::Diff)
            place_.output.write(Edits::unifiedDiff(diffName(result.name), result.source, result.replacements()));
        if (options_.mode != Mode::Check) return;
        if (isGcc()) {
            for (const Message& message : changeMessages(result)) place_.output.write(text(result.name, message, {}));
        } else {
            place_.output.write("would format " + result.name + '\n');
        }
    }

    const Options& options_;
    ReportPlace place_;
};

// ---- for machines

// What goes to standard output, unless results go there.
class MachineReporter : public Reporter {
public:
    MachineReporter(const Options& options, const ReportPlace& place) : options_(options), place_(place) {}

    void report(const FileResult& result) override {
        for (const Message& message : result.messages) add(result.name, message);
        if (result.outcome != Outcome::Changed || options_.mode == Mode::InPlace || options_.mode == Mode::Print)
            return;
        for (const Message& message : changeMessages(result)) add(result.name, message);
    }
    void note(const std::string& file, const Message& message) override { add(file, message); }
    void finish() override {}

protected:
    virtual void add(const std::string& file, const Message& message) = 0;

    void write(const std::string& text) {
        if (options_.mode == Mode::Print) {
            place_.errors << text;
        } else {
            place_.output.write(text);
        }
    }

    // Names and sources need not be UTF-8.
    static std::string dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

private:
    const Options& options_;
    ReportPlace place_;
};

// {"file":"a.c","outcome":"changed","messages":[],"replacements":[{"offset":3,"length":2,"text":" "}]}
class JsonReporter : public MachineReporter {
public:
    using MachineReporter::MachineReporter;

    void report(const FileResult& result) override {
        if (result.outcome == Outcome::Unchanged && result.messages.empty()) return;
        Json messages = Json::array();
        for (const Message& message : result.messages) messages.push_back(json(message));
        Json replacements = Json::array();
        for (const Edits::Replacement& one : result.replacements()) {
            replacements.push_back({{"offset", one.offset}, {"length", one.length}, {"text", one.text}});
        }
        write(dump({{"file", result.name},
                    {"outcome", outcomeName(result.outcome)},
                    {"messages", std::move(messages)},
                    {"replacements", std::move(replacements)}}) + '\n');
    }

protected:
    void add(const std::string& file, const Message& message) override {
        write(dump({{"file", file}, {"messages", Json::array({json(message)})}}) + '\n');
    }

private:
    static Json json(const Message& message) {
        return {{"severity", severityName(message.severity)},
                {"line", message.line},
                {"column", message.column},
                {"text", message.text}};
    }
};

// ::error file=a.c,line=3,col=5::The statement cannot be parsed.
class GithubReporter : public MachineReporter {
public:
    using MachineReporter::MachineReporter;

protected:
    void add(const std::string& file, const Message& message) override {
        const bool isNote = message.severity == Message::Severity::Note;
        std::string text = std::string("::") + (isNote ? "notice" : severityName(message.severity)) +
                           " file=" + escaped(file, codeInProperty);
        if (message.line > 0)
            text += ",line=" + std::to_string(message.line) + ",col=" + std::to_string(message.column);
        write(text + "::" + escaped(message.text, codeInText) + '\n');
    }

private:
    static std::string_view codeInText(char c) {
        switch (c) {
            case '%': return "%25";
            case '\r': return "%0D";
            case '\n': return "%0A";
            default: return {};
        }
    }
    static std::string_view codeInProperty(char c) {
        switch (c) {
            case ':': return "%3A";
            case ',': return "%2C";
            default: return codeInText(c);
        }
    }
};

class SarifReporter : public MachineReporter {
public:
    using MachineReporter::MachineReporter;

    void finish() override {
        const Json driver = {{"name", "vantrel"}, {"version", TesselUI::CURRENT_VERSION}};
        write(dump({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                    {"version", "2.1.0"},
                    {"runs", Json::array({{{"tool", {{"driver", driver}}}, {"results", std::move(results_)}}})}}) +
              '\n');
    }

protected:
    void add(const std::string& file, const Message& message) override {
        Json location = {{"artifactLocation", {{"uri", uri(file)}}}};
        if (message.line > 0) location["region"] = {{"startLine", message.line}, {"startColumn", message.column}};
        const bool isChange = message.severity == Message::Severity::Warning;
        results_.push_back({{"ruleId", isChange ? "layout" : "source"},
                            {"level", severityName(message.severity)},
                            {"message", {{"text", message.text}}},
                            {"locations", Json::array({{{"physicalLocation", std::move(location)}}})}});
    }

private:
    static std::string uri(const std::string& file) {
        constexpr std::string_view plain = "/-._~";
        constexpr char digits[] = "0123456789ABCDEF";
        std::string result;
        for (const char c : file) {
            const auto byte = static_cast<unsigned char>(c);
            const bool isPlain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                                 plain.find(c) != std::string_view::npos;
            if (isPlain) {
                result += c;
            } else {
                result += {'%', digits[byte / 16], digits[byte % 16]};
            }
        }
        return result;
    }

    Json results_ = Json::array();
};

class CheckstyleReporter : public MachineReporter {
public:
    CheckstyleReporter(const Options& options, const ReportPlace& place) : MachineReporter(options, place) {
        write("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<checkstyle version=\"4.3\">\n");
    }

    void finish() override {
        startFile({});
        write("</checkstyle>\n");
    }

protected:
    void add(const std::string& file, const Message& message) override {
        startFile(file);
        const bool isNote = message.severity == Message::Severity::Note;
        write("    <error line=\"" + std::to_string(message.line) + "\" column=\"" + std::to_string(message.column) +
              "\" severity=\"" + (isNote ? "info" : severityName(message.severity)) + "\" message=\"" +
              escaped(message.text, code) + "\" source=\"vantrel\"/>\n");
    }

private:
    void startFile(const std::string& file) {
        if (file == file_) return;
        if (!file_.empty()) write("  </file>\n");
        file_ = file;
        if (!file.empty()) write("  <file name=\"" + escaped(file, code) + "\">\n");
    }

    static std::string_view code(char c) {
        const std::string_view markup = markupCode(c);
        return markup.empty() && static_cast<unsigned char>(c) < ' ' ? " " : markup;
    }

    std::string file_;  // the one whose element is open
};

}  // namespace

std::unique_ptr<Reporter> makeReporter(const Options& options, const ReportPlace& place) {
    switch (options.format) {
        case MessageFormat::Text:
        case MessageFormat::Gcc: break;
        case MessageFormat::Json: return std::make_unique<JsonReporter>(options, place);
        case MessageFormat::Github: return std::make_unique<GithubReporter>(options, place);
        case MessageFormat::Sarif: return std::make_unique<SarifReporter>(options, place);
        case MessageFormat::Checkstyle: return std::make_unique<CheckstyleReporter>(options, place);
    }
    return std::make_unique<TextReporter>(options, place);
}

std::string messageText(const std::string& file, const Message& message, std::string_view source, bool isColored) {
    const bool isError = message.severity == Message::Severity::Error;
    const std::string color = isError ? "\033[1;31m" : "\033[1;35m";
    const std::string severity = severityName(message.severity);
    std::string text = place(file, message) + ": " + (isColored ? color + severity + ":\033[0m " : severity + ": ") +
                       message.text + '\n';
    if (message.line == 0 || source.empty()) return text;
    return text + quotedLine(message, source) + (isColored ? "\033[1;32m^\033[0m\n" : "^\n");
}

}  // namespace Tool
