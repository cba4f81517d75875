#include "cli/arguments.h"

#include "cli/failure.h"
#include "cli/product.h"
#include "cmdline/cmd_line.h"
#include "cmdline/string_arg.h"
#include "scheme/scheme_conversion.h"
#include "textstream/string_escape.h"

namespace Cli {

Arguments parseArguments(int count, const char* const* vector, std::ostream& errors) {
    CmdArgStr scheme('s', "scheme", "schemename", "scheme to use for formatting",
                     CmdArg::SYNTAX_REQUIRED | CmdArg::SYNTAX_VALUE_REQUIRED);
    CmdArgStr input("infile", "name of the file to read",
                    CmdArg::SYNTAX_POSITIONAL | CmdArg::SYNTAX_VALUE_REQUIRED);
    CmdArgStr output("outfile", "name of the file to write (can be the same as infile)",
                     CmdArg::SYNTAX_POSITIONAL | CmdArg::SYNTAX_VALUE_REQUIRED);

    CmdLine commandLine(count > 0 ? vector[0] : nullptr, &scheme, &input, &output, nullptr);
    commandLine.setDescription(Zelmor::formatString(BANNER, TesselUI::CURRENT_VERSION).c_str());
    commandLine.setErrorStream(errors);
    commandLine.setQuitHandler([](int status) { throw EndOfProgram{status}; });
    CmdArgvIter strings(count - 1, vector + 1);
    commandLine.parse(strings);
    return {static_cast<const char*>(scheme), static_cast<const char*>(input),
            static_cast<const char*>(output)};
}

}  // namespace Cli
