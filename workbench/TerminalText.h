#pragma once
#include <string>
#include <string_view>

// Text on its way to a terminal.
namespace TerminalText
{

// Components end lines with carriage return and line feed; a terminal wants
// the line feed alone.
std::string Lines(std::string_view text);

// Control characters other than line feed and tab shown as a person can read
// them ("^[" for escape, "\u009B" for a C1 control), so that a line typed or
// read from a file cannot move the cursor or recolour the terminal.
std::string Visible(std::string_view text);

} // namespace TerminalText
