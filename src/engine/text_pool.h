#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace Tessel {

// Texts that are made while others, who only look at them, want them for longer: each once.
class TextPool {
public:
    // Holds as long as the pool.
    std::string_view keep(std::string text) { return *texts_.insert(std::move(text)).first; }

private:
    std::set<std::string, std::less<>> texts_;
};

}  // namespace Tessel
