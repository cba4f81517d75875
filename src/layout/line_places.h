#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "layout/first_wrap_token.h"
#include "layout/wrap_settings.h"
#include "layout/wrap_text.h"

namespace Tessel {

// Where lines may begin in a text: at which separators, and with which token there. It decides nothing about which of
// these places are made use of.
class LinePlaces {
public:
    // Whether lines may begin behind a ";", as in the head of a "for".
    enum class Clauses { None, Separate };

    // Separators by what binds their operands, the weakest first.
    enum class Class { Clause, Comma, Conditional, Shift, Logical, Binary, Factor, Comparison, Cast, OldCast, None };

    struct Separators {
        Class separatorClass;
        const FirstWrapToken& finder;
        bool leadsLine;  // lines begin with the separator, not with the token behind it
    };

    // The text and the settings are borrowed.
    LinePlaces(const WrapText& text, const WrapSettings& settings, Clauses clauses);

    static Class behind(Class separatorClass);
    Separators separatorsOf(Class separatorClass) const;
    // The first token behind `from` in the piece that a line may begin with; `separator` becomes what lets it. The
    // piece is a part of the region, which is the text or what stands between two brackets.
    std::size_t nextLine(Separators separators, TokenRange region, TokenRange piece, std::size_t& separator,
                         std::size_t from) const;
    // Of every token, whether some region might start a line with it.
    std::vector<bool> chances() const;

private:
    std::optional<Class> classOf(std::size_t place, TokenRange region) const;
    bool isUsable(std::size_t place, Class separatorClass) const;
    std::size_t lineAt(std::size_t separator) const;
    std::size_t lineBehind(std::size_t separator, std::size_t last) const;

    const WrapText& text_;
    const WrapSettings& settings_;
    Clauses clauses_;
    FindFirstElem semicolons_;
    FindFirstElem commas_;
    FindFirstElem conditionals_;
    FindFirstElem shifts_;
    FindFirstElem logicals_;
    FindFirstBinaryOp binaries_;
    FindFirstElem factors_;
    FindFirstElem comparisons_;
    FindFirstCast casts_;
    FindFirstOldCast oldCasts_;
};

}  // namespace Tessel
