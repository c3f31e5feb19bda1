#include "component/util/PathUtil.h"

#include <dlfcn.h>

#include <climits>
#include <cstdlib>

namespace PathUtil
{

std::string Normalise(std::string_view path)
{
    std::string out;
    out.reserve(path.size());
    for (char c : path) {
        char d = c == '\\' ? '/' : c;
        // Collapse doubled separators, but keep a leading "//" pair out of it:
        // nothing here needs network paths.
        if (d == '/' && !out.empty() && out.back() == '/')
            continue;
        out += d;
    }
    return out;
}

std::string DirectoryOf(std::string_view path)
{
    std::string p = Normalise(path);
    auto slash = p.find_last_of('/');
    if (slash == std::string::npos)
        return {};
    if (slash == 0)
        return "/";
    return p.substr(0, slash);
}

std::string Join(std::string_view directory, std::string_view name)
{
    std::string dir = Normalise(directory);
    std::string file = Normalise(name);
    if (dir.empty())
        return file;
    while (!file.empty() && file.front() == '/')
        file.erase(0, 1);
    if (dir.back() != '/')
        dir += '/';
    return dir + file;
}

std::optional<std::string> OwnModulePath()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&OwnModulePath), &info) == 0 || info.dli_fname == nullptr ||
        info.dli_fname[0] == '\0')
        return std::nullopt;
    char resolved[PATH_MAX];
    if (realpath(info.dli_fname, resolved) == nullptr)
        return std::string(info.dli_fname);
    return std::string(resolved);
}

} // namespace PathUtil
