// Indentation that the source has, for the log: relative to the column from which the scheme's would count.
//
//     while (a)
//         b();        "    " for INDENT_CS_CONTENT
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"
#include "engine/source_copy.h"

namespace Tessel {

namespace {

// What stands where a label or the like is to stand goes by other keys than the contents around it.
bool isIndentedByItself(const Cpp::SyntaxNode& node) {
    return dynamic_cast<const Cpp::CaseNode*>(&node) || dynamic_cast<const Cpp::AccessSpecNode*>(&node) ||
           dynamic_cast<const Cpp::LabelNode*>(&node) || dynamic_cast<const Cpp::CommentNode*>(&node) ||
           dynamic_cast<const Cpp::PreprocDirectiveNode*>(&node);
}

}  // namespace

// Where the node begins a line.
void CppFormatter::logIndent(const Cpp::SyntaxNode& node, KeyId key) {
    const int base = log_->place().baseColumn;
    const std::size_t start = offsetOf(source_, node.start()) - 1;
    const std::string_view before = source_.text().substr(0, start);
    const std::string_view indent = before.substr(before.rfind('\n') + 1);
    if (!key || base < 0 || !isAllWhitespace(indent)) return;
    std::size_t shared = 0;
    while (shared < indent.size() && columnAfter(indent.substr(0, shared), 0, out().tabSize()) < base) ++shared;
    log_->measured(key, source_.text().substr(start), indent.substr(shared));
}

// By the first of the contents that tells.
void CppFormatter::logContent(const Cpp::InteriorNode& node, Cpp::InteriorNode::iterator first, KeyId indent) {
    for (auto child = first; child != node.childEnd(); ++child) {
        if (isIndentedByItself(**child)) continue;
        return logIndent(**child, indent);
    }
}

}  // namespace Tessel
