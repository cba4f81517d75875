#pragma once

#include <utility>

#include "layout/declaration_run.h"
#include "layout/offset_calculator.h"
#include "layout/type_text.h"

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
    bool alignsNames() const { return alignDataNames_ || (alignClassMembers_ && inClassBody()); }
    int measure(const Cpp::DataDeclNode& declaration) const;
    int measureFromNameColumn(const TypeText& type, std::string_view name) const;
    int measureLine(const TypeText& type, std::string_view gap, std::string_view name) const;
    std::string_view writtenGap(const TypeText& type, std::string_view gap) const;
    int width(std::string_view text) const;

    MarkPlacement marks_;
    OptionalText afterType_;
    bool alignDataNames_;
    bool alignClassMembers_;
    DeclarationRun run_;
    ColumnMap offsets_;
};

}  // namespace Tessel
