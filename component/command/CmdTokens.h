#pragma once
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

class CArg;

// Cutting a command line into arguments. The cursor is the rest of the line;
// reading a token moves it on, and putting it back is assigning the old view.

// Cuts one token. Only a blank (0x20) separates tokens; a tab is part of one.
// A double-quoted token keeps its quotes, with a doubled quote inside read as
// one, and sets quoteKind to 1. A token in braces loses them; braces do not
// nest. An unclosed quote or brace runs to the end of the line.
std::string ReadToken(std::string_view& cursor, int32_t& quoteKind);

// Feeds tokens to the arguments in order and answers how many succeeded. The
// cursor is put back before a token that an argument refused or passed on, so
// it is left at the first text no argument took. A null entry ends the list.
int ParseArguments(std::string_view& cursor, std::span<CArg* const> arguments);
inline int ParseArguments(std::string_view& cursor, std::initializer_list<CArg*> arguments)
{
    return ParseArguments(cursor, std::span<CArg* const>(arguments.begin(), arguments.size()));
}

// True when nothing but blanks and tabs is left.
bool HasNoMoreText(std::string_view rest);
