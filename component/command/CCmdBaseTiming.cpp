#include "component/command/CCmdBaseTiming.h"

#include <utility>

#include "boundary/Ids.h"
#include "component/frame/StringTable.h"
#include "component/util/MessageFormat.h"

namespace
{

constexpr uint32_t TextSkipped = 50040;

// Batch states as GetBatchState answers them, with the name of their timing.
constexpr int32_t BeforeDownload = 2;
constexpr int32_t AfterDownload = 3;
constexpr int32_t AfterReset = 5;

uint32_t TimingTextOf(int32_t batchState)
{
    switch (batchState) {
    case BeforeDownload:
        return 50042;
    case AfterDownload:
        return 50043;
    case AfterReset:
        return 50044;
    default:
        return 0;
    }
}

bool Refuses(CCmdBaseTiming::TimingCheck which, int32_t batchState)
{
    switch (which) {
    case CCmdBaseTiming::TimingCheck::NotAroundDownload:
        return batchState == BeforeDownload || batchState == AfterDownload;
    case CCmdBaseTiming::TimingCheck::NotAfterReset:
        return batchState == AfterReset;
    }
    return false;
}

} // namespace

CCmdBaseTiming::CCmdBaseTiming(IQServiceRegistry* host, bool stripName, std::string fullName,
                               std::string abbreviation, std::string parameterText, std::string prompt,
                               std::string terminator)
    : CCmd(host, stripName, std::move(fullName), std::move(abbreviation), std::move(parameterText),
           std::move(prompt), std::move(terminator)),
      TimingService(GetServiceAs<IQDebuggerState3>(host, Ids::TimingService))
{
}

CCmdBaseTiming::CCmdBaseTiming(IQServiceRegistry* host, bool stripName, std::vector<std::string> names,
                               std::string parameterText, std::string prompt, std::string terminator)
    : CCmd(host, stripName, std::move(names), std::move(parameterText), std::move(prompt),
           std::move(terminator)),
      TimingService(GetServiceAs<IQDebuggerState3>(host, Ids::TimingService))
{
}

bool CCmdBaseTiming::TimingAllows(TimingCheck which, std::string& message) const
{
    if (TimingService == nullptr)
        return true;
    int32_t batchState = 0;
    if (Failed(TimingService->GetBatchState(batchState)) || !Refuses(which, batchState))
        return true;
    std::string timing = StringTable::Load(TimingTextOf(batchState));
    message = FormatMessageText(TextSkipped, FullName().c_str(), timing.c_str());
    return false;
}
