#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "boundary/Flags.h"
#include "boundary/interfaces/ObjectReader.h"

struct IQServiceRegistry;
struct IQPlatformMemory;

// Bytes of an object file that belong at one address.
struct DataBlock {
    TargetAddress address;
    std::vector<uint8_t> bytes;

    bool operator==(const DataBlock&) const = default;
};

// The steps every module handle takes with a task: bytes into the target and
// back, compared or saved, in pieces so that progress shows and a cancel is
// seen between them, with the program's offset and access size.
class BlockTransfer
{
public:
    BlockTransfer(IQServiceRegistry* registry, IQProgram* program, IQTCPObject* task);

    // The program's file, or the task's when the program has none.
    std::string Path() const;
    // Writes every block at its address plus the program's offset and reports
    // it as a load area; verifies what it wrote when the program asks for it.
    // Nothing is written when a block would run past the top of the space.
    HRESULT Write(const std::vector<DataBlock>& blocks);
    // Compares the blocks with the target; the task hears of the first difference.
    HRESULT Compare(const std::vector<DataBlock>& blocks);
    // Reads the save task's range and writes the file that encode makes of it.
    using Encoder = std::function<std::string(TargetAddress start, const std::vector<uint8_t>& bytes)>;
    HRESULT Save(const Encoder& encode);
    // Sets the result and the status that goes with it, and finishes the task.
    HRESULT Finish(HRESULT code);
    bool Cancelled() const;

private:
    HRESULT CompareChunk(TargetAddress at, const uint8_t* bytes, size_t count);
    // Reads count bytes from start in pieces, with progress and a look for a cancel before each.
    HRESULT Read(TargetAddress start, std::vector<uint8_t>& bytes);
    void ReportMismatch(TargetAddress at, uint8_t inMemory, uint8_t inFile);

    IQProgram* program_;
    IQTCPObject* task_;
    IQPlatformMemory* memory_;
    uint32_t offset_ = 0;
    AccessSize accessSize_ = 1;
};
