#pragma once
#include <optional>
#include <string>
#include <string_view>

// Path helpers. Paths use '/'; a '\' from a stored value is taken as '/'.
namespace PathUtil
{

std::string Normalise(std::string_view path);
// The folder part of a path, without its trailing separator ("" when none).
std::string DirectoryOf(std::string_view path);
// One separator between the two, never a doubled one.
std::string Join(std::string_view directory, std::string_view name);
// Full path of the shared object (or program) that holds this code.
std::optional<std::string> OwnModulePath();

} // namespace PathUtil
