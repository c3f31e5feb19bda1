#pragma once
#include <string>
#include <string_view>

// How workspace, project, configuration and session names compare and which
// are taken. Folding covers ASCII letters only: other bytes, UTF-8 included,
// compare exactly, so two names never fold together by a locale's whim.
namespace NameRules
{

std::string FoldCase(std::string_view name);

// False, with a message naming `what` ("project", ...), for an empty name or
// one holding a control character (C0, DEL, or C1 in UTF-8).
bool Check(std::string_view what, std::string_view name, std::string& error);

} // namespace NameRules
