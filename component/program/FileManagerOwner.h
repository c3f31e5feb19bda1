#pragma once
#include <cstdint>
#include <string>
#include <vector>

// What the download file manager needs of the session that owns it.
class FileManagerOwner
{
public:
    // The source file names the module's debug data gives, in its order.
    virtual std::vector<std::string> ModuleSourceFiles(int32_t moduleIndex) = 0;
    virtual std::string ExpandedModulePath(int32_t moduleIndex) = 0;
    virtual void ShowMessage(const std::string& text) = 0;
    virtual bool AskYesNo(const std::string& question) = 0;
    // A line for the debug output pane.
    virtual void DebugText(const std::string& text) = 0;

protected:
    ~FileManagerOwner() = default;
};
