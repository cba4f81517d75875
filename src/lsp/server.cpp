#include "lsp/server.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "scheme/scheme_conversion.h"

namespace Lsp {

namespace {

constexpr int parseError = -32700;
constexpr int invalidRequest = -32600;
constexpr int methodNotFound = -32601;
constexpr int invalidParameters = -32602;
constexpr int notInitialized = -32002;
constexpr int requestCancelled = -32800;
constexpr int requestFailed = -32803;

constexpr int incrementalChanges = 2;
constexpr int errorSeverity = 1;
constexpr std::size_t mostDiagnostics = 100;  // of one document

Json json(Position position) {
    return {{"line", position.line}, {"character", position.character}};
}

Position positionFrom(const Json& position) {
    return {position.at("line").get<std::size_t>(), position.at("character").get<std::size_t>()};
}

int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The path of a "file:" URI; a text that is in no file stands in the current folder.
std::string pathOf(const std::string& uri) {
    constexpr std::string_view fileScheme = "file://";
    if (!uri.starts_with(fileScheme)) return "./untitled";
    std::string path;
    for (std::size_t at = std::min(uri.find('/', fileScheme.size()), uri.size()); at < uri.size(); ++at) {
        const bool isEscape =
            uri[at] == '%' && at + 2 < uri.size() && digitValue(uri[at + 1]) >= 0 && digitValue(uri[at + 2]) >= 0;
        path += isEscape ? static_cast<char>(digitValue(uri[at + 1]) * 16 + digitValue(uri[at + 2])) : uri[at];
        if (isEscape) at += 2;
    }
    return path;
}

std::size_t lineOf(const std::string& text, std::size_t offset) {
    return static_cast<std::size_t>(
               std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n')) +
           1;
}

// A range that ends at the start of a line does not touch that line.
Edits::LineSet linesOf(const std::string& text, const Json& range) {
    const std::size_t first = offsetOf(text, positionFrom(range.at("start")));
    const std::size_t end = offsetOf(text, positionFrom(range.at("end")));
    if (end < first) throw std::invalid_argument("the range ends before it begins");
    return Edits::LineSet({{lineOf(text, first), lineOf(text, end > first ? end - 1 : end)}});
}

Json textEdits(const std::string& text, const Edits::Replacements& replacements) {
    Json edits = Json::array();
    PositionWalk walk(text);
    for (const Edits::Replacement& one : replacements) {
        const Position start = walk.positionOf(one.offset);
        const Position end = walk.positionOf(one.end());
        edits.push_back({{"range", {{"start", json(start)}, {"end", json(end)}}}, {"newText", one.text}});
    }
    return edits;
}

const std::string& uriOf(const Json& parameters) {
    return parameters.at("textDocument").at("uri").get_ref<const std::string&>();
}

}  // namespace

int Server::run() {
    while (!hasExited_) {
        if (queue_.empty() && !stream_.hasMore()) publishDiagnostics();
        const std::optional<std::string> message = queue_.empty() ? stream_.next() : std::nullopt;
        if (message) take(*message);
        if (!message && queue_.empty()) break;  // the client has gone
        takeMessages();
        if (queue_.empty()) continue;
        const Json request = std::move(queue_.front());
        queue_.pop_front();
        answer(request);
    }
    return isShutDown_ ? 0 : 1;
}

// All that can be had, so that a request is seen to be cancelled before it is worked on.
void Server::takeMessages() {
    while (stream_.hasMore()) take(*stream_.next());
}

void Server::take(const std::string& text) {
    Json message = Json::parse(text, nullptr, false);
    if (message.is_discarded()) return respondFailure(nullptr, {parseError, "this is no JSON"});
    const bool isMessage = message.is_object() && (!message.contains("method") || message["method"].is_string());
    if (!isMessage) return respondFailure(nullptr, {invalidRequest, "this is no message"});
    if (message.value("method", "") == "$/cancelRequest") {
        const Json parameters = message.value("params", Json::object());
        if (parameters.is_object() && parameters.contains("id")) cancelled_.insert(parameters["id"].dump());
        return;
    }
    queue_.push_back(std::move(message));
}

void Server::answer(const Json& request) {
    const std::string method = request.value("method", "");
    if (method.empty()) return;  // an answer, but nothing was asked
    const Json parameters = request.value("params", Json::object());
    const bool isRequest = request.contains("id");
    const Json id = isRequest ? request["id"] : Json();
    try {
        if (!isRequest) return notice(method, parameters);
        if (cancelled_.erase(id.dump()) > 0) throw Failure{requestCancelled, "the request was cancelled"};
        respond(id, handle(method, parameters));
    } catch (const Failure& failure) {
        if (isRequest) respondFailure(id, failure);
    } catch (const Json::exception& fault) {
        if (isRequest) respondFailure(id, {invalidParameters, fault.what()});
    } catch (const std::invalid_argument& fault) {
        if (isRequest) respondFailure(id, {invalidParameters, fault.what()});
    }
}

Json Server::handle(const std::string& method, const Json& parameters) {
    if (method == "initialize") {
        isInitialized_ = true;
        return initialize();
    }
    if (!isInitialized_) throw Failure{notInitialized, "the server is not initialized"};
    if (isShutDown_) throw Failure{invalidRequest, "the server is shut down"};
    if (method == "shutdown") {
        isShutDown_ = true;
        return nullptr;
    }
    if (method == "textDocument/formatting") return format(parameters, false);
    if (method == "textDocument/rangeFormatting") return format(parameters, true);
    if (method == "textDocument/hover") return hover(parameters);
    throw Failure{methodNotFound, "there is no method " + method};
}

void Server::notice(const std::string& method, const Json& parameters) {
    if (method == "exit") {
        hasExited_ = true;
    } else if (method == "textDocument/didOpen") {
        texts_[uriOf(parameters)] = parameters.at("textDocument").at("text").get<std::string>();
        changed_.insert(uriOf(parameters));
    } else if (method == "textDocument/didChange") {
        change(parameters);
    } else if (method == "textDocument/didClose") {
        texts_.erase(uriOf(parameters));
        changed_.insert(uriOf(parameters));
    }
}

void Server::respond(const Json& id, Json result) {
    stream_.write({{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}});
}

void Server::respondFailure(const Json& id, const Failure& failure) {
    stream_.write({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", failure.code}, {"message", failure.message}}}});
}

Json Server::initialize() const {
    return {{"capabilities",
             {{"positionEncoding", "utf-16"},
              {"textDocumentSync", {{"openClose", true}, {"change", incrementalChanges}}},
              {"documentFormattingProvider", true},
              {"documentRangeFormattingProvider", true},
              {"hoverProvider", true}}},
            {"serverInfo", {{"name", "vantrel"}, {"version", TesselUI::CURRENT_VERSION}}}};
}

Json Server::format(const Json& parameters, bool isRange) {
    const std::string& uri = uriOf(parameters);
    const std::string& text = openText(uri);
    std::optional<Edits::LineSet> lines;
    if (isRange) lines = linesOf(text, parameters.at("range"));
    try {
        const Formatter::Result result = formatter_.format(pathOf(uri), text, lines);
        if (result.problems.empty()) return textEdits(text, result.replacements);
        const Formatter::Problem& first = result.problems.front();
        const std::string place = first.line > 0 ? "line " + std::to_string(first.line) + ": " : "";
        throw Failure{requestFailed, place + first.text};
    } catch (const std::runtime_error& fault) {
        throw Failure{requestFailed, fault.what()};
    }
}

const std::string& Server::openText(const std::string& uri) const {
    const auto document = texts_.find(uri);
    if (document == texts_.end()) throw Failure{invalidParameters, uri + " is not open"};
    return document->second;
}

Json Server::hover(const Json& parameters) {
    const std::string& uri = uriOf(parameters);
    const std::string& text = openText(uri);
    const Position position = positionFrom(parameters.at("position"));
    const std::size_t place = offsetOf(text, position);
    const std::size_t lineStart = offsetOf(text, {position.line, 0});
    try {
        const std::string said = formatter_.explain(pathOf(uri), text, position.line + 1, place - lineStart + 1);
        if (said.empty()) return nullptr;
        return {{"contents", {{"kind", "plaintext"}, {"value", said}}}};
    } catch (const std::runtime_error&) {
        return nullptr;  // formatting tells of it, when somebody asks
    }
}

void Server::change(const Json& parameters) {
    const auto document = texts_.find(uriOf(parameters));
    if (document == texts_.end()) return;
    std::string& text = document->second;
    for (const Json& change : parameters.at("contentChanges")) {
        const std::string& newText = change.at("text").get_ref<const std::string&>();
        if (!change.contains("range")) {
            text = newText;
            continue;
        }
        const std::size_t first = offsetOf(text, positionFrom(change["range"].at("start")));
        const std::size_t end = offsetOf(text, positionFrom(change["range"].at("end")));
        if (end >= first) text.replace(first, end - first, newText);
    }
    changed_.insert(document->first);
}

void Server::publishDiagnostics() {
    for (const std::string& uri : std::exchange(changed_, {})) {
        const auto document = texts_.find(uri);
        Json diagnostics = document == texts_.end() ? Json::array() : diagnosticsOf(uri, document->second);
        stream_.write({{"jsonrpc", "2.0"},
                       {"method", "textDocument/publishDiagnostics"},
                       {"params", {{"uri", uri}, {"diagnostics", std::move(diagnostics)}}}});
    }
}

Json Server::diagnosticsOf(const std::string& uri, const std::string& text) {
    Json diagnostics = Json::array();
    Formatter::Result result;
    try {
        result = formatter_.format(pathOf(uri), text, std::nullopt);
    } catch (const std::runtime_error&) {
        return diagnostics;  // formatting tells of it, when somebody asks
    }
    if (result.problems.size() > mostDiagnostics) result.problems.resize(mostDiagnostics);
    for (const Formatter::Problem& problem : result.problems) {
        const std::size_t line = std::max<std::size_t>(problem.line, 1) - 1;
        const std::size_t lineStart = offsetOf(text, {line, 0});
        const std::size_t place = std::min(lineStart + std::max<std::size_t>(problem.column, 1) - 1, text.size());
        const Position start{
            line, PositionWalk(std::string_view(text).substr(lineStart)).positionOf(place - lineStart).character};
        const Position end{line, start.character + 1};
        diagnostics.push_back({{"range", {{"start", json(start)}, {"end", json(end)}}},
                               {"severity", errorSeverity},
                               {"source", "vantrel"},
                               {"message", problem.text}});
    }
    return diagnostics;
}

}  // namespace Lsp
