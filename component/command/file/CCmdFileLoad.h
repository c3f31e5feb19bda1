#pragma once
#include "component/command/file/CCmdFile.h"

// "file_load": loads an object file into the target, as a module of the
// session's list for good, in place of the whole list, or for this load alone.
class CCmdFileLoad : public CCmdFile
{
public:
    CCmdFileLoad(IQServiceRegistry* host, CDebuggerState& debugger);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    // What <style> does to the module list.
    enum class Style { ForThisLoad, Replace, Add };
    struct Request {
        std::string file;
        uint32_t offset;
        bool verify;
        Style style;
        int32_t accessSize;
    };
    HRESULT Load(const Request& request, std::string& message);
    // The load's outcome in words, with the program's areas when it is done.
    HRESULT Answer(int32_t status, const std::string& file, const std::string& key, std::string& message);
};
