// Reading argument strings: what each one is, and which argument it belongs to.
//
//     -sfoo  -vx          option group    characters, the last of which may be followed by its value
//     --scheme=foo        keyword         any unique beginning will do
//     --                  end of options
//     anything else       positional value, or the value that the last option waits for

#include <string>

#include "cmdline/cmd_line.h"
#include "cmdline/restore.h"
#include "cmdline/text_match.h"

namespace {

constexpr std::string_view longPrefix = "--";

std::string quoted(std::string_view prefix, std::string_view text) {
    return '"' + std::string(prefix) + std::string(text) + "\".";
}

std::string placementMessage(std::string_view place, std::string_view prefix, std::string_view name) {
    return "value required in " + std::string(place) + " argument for " + std::string(prefix) +
           std::string(name) + " option.";
}

}  // namespace

unsigned CmdLine::parse(CmdLineArgIter& strings, int autoProcessing) {
    const Restore keepFlags(flags_);
    if (strings.isTemporary()) setFlags(FLAG_TEMPORARY);
    if (autoProcessing) prologue();
    while (const char* text = strings.next()) parseString(text);
    if (autoProcessing) epilogue();
    return status_;
}

void CmdLine::prologue() {
    status_ = STATUS_OK;
    state_ = CmdLineState();
    CmdLineCmdArgIter all(*this);
    while (CmdArg* argument = all()) argument->resetRunTime();
}

// ---- what a string is

void CmdLine::parseString(const char* text) {
    checkState();
    if (state_.awaitsValue) {
        if (state_.awaiting->needsValue() || !looksLikeOption(text)) return takeAwaitedValue(text);
        finishWithoutValue();
    }
    const std::string_view view = text;
    if (isOptionGroup(view)) {
        if (hasFlag(FLAG_KEYWORDS_ONLY)) {
            parseKeyword("-", text + 1);
        } else {
            parseOptionGroup(text + 1);
        }
    } else if (isKeyword(view)) {
        const std::string_view prefix = view.front() == '+' ? "+" : longPrefix;
        parseKeyword(prefix, text + prefix.size());
    } else if (view == longPrefix) {
        state_.sawEndOfOptions = true;
    } else {
        parsePositional(text);
    }
}

bool CmdLine::looksLikeOption(std::string_view text) const {
    return isOptionGroup(text) || isKeyword(text) || text == longPrefix;
}

bool CmdLine::isOptionGroup(std::string_view text) const {
    return !state_.sawEndOfOptions && text.size() > 1 && text[0] == '-' && text[1] != '-';
}

bool CmdLine::isKeyword(std::string_view text) const {
    if (hasFlag(FLAG_OPTIONS_ONLY) || state_.sawEndOfOptions) return false;
    if (text.size() > longPrefix.size() && text.starts_with(longPrefix)) return true;
    return hasFlag(FLAG_ALLOW_PLUS) && text.size() > 1 && text.front() == '+';
}

// ---- option groups

void CmdLine::parseOptionGroup(const char* group) {
    while (*group) {
        if (CmdArg* argument = findOption(*group)) {
            group = parseOption(*argument, group + 1);
        } else if (tryKeyword(group)) {
            return;
        } else {
            fail(STATUS_BAD_OPTION, "unknown option " + quoted("-", {group, 1}));
            ++group;
        }
    }
}

// Reads an option whose character stands before `rest`; returns where further options go on.
const char* CmdLine::parseOption(CmdArg& argument, const char* rest) {
    state_.usedOptions = true;
    match(argument, CmdArg::MATCHED_BY_OPTION);
    if (!argument.takesValue()) {
        compileValue(argument, nullptr, 0);
        return rest;
    }
    const std::string name(1, argument.optionCharacter());
    if (*rest) {
        if (!argument.wantsSeparateValue()) {
            return compileValue(argument, rest, CmdArg::VALUE_IN_SAME_STRING);
        }
        fail(STATUS_VALUE_MISSING | STATUS_VALUE_NOT_SEPARATE, placementMessage("separate", "-", name));
        return rest + std::string_view(rest).size();
    }
    if (!argument.wantsStickyValue()) {
        awaitValue(argument);
    } else if (argument.needsValue()) {
        fail(STATUS_VALUE_MISSING | STATUS_VALUE_NOT_STICKY, placementMessage("same", "-", name));
    } else {
        compileValue(argument, nullptr, 0);
    }
    return rest;
}

// Second interpretation of an unknown option: -scheme meant as --scheme.
bool CmdLine::tryKeyword(const char* text) {
    if (hasFlag(FLAG_NO_GUESSING | FLAG_OPTIONS_ONLY) || state_.isGuessing) return false;
    const std::string_view view = text;
    CmdArg* argument = findKeyword(view.substr(0, view.find_first_of(":="))).argument;
    if (!argument) return false;
    applyKeyword(*argument, "-", text);
    return true;
}

// ---- keywords

void CmdLine::parseKeyword(std::string_view prefix, const char* text) {
    const std::string_view view = text;
    const std::string_view keyword = view.substr(0, view.find_first_of(":="));
    const KeywordMatch found = findKeyword(keyword);
    if (found.argument) return applyKeyword(*found.argument, prefix, text);
    if ((!found.isAmbiguous || keyword.size() == 1) && tryOptionGroup(text)) return;
    fail(found.isAmbiguous ? STATUS_KEYWORD_AMBIGUOUS : STATUS_BAD_KEYWORD,
         (found.isAmbiguous ? "ambiguous option " : "unknown option ") + quoted(prefix, view));
}

