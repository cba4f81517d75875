#pragma once

#include <cstddef>
#include <vector>

#include "cmdline/cmd_arg.h"

// Arguments in the order of their declaration. Borrows them.
class CmdArgList {
public:
    void add(CmdArg& argument) { arguments_.push_back(&argument); }
    std::size_t size() const { return arguments_.size(); }
    CmdArg& at(std::size_t index) const { return *arguments_[index]; }

private:
    std::vector<CmdArg*> arguments_;
};

// Lists of arguments: first the program's own, then those that every command line has. Borrows the lists.
class CmdArgListList {
public:
    void add(const CmdArgList& list) { lists_.push_back(&list); }
    std::size_t size() const { return lists_.size(); }
    const CmdArgList& at(std::size_t index) const { return *lists_[index]; }

private:
    std::vector<const CmdArgList*> lists_;
};

// Gives the arguments of one list, then null.
class CmdArgListIter {
public:
    explicit CmdArgListIter(const CmdArgList& list) : list_(&list) {}
    CmdArg* operator()() { return next_ < list_->size() ? &list_->at(next_++) : nullptr; }

private:
    const CmdArgList* list_;
    std::size_t next_ = 0;
};

// Gives the lists of a list of lists, then null.
class CmdArgListListIter {
public:
    explicit CmdArgListListIter(const CmdArgListList& lists) : lists_(&lists) {}
    const CmdArgList* operator()() { return next_ < lists_->size() ? &lists_->at(next_++) : nullptr; }

private:
    const CmdArgListList* lists_;
    std::size_t next_ = 0;
};
