#include "app/Console.h"

#include <chrono>
#include <iomanip>
#include <istream>
#include <ostream>

#include "app/ComponentLibrary.h"
#include "app/DebuggerInstance.h"
#include "app/HeldOutput.h"
#include "app/PlatformHost.h"
#include "app/ReadlineShell.h"
#include "boundary/Ids.h"
#include "platform/sim/SimDevice.h"
#include "workbench/ComponentRegistrar.h"
#include "workbench/Workbench.h"

namespace
{

constexpr const char* kComponentFile = "libtessel-debugger.so";
constexpr uint32_t kFirstInstance = 1;

std::string DirectoryOf(const std::string& path)
{
    auto slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

const char* kUsage =
    "usage: tessel [--batch FILE.qdc | -c \"command; command\"] [--component FILE] [--version]\n"
    "  --batch FILE   run the commands of a batch file, then leave\n"
    "  -c COMMANDS    run the commands, separated by ';', then leave\n"
    "  --component F  load the debugger component from F\n"
    "  --version      print the debugger component's name and version\n"
    "  --list-platforms             print the installed platforms\n"
    "  --workspace DIR              the workspace folder (default: the current directory)\n"
    "  --session NAME               pick or make a session of the workspace\n"
    "  --platform NAME              store the session's platform\n"
    "  --device NAME|FILE           store the simulator's device ('' for the platform's own): a\n"
    "                               name --list-platforms shows, or a workspace file with a memory\n"
    "                               map, a region a line: flash|ram|peripheral BASE SIZE rwx [NAME]\n"
    "  --batch-at TIMING FILE       store a batch file for a timing (connection, before-download,\n"
    "                               after-download, after-reset, or 0 to 3)\n"
    "  --hold-memory-until-batch yes|no\n"
    "                               keep target memory closed to views until the connection\n"
    "                               batch has run (the batch's own commands reach it)\n"
    "  --reset-after-download yes|no\n"
    "                               store whether the target is reset after each download\n"
    "Exit status: 1 when anything was reported as an error (a line starting \"Error: \"), else 0;\n"
    "2 for a bad command line.\n";

void ListDevices(std::ostream& out)
{
    out << "\nDevices of the simulator (--device NAME):\n";
    for (const SimDevice& device : SimDevice::All()) {
        const SimMapParse map = device.Map();
        out << "  " << std::left << std::setw(10) << device.name << "  " << std::setw(9) << device.variant
            << "  " << (map.map ? map.map->Summary(false) : map.error) << "\n";
    }
}

// Runs the loop until every queued line has run. A command that waits for the
// target keeps the window pending; the loop goes on until its text arrives.
void RunUntilIdle(Workbench& workbench)
{
    while (true) {
        workbench.Loop().RunUntilIdle();
        if (workbench.Commands().Idle())
            return;
        workbench.Loop().RunUntil([&] { return workbench.Commands().Idle(); },
                                  std::chrono::milliseconds(1000));
    }
}

} // namespace

bool ParseConsoleArguments(const std::vector<std::string>& args, ConsoleOptions& options, std::string& error)
{
    auto value = [&](size_t& i, std::string& into) {
        if (i + 1 >= args.size()) {
            error = "Option " + args[i] + " needs a value";
            return false;
        }
        into = args[++i];
        return true;
    };
    auto yesNo = [&](size_t& i, int32_t& into) {
        std::string answer;
        if (!value(i, answer))
            return false;
        if (answer != "yes" && answer != "no") {
            error = args[i - 1] + " takes yes or no, not " + answer;
            return false;
        }
        into = answer == "yes" ? 1 : 0;
        return true;
    };
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--version" || a == "-V") {
            options.showVersion = true;
        } else if (a == "--list-platforms") {
            options.listPlatforms = true;
        } else if (a == "--help" || a == "-h") {
            options.showHelp = true;
        } else if (a == "--component") {
            if (!value(i, options.componentPath))
                return false;
        } else if (a == "--batch") {
            if (!value(i, options.batchFile))
                return false;
        } else if (a == "--workspace") {
            if (!value(i, options.session.workspace))
                return false;
        } else if (a == "--session") {
            if (!value(i, options.session.session))
                return false;
        } else if (a == "--platform") {
            if (!value(i, options.session.platform))
                return false;
        } else if (a == "--device") {
            if (!value(i, options.session.device.emplace()))
                return false;
        } else if (a == "--hold-memory-until-batch") {
            if (!yesNo(i, options.session.holdMemory))
                return false;
        } else if (a == "--reset-after-download") {
            if (!yesNo(i, options.session.resetAfterDownload))
                return false;
        } else if (a == "--batch-at") {
            std::string timing, file;
            if (!value(i, timing) || !value(i, file))
                return false;
            int32_t number = 0;
            if (!WorkspaceSession::ParseTiming(timing, number)) {
                error = "Unknown timing: " + timing +
                        " (use 0 to 3, connection, before-download, after-download or after-reset)";
                return false;
            }
            options.session.batches.emplace_back(number, file);
        } else if (a == "-c") {
            if (!value(i, options.commands))
                return false;
            options.hasCommands = true;
        } else {
            error = "Unknown option: " + a;
            return false;
        }
    }
    if (!options.batchFile.empty() && options.hasCommands) {
        error = "Options --batch and -c cannot be used together";
        return false;
    }
    return true;
}

