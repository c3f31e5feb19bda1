#include "platform/objfile/BlockTransfer.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <new>

#include "boundary/Ids.h"
#include "boundary/interfaces/PlatformMemory.h"
#include "boundary/interfaces/Workbench.h"
#include "platform/objfile/ObjectCodes.h"

namespace
{

// Small enough that a cancel is seen soon, large enough that the calls cost nothing.
constexpr size_t kPiece = 0x10000;

uint32_t ProgressUnits(uint64_t bytes)
{
    return static_cast<uint32_t>(std::min<uint64_t>(bytes, std::numeric_limits<uint32_t>::max()));
}

bool Valid(int32_t size)
{
    return size == 1 || size == 2 || size == 4 || size == 8;
}

} // namespace

BlockTransfer::BlockTransfer(IQServiceRegistry* registry, IQProgram* program, IQTCPObject* task)
    : program_(program), task_(task), memory_(GetServiceAs<IQPlatformMemory>(registry, Ids::IQPlatformMemory))
{
    if (program_ != nullptr)
        program_->GetOffset(offset_);
    int32_t size = 1;
    auto* sized = QueryAs<IQProgram3>(program_, Ids::IQProgram3);
    if (sized != nullptr && Succeeded(sized->GetAccessSize(size)) && Valid(size))
        accessSize_ = static_cast<AccessSize>(size);
}

std::string BlockTransfer::Path() const
{
    std::string path;
    if (program_ == nullptr || Failed(program_->GetFilePath(path)))
        task_->GetFileName(path);
    return path;
}

bool BlockTransfer::Cancelled() const
{
    int32_t status = TASK_RUNNING;
    return Succeeded(task_->GetStatus(status)) && status == TASK_CANCELLED;
}

HRESULT BlockTransfer::Finish(HRESULT code)
{
    task_->SetResultCode(code);
    task_->SetStatus(code == OE_USER_ABORTED ? TASK_CANCELLED : Failed(code) ? TASK_FAILED : TASK_DONE);
    task_->OnFinished();
    return code;
}

HRESULT BlockTransfer::Write(const std::vector<DataBlock>& blocks)
{
    uint64_t total = 0;
    for (const DataBlock& block : blocks) {
        if (!block.bytes.empty() &&
            !AddressRange::Sized(block.address.WrappingAdd(offset_), block.bytes.size()))
            return OE_MODULE_FORMAT;
        total += block.bytes.size();
    }
    if (memory_ == nullptr)
        return OE_WRITE_FAILED;
    auto* verifying = QueryAs<IQProgram2>(program_, Ids::IQProgram2);
    const bool verify = verifying != nullptr && verifying->IsVerifyOff() == S_FALSE;
    task_->SetProgressRange(ProgressUnits(total));
    uint64_t done = 0;
    for (const DataBlock& block : blocks) {
        const TargetAddress start = block.address.WrappingAdd(offset_);
        for (size_t at = 0; at < block.bytes.size(); at += kPiece) {
            if (Cancelled())
                return OE_USER_ABORTED;
            const size_t count = std::min(kPiece, block.bytes.size() - at);
            const TargetAddress first = start.WrappingAdd(static_cast<uint32_t>(at));
            const uint8_t* bytes = block.bytes.data() + at;
            if (Failed(memory_->WriteSized(first, first.WrappingAdd(static_cast<uint32_t>(count - 1)),
                                           accessSize_, bytes)))
                return OE_WRITE_FAILED;
            if (HRESULT hr = verify ? CompareChunk(first, bytes, count) : S_OK; Failed(hr))
                return hr;
            task_->SetProgressPosition(ProgressUnits(done += count));
        }
        if (program_ != nullptr && !block.bytes.empty())
            program_->AddArea(start, start.WrappingAdd(static_cast<uint32_t>(block.bytes.size() - 1)));
    }
    return S_OK;
}

