#include "platform/objfile/ElfImage.h"

#include <fstream>
#include <gelf.h>
#include <iterator>
#include <libelf.h>

#include "platform/objfile/ObjectCodes.h"

namespace
{

bool LibraryReady()
{
    static const bool ready = elf_version(EV_CURRENT) != EV_NONE;
    return ready;
}

// The Arm tools mark code and data inside a section with "$a", "$t", "$d"
// (and "$x.n" forms); they are no names a person looks for.
bool IsMappingSymbol(const char* name)
{
    return name[0] == '$' && (name[1] == 'a' || name[1] == 't' || name[1] == 'd' || name[1] == 'x') &&
           (name[2] == '\0' || name[2] == '.');
}

bool Fits32(uint64_t first, uint64_t size)
{
    return first <= 0xFFFFFFFFu && size <= 0x100000000u - first;
}

} // namespace

void ElfImage::ElfCloser::operator()(Elf* elf) const
{
    elf_end(elf);
}

ElfImage::ElfImage() = default;
ElfImage::~ElfImage() = default;

void ElfImage::Clear()
{
    elf_.reset();
    file_.clear();
    segments_.clear();
    symbols_.clear();
    entry_ = 0;
}

HRESULT ElfImage::Open(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        Clear();
        return QE_FILE_NOT_FOUND;
    }
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) {
        Clear();
        return QE_FILE_READ;
    }
    return OpenBytes(std::move(bytes));
}

HRESULT ElfImage::OpenBytes(std::vector<uint8_t> bytes)
{
    Clear();
    file_ = std::move(bytes);
    HRESULT hr = Parse();
    if (Failed(hr))
        Clear();
    return hr;
}

HRESULT ElfImage::Parse()
{
    if (!LibraryReady() || file_.empty())
        return OE_MODULE_FORMAT;
    elf_.reset(elf_memory(reinterpret_cast<char*>(file_.data()), file_.size()));
    GElf_Ehdr header;
    if (!elf_ || elf_kind(elf_.get()) != ELF_K_ELF || gelf_getehdr(elf_.get(), &header) == nullptr)
        return OE_MODULE_FORMAT;
    if (header.e_version != EV_CURRENT || header.e_ident[EI_VERSION] != EV_CURRENT)
        return OE_MODULE_VERSION;
    if (header.e_machine != EM_ARM)
        return OE_MODULE_CPU;
    if (header.e_type != ET_EXEC)
        return OE_MODULE_NOT_ABSOLUTE;
    if (header.e_entry > 0xFFFFFFFFu)
        return OE_MODULE_FORMAT;
    size_t sections = 0, headers = 0;
    if (elf_getshdrnum(elf_.get(), &sections) != 0 || elf_getphdrnum(elf_.get(), &headers) != 0 ||
        !InFile(header.e_shoff, sections, header.e_shentsize) ||
        !InFile(header.e_phoff, headers, header.e_phentsize) || (header.e_shoff != 0 && sections == 0))
        return OE_MODULE_FORMAT;
    entry_ = static_cast<uint32_t>(header.e_entry);
    bigEndian_ = header.e_ident[EI_DATA] == ELFDATA2MSB;
    HRESULT hr = ReadSegments();
    return Failed(hr) ? hr : ReadSymbols();
}

bool ElfImage::InFile(uint64_t offset, uint64_t count, uint64_t entrySize) const
{
    return count == 0 ||
           (offset <= file_.size() && entrySize != 0 && count <= (file_.size() - offset) / entrySize);
}

HRESULT ElfImage::ReadSegments()
{
    size_t count = 0;
    if (elf_getphdrnum(elf_.get(), &count) != 0)
        return OE_MODULE_FORMAT;
    for (size_t i = 0; i < count; ++i) {
        GElf_Phdr ph;
        if (gelf_getphdr(elf_.get(), static_cast<int>(i), &ph) == nullptr)
            return OE_MODULE_FORMAT;
        if (ph.p_type != PT_LOAD)
            continue;
        if (ph.p_filesz > ph.p_memsz || ph.p_offset > file_.size() ||
            ph.p_filesz > file_.size() - ph.p_offset || !Fits32(ph.p_paddr, ph.p_memsz))
            return OE_MODULE_FORMAT;
        LoadSegment segment;
        segment.address = static_cast<uint32_t>(ph.p_paddr);
        segment.virtualAddress = static_cast<uint32_t>(ph.p_vaddr);
        segment.memSize = static_cast<uint32_t>(ph.p_memsz);
        segment.bytes.assign(file_.begin() + static_cast<std::ptrdiff_t>(ph.p_offset),
                             file_.begin() + static_cast<std::ptrdiff_t>(ph.p_offset + ph.p_filesz));
        segments_.push_back(std::move(segment));
    }
    return S_OK;
}

HRESULT ElfImage::ReadSymbols()
{
    size_t sections = 0;
    if (elf_getshdrnum(elf_.get(), &sections) != 0)
        return OE_MODULE_FORMAT;
    for (Elf_Scn* scn = elf_nextscn(elf_.get(), nullptr); scn != nullptr;
         scn = elf_nextscn(elf_.get(), scn)) {
        GElf_Shdr sh;
        if (gelf_getshdr(scn, &sh) == nullptr)
            return OE_MODULE_FORMAT;
        if (sh.sh_type != SHT_NOBITS &&
            (sh.sh_offset > file_.size() || sh.sh_size > file_.size() - sh.sh_offset))
            return OE_MODULE_FORMAT;
        if (sh.sh_type != SHT_SYMTAB)
            continue;
        Elf_Data* data = elf_getdata(scn, nullptr);
        if (data == nullptr || sh.sh_entsize == 0 || sh.sh_link >= sections)
            return OE_MODULE_FORMAT;
        const size_t count = sh.sh_size / sh.sh_entsize;
        symbols_.reserve(symbols_.size() + count);
        for (size_t i = 1; i < count; ++i) {
            GElf_Sym sym;
            if (gelf_getsym(data, static_cast<int>(i), &sym) == nullptr)
                return OE_MODULE_FORMAT;
            const int type = GELF_ST_TYPE(sym.st_info);
            if (type == STT_SECTION || type == STT_FILE || sym.st_shndx == SHN_UNDEF || sym.st_name == 0)
                continue;
            const char* name = elf_strptr(elf_.get(), sh.sh_link, sym.st_name);
            if (name == nullptr || sym.st_value > 0xFFFFFFFFu)
                return OE_MODULE_FORMAT;
            if (IsMappingSymbol(name))
                continue;
            auto address = static_cast<uint32_t>(sym.st_value);
            // A Thumb function's value has bit 0 set; its code starts one lower.
            if (type == STT_FUNC)
                address &= ~1u;
            symbols_.push_back({name, address});
        }
    }
    return S_OK;
}

bool ElfImage::HasSection(const std::string& name) const
{
    size_t names = 0;
    if (!elf_ || elf_getshdrstrndx(elf_.get(), &names) != 0)
        return false;
    for (Elf_Scn* scn = elf_nextscn(elf_.get(), nullptr); scn != nullptr;
         scn = elf_nextscn(elf_.get(), scn)) {
        GElf_Shdr sh;
        const char* text = gelf_getshdr(scn, &sh) ? elf_strptr(elf_.get(), names, sh.sh_name) : nullptr;
        if (text != nullptr && name == text)
            return true;
    }
    return false;
}