int RunConsole(const ConsoleOptions& options, const std::string& programPath, std::istream& in,
               std::ostream& out, std::ostream& err, bool interactive)
{
    if (options.showHelp) {
        out << kUsage;
        return 0;
    }
    std::string path = options.componentPath.empty() ? DirectoryOf(programPath) + "/" + kComponentFile
                                                     : options.componentPath;
    ComponentLibrary library;
    std::string error;
    if (!library.Load(path, error)) {
        err << "Error: " << error << "\n";
        return 1;
    }
    int32_t major = 0, minor = 0;
    library.GetComponentVersion(major, minor);
    ComponentRegistrar registrar;
    library.LibraryRegister2(&registrar);
    const std::string name = registrar.NameOf(Ids::Component);
    if (options.showVersion) {
        out << name << " " << major << "." << minor << "\n";
        return 0;
    }

    const bool scripted = !options.batchFile.empty() || options.hasCommands;
    const bool asking = interactive && !scripted;
    // At a prompt, text waits for the shell to print it above the typed line.
    HeldOutput held;
    std::ostream heldStream(&held);
    Workbench workbench(asking ? heldStream : out, asking ? &in : nullptr, asking, {}, &out);
    PlatformHost platforms(workbench.Registry());
    if (options.listPlatforms) {
        for (const auto& platform : platforms.Names())
            out << platform << "\n";
        ListDevices(out);
        out << "\nObject formats (file_load FORMAT):";
        for (const auto& format : platforms.Formats())
            out << " " << format;
        out << "\n";
        return 0;
    }
    WorkspaceSession workspace(workbench.Registry(), err);
    if (!workspace.Open(options.session, DirectoryOf(programPath), error)) {
        err << "Error: " << error << "\n";
        return 1;
    }
    DebuggerInstance instance(library, workbench.Registry(), kFirstInstance);
    if (!instance.Start(error)) {
        err << "Error: " << error << "\n";
        return 1;
    }
    const bool echo = scripted || !interactive;
    workbench.Commands().SetEcho(echo);
    instance.OpenSession(workspace.Key());
    workbench.Loop().RunUntilIdle();
    CommandWindow& window = workbench.Commands();
    int status = 0;
    if (scripted) {
        if (!options.batchFile.empty() && !window.SubmitBatchFile(options.batchFile)) {
            err << "Error: Cannot open batch file: " << options.batchFile << "\n";
            status = 1;
        }
        if (!options.commands.empty())
            window.SubmitSequence(options.commands);
        RunUntilIdle(workbench);
    } else if (interactive) {
        out << held.Take() << name << " " << major << "." << minor
            << ". Type \"help\" for the commands, \"quit\" to leave.\n";
        ReadlineShell shell(workbench, held, workspace.HistoryFile());
        shell.Run();
    } else {
        // Lines from a pipe: shown with their text, as a transcript.
        std::string line;
        while (!window.QuitRequested() && std::getline(in, line)) {
            if (line == "quit" || line == "exit")
                break;
            window.Submit(line);
            RunUntilIdle(workbench);
        }
    }
    if (window.Failures() > 0 || workbench.Messages().Errors() > 0 || workspace.Problems() > 0)
        status = 1;
    instance.CloseSession();
    instance.Stop();
    out << held.Take();
    return status;
}
