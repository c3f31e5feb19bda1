#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "boundary/interfaces/Command.h"
#include "boundary/interfaces/Workbench.h"
#include "component/command/CCmdEvaluator.h"

// The base of every command of the command line. A command is one small object
// that the workbench finds as a provider of IQCmdClient2: it parses its line,
// asks a manager, and turns the outcome into text. The object lives as long as
// its owner; it registers itself on construction and withdraws on destruction.
class CCmd : public IQCmdClient2
{
public:
    // abbreviation: empty for a command without one. parameterText is what the
    // command window's help shows after the name.
    CCmd(IQServiceRegistry* host, bool stripName, std::string fullName, std::string abbreviation,
         std::string parameterText, std::string prompt = {}, std::string terminator = {});
    // names: the full name first, then every alias.
    CCmd(IQServiceRegistry* host, bool stripName, std::vector<std::string> names, std::string parameterText,
         std::string prompt = {}, std::string terminator = {});
    virtual ~CCmd();
    CCmd(const CCmd&) = delete;
    CCmd& operator=(const CCmd&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED
    HRESULT GetCommandNames(Variant& names) override;
    HRESULT ExecuteCommand(const std::string& line, std::string& message, std::string& prompt,
                           VariantBool& continuing, VariantBool& pending, IQCmdCompletionSink* sink) override;
    HRESULT ReservedCommandOperation() override { return S_OK; }
    HRESULT GetCommandNamesAndKind(Variant& names, int32_t& kind) override;

    // text: the line with the command's name stripped when StripName is set.
    virtual HRESULT Run(const std::string& text, std::string& message, bool& continuing) = 0;
    // Lines after Run asked to go on. By default every line but Terminator keeps
    // the command continuing.
    virtual HRESULT Continue(const std::string& line, std::string& message, bool& continuing);

    // Leaves the command window now; the object itself may still be running
    // and is deleted later by its owner.
    void Retire() { Withdraw(); }

    // Empty when the command was given no names.
    const std::string& FullName() const;
    const std::string& ParameterText() const { return parameterText_; }

protected:
    bool StripName;
    std::string Prompt;
    std::string Terminator;
    CCmdEvaluator Evaluator;
    bool Continuing = false;
    VariantBool Pending = VARIANT_FALSE;
    IQCmdCompletionSink* CompletionSink = nullptr;
    IQServiceRegistry* Host;
    // Every command answers kind 2; the base sets it so no command can forget.
    int32_t Kind = 2;
    std::vector<std::string> Names;

private:
    void Register();
    void Withdraw();

    std::string parameterText_;
    bool withdrawn_ = false;
};
