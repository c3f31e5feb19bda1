#pragma once
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "boundary/HResult.h"

class CArg;

// A command line that its parse refused: the message and the result code the
// command answers with. Most refusals are errors; a few only tell.
struct CmdRefusal {
    std::string Message;
    HRESULT Result = E_FAIL;
};

// What a command's parse gives: its arguments, or the refusal. A parse
// touches no manager, so that a test can call it with a line and the
// target's bounds alone.
template <class Args> class Parsed
{
public:
    Parsed(Args args) : args_(std::move(args)) {}
    Parsed(CmdRefusal refusal) : refusal_(std::move(refusal)) {}

    explicit operator bool() const { return args_.has_value(); }
    const Args& operator*() const { return *args_; }
    const Args* operator->() const { return &*args_; }
    const CmdRefusal& Refusal() const { return refusal_; }

    // Puts the refusal into the command's answer.
    HRESULT Answer(std::string& message) const
    {
        message = refusal_.Message;
        return refusal_.Result;
    }

private:
    std::optional<Args> args_;
    CmdRefusal refusal_;
};

// Feeds the line to the arguments in order. Nothing when each took its token
// and no text is left; else the refusal: the first argument that stopped the
// line explains itself (ArgumentMessage), and text after the last argument
// gives leftOver.
std::optional<CmdRefusal> ParseLine(std::string_view line, std::initializer_list<CArg*> arguments,
                                    const std::string& leftOver);
