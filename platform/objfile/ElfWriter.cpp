#include "platform/objfile/ElfWriter.h"

#include <elf.h>

namespace
{

// Fields are written one by one, least significant byte first, whatever the host's order.
class LittleEndianText
{
public:
    void Put(uint32_t value, size_t size)
    {
        for (size_t i = 0; i < size; ++i)
            text_ += static_cast<char>(value >> (8 * i));
    }
    void Half(uint32_t value) { Put(value, 2); }
    void Word(uint32_t value) { Put(value, 4); }
    void Bytes(const void* data, size_t size) { text_.append(static_cast<const char*>(data), size); }
    void PadTo(size_t offset) { text_.resize(offset, '\0'); }
    std::string Take() { return std::move(text_); }

private:
    std::string text_;
};

constexpr char kNames[] = "\0.image\0.shstrtab";
constexpr uint32_t kImageName = 1, kNamesName = 8;

} // namespace

std::string ElfFileOf(TargetAddress start, const std::vector<uint8_t>& bytes)
{
    const uint32_t size = static_cast<uint32_t>(bytes.size());
    // The segment's offset in the file agrees with its address modulo its alignment.
    const uint32_t dataOffset = sizeof(Elf32_Ehdr) + sizeof(Elf32_Phdr) + (start.Value() & 3);
    const uint32_t namesOffset = dataOffset + size;
    const uint32_t sectionsOffset = (namesOffset + sizeof kNames + 3) & ~3u;

    LittleEndianText out;
    const unsigned char ident[EI_NIDENT] = {ELFMAG0,    ELFMAG1,     ELFMAG2,    ELFMAG3,
                                            ELFCLASS32, ELFDATA2LSB, EV_CURRENT, ELFOSABI_NONE};
    out.Bytes(ident, sizeof ident);
    out.Half(ET_EXEC);
    out.Half(EM_ARM);
    out.Word(EV_CURRENT);
    out.Word(start.Value());      // entry
    out.Word(sizeof(Elf32_Ehdr)); // program headers
    out.Word(sectionsOffset);
    out.Word(EF_ARM_EABI_VER5);
    // Header sizes, then one program header, three sections, names in the last.
    const uint32_t halves[] = {sizeof(Elf32_Ehdr), sizeof(Elf32_Phdr), 1, sizeof(Elf32_Shdr), 3, 2};
    for (uint32_t half : halves)
        out.Half(half);

    const uint32_t segment[] = {PT_LOAD, dataOffset, start.Value(),      start.Value(),
                                size,    size,       PF_R | PF_W | PF_X, 4};
    for (uint32_t word : segment)
        out.Word(word);
    out.PadTo(dataOffset);
    out.Bytes(bytes.data(), bytes.size());
    out.Bytes(kNames, sizeof kNames);
    out.PadTo(sectionsOffset);

    // Name, type, flags, address, offset, size, link, info, alignment, entry size.
    const uint32_t sections[3][10] = {
        {},
        {kImageName, SHT_PROGBITS, SHF_ALLOC | SHF_WRITE | SHF_EXECINSTR, start.Value(), dataOffset, size, 0,
         0, 1, 0},
        {kNamesName, SHT_STRTAB, 0, 0, namesOffset, sizeof kNames, 0, 0, 1, 0},
    };
    for (const auto& section : sections)
        for (uint32_t word : section)
            out.Word(word);
    return out.Take();
}
