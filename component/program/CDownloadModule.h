#pragma once
#include <cstdint>
#include <string>
#include <tuple>

// One object file a session wants in its target, as the debug settings hold
// it: the file (placeholders unexpanded), where it goes, how it is read and
// how it is written.
class CDownloadModule
{
public:
    CDownloadModule() = default;
    CDownloadModule(std::string fileName, uint32_t offset, std::string format, int32_t debugOnly,
                    int32_t verify, int32_t accessSize, int32_t autoDownload);
    // A copy is marked as assigned; nothing reads the mark but tests of it.
    CDownloadModule(const CDownloadModule& other);
    CDownloadModule& operator=(const CDownloadModule& other);
    virtual ~CDownloadModule() = default;

    // The seven fields, the strings case-sensitively: whether settings changed.
    bool operator==(const CDownloadModule& other) const;

    // The identity of a module in a list, compared without regard to case:
    // file, offset and access size in signed decimal, and format, run
    // together. The three flags are not part of it.
    std::string Key() const;
    static std::string Key(const std::string& fileName, uint32_t offset, const std::string& format,
                           int32_t accessSize);

    std::string FileName;
    uint32_t Offset = 0;
    std::string Format;
    int32_t DebugOnly = 0;
    int32_t Verify = 0;
    int32_t AccessSize = 1;
    int32_t AutoDownload = 0;
    int32_t Assigned = 0;

private:
    // The seven fields that make the value, without the assigned mark.
    template <class Module> static auto Fields(Module& m)
    {
        return std::tie(m.FileName, m.Offset, m.Format, m.DebugOnly, m.Verify, m.AccessSize, m.AutoDownload);
    }
};
