#pragma once

#include <string>

namespace Tessel {

// Told about the progress of a job; answers whether to go on.
class UpdateFunctor {
public:
    virtual ~UpdateFunctor() = default;
    virtual bool operator()(const std::string& message) = 0;
};

}  // namespace Tessel
