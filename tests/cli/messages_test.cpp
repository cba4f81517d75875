#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <stdexcept>

#include "cli/diagnostic_lines.h"
#include "cli/exception_report.h"
#include "cli/failure.h"
#include "scheme/property_set_store.h"
#include "trn/exception.h"

namespace {

TEST(DiagnosticLines, TheStatusNeverWrapsAroundToSuccess) {
    std::ostringstream errors;
    EXPECT_EQ(Cli::printDiagnostics(std::list<Tessel::Diagnostic>(512), "-", errors), 255);
}

template <typename Thrown>
std::string reportOf(const Thrown& thrown) {
    std::ostringstream errors;
    try {
        throw thrown;
    } catch (...) {
        EXPECT_EQ(Cli::reportException("/schemes", errors), 1);
    }
    return errors.str();
}

TEST(ExceptionReport, EveryKindHasItsText) {
    using Store = TesselUI::PropertySetStore;
    const auto unexpected = [](const std::string& details) {
        return "An unexpected error has occurred. The current Vantrel C++ operation has failed. Please contact Zelmor "
               "Software Technical Support and report the following details: " + details;
    };
    EXPECT_EQ(reportOf(Store::ReadError("/schemes/a%s.vts")),
              "Vantrel C++ encountered an error while trying to read the scheme file \"/schemes/a%s.vts\". To correct "
              "the problem, you should delete this file before restarting Vantrel C++ and attempting this operation "
              "again.\n");
    EXPECT_EQ(reportOf(Store::WriteError("/schemes/b.vts")),
              "Vantrel C++ encountered an error while trying to write the scheme file \"/schemes/b.vts\". To correct "
              "the problem, ensure you have enough disk space and that the directory \"/schemes\" is not marked "
              "read-only.\n");
    EXPECT_EQ(reportOf(Trn::AlreadyExistsException()),
              unexpected("Attempt to add an object to a collection that already exists in that collection.\n"));
    EXPECT_EQ(reportOf(std::bad_alloc()),
              "Vantrel C++ is out of memory. Please try closing applications before attempting to run this "
              "application again.\n");
    EXPECT_EQ(reportOf(std::runtime_error("broken")), unexpected("broken\n"));
    EXPECT_EQ(reportOf(42), unexpected("Unknown\n"));
    EXPECT_EQ(reportOf(Cli::Failure("Error: a reason")), "Error: a reason\n");
}

}  // namespace