HRESULT BlockTransfer::Compare(const std::vector<DataBlock>& blocks)
{
    if (memory_ == nullptr)
        return OE_READ_FAILED;
    uint64_t total = 0, done = 0;
    for (const DataBlock& block : blocks)
        total += block.bytes.size();
    task_->SetProgressRange(ProgressUnits(total));
    for (const DataBlock& block : blocks) {
        for (size_t at = 0; at < block.bytes.size(); at += kPiece) {
            if (Cancelled())
                return OE_USER_ABORTED;
            const size_t count = std::min(kPiece, block.bytes.size() - at);
            const TargetAddress first = block.address.WrappingAdd(offset_ + static_cast<uint32_t>(at));
            if (HRESULT hr = CompareChunk(first, block.bytes.data() + at, count); Failed(hr))
                return hr;
            task_->SetProgressPosition(ProgressUnits(done += count));
        }
    }
    return S_OK;
}

HRESULT BlockTransfer::CompareChunk(TargetAddress at, const uint8_t* bytes, size_t count)
{
    std::vector<uint8_t> target(count);
    if (Failed(memory_->ReadSized(at, at.WrappingAdd(static_cast<uint32_t>(count - 1)), accessSize_,
                                  target.data())))
        return OE_READ_FAILED;
    const auto differs = std::mismatch(target.begin(), target.end(), bytes).first;
    if (differs == target.end())
        return S_OK;
    const auto index = static_cast<size_t>(differs - target.begin());
    ReportMismatch(at.WrappingAdd(static_cast<uint32_t>(index)), *differs, bytes[index]);
    return OE_VERIFY_FAILED;
}

// A verify task and a load task that verifies take the difference on faces of their own.
void BlockTransfer::ReportMismatch(TargetAddress at, uint8_t inMemory, uint8_t inFile)
{
    if (auto* verify = QueryAs<IQTCPObjectVerify>(task_, Ids::IQTCPObjectVerify))
        verify->ReportMismatch(at, inMemory, inFile);
    else if (auto* load = QueryAs<IQTCPObjectLoad2>(task_, Ids::IQTCPObjectLoad2))
        load->ReportMismatch(at, inMemory, inFile);
}

HRESULT BlockTransfer::Read(TargetAddress start, std::vector<uint8_t>& bytes)
{
    task_->SetProgressRange(ProgressUnits(bytes.size()));
    for (size_t at = 0; at < bytes.size(); at += kPiece) {
        if (Cancelled())
            return OE_USER_ABORTED;
        const size_t count = std::min(kPiece, bytes.size() - at);
        const TargetAddress first = start.WrappingAdd(static_cast<uint32_t>(at));
        if (Failed(memory_->ReadSized(first, first.WrappingAdd(static_cast<uint32_t>(count - 1)), accessSize_,
                                      bytes.data() + at)))
            return OE_READ_FAILED;
        task_->SetProgressPosition(ProgressUnits(at + count));
    }
    return S_OK;
}

HRESULT BlockTransfer::Save(const Encoder& encode)
{
    auto* save = QueryAs<IQTCPObjectSave>(task_, Ids::IQTCPObjectSave);
    TargetAddress start, end;
    if (save == nullptr || Failed(save->GetStartAddress(start)) || Failed(save->GetEndAddress(end)) ||
        end < start)
        return OE_INVALID_PARAMETER;
    if (memory_ == nullptr)
        return OE_READ_FAILED;
    // The range is the user's: up to the whole address space, more than this host may hold.
    std::vector<uint8_t> bytes;
    std::string text;
    try {
        bytes.resize(AddressRange(start, end).Size());
        if (HRESULT hr = Read(start, bytes); Failed(hr))
            return hr;
        text = encode(start, bytes);
    } catch (const std::bad_alloc&) {
        return OE_NOT_ENOUGH_MEMORY;
    }
    std::ofstream out(Path(), std::ios::binary | std::ios::trunc);
    return out.write(text.data(), static_cast<std::streamsize>(text.size())) && out.flush() ? S_OK
                                                                                            : OE_FILE_WRITE;
}
