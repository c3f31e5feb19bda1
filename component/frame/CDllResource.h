#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// One loaded resource module: its file, its handle and the versions it reports.
// Each object releases its own handle; a copy loads the file again.
class CDllResource
{
public:
    explicit CDllResource(std::string fileName = {});
    CDllResource(const CDllResource& other);
    virtual ~CDllResource();

    virtual CDllResource& Assign(const CDllResource& other);
    virtual bool ReadInterfaceVersion();
    virtual bool ReadOrdinalVersion();
    virtual bool ReadProductVersion();
    virtual bool ReadType();

    CDllResource& operator=(const CDllResource& other) { return Assign(other); }

    // Load the module, read and check its versions. On failure `error` holds
    // the text to show and nothing is returned.
    static std::unique_ptr<CDllResource> Load(const std::string& fileName, std::string& error);

    // The interface version of any loaded module, without an object.
    static bool ReadInterfaceVersionOf(void* handle, int32_t& major, int32_t& minor);

    bool Open();
    std::optional<std::string> LoadText(uint32_t id) const;

    std::string InterfaceVersionText() const;
    std::string OrdinalVersionText() const;
    bool InterfaceAtLeast(int32_t major, int32_t minor) const;
    bool InterfaceEquals(int32_t major, int32_t minor) const;

    const std::string& FileName() const { return fileName_; }
    void* Handle() const { return handle_; }
    const std::string& ProductVersion() const { return productVersion_; }
    const std::string& Type() const { return type_; }
    int32_t InterfaceMajor() const { return interfaceMajor_; }
    int32_t InterfaceMinor() const { return interfaceMinor_; }
    int32_t OrdinalVersion() const { return ordinalVersion_; }

private:
    void Close();
    // A text export with the buffer-size convention: a result above 0 asks for a
    // bigger buffer, once. Empty when the export is missing or fails.
    std::optional<std::string> ReadTextExport(const char* name) const;

    std::string fileName_;
    void* handle_ = nullptr;
    std::string productVersion_;
    std::string type_;
    int32_t interfaceMajor_ = 0;
    int32_t interfaceMinor_ = 0;
    int32_t ordinalVersion_ = 0;
};
