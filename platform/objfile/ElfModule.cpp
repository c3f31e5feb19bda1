#include "platform/objfile/ElfModule.h"

#include <algorithm>

#include "boundary/Ids.h"
#include "boundary/interfaces/LabelManager.h"
#include "boundary/interfaces/PlatformMemory.h"
#include "boundary/interfaces/Workbench.h"
#include "platform/objfile/BlockTransfer.h"
#include "platform/objfile/ElfWriter.h"
#include "platform/objfile/ObjectCodes.h"

HRESULT ElfModule::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::IQModuleLoader)
        *out = static_cast<IQModuleLoader*>(this);
    else if (iid == Ids::IQDebugInfo)
        *out = static_cast<IQDebugInfo*>(this);
    else if (iid == Ids::IQLineTable)
        *out = static_cast<IQLineTable*>(this);
    else if (iid == Ids::IQModuleVariables)
        *out = static_cast<IQModuleVariables*>(this);
    else if (iid == Ids::IQErrorReporter)
        *out = static_cast<IQErrorReporter*>(this);
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

namespace
{

// The bytes the file gives each segment. What a segment has beyond them in
// memory (zeroed data, a region the program fills itself) is the program's
// own start-up to clear at its run-time address, not the load's to write at
// the load address, where it would land in flash or on data kept over a reset.
std::vector<DataBlock> Blocks(const ElfImage& image)
{
    std::vector<DataBlock> blocks;
    for (const LoadSegment& segment : image.Segments())
        if (!segment.bytes.empty())
            blocks.push_back({segment.address, segment.bytes});
    return blocks;
}

} // namespace

HRESULT ElfModule::Load(IQTCPObject* task, int32_t mode)
{
    if (task == nullptr)
        return E_POINTER;
    // What an earlier load left counts no more, whatever this one gives.
    hasDebug_ = false;
    loaded_.clear();
    if (program_ != nullptr && (mode & 2) != 0)
        program_->ClearAreas();
    BlockTransfer transfer(registry_, program_, task);
    ElfImage image;
    HRESULT hr = image.Open(transfer.Path());
    DebugData debug;
    if (Succeeded(hr) && (mode & 1) != 0)
        hr = debug.Read(image);
    if (Succeeded(hr) && (mode & 2) != 0)
        hr = transfer.Write(Blocks(image));
    if (Succeeded(hr) && transfer.Cancelled())
        hr = OE_USER_ABORTED;
    if (Failed(hr))
        return transfer.Finish(hr);

    uint32_t offset = 0;
    if (program_ != nullptr)
        program_->GetOffset(offset);
    ReportLabels(image, offset);
    if ((mode & 1) != 0) {
        debug_ = std::move(debug);
        hasDebug_ = true;
    }
    loaded_ = image.Segments();
    bigEndian_ = image.BigEndian();
    return transfer.Finish(S_OK);
}

void ElfModule::ReportLabels(const ElfImage& image, uint32_t offset)
{
    auto* labels = GetServiceAs<IQLabelManager>(registry_, Ids::IQLabelManager);
    if (labels == nullptr)
        return;
    for (const ElfSymbol& symbol : image.Symbols())
        labels->AddLabel(LabelRecord{symbol.name, symbol.address + offset});
}

HRESULT ElfModule::Save(IQTCPObject* task, int32_t)
{
    if (task == nullptr)
        return E_POINTER;
    BlockTransfer transfer(registry_, program_, task);
    return transfer.Finish(transfer.Save(ElfFileOf));
}

// The bytes the file holds are compared; the zeros a load adds are not, for
// the program has used that memory since.
HRESULT ElfModule::Verify(IQTCPObject* task)
{
    if (task == nullptr)
        return E_POINTER;
    BlockTransfer transfer(registry_, program_, task);
    ElfImage image;
    HRESULT hr = image.Open(transfer.Path());
    return transfer.Finish(Succeeded(hr) ? transfer.Compare(Blocks(image)) : hr);
}

HRESULT ElfModule::GetAddressSource(TargetAddress address, std::string& file, uint32_t& line)
{
    const auto position = hasDebug_ ? debug_.AddressSource(address.Value()) : std::nullopt;
    if (!position)
        return OE_LINE_NOT_FOUND;
    file = position->file;
    line = position->line;
    return S_OK;
}

