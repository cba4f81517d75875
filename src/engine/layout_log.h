#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "engine/layout_observer.h"
#include "engine/optional_text.h"
#include "scheme/property_set.h"

namespace Tessel {

// What the writers tell of one text to an observer, with what only those know who called them: the construct in which
// they write. There is none where nobody listens.
class LayoutLog {
public:
    // All are borrowed; the views given later are views of the source, and those that are not go unheard.
    LayoutLog(LayoutObserver& observer, const PropertySet& scheme, std::string_view source)
        : observer_(observer), scheme_(scheme), source_(source) {}

    // `found`, white space of the source, has been replaced as wanted; by the white space itself where that is absent.
    void decided(std::string_view found, const WantedText& wanted);
    // The same for white space that somebody else is about to write, or to copy.
    void left(std::string_view found, const WantedText& wanted);
    // A piece that is copied with its white space, in which lines may begin.
    void copied(std::string_view piece);
    // The line that begins with the piece, whose gap has been told of, is indented by this key.
    void indented(std::string_view piece, KeyId key);
    // What the source does at the piece.
    void measured(KeyId key, std::string_view piece, int value);
    void measured(KeyId key, std::string_view piece, std::string_view value);

    // Where the construct that is being written begins, and what indents its lines.
    struct Place {
        int baseColumn = 0;
        int lineColumn = 0;  // where its lines begin: there, or at the indentation of its contents
        KeyId indent;
        KeyId oneLine;  // by which it stays on one line, so that the line ends of the scheme do not count
    };
    Place& place() { return place_; }

    // While it lives, lines that begin are indented by the key. The log may be null.
    class IndentKeyScope {
    public:
        IndentKeyScope(LayoutLog* log, KeyId key) : log_(log) {
            if (log_) saved_ = std::exchange(log_->place_.indent, key);
        }
        IndentKeyScope(const IndentKeyScope&) = delete;
        IndentKeyScope& operator=(const IndentKeyScope&) = delete;
        ~IndentKeyScope() {
            if (log_) log_->place_.indent = saved_;
        }

    private:
        LayoutLog* log_;
        KeyId saved_;
    };

private:
    void copiedBehindLineEnd(std::string_view piece);
    bool isOfSource(std::string_view piece) const;
    std::size_t offsetOf(std::string_view piece) const {
        return static_cast<std::size_t>(piece.data() - source_.data());
    }

    KeyId decider(const WantedText& wanted) const;

    LayoutObserver& observer_;
    const PropertySet& scheme_;
    std::string_view source_;
    Place place_;
    DecidedGap last_;
    std::string lastWritten_;  // there, which may be told of once more when the text it was is gone
    WantedText left_;
    const char* leftEnd_ = nullptr;  // behind the white space that it is for
};

}  // namespace Tessel
