#pragma once

#include <list>
#include <string>
#include <string_view>

#include "cpp/lexer.h"
#include "cpp/parser.h"
#include "cpp/tree_dump.h"

namespace CppTest {

using Messages = std::list<Tessel::Diagnostic>;

inline Messages parse(std::string_view source, Cpp::RootNode& root,
                      Cpp::Unrecognized unrecognized = Cpp::Unrecognized::Reported) {
    Cpp::Lexer lexer(source);
    Messages messages;
    Cpp::Parser(unrecognized).parse(lexer, root, messages);
    return messages;
}

// Each message as "line:column code text".
inline std::string shown(const Messages& messages) {
    std::ostringstream out;
    for (const Tessel::Diagnostic& message : messages) {
        out << message.position << ' ' << message.code << ' ' << message.text << '\n';
    }
    return out.str();
}

// The tree of a text with a line feed in front, so that it compares with a raw string that starts on a line
// of its own; or its messages, when it does not parse.
inline std::string treeOf(std::string_view source, TreeDump::Positions positions = TreeDump::Positions::Hidden) {
    Cpp::RootNode root;
    const Messages messages = parse(source, root);
    return '\n' + (messages.empty() ? TreeDump::of(root, positions) : shown(messages));
}

inline std::string messagesOf(std::string_view source) {
    Cpp::RootNode root;
    return '\n' + shown(parse(source, root));
}

}  // namespace CppTest
