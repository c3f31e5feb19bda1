#include "component/program/FileManagerSearch.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "component/util/PathUtil.h"

namespace fs = std::filesystem;

namespace FileManagerSearch
{

namespace
{

std::vector<std::string> Components(const std::string& name)
{
    std::vector<std::string> out;
    size_t start = 0;
    for (size_t end; (end = name.find('/', start)) != std::string::npos; start = end + 1)
        out.push_back(name.substr(start, end - start));
    out.push_back(name.substr(start));
    return out;
}

bool IsDot(const std::string& part)
{
    return part == "." || part == "..";
}

// The name without its "." and ".." components, joined again.
std::string WithoutUpLevels(const std::string& name)
{
    std::string out;
    for (const auto& part : Components(name))
        if (!part.empty() && !IsDot(part))
            out += (out.empty() ? "" : "/") + part;
    return out;
}

bool EndsWith(const std::string& path, const std::string& tail)
{
    return tail.size() <= path.size() && Same(path.substr(path.size() - tail.size()), tail);
}

std::vector<std::string> SortedSubdirectories(const std::string& directory)
{
    std::vector<std::string> out;
    std::error_code ec;
    for (fs::directory_iterator it(directory, ec), end; !ec && it != end; it.increment(ec)) {
        // Links are not followed, so a link to a parent can't make the walk endless.
        std::error_code kind;
        if (it->is_directory(kind) && !it->is_symlink(kind))
            out.push_back(it->path().string());
    }
    std::sort(out.begin(), out.end());
    return out;
}

bool IsFile(const std::string& path)
{
    std::error_code ec;
    return fs::is_regular_file(path, ec);
}

} // namespace

bool NoCaseLess::operator()(const std::string& a, const std::string& b) const
{
    return strcasecmp(a.c_str(), b.c_str()) < 0;
}

bool Same(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

bool IsAbsolute(const std::string& name)
{
    std::string n = PathUtil::Normalise(name);
    return (!n.empty() && n[0] == '/') ||
           (n.size() >= 3 && std::isalpha(static_cast<unsigned char>(n[0])) && n[1] == ':' && n[2] == '/');
}

std::string FileName(const std::string& path)
{
    std::string p = PathUtil::Normalise(path);
    return p.substr(p.find_last_of('/') + 1);
}

std::string Resolve(const std::string& directory, const std::string& name)
{
    std::string n = PathUtil::Normalise(name);
    if (IsAbsolute(n))
        return n;
    std::string joined = PathUtil::Join(directory, n);
    auto parts = Components(n);
    if (std::none_of(parts.begin(), parts.end(), IsDot))
        return joined;
    std::string resolved = fs::path(joined).lexically_normal().string();
    if (resolved.size() > 1 && resolved.back() == '/')
        resolved.pop_back();
    return resolved;
}

std::optional<std::string> Rebase(const std::string& path, const std::string& oldDirectory,
                                  const std::string& newDirectory)
{
    std::string p = PathUtil::Normalise(path);
    std::string old = PathUtil::Normalise(oldDirectory);
    while (old.size() > 1 && old.back() == '/')
        old.pop_back();
    if (old.empty() || p.size() <= old.size() + 1 || !Same(p.substr(0, old.size()), old) ||
        p[old.size()] != '/')
        return std::nullopt;
    return PathUtil::Join(newDirectory, p.substr(old.size() + 1));
}

std::optional<std::string> Find(const std::string& name, const std::string& directory, bool subdirectories,
                                const std::function<bool(const std::string&)>& taken)
{
    std::string path = Resolve(directory, name);
    if (IsFile(path) && !(taken && taken(path)))
        return path;
    // An absolute name means the same file in every subdirectory.
    if (!subdirectories || IsAbsolute(name))
        return std::nullopt;
    for (const auto& sub : SortedSubdirectories(directory))
        if (auto found = Find(name, sub, true, taken))
            return found;
    return std::nullopt;
}

std::optional<std::string> Match(const std::string& name, const std::vector<std::string>& located,
                                 bool& ambiguous)
{
    ambiguous = false;
    std::string wanted = PathUtil::Normalise(name);
    std::string tail = IsAbsolute(wanted) ? std::string() : WithoutUpLevels(wanted);
    std::function<bool(const std::string&)> passes[] = {
        [&](const std::string& path) { return Same(PathUtil::Normalise(path), wanted); },
        [&](const std::string& path) { return !tail.empty() && EndsWith(PathUtil::Normalise(path), tail); },
        [&](const std::string& path) { return Same(FileName(path), FileName(wanted)); },
    };
    for (const auto& matches : passes) {
        std::optional<std::string> first;
        for (const auto& path : located) {
            if (!matches(path))
                continue;
            if (first)
                ambiguous = true;
            else
                first = path;
        }
        if (first)
            return first;
    }
    return std::nullopt;
}

} // namespace FileManagerSearch
