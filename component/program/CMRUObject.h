#pragma once
#include <cstdint>
#include <string>
#include <utility>

struct IQRecentListStore;

// One entry of a recent list. An entry writes its fields under its number in
// a section of the recent-list store and reads them back in the same order.
class CMRUObject
{
public:
    virtual ~CMRUObject() = default;
    // The ordering of two entries of one list; 0 is the same entry.
    virtual int Compare(const CMRUObject& other) const = 0;
    virtual std::string GetFileName() const = 0;
    // A failed write is not reported: the list is only a convenience.
    virtual void Save(IQRecentListStore& store, const std::string& section, int number) const = 0;
    // A value that is missing or empty leaves its field as it is.
    virtual void Load(IQRecentListStore& store, const std::string& section, int number) = 0;
};

// The same file, whatever the case of its name.
class CMRUFile : public CMRUObject
{
public:
    CMRUFile() = default;
    explicit CMRUFile(std::string fileName) : FileName(std::move(fileName)) {}

    int Compare(const CMRUObject& other) const override;
    std::string GetFileName() const override { return FileName; }
    void Save(IQRecentListStore& store, const std::string& section, int number) const override;
    void Load(IQRecentListStore& store, const std::string& section, int number) override;

    std::string FileName;
};

// How the file was read or written. Format and access size say how, not
// which: a repeated use takes the new ones.
class CMRUProgram : public CMRUFile
{
public:
    CMRUProgram() = default;
    CMRUProgram(std::string fileName, std::string format, uint32_t accessSize)
        : CMRUFile(std::move(fileName)), Format(std::move(format)), AccessSize(accessSize)
    {
    }

    void Save(IQRecentListStore& store, const std::string& section, int number) const override;
    void Load(IQRecentListStore& store, const std::string& section, int number) override;

    std::string Format;
    uint32_t AccessSize = 1;
};

// A file used at an offset: a load or a verify.
class CMRUProgramAtOffset : public CMRUProgram
{
public:
    CMRUProgramAtOffset() = default;
    CMRUProgramAtOffset(std::string fileName, std::string format, uint32_t accessSize, uint32_t address)
        : CMRUProgram(std::move(fileName), std::move(format), accessSize), Address(address)
    {
    }

    int Compare(const CMRUObject& other) const override;
    void Save(IQRecentListStore& store, const std::string& section, int number) const override;
    void Load(IQRecentListStore& store, const std::string& section, int number) override;

    uint32_t Address = 0;
};

// A file loaded at an offset.
class CMRUProgramOpen : public CMRUProgramAtOffset
{
public:
    using CMRUProgramAtOffset::CMRUProgramAtOffset;
};

// Target memory from AddressStart to AddressEnd saved to a file.
class CMRUProgramSave : public CMRUProgram
{
public:
    CMRUProgramSave() = default;
    CMRUProgramSave(std::string fileName, std::string format, uint32_t accessSize, uint32_t start,
                    uint32_t end)
        : CMRUProgram(std::move(fileName), std::move(format), accessSize), AddressStart(start),
          AddressEnd(end)
    {
    }

    int Compare(const CMRUObject& other) const override;
    void Save(IQRecentListStore& store, const std::string& section, int number) const override;
    void Load(IQRecentListStore& store, const std::string& section, int number) override;

    uint32_t AddressStart = 0;
    uint32_t AddressEnd = 0;
};

// A file compared with target memory at an offset.
class CMRUProgramVerify : public CMRUProgramAtOffset
{
public:
    using CMRUProgramAtOffset::CMRUProgramAtOffset;
};
