#include "component/command/CmdParse.h"

#include <span>

#include "component/command/CArg.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"

std::optional<CmdRefusal> ParseLine(std::string_view line, std::initializer_list<CArg*> arguments,
                                    const std::string& leftOver)
{
    std::string_view cursor = line;
    const auto taken = static_cast<size_t>(ParseArguments(cursor, arguments));
    if (taken < arguments.size()) {
        const CArg& refused = *arguments.begin()[taken];
        // An argument that stops the line without an error is one no line can make.
        if (refused.Error == CArg::ErrorNone)
            return CmdRefusal{MessageUnknownError()};
        return CmdRefusal{ArgumentMessage(refused)};
    }
    if (!HasNoMoreText(cursor))
        return CmdRefusal{leftOver};
    return std::nullopt;
}
