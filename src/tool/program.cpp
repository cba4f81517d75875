#include "tool/program.h"

#include <exception>
#include <new>
#include <ostream>
#include <sstream>

#include "tool/explain_command.h"
#include "tool/failure.h"
#include "tool/format_command.h"
#include "tool/learn_command.h"
#include "tool/lsp_command.h"
#include "tool/option_pages.h"
#include "tool/options.h"
#include "tool/output.h"
#include "tool/scheme_commands.h"
#include "tool/why_command.h"

namespace Tool {

namespace {

int runCommand(const Options& options, const Streams& streams) {
    switch (options.command) {
        case Command::Format: return formatCommand(options, streams);
        case Command::Schemes: return listSchemesCommand(streams);
        case Command::Keys: return keysCommand(options, streams);
        case Command::SchemeShow: return showSchemeCommand(options, streams);
        case Command::SchemeCheck: return checkSchemeCommand(options, streams);
        case Command::SchemeUpgrade: return upgradeSchemeCommand(options, streams);
        case Command::Why: return whyCommand(options, streams);
        case Command::Explain: return explainCommand(options, streams);
        case Command::Learn: return learnCommand(options, streams);
        case Command::Lsp: return lspCommand(options, streams);
        case Command::Completion: return say(completionScript(options.argument), streams);
        case Command::Manual: return say(manualSource(), streams);
    }
    return CannotWork;
}

int parseAndRun(int count, const char* const* arguments, const Streams& streams) {
    std::ostringstream said;
    const std::optional<Options> options = parseOptions(count, arguments, said);
    return options ? runCommand(*options, streams) : say(said.str(), streams);
}

}  // namespace

int run(int count, const char* const* arguments, const Streams& streams) {
    try {
        return parseAndRun(count, arguments, streams);
    } catch (const Failure& failure) {
        streams.errors << "vantrel: " << failure.message() << '\n';
    } catch (const std::bad_alloc&) {
        streams.errors << "vantrel: there is not enough memory\n";
    } catch (const std::exception& fault) {
        streams.errors << "vantrel: " << fault.what() << '\n';
    }
    return CannotWork;
}

}  // namespace Tool
