#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "boundary/interfaces/Platform.h"
#include "component/command/CArgKeyword.h"
#include "component/command/CArgNumberUnsigned.h"
#include "component/command/CArgStringFileNameEx.h"
#include "component/command/CCmd.h"

class CDebuggerState;

// The base of the commands that move a file's image between the target and
// the disk: an optional object format in front of the file name, the formats
// the platform offers and what each can do, and the answer to a task's status.
class CCmdFile : public CCmd
{
public:
    // The texts of a task's outcome: done, cancelled, failed.
    struct StatusTexts {
        uint32_t done, cancelled, failed;
    };

protected:
    CCmdFile(IQServiceRegistry* host, CDebuggerState& debugger, std::string fullName,
             std::string abbreviation, std::string parameterText);

    // How every run begins: false, with the command's text, when the target is
    // not connected; else the format is read off the front of the line.
    bool Begin(std::string_view& cursor, uint32_t notConnectedText, std::string& message);
    // The first word is the format when the platform knows it, and the cursor
    // moves behind it; otherwise the format is the session's default reader
    // and the cursor stays, so that the word is read as the file name.
    void ParseFormat(std::string_view& cursor);
    // The format's index in the platform's list; nothing when it has none.
    std::optional<int32_t> FindFormat(const std::string& name) const;
    // Whether the format at the index has the attribute; nothing when the
    // platform cannot say.
    std::optional<bool> FormatHas(int32_t index, ReaderAttribute attribute) const;

    // The file name, required. asTyped: kept as the user typed it for the
    // module list (quotes and doubled separators dropped only); else made a
    // full path with the session's placeholders filled in.
    CArgStringFileNameEx FileNameArgument(bool asTyped) const;
    // The optional offset or a required address, 0 to 0xFFFFFFFF.
    CArgNumberUnsigned NumberArgument(bool required, std::string name) const;
    // The optional <mode> of the memory commands, for its access size alone.
    static CArgKeyword ModeArgument();
    static int32_t AccessSizeOf(const CArgKeyword& mode);

    // A cancelled or failed task is an error; the file name fills the text.
    static HRESULT AnswerStatus(int32_t status, StatusTexts texts, const std::string& file,
                                std::string& message);

    std::string Format;
    CDebuggerState& Debugger;
    // The platform's catalogue is the workbench's list of object formats.
    IQPlatformList* FormatService = nullptr;
    bool FormatIsDefault = false;
};