HRESULT ElfModule::GetSourceAddress(const std::string& file, uint32_t line, TargetAddress& address)
{
    const auto addresses = hasDebug_ ? debug_.LineAddresses(file, line) : std::vector<uint32_t>{};
    if (addresses.empty())
        return OE_LINE_NO_ADDRESS;
    address = *std::min_element(addresses.begin(), addresses.end());
    return S_OK;
}

HRESULT ElfModule::ListFunctions(IQFunctionList* list)
{
    std::string name;
    if (list == nullptr || Failed(list->GetName(name)))
        return E_POINTER;
    bool found = false;
    if (!hasDebug_)
        return OE_FUNCTION_NOT_FOUND;
    for (const FunctionRange& f : debug_.Functions())
        if (f.name == name) {
            list->AddFunction(f.name, f.start);
            found = true;
        }
    return found ? S_OK : OE_FUNCTION_NOT_FOUND;
}

HRESULT ElfModule::HoldsAddress(TargetAddress address, uint16_t& flag)
{
    flag = 0;
    for (const LoadSegment& s : loaded_)
        if (address.OffsetFrom(s.address) < s.memSize)
            flag = 0xFFFF;
    if (hasDebug_ && debug_.FunctionAt(address.Value()) != nullptr)
        flag = 0xFFFF;
    return S_OK;
}

HRESULT ElfModule::QueryDebugData(uintptr_t, uintptr_t, uintptr_t)
{
    return E_NOTIMPL;
}

HRESULT ElfModule::GetSourceFiles(std::string& files)
{
    files.clear();
    for (const std::string& f : debug_.SourceFiles())
        files += f + "\n";
    return hasDebug_ ? S_OK : E_FAIL;
}

HRESULT ElfModule::FindFunction(const std::string& name, TargetAddress& address)
{
    const FunctionRange* f = hasDebug_ ? debug_.FindFunction(name) : nullptr;
    if (f == nullptr)
        return OE_FUNCTION_NOT_FOUND;
    address = f->start;
    return S_OK;
}

HRESULT ElfModule::GetLineRange(const std::string& file, uint32_t line, TargetAddress& start,
                                TargetAddress& end)
{
    const auto range = hasDebug_ ? debug_.LineRange(file, line) : std::nullopt;
    if (!range)
        return OE_LINE_NO_ADDRESS;
    start = range->first;
    end = range->second;
    return S_OK;
}

HRESULT ElfModule::GetAddressLines(TargetAddress address, std::string& file, uint32_t& firstLine,
                                   uint32_t& lastLine)
{
    HRESULT hr = GetAddressSource(address, file, firstLine);
    lastLine = firstLine;
    return hr;
}

HRESULT ElfModule::GetVariable(const std::string& name, uint32_t& size, std::string& data, int32_t& kind,
                               std::string& typeText, std::string& valueText)
{
    const VariableInfo* v = hasDebug_ ? debug_.FindVariable(name) : nullptr;
    if (v == nullptr)
        return OE_NOT_FOUND;
    size = v->size;
    kind = 0;
    typeText.clear();
    valueText.clear();
    std::string bytes(v->size, '\0');
    auto* memory = GetServiceAs<IQPlatformMemory>(registry_, Ids::IQPlatformMemory);
    if (v->size == 0 || memory == nullptr ||
        Failed(memory->Read(v->address, TargetAddress(v->address).WrappingAdd(v->size - 1),
                            reinterpret_cast<uint8_t*>(bytes.data())))) {
        // No target to ask: the value the file gives it at the start.
        for (const LoadSegment& s : loaded_)
            for (uint32_t i = 0; i < v->size; ++i)
                if (const uint32_t at = (v->address + i) - s.virtualAddress; at < s.bytes.size())
                    bytes[i] = static_cast<char>(s.bytes[at]);
    }
    if (!bigEndian_)
        std::reverse(bytes.begin(), bytes.end());
    data = std::move(bytes);
    return S_OK;
}

HRESULT ElfModule::GetErrorText(HRESULT code, std::string& text)
{
    return ObjectErrorText(code, text);
}
