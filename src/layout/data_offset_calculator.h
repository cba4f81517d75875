#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engine/cpp_expr_formatter.h"
#include "engine/type_text.h"
#include "layout/declaration_run.h"
#include "layout/offset_calculator.h"

namespace Tessel {

// Where the initializers of a run of data declarations are to start:
//
//     int count       = 0;
//     Widget *first   = 0;
//     unsigned long n = 12;
//
// The offset counts from the first character of the declaration, or, where the names are aligned, from the
// column of the names.
class DataOffsetCalculator : public OffsetCalculator {
public:
    DataOffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source);

    ColumnMap takeOffsets() { return std::move(offsets_); }

    using OffsetCalculator::visit;
    void visit(Cpp::DataDeclNode* declaration) override;

    void flush() override;

private:
    bool alignsNames() const;
    std::optional<int> measure(const Cpp::DataDeclNode& declaration);
    std::string writtenType(std::string_view type);
    std::string writtenName(std::string_view name, bool isAligned);
    Zelmor::IndentState lineStart() const;
    int width(std::string_view text) const;

    CppExprFormatter exprFormatter_;
    MarkPlacement marks_;
    OptionalText afterType_;
    std::string behindType_;  // its text, on the one line that an aligned declaration stays on
    bool alignDataNames_;
    bool alignClassMembers_;
    OptionalText afterName_;
    OptionalText afterBracket_;
    bool keepsData_;
    DeclarationRun run_;
    ColumnMap offsets_;
};

}  // namespace Tessel
