#pragma once

#include <exception>
#include <new>
#include <string>

#include "tool/failure.h"
#include "trn/exception.h"

namespace Tool {

// The source in a file. Throws Failure, which names the file.
std::string readSource(const std::string& file);

// What kept an action from being done, in words that name the file; empty when nothing did. For threads, which nothing
// may leave, and for those who tell of many files.
template <typename Action>
std::string problemWith(const std::string& file, Action action) {
    try {
        action();
        return {};
    } catch (const Failure& failure) {
        return failure.message();
    } catch (const Trn::Exception& fault) {
        return file + ": " + fault.message();
    } catch (const std::bad_alloc&) {
        return file + ": there is not enough memory";
    } catch (const std::exception& fault) {
        return file + ": " + fault.what();
    }
}

}  // namespace Tool
