#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

// Finding the files a module's debug data names, and the name rules that go
// with it. File names compare without regard to case.
namespace FileManagerSearch
{

struct NoCaseLess {
    bool operator()(const std::string& a, const std::string& b) const;
};
bool Same(const std::string& a, const std::string& b);

bool IsAbsolute(const std::string& name);
std::string FileName(const std::string& path);
// The path a name means in a directory: an absolute name as it stands, a
// relative one joined, its "." and ".." components resolved.
std::string Resolve(const std::string& directory, const std::string& name);
// `path` with `oldDirectory` in front replaced by `newDirectory`; nullopt when
// the path isn't below the old directory.
std::optional<std::string> Rebase(const std::string& path, const std::string& oldDirectory,
                                  const std::string& newDirectory);

// The existing file a name means in a directory or, with `subdirectories`,
// below it, depth first with the subdirectories in name order. A path
// `taken` says is in use counts as not found there.
std::optional<std::string> Find(const std::string& name, const std::string& directory, bool subdirectories,
                                const std::function<bool(const std::string&)>& taken);

// The located path a debug-data name means, in three passes: whole path, the
// name's tail without its ".." components, file name alone. A second match
// in the deciding pass sets `ambiguous`; the first one is the answer.
std::optional<std::string> Match(const std::string& name, const std::vector<std::string>& located,
                                 bool& ambiguous);

} // namespace FileManagerSearch
