#pragma once

#include <vector>

#include "layout/cpp_line_wrapper.h"

namespace Tessel {

// The column of the construct being written, for the time of a scope.
class CppLineWrapper::BaseColumnScope {
public:
    BaseColumnScope(CppLineWrapper& wrapper, int column) : columns_(wrapper.baseColumns_) {
        columns_.push_back(column);
    }
    BaseColumnScope(const BaseColumnScope&) = delete;
    BaseColumnScope& operator=(const BaseColumnScope&) = delete;
    ~BaseColumnScope() { columns_.pop_back(); }

private:
    std::vector<int>& columns_;
};

}  // namespace Tessel
