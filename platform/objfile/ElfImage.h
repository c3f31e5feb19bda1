#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "boundary/HResult.h"

struct Elf;

// One loadable segment, placed by its physical address: the bytes the file
// holds for it, then memSize - bytes.size() zero bytes.
struct LoadSegment {
    uint32_t address = 0;
    uint32_t virtualAddress = 0; // where the program sees it at run time
    uint32_t memSize = 0;
    std::vector<uint8_t> bytes;
};

struct ElfSymbol {
    std::string name;
    uint32_t address = 0;
};

// An executable ELF file for the Arm CPUs, 32 or 64 bits of either byte order,
// read whole and checked before anything of it is handed out: a file that is
// damaged anywhere a load looks gives an error and no content.
class ElfImage
{
public:
    ElfImage();
    ~ElfImage();
    ElfImage(const ElfImage&) = delete;
    ElfImage& operator=(const ElfImage&) = delete;

    // OE_... or QE_FILE_NOT_FOUND; on failure the image stays empty.
    HRESULT Open(const std::string& path);
    HRESULT OpenBytes(std::vector<uint8_t> bytes);

    const std::vector<LoadSegment>& Segments() const { return segments_; }
    const std::vector<ElfSymbol>& Symbols() const { return symbols_; }
    uint32_t Entry() const { return entry_; }
    // For the debug data reader; null until an Open succeeded.
    Elf* Handle() const { return elf_.get(); }
    bool BigEndian() const { return bigEndian_; }
    bool HasSection(const std::string& name) const;

private:
    struct ElfCloser {
        void operator()(Elf* elf) const;
    };
    HRESULT Parse();
    bool InFile(uint64_t offset, uint64_t count, uint64_t entrySize) const;
    HRESULT ReadSegments();
    HRESULT ReadSymbols();
    void Clear();

    std::vector<uint8_t> file_;
    std::unique_ptr<Elf, ElfCloser> elf_;
    std::vector<LoadSegment> segments_;
    std::vector<ElfSymbol> symbols_;
    uint32_t entry_ = 0;
    bool bigEndian_ = false;
};
