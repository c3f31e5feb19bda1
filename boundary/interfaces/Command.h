#pragma once
#include <cstdint>
#include <string>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"
#include "boundary/Variant.h"

// The exchange between the workbench's command window and the components'
// commands. The window asks every provider of IQCmdClient2 for its names and
// hands a typed line to the one whose name matches.

// Told the final text of a command that answered "pending".
struct IQCmdCompletionSink : IUnknown {
    virtual HRESULT OnCommandComplete(const std::string& text, HRESULT result) = 0; // 3
};

struct IQCmdClient : IUnknown {
    // A 0x2008 list: the full name first, then the abbreviation or other aliases.
    virtual HRESULT GetCommandNames(Variant& names) = 0; // 3
    // message: the text to show; prompt: set only while continuing;
    // continuing: 0xFFFF while the next line belongs to this command;
    // pending: 0xFFFF when the text is not final and comes later to `sink`.
    virtual HRESULT ExecuteCommand(const std::string& line, std::string& message, std::string& prompt,
                                   VariantBool& continuing, VariantBool& pending,
                                   IQCmdCompletionSink* sink) = 0; // 4
    virtual HRESULT ReservedCommandOperation() = 0;                // 5
};

struct IQCmdClient2 : IQCmdClient {
    virtual HRESULT GetCommandNamesAndKind(Variant& names, int32_t& kind) = 0; // 6
};

// Parameter help for the command window's "help".
struct IQCommandHelpService : IUnknown {
    virtual HRESULT AddCommandHelp(const std::string& name, const std::string& parameterText,
                                   int32_t isAlias) = 0; // 11
    virtual HRESULT RemoveCommandHelp(const std::string& name, const std::string& parameterText,
                                      int32_t isAlias) = 0; // 12
};

// The command window as a service.
struct IQCommandLineService : IUnknown {
    // Runs a batch file as if its lines were typed; EVENT_BATCH_FINISHED follows.
    virtual HRESULT RunBatchFile(const std::string& path) = 0; // 6
    // At 65535 or above, logged text gets its backslashes and quotes escaped.
    virtual HRESULT GetQuotingVersion(int32_t& version) = 0; // 9
};
