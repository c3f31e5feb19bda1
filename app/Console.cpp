#include "app/Console.h"

#include <istream>
#include <ostream>

#include "app/ComponentLibrary.h"
#include "app/DebuggerInstance.h"
#include "boundary/Ids.h"
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

const char* kUsage = "usage: tessel [--version] [--component FILE]\n";

} // namespace

bool ParseConsoleArguments(const std::vector<std::string>& args, ConsoleOptions& options, std::string& error)
{
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--version" || a == "-V") {
            options.showVersion = true;
        } else if (a == "--help" || a == "-h") {
            options.showHelp = true;
        } else if (a == "--component") {
            if (i + 1 >= args.size()) {
                error = "Option --component needs a file name";
                return false;
            }
            options.componentPath = args[++i];
        } else {
            error = "Unknown option: " + a;
            return false;
        }
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
        err << error << "\n";
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

    Workbench workbench(out, interactive ? &in : nullptr, interactive);
    DebuggerInstance instance(library, workbench.Registry(), kFirstInstance);
    if (!instance.Start(error)) {
        err << error << "\n";
        return 1;
    }
    out << name << " " << major << "." << minor << ": session ready. Type \"quit\" to leave.\n";
    std::string line;
    while (true) {
        workbench.Loop().RunUntilIdle();
        if (interactive)
            out << "> " << std::flush;
        if (!std::getline(in, line))
            break;
        if (line == "quit" || line == "exit")
            break;
        if (line.find_first_not_of(" \t") == std::string::npos)
            continue;
        out << "Unknown command: " << line.substr(line.find_first_not_of(" \t")) << "\n";
    }
    instance.Stop();
    return 0;
}
