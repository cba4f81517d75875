#pragma once

#include <optional>
#include <utility>

#include "engine/type_text.h"
#include "layout/declaration_run.h"
#include "layout/offset_calculator.h"

namespace Tessel {

// Where the declared names of a run are to start, measured in columns from the first character of their
// declarations. Data and prototypes are collected side by side:
//
//     int       count;
//     Widget   *first;
//     void      clear();
//
// In classes, with ALIGN_CLASS_MEMBER_NAMES_LEFT, both share one column; otherwise each has its own.
class NameOffsetCalculator : public OffsetCalculator {
public:
    NameOffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source);

    ColumnMap takeDataOffsets() { return std::move(dataOffsets_); }
    ColumnMap takeFunctionOffsets() { return std::move(functionOffsets_); }

    using OffsetCalculator::visit;
    void visit(Cpp::ClassDeclNode* declaration) override;
    void visit(Cpp::ClassBodyNode* body) override;
    void visit(Cpp::DataDeclNode* declaration) override;
    void visit(Cpp::FunctionDeclNode* declaration) override;
    void visit(Cpp::CtorDeclNode* declaration) override;
    // Labels like "public:" do not end a run.
    void visit(Cpp::AccessSpecNode*) override {}

    void flush() override;

private:
    bool alignsData() const { return !keepsData_ && (alignDataNames_ || (alignClassMembers_ && inClassBody())); }
    bool alignsFunctions() const { return alignFnDeclNames_ || (alignClassMembers_ && inClassBody()); }
    int offsetBehind(int widest) const;
    bool goesOnBehindBody(const Cpp::DataDeclNode& declaration) const;
    std::optional<int> measure(const Cpp::TypeNode* type, const Cpp::IdNode* name) const;

    MarkPlacement marks_;
    bool alignClassMembers_;
    bool alignFnDeclNames_;
    bool alignDataNames_;
    bool keepsData_;
    bool alignsDataOnly_;
    bool classBodyEnded_ = false;  // and the run that began in it has not been closed yet
    const Cpp::ClassDeclNode* lastClass_ = nullptr;
    DeclarationRun dataRun_;
    DeclarationRun functionRun_;
    ColumnMap dataOffsets_;
    ColumnMap functionOffsets_;
};

}  // namespace Tessel
