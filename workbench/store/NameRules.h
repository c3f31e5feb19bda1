#pragma once
#include <cstddef>
#include <string>
#include <string_view>

// How workspace, project, configuration and session names compare and which
// are taken. Folding covers ASCII letters only: other bytes, UTF-8 included,
// compare exactly, so two names never fold together by a locale's whim.
namespace NameRules
{

std::string FoldCase(std::string_view name);

// Names may end up in file names and on terminals, so they stay short, plain
// text of one line.
constexpr size_t kMaxLength = 200;

// False, with a message naming `what` ("project", ...), for an empty name, one
// over kMaxLength bytes, "." or "..", one that is not UTF-8, or one holding a
// control character (C0, DEL, or C1) or a path separator.
bool Check(std::string_view what, std::string_view name, std::string& error);

} // namespace NameRules
