#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "engine/layout_observer.h"
#include "scheme/key_id.h"
#include "scheme/property_line.h"

// What sources do where a scheme could have a value.
namespace Learn {

using Value = Tessel::PropertyValue;

struct Place {
    std::size_t file = 0;  // in the order in which they were counted
    std::uint32_t line = 0;
};

struct Found {
    std::size_t count = 0;
    Place first;
};

using Values = std::map<Value, Found>;

// Those of the others come behind those that are there.
void add(Values& values, const Values& others);

// How often each value of a key was found.
struct Habit {
    Values values;
    // Where the construct around the place is on one line, so that other keys count.
    Values onOneLine;
};

class Tally {
public:
    const Habit& of(Tessel::KeyId key) const { return habits_[key.place()]; }
    Habit& of(Tessel::KeyId key) { return habits_[key.place()]; }

    // The other one's places come behind those that are here.
    void add(const Tally& other);

private:
    std::array<Habit, Tessel::Keys::ALL.size()> habits_;
};

// Counts what one text does, while it is formatted.
class TallyObserver : public Tessel::LayoutObserver {
public:
    TallyObserver(std::size_t file, int tabSize) : file_(file), tabSize_(tabSize) {}

    void begin(const Zelmor::TextDocument& source) override { source_ = &source; }
    void decided(const Tessel::DecidedGap& gap) override;
    void measured(const Tessel::Measured& measure) override;

    // When the text has been formatted.
    Tally tally();

private:
    struct Record {
        Tessel::KeyId key;
        bool isOnOneLine = false;
        bool isMeasured = false;
        std::uint32_t line = 0;
        std::size_t end = 0;  // of the white space, or of what was measured
        Value value;
    };

    bool isBehindComment(const Tessel::DecidedGap& gap) const;
    bool isBeforeLastComment(const Tessel::DecidedGap& gap) const;
    void record(Tessel::KeyId key, std::size_t end, Value value, bool isOnOneLine, bool isMeasured);

    std::size_t file_;
    int tabSize_;
    const Zelmor::TextDocument* source_ = nullptr;
    std::vector<Record> records_;
};

}  // namespace Learn
