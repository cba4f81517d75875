#include "cli/exception_report.h"

#include <exception>
#include <new>
#include <ostream>

#include "cli/failure.h"
#include "scheme/property_set_store.h"
#include "textstream/string_escape.h"
#include "trn/exception.h"

namespace Cli {

namespace {

using Zelmor::formatString;

constexpr int failureStatus = 1;

constexpr const char* readErrorText =
    "Vantrel C++ encountered an error while trying to read the scheme file \"%s\". "
    "To correct the problem, you should delete this file before restarting Vantrel C++ and attempting this "
    "operation again.";
constexpr const char* writeErrorText =
    "Vantrel C++ encountered an error while trying to write the scheme file \"%s\". To correct the problem, "
    "ensure you have enough disk space and that the directory \"%s\" is not marked read-only.";
constexpr const char* unexpectedErrorText =
    "An unexpected error has occurred. The current Vantrel C++ operation has failed. Please contact Zelmor "
    "Software Technical Support and report the following details: %s";
constexpr const char* outOfMemoryText =
    "Vantrel C++ is out of memory. Please try closing applications before attempting to run this application "
    "again.";

std::string describeException(const std::string& schemeDirectory) {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure.message();
    } catch (const TesselUI::PropertySetStore::ReadError& error) {
        return formatString(readErrorText, error.path().c_str());
    } catch (const TesselUI::PropertySetStore::WriteError& error) {
        return formatString(writeErrorText, error.path().c_str(), schemeDirectory.c_str());
    } catch (const Trn::Exception& exception) {
        return formatString(unexpectedErrorText, exception.message().c_str());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& exception) {
        return formatString(unexpectedErrorText, exception.what());
    } catch (...) {
        return formatString(unexpectedErrorText, "Unknown");
    }
}

}  // namespace

int reportException(const std::string& schemeDirectory, std::ostream& errors) {
    try {
        errors << describeException(schemeDirectory) << '\n';
    } catch (const std::bad_alloc&) {  // the one text that is written without making it first
        errors << outOfMemoryText << '\n';
    }
    errors.flush();
    return failureStatus;
}

}  // namespace Cli
