#pragma once
#include <string>

#include "component/command/CCmd.h"

class CDebuggerState;

// Small commands that show the framework's work in a transcript.

// "tokens <anything>": every token as [text] and its quote kind.
class TokensCommand : public CCmd
{
public:
    explicit TokensCommand(IQServiceRegistry* host) : CCmd(host, true, "tokens", "tk", "<anything>") {}
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};

// "pick <mode> <name> <expression>": one required argument of each text kind.
class PickCommand : public CCmd
{
public:
    explicit PickCommand(IQServiceRegistry* host) : CCmd(host, true, "pick", "", "<mode> <name> <expression>")
    {
    }
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};

// "edit": takes every following line until ".".
class EditCommand : public CCmd
{
public:
    explicit EditCommand(IQServiceRegistry* host)
        : CCmd(host, true, "edit", "", "<no parameters>", "edit> ", ".")
    {
    }
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
    HRESULT Continue(const std::string& line, std::string& message, bool& continuing) override;
};

// "wait": answers pending; its text comes when the target stops.
class WaitCommand : public CCmd
{
public:
    WaitCommand(IQServiceRegistry* host, CDebuggerState& state)
        : CCmd(host, true, "wait", "", "<no parameters>"), state_(state)
    {
    }
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& state_;
};
