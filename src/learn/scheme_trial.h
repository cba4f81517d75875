#pragma once

#include <cstddef>
#include <map>
#include <memory>

#include "scheme/key_id.h"
#include "scheme/property_set.h"

namespace Learn {

// What formatting a sample of sources with a scheme comes to.
class SchemeTrial {
public:
    virtual ~SchemeTrial() = default;

    virtual std::size_t lines() const = 0;  // of the sample
    // The lines that change. Once they are more than `limit`, some number above that.
    virtual std::size_t changedLines(const Tessel::PropertySet& scheme, std::size_t limit) = 0;
    // How many gaps change because of each key.
    virtual std::map<Tessel::KeyId, std::size_t> causes(const Tessel::PropertySet& scheme) = 0;
    // The sample as the scheme lays it out. What changes there are the lines that do not come back as they are here.
    virtual std::unique_ptr<SchemeTrial> laidOut(const Tessel::PropertySet& scheme) = 0;
};

}  // namespace Learn
