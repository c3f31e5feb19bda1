#include "component/memory/CMemoryManager.h"

#include <cstdio>

#include "boundary/Ids.h"
#include "component/memory/CMemoryManagerCmdLine.h"
#include "component/util/ObjectSerial.h"

namespace
{

constexpr const char* kDisabledText = "Memory access has been disabled.";

} // namespace

CMemoryManager::CMemoryManager(IQServiceRegistry* host)
    : Host(host), cmdLine_(std::make_unique<CMemoryManagerCmdLine>(*this)), serial_(NextObjectSerial())
{
    if (Host != nullptr) {
        Host->RegisterService(Ids::IQMemoryManager, static_cast<IQMemoryManager*>(this));
        for (const Guid& id :
             {Ids::IQMemoryManager2, Ids::IQMemoryManager3, Ids::IQMemoryManager4, Ids::IQMemoryManager5})
            Host->RegisterService(id, static_cast<IQMemoryManager5*>(this));
        Host->RegisterService(Ids::IQMemoryManagerCmdLine,
                              static_cast<IQMemoryManagerCmdLine*>(cmdLine_.get()));
        for (const Guid& id : {Ids::IQMemoryManagerCmdLine2, Ids::IQMemoryManagerCmdLine3,
                               Ids::IQMemoryManagerCmdLine4, Ids::IQMemoryManagerCmdLine5})
            Host->RegisterService(id, static_cast<IQMemoryManagerCmdLine5*>(cmdLine_.get()));
    }
    auto* table = GetServiceAs<IQErrorTable>(Host, Ids::ErrorTable);
    HRESULT code = E_FAIL;
    if (table != nullptr && table->RegisterErrorText(kDisabledText, code) == S_OK)
        DisabledCode = code;
}

CMemoryManager::~CMemoryManager()
{
    if (Host != nullptr) {
        for (const Guid& id : {Ids::IQMemoryManagerCmdLine5, Ids::IQMemoryManagerCmdLine4,
                               Ids::IQMemoryManagerCmdLine3, Ids::IQMemoryManagerCmdLine2})
            Host->UnregisterService(id, static_cast<IQMemoryManagerCmdLine5*>(cmdLine_.get()));
        Host->UnregisterService(Ids::IQMemoryManagerCmdLine,
                                static_cast<IQMemoryManagerCmdLine*>(cmdLine_.get()));
        for (const Guid& id :
             {Ids::IQMemoryManager5, Ids::IQMemoryManager4, Ids::IQMemoryManager3, Ids::IQMemoryManager2})
            Host->UnregisterService(id, static_cast<IQMemoryManager5*>(this));
        Host->UnregisterService(Ids::IQMemoryManager, static_cast<IQMemoryManager*>(this));
    }
    if (DisabledCode != E_FAIL) {
        if (auto* table = GetServiceAs<IQErrorTable>(Host, Ids::ErrorTable))
            table->RemoveText(DisabledCode);
        DisabledCode = E_FAIL;
    }
}

HRESULT CMemoryManager::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::IQMemoryManager)
        *out = static_cast<IQMemoryManager*>(this);
    else if (iid == Ids::IQMemoryManager2 || iid == Ids::IQMemoryManager3 || iid == Ids::IQMemoryManager4 ||
             iid == Ids::IQMemoryManager5)
        *out = static_cast<IQMemoryManager5*>(this);
    else if (iid == Ids::IQErrorReporter)
        *out = static_cast<IQErrorReporter*>(this);
    else if (iid == Ids::IQMemoryManagerCmdLine)
        *out = static_cast<IQMemoryManagerCmdLine*>(cmdLine_.get());
    else if (iid == Ids::IQMemoryManagerCmdLine2 || iid == Ids::IQMemoryManagerCmdLine3 ||
             iid == Ids::IQMemoryManagerCmdLine4 || iid == Ids::IQMemoryManagerCmdLine5)
        *out = static_cast<IQMemoryManagerCmdLine5*>(cmdLine_.get());
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

std::string CMemoryManager::SizeWord(uint32_t accessSize)
{
    switch (accessSize) {
    case 1:
        return "byte";
    case 2:
        return "word";
    case 4:
        return "long";
    case 8:
        return "double";
    default:
        return {};
    }
}

std::string CMemoryManager::VerifyWord(VariantBool verify)
{
    return verify == VARIANT_TRUE ? "verify" : "noverify";
}

std::string CMemoryManager::FillDataText(uint32_t patternLength, const uint8_t* pattern)
{
    std::string text = "0x";
    for (uint32_t i = patternLength; pattern != nullptr && i > 0; --i) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%X", pattern[i - 1]);
        text += digits;
    }
    return text;
}

void CMemoryManager::Record(const std::string& command) const
{
    auto* recorder = GetServiceAs<IQCommandRecorder>(Host, Ids::IQCommandRecorder);
    if (recorder != nullptr && recorder->IsLogging() == S_OK)
        recorder->LogCommand(command);
}

void CMemoryManager::RecordFill(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                const uint8_t* pattern, VariantBool verify) const
{
    auto* recorder = GetServiceAs<IQCommandRecorder>(Host, Ids::IQCommandRecorder);
    if (recorder == nullptr || recorder->IsLogging() != S_OK)
        return;
    char head[64];
    std::snprintf(head, sizeof head, "memory_fill 0x%X 0x%X ", start.Value(), end.Value());
    recorder->LogCommand(head + FillDataText(patternLength, pattern) + " " + SizeWord(patternLength) + " " +
                         VerifyWord(verify));
}
