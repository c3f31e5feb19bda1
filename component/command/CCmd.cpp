#include "component/command/CCmd.h"

#include <utility>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

namespace
{

std::vector<std::string> NameList(std::string fullName, std::string abbreviation)
{
    std::vector<std::string> names{std::move(fullName)};
    if (!abbreviation.empty())
        names.push_back(std::move(abbreviation));
    return names;
}

} // namespace

CCmd::CCmd(IQServiceRegistry* host, bool stripName, std::string fullName, std::string abbreviation,
           std::string parameterText, std::string prompt, std::string terminator)
    : CCmd(host, stripName, NameList(std::move(fullName), std::move(abbreviation)), std::move(parameterText),
           std::move(prompt), std::move(terminator))
{
}

CCmd::CCmd(IQServiceRegistry* host, bool stripName, std::vector<std::string> names, std::string parameterText,
           std::string prompt, std::string terminator)
    : StripName(stripName), Prompt(std::move(prompt)), Terminator(std::move(terminator)), Evaluator(host),
      Host(host), Names(std::move(names)), parameterText_(std::move(parameterText))
{
    Register();
}

CCmd::~CCmd()
{
    Withdraw();
}

void CCmd::Register()
{
    if (Host == nullptr)
        return;
    auto* self = static_cast<IQCmdClient2*>(this);
    Host->RegisterProvider(Ids::IQCmdClient, self);
    Host->RegisterProvider(Ids::IQCmdClient2, self);
    // The help service is asked anew each time: it may come and go with the
    // command window, and a command without help still works.
    if (auto* help = GetServiceAs<IQCommandHelpService>(Host, Ids::CommandHelpService)) {
        for (size_t i = 0; i < Names.size(); ++i)
            help->AddCommandHelp(Names[i], parameterText_, i == 0 ? 0 : 1);
    }
}

void CCmd::Withdraw()
{
    if (Host == nullptr || withdrawn_)
        return;
    withdrawn_ = true;
    if (auto* help = GetServiceAs<IQCommandHelpService>(Host, Ids::CommandHelpService)) {
        for (size_t i = 0; i < Names.size(); ++i)
            help->RemoveCommandHelp(Names[i], parameterText_, i == 0 ? 0 : 1);
    }
    auto* self = static_cast<IQCmdClient2*>(this);
    Host->UnregisterProvider(Ids::IQCmdClient, self);
    Host->UnregisterProvider(Ids::IQCmdClient2, self);
}

HRESULT CCmd::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQCmdClient, Ids::IQCmdClient2}, iid,
                      static_cast<IQCmdClient2*>(this), out);
}

HRESULT CCmd::GetCommandNames(Variant& names)
{
    names = CComUtils::StringListToVariant(Names);
    return S_OK;
}

HRESULT CCmd::GetCommandNamesAndKind(Variant& names, int32_t& kind)
{
    names = CComUtils::StringListToVariant(Names);
    kind = Kind;
    return S_OK;
}

HRESULT CCmd::ExecuteCommand(const std::string& line, std::string& message, std::string& prompt,
                             VariantBool& continuing, VariantBool& pending, IQCmdCompletionSink* sink)
{
    Pending = VARIANT_FALSE;
    CompletionSink = sink;
    std::string text;
    HRESULT hr;
    if (Continuing) {
        hr = Continue(line, text, Continuing);
    } else {
        std::string arguments = line;
        if (StripName) {
            // Only a blank ends the name: a tab belongs to it.
            auto blank = line.find(' ');
            arguments = blank == std::string::npos ? std::string() : line.substr(blank + 1);
        }
        hr = Run(arguments, text, Continuing);
    }
    message = std::move(text);
    if (Continuing) {
        prompt = Prompt;
        continuing = VARIANT_TRUE;
    } else {
        continuing = VARIANT_FALSE;
    }
    pending = Pending;
    return hr;
}

HRESULT CCmd::Continue(const std::string& line, std::string& /*message*/, bool& continuing)
{
    continuing = line != Terminator;
    return S_OK;
}

const std::string& CCmd::FullName() const
{
    static const std::string none;
    return Names.empty() ? none : Names.front();
}
