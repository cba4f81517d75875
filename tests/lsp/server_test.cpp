#include "lsp/server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <stdexcept>

namespace {

using Lsp::Json;
using ::testing::ElementsAre;

// Takes blanks in front of "b" away, and refuses texts with a "?".
class Shrinker : public Lsp::Formatter {
public:
    Result format(const std::string& path, const std::string& text,
                  const std::optional<Edits::LineSet>& lines) override {
        if (path.find("none") != std::string::npos) throw std::runtime_error("no scheme");
        const std::size_t odd = text.find('?');
        if (odd != std::string::npos) {
            const std::size_t start = text.rfind('\n', odd) + 1;
            const auto line =
                static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<long>(odd), '\n')) + 1;
            return {{}, {{line, odd - start + 1, "odd"}}};
        }
        std::string after = text;
        for (std::size_t at; (at = after.find(" b")) != std::string::npos;) after.erase(at, 1);
        return {lines ? Edits::replacementsInLines(text, after, *lines) : Edits::replacementsBetween(text, after), {}};
    }
    std::string explain(const std::string&, const std::string& text, std::size_t line, std::size_t column) override {
        if (text.find('?') != std::string::npos) throw std::runtime_error("no scheme");
        return column > 1 ? std::to_string(line) + ':' + std::to_string(column) : "";
    }
};

class ServerTest : public ::testing::Test {
protected:
    void send(const std::string& content) {
        input_ += "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content;
    }
    void request(int id, const std::string& method, const Json& parameters) {
        send(Json{{"id", id}, {"method", method}, {"params", parameters}}.dump());
    }
    void notify(const std::string& method, const Json& parameters) {
        send(Json{{"method", method}, {"params", parameters}}.dump());
    }
    void open(const std::string& uri, const std::string& text) {
        notify("textDocument/didOpen", {{"textDocument", {{"uri", uri}, {"text", text}}}});
    }

    // Runs the server over all that was sent; answers with what it wrote.
    std::vector<Json> run(const std::string& more = "") {
        int in[2];
        int out[2];
        if (::pipe(in) != 0 || ::pipe(out) != 0) throw std::runtime_error("no pipe");
        input_ += more;
        EXPECT_EQ(::write(in[1], input_.data(), input_.size()), static_cast<ssize_t>(input_.size()));
        ::close(in[1]);
        Lsp::MessageStream stream(in[0], out[1]);
        Shrinker formatter;
        status_ = Lsp::Server(stream, formatter).run();
        ::close(out[1]);
        std::vector<Json> answers;
        Lsp::MessageStream written(out[0], -1);
        while (const auto message = written.next()) answers.push_back(Json::parse(*message));
        ::close(in[0]);
        ::close(out[0]);
        return answers;
    }

    static Json range(int line, int from, int toLine, int to) {
        return {{"start", {{"line", line}, {"character", from}}}, {"end", {{"line", toLine}, {"character", to}}}};
    }

    std::string input_;
    int status_ = -1;
    const Json a_ = {{"textDocument", {{"uri", "file:///a%20a.c"}}}};
};

TEST_F(ServerTest, PositionsAreInUnitsOfUtf16) {
    const std::string text = "x\xF0\x9F\x98\x80\xC3\xA4  b\r\n  b";
    request(1, "initialize", Json::object());
    open("file:///a%20a.c", text);
    request(2, "textDocument/formatting", a_);
    Json place = a_;
    place["position"] = {{"line", 0}, {"character", 4}};
    request(5, "textDocument/hover", place);
    Json change = a_;
    change["contentChanges"] = {{{"range", range(0, 1, 0, 4)}, {"text", "-"}},
                                {{"range", range(1, 99, 99, 0)}, {"text", "\n b\n"}}};
    notify("textDocument/didChange", change);  // "x-  b", "  b", " b", ""
    Json part = a_;
    part["range"] = range(1, 0, 2, 0);
    request(3, "textDocument/rangeFormatting", part);
    request(4, "shutdown", nullptr);
    notify("exit", nullptr);
    const std::vector<Json> answers = run();
    ASSERT_EQ(answers.size(), 5u);
    EXPECT_EQ(answers[0]["result"]["capabilities"]["textDocumentSync"]["change"], 2);
    EXPECT_EQ(answers[1]["result"], (Json::array({{{"range", range(0, 4, 0, 6)}, {"newText", ""}},
                                                  {{"range", range(1, 0, 1, 2)}, {"newText", ""}}})));
    EXPECT_EQ(answers[2]["result"]["contents"]["value"], "1:8");
    EXPECT_EQ(answers[3]["result"], (Json::array({{{"range", range(1, 0, 1, 2)}, {"newText", ""}}})));
    EXPECT_EQ(status_, 0);
}

TEST_F(ServerTest, RefusedTextsHaveDiagnosticsAndRequestsFail) {
    request(1, "textDocument/formatting", a_);
    request(2, "initialize", Json::object());
    request(3, "textDocument/formatting", a_);
    open("file:///a%20a.c", "\n\xC3\xA4 ?");
    request(4, "textDocument/formatting", a_);
    open("file:///none.c", "");
    request(5, "textDocument/formatting", {{"textDocument", {{"uri", "file:///none.c"}}}});
    request(6, "textDocument/formatting", {{"text", 1}});
    request(7, "bogus", Json::object());
    send("{");
    send("[1]");
    request(8, "textDocument/formatting", a_);
    notify("$/cancelRequest", {{"id", 8}});
    std::vector<int> codes;
    std::vector<Json> diagnostics;
    for (const Json& answer : run()) {
        if (answer.contains("error")) codes.push_back(answer["error"]["code"]);
        if (answer.contains("method")) diagnostics.push_back(answer["params"]["diagnostics"]);
    }
    EXPECT_THAT(codes, ElementsAre(-32700, -32600, -32002, -32602, -32803, -32803, -32602, -32601, -32800));
    ASSERT_EQ(diagnostics.size(), 2u);
    EXPECT_EQ(diagnostics[0][0]["range"], range(1, 2, 1, 3));
    EXPECT_EQ(status_, 1) << "the client has gone without a word";
    input_.clear();
    EXPECT_THROW(run("Content-Length: x\r\n\r\n{}"), std::runtime_error);
    input_.clear();
    EXPECT_THROW(run("Content-Length: 7\r\n\r\n{}"), std::runtime_error);
}

}  // namespace
