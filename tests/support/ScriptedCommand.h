#pragma once
#include <functional>
#include <string>
#include <vector>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"
#include "boundary/interfaces/Command.h"
#include "boundary/interfaces/Workbench.h"

// A command client whose answer a test scripts; it records every line it gets.
class ScriptedCommand final : public IQCmdClient2
{
public:
    struct Answer {
        std::string message;
        HRESULT result = S_OK;
        bool continuing = false, pending = false;
        std::string prompt{};
    };

    ScriptedCommand(IQServiceRegistry& registry, std::vector<std::string> names)
        : registry_(registry), names_(std::move(names))
    {
        registry_.RegisterProvider(Ids::IQCmdClient2, static_cast<IQCmdClient2*>(this));
    }
    ~ScriptedCommand() { registry_.UnregisterProvider(Ids::IQCmdClient2, static_cast<IQCmdClient2*>(this)); }

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQCmdClient, Ids::IQCmdClient2}, iid,
                          static_cast<IQCmdClient2*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT GetCommandNames(Variant& names) override
    {
        names = CComUtils::StringListToVariant(names_);
        return S_OK;
    }
    HRESULT ExecuteCommand(const std::string& line, std::string& message, std::string& prompt,
                           VariantBool& continuing, VariantBool& pending, IQCmdCompletionSink* sink) override
    {
        lines.push_back(line);
        lastSink = sink;
        Answer a = answer ? answer(line) : Answer{names_[0] + " ran", S_OK};
        message = a.message;
        continuing = a.continuing ? VARIANT_TRUE : VARIANT_FALSE;
        pending = a.pending ? VARIANT_TRUE : VARIANT_FALSE;
        if (a.continuing)
            prompt = a.prompt;
        return a.result;
    }
    HRESULT ReservedCommandOperation() override { return S_OK; }
    HRESULT GetCommandNamesAndKind(Variant& names, int32_t& kind) override
    {
        kind = 2;
        return GetCommandNames(names);
    }

    std::function<Answer(const std::string&)> answer;
    std::vector<std::string> lines;
    IQCmdCompletionSink* lastSink = nullptr;

private:
    IQServiceRegistry& registry_;
    std::vector<std::string> names_;
};
