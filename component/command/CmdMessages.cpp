#include "component/command/CmdMessages.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"
#include "component/command/CArgKeyword.h"
#include "component/command/CArgNumberUnsigned.h"
#include "component/frame/StringTable.h"
#include "component/util/MessageFormat.h"

namespace
{

constexpr uint32_t TextNotEnough = 30001;
constexpr uint32_t TextTooMany = 30002;
constexpr uint32_t TextEmpty = 30003;
constexpr uint32_t TextRange = 30004;
constexpr uint32_t TextKeywordNotFound = 30006;
constexpr uint32_t TextInvalid = 30007;
constexpr uint32_t TextNotValid = 30008;
constexpr uint32_t TextUnknownError = 30009;
constexpr uint32_t TextNotSupported = 30010;
constexpr uint32_t TextUnknownErrorCode = 30011;

} // namespace

std::string MessageEmpty(const std::string& parameterName)
{
    return FormatMessageText(TextEmpty, parameterName.c_str());
}

std::string MessageRange(const std::string& parameterName, uint64_t minimum, uint64_t maximum)
{
    auto low = static_cast<unsigned long long>(minimum);
    auto high = static_cast<unsigned long long>(maximum);
    return FormatMessageText(TextRange, parameterName.c_str(), low, low, high, high);
}

std::string MessageKeywordNotFound(const std::string& raw, const std::string& keywordList)
{
    return FormatMessageText(TextKeywordNotFound, raw.c_str()) + keywordList;
}

std::string MessageInvalid(const std::string& parameterName)
{
    return FormatMessageText(TextInvalid, parameterName.c_str());
}

std::string ArgumentMessage(const CArg& arg)
{
    const std::string& parameterName = arg.Name;
    if (arg.Error == CArg::ErrorNone)
        return {};
    if (!arg.Refusal.empty())
        return arg.Refusal;
    switch (arg.Error) {
    case CArg::ErrorEmpty:
        return MessageEmpty(parameterName);
    case CArg::ErrorRange:
        if (auto* number = dynamic_cast<const CArgNumberUnsigned*>(&arg))
            return MessageRange(parameterName, number->Minimum, number->Maximum);
        break;
    case CArg::ErrorKeyword:
        if (auto* keyword = dynamic_cast<const CArgKeyword*>(&arg))
            return MessageKeywordNotFound(arg.Raw, keyword->KeywordList());
        break;
    default:
        break;
    }
    return MessageInvalid(parameterName);
}

std::string MessageNotEnough()
{
    return StringTable::Load(TextNotEnough);
}

std::string MessageTooMany()
{
    return StringTable::Load(TextTooMany);
}

std::string MessageNotValid()
{
    return StringTable::Load(TextNotValid);
}

std::string MessageUnknownError()
{
    return StringTable::Load(TextUnknownError);
}

std::string MessageNotSupported()
{
    return StringTable::Load(TextNotSupported);
}

std::string ErrorTextFor(IUnknown* failingObject, HRESULT hr)
{
    std::string text;
    if (auto* reporter = QueryAs<IQErrorReporter>(failingObject, Ids::IQErrorReporter)) {
        if (Failed(reporter->GetErrorText(hr, text)))
            text.clear();
    }
    if (!text.empty())
        return text;
    return FormatMessageText(TextUnknownErrorCode, static_cast<int>(hr));
}
