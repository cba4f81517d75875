#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "edits/line_set.h"
#include "edits/replacement.h"
#include "lsp/document.h"
#include "lsp/message_stream.h"

namespace Lsp {

// What the server has texts formatted by.
class Formatter {
public:
    struct Problem {
        std::size_t line = 0;    // from 1; 0: the text as a whole
        std::size_t column = 0;  // from 1, in bytes
        std::string text;
    };
    struct Result {
        Edits::Replacements replacements;
        std::vector<Problem> problems;  // why the text is refused
    };

    virtual ~Formatter() = default;
    // Throws std::runtime_error where nothing can be formatted, for the want of a scheme.
    virtual Result format(const std::string& path, const std::string& text,
                          const std::optional<Edits::LineSet>& lines) = 0;
    // What is said of the white space at a place, or in front of what stands there; empty where there is nothing to
    // say. The line and the column, in bytes, count from 1. Throws as format() does.
    virtual std::string explain(const std::string& path, const std::string& text, std::size_t line,
                                std::size_t column) = 0;
};

// A language server: formatting of documents and ranges, diagnostics for what is refused, and, where the pointer
// hovers, which key decides the white space there.
class Server {
public:
    // Both are borrowed.
    Server(MessageStream& stream, Formatter& formatter) : stream_(stream), formatter_(formatter) {}

    // Serves up to the end of the session. Returns the exit status.
    int run();

private:
    struct Failure {
        int code;
        std::string message;
    };

    void takeMessages();
    void take(const std::string& text);
    void answer(const Json& request);
    Json handle(const std::string& method, const Json& parameters);
    void notice(const std::string& method, const Json& parameters);
    void respond(const Json& id, Json result);
    void respondFailure(const Json& id, const Failure& failure);

    Json initialize() const;
    Json format(const Json& parameters, bool isRange);
    Json hover(const Json& parameters);
    const std::string& openText(const std::string& uri) const;
    void change(const Json& parameters);
    void publishDiagnostics();
    Json diagnosticsOf(const std::string& uri, const std::string& text);

    MessageStream& stream_;
    Formatter& formatter_;
    std::deque<Json> queue_;
    std::set<std::string> cancelled_;          // ids of requests in the queue, as JSON
    std::map<std::string, std::string> texts_;  // of the open documents, by URI
    std::set<std::string> changed_;            // whose diagnostics are to be told anew
    bool isInitialized_ = false;
    bool isShutDown_ = false;
    bool hasExited_ = false;
};

}  // namespace Lsp
