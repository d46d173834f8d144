// kvhost: starts the driver as a spooler and applications do, from a command line.
#include <array>
#include <cstdio>
#include <cstdlib>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "host/commands.h"
#include "host/failure.h"
#include "platform/host.h"

namespace
{
// ---- the machine ----------------------------------------------------------------------------

// Options that set a variable of the same meaning for this run.
struct MachineOption {
    const char *lpszOption, *lpszVariable, *lpszHelp;
    std::string strValue{};
};

std::array aMachineOptions = {
    MachineOption{"--root", "KV_ROOT", "directory that holds the machine's drives"},
    MachineOption{"--lang", "KV_LANG", "user's language: de_DE, or 0x0407"},
    MachineOption{"--acp", "KV_ACP", "ANSI code page: 1252, 932, ..."},
    MachineOption{"--measure", "KV_MEASURE", "0 metric, 1 inch"},
    MachineOption{"--os", "KV_OSVERSION", "system version that is reported: 3.51"},
    MachineOption{"--display", "KV_DISPLAY", "sdl, a window, or headless"},
    MachineOption{"--scale", "KV_SCALE", "the window's pixels per pixel, 1 to 4"},
    MachineOption{"--script", "KV_SCRIPT", "file of actions that plays the user"},
    MachineOption{"--shots", "KV_SHOTS", "folder for the script's pictures"},
    MachineOption{"--transcript", "KV_TRANSCRIPT", "file for what was shown and done"},
};

// The layer's messages name its variables; who gave an option gets that named.
std::string InOptionTerms(std::string message)
{
    for (const MachineOption &option : aMachineOptions) {
        const size_t nAt = message.find(option.lpszVariable);
        if (!option.strValue.empty() && nAt != std::string::npos)
            message.replace(nAt, std::string_view(option.lpszVariable).size(), option.lpszOption);
    }
    return message;
}

// The display is opened for commands that show windows, and for a script, whose actions would
// otherwise be passed over in silence.
void SetUpMachine(bool bWindows)
{
    for (const MachineOption &option : aMachineOptions)
        if (!option.strValue.empty())
            setenv(option.lpszVariable, option.strValue.c_str(), 1);
    try {
        kvp::Configure(kvp::FromEnvironment());
        const kvp::Screen screen = kvp::ScreenFromEnvironment();
        if (bWindows || !screen.strScript.empty())
            kvp::ConfigureScreen(screen);
    } catch (const std::invalid_argument &wrong) {
        throw Failure(EXIT_USAGE, InOptionTerms(wrong.what()));
    } catch (const std::runtime_error &wrong) {
        throw Failure(EXIT_USAGE, wrong.what());
    }
}

// ---- the commands ---------------------------------------------------------------------------

// What a caller's variable that was never set leaves is a mistake, not "none".
std::string NotEmpty(const std::string &value)
{
    return value.empty() ? "must not be empty" : "";
}

void AddPrinterOption(CLI::App &command, Request &request)
{
    command.add_option("-p,--printer", request.strPrinter, "the printer's name")->required();
}

void AddJsonOption(CLI::App &command, Request &request)
{
    command.add_flag("--json", request.bJson, "for programs");
}

void AddInOption(CLI::App &command, Request &request)
{
    command.add_option("--in", request.strIn, "file with a settings record to merge")
        ->check(NotEmpty);
}

void AddOutOption(CLI::App &command, Request &request)
{
    command.add_option("--out", request.strOut, "file that receives the settings record")
        ->check(NotEmpty);
}

void TakeAddPrinter(CLI::App &command, Request &request)
{
    command.add_option("NAME", request.strPrinter, "name of the new printer")->required();
    command.add_option("--driver", request.strModel, "its driver's name, the model")->required();
}

void TakeRemovePrinter(CLI::App &command, Request &request)
{
    command.add_option("NAME", request.strPrinter, "the printer's name")->required();
}

void TakeSettings(CLI::App &command, Request &request)
{
    AddPrinterOption(command, request);
    AddInOption(command, request);
    AddOutOption(command, request);
    AddJsonOption(command, request);
    CLI::Option *pQuiet =
        command.add_flag("--no-prompt", request.bNoPrompt, "without the settings sheet");
    command.add_flag("--advanced", request.bAdvanced, "through the always-prompting entry point")
        ->excludes(pQuiet);
}

void TakeCapabilities(CLI::App &command, Request &request)
{
    AddPrinterOption(command, request);
    command.add_option("QUERY", request.aQueries, "papers, bins, ...; all without one");
    AddInOption(command, request);
    AddJsonOption(command, request);
}

void TakeItem(CLI::App &command, Request &request)
{
    AddPrinterOption(command, request);
    command.add_option("ACTION", request.strAction, "get, set, range or level")
        ->required()
        ->check(CLI::IsMember({"get", "set", "range", "level"}));
    command.add_option("ITEM", request.strItem, "number or name; all without one");
    command.add_option("VALUE", request.aValues, "what to set");
    AddInOption(command, request);
    AddOutOption(command, request);
    AddJsonOption(command, request);
}

void TakeDefault(CLI::App &command, Request &request)
{
    AddPrinterOption(command, request);
    CLI::Option *pIn =
        command.add_option("--in", request.strIn, "file with the record to keep")->check(NotEmpty);
    CLI::Option *pClear = command.add_flag("--clear", request.bClear, "keep none any more");
    AddOutOption(command, request);
    AddJsonOption(command, request);
    pClear->excludes(pIn);
    pClear->excludes(command.get_option("--out"));
}

void TakeShow(CLI::App &command, Request &request)
{
    command.add_option("FILE", request.strFile, "file with a settings record")->required();
    AddJsonOption(command, request);
}

constexpr struct {
    const char *lpszName, *lpszHelp;
    void (*take)(CLI::App &, Request &); // declares its arguments
    int (*run)(const Request &);
    bool bWindows; // shows some
} aCommands[] = {
    {"add-printer", "adds a printer", TakeAddPrinter, AddPrinter, false},
    {"remove-printer", "removes a printer", TakeRemovePrinter, RemovePrinter, false},
    {"printers", "lists the printers", AddJsonOption, ListPrinters, false},
    {"settings", "a document's settings", TakeSettings, ShowSettings, true},
    {"caps", "what a printer can do", TakeCapabilities, ShowCapabilities, false},
    {"item", "gets and sets single settings", TakeItem, WorkOnItem, false},
    {"default", "the record kept for a printer", TakeDefault, WorkOnDefault, false},
    {"properties", "a printer's properties", AddPrinterOption, ShowProperties, true},
    {"show", "a settings record from a file", TakeShow, ShowFile, false},
};

int Run(CLI::App &app, Request &request, int argc, char **argv)
{
    app.fallthrough();
    app.require_subcommand(0, 1);
    for (MachineOption &option : aMachineOptions)
        app.add_option(option.lpszOption, option.strValue, option.lpszHelp)
            ->check(NotEmpty)
            ->group("Machine");
    for (const auto &command : aCommands)
        command.take(*app.add_subcommand(command.lpszName, command.lpszHelp), request);
    app.parse(argc, argv);
    if (app.get_subcommands().empty())
        throw Failure(EXIT_USAGE, "no command: \"kvhost --help\" lists them");
    for (const auto &command : aCommands) {
        if (!app.got_subcommand(command.lpszName))
            continue;
        SetUpMachine(command.bWindows && !request.bNoPrompt);
        const int nStatus = command.run(request);
        // Why it failed has been said where it failed.
        return kvp::EndPlay().bFailed ? EXIT_SCRIPT : nStatus;
    }
    return EXIT_USAGE;
}

int Report(int status, const std::string &line)
{
    std::fflush(stdout);
    fmt::print(stderr, "kvhost: {}\n", line);
    return status;
}

// The parser's own statuses are of no use to a caller; help is the only one that is no mistake.
int ReportParse(const CLI::App &app, const CLI::ParseError &error)
{
    if (error.get_exit_code() == 0)
        return app.exit(error);
    return Report(EXIT_USAGE,
                  fmt::format("{}; \"kvhost --help\" tells how it is used", error.what()));
}

int Guarded(int argc, char **argv)
{
    CLI::App app("Plays spooler and application for the printer driver", "kvhost");
    Request request;
    int nStatus = EXIT_DONE;
    try {
        nStatus = Run(app, request, argc, argv);
    } catch (const CLI::ParseError &error) {
        nStatus = ReportParse(app, error);
    } catch (const Failure &failure) {
        nStatus = Report(failure.nStatus, failure.what());
    } catch (const std::exception &error) {
        nStatus = Report(EXIT_REFUSED, error.what());
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        return Report(EXIT_REFUSED, "the output cannot be written: give it a place with room");
    return nStatus;
}
} // namespace

int main(int argc, char **argv)
{
    try {
        return Guarded(argc, argv);
    } catch (...) { // not even the report could be written
        return EXIT_REFUSED;
    }
}