// Second interpretation of an unknown keyword: --sfoo meant as -sfoo.
bool CmdLine::tryOptionGroup(const char* text) {
    if (hasFlag(FLAG_NO_GUESSING | FLAG_KEYWORDS_ONLY) || !findOption(*text)) return false;
    const Restore keepGuessing(state_.isGuessing);
    state_.isGuessing = true;
    parseOptionGroup(text);
    return true;
}

void CmdLine::applyKeyword(CmdArg& argument, std::string_view prefix, const char* text) {
    state_.usedKeywords = true;
    match(argument, CmdArg::MATCHED_BY_KEYWORD);
    const std::size_t separator = std::string_view(text).find_first_of(":=");
    const char* value = separator == std::string_view::npos ? nullptr : text + separator + 1;
    if (value) {
        if (!argument.takesValue()) {
            fail(STATUS_BAD_VALUE, "bad value for " + argumentName(argument) + '.');
        } else if (argument.wantsSeparateValue()) {
            fail(STATUS_VALUE_MISSING | STATUS_VALUE_NOT_SEPARATE,
                 placementMessage("separate", prefix, argument.keyword()));
        } else {
            compileValue(argument, value, CmdArg::VALUE_IN_SAME_STRING);
        }
    } else if (argument.takesValue() && !argument.wantsStickyValue()) {
        awaitValue(argument);
    } else if (argument.needsValue()) {
        fail(STATUS_VALUE_MISSING | STATUS_VALUE_NOT_STICKY,
             placementMessage("same", prefix, argument.keyword()));
    } else {
        compileValue(argument, nullptr, 0);
    }
}

// ---- values

void CmdLine::parsePositional(const char* text) {
    if (hasFlag(FLAG_OPTIONS_FIRST)) state_.sawEndOfOptions = true;
    CmdArg* argument = nextPositional();
    if (!argument) return fail(STATUS_TOO_MANY_ARGS, "too many arguments given.");
    ++state_.positionalCount;
    match(*argument, 0);
    compileValue(*argument, text, CmdArg::VALUE_IN_SEPARATE_STRING);
}

void CmdLine::takeAwaitedValue(const char* text) {
    CmdArg& argument = *state_.awaiting;
    stopAwaiting();
    compileValue(argument, text, CmdArg::VALUE_IN_SEPARATE_STRING);
}

void CmdLine::finishWithoutValue() {
    CmdArg& argument = *state_.awaiting;
    stopAwaiting();
    compileValue(argument, nullptr, 0);
}

void CmdLine::awaitValue(CmdArg& argument) {
    state_.awaitsValue = true;
    state_.awaiting = &argument;
}

void CmdLine::stopAwaiting() {
    state_.awaitsValue = false;
    state_.awaiting = nullptr;
}

void CmdLine::checkState() const {
    const bool hasMatch = state_.awaiting && state_.awaiting->isGiven() && state_.awaiting->takesValue();
    if (state_.awaitsValue != hasMatch) {
        endByInternalError("parse-state is inconsistent with last-matched-arg.");
    }
}

void CmdLine::match(CmdArg& argument, unsigned howMatched) {
    argument.noteMatch(howMatched, ++state_.matchCount);
}

// Hands a value, or null for none, to its argument. Returns the text that the argument left unused: in an
// option group further options follow there.
const char* CmdLine::compileValue(CmdArg& argument, const char* text, unsigned whereFound) {
    const char* const end = text ? text + std::string_view(text).size() : nullptr;
    if (text) argument.noteValue(whereFound);
    if (argument.compile(text, *this) == 0) return text;
    fail(STATUS_BAD_VALUE, "bad value for " + argumentName(argument) + '.');
    return end;
}

// ---- search

CmdArg* CmdLine::findOption(char character) const {
    const bool anyCase = hasFlag(FLAG_ANY_CASE_OPTIONS);
    CmdLineCmdArgIter all(*this);
    while (CmdArg* argument = all()) {
        if (argument->isDummy() || argument->isPositional() || argument->optionCharacter() == 0) continue;
        const char own = argument->optionCharacter();
        if (own == character || (anyCase && toLowerCase(own) == toLowerCase(character))) return argument;
    }
    return nullptr;
}

// The argument whose keyword is, or as the only one begins with, the text.
CmdLine::KeywordMatch CmdLine::findKeyword(std::string_view keyword) const {
    KeywordMatch found;
    if (keyword.empty()) return found;
    CmdLineCmdArgIter all(*this);
    while (CmdArg* argument = all()) {
        if (argument->isDummy() || argument->isPositional() || !argument->keyword()) continue;
        if (equalsIgnoringCase(argument->keyword(), keyword)) return {argument, false};
        if (!startsWithIgnoringCase(argument->keyword(), keyword)) continue;
        found.isAmbiguous = found.isAmbiguous || found.argument;
        found.argument = argument;
    }
    if (found.isAmbiguous) found.argument = nullptr;
    return found;
}

CmdArg* CmdLine::nextPositional() const {
    CmdLineCmdArgIter all(*this);
    while (CmdArg* argument = all()) {
        if (argument->isPositional() && !argument->isDummy() &&
            (!argument->isGiven() || argument->isList())) {
            return argument;
        }
    }
    return nullptr;
}
