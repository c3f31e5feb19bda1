#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "boundary/Event.h"
#include "boundary/Flags.h"
#include "boundary/Unknown.h"

// The workbench's services as the component sees them. Slot numbers are given
// in comments; the component calls them by name.

// The only interface a component is handed; every other is asked of it.
struct IQServiceRegistry : IUnknown {
    // All components get OnEvent, the sender too.
    virtual HRESULT Broadcast(const Event& event) = 0; // 4
    // The array stays the registry's, valid until the next registration change.
    virtual HRESULT GetProviders(const Guid& id, int32_t& count, IUnknown**& array) = 0; // 8
    virtual HRESULT GetService(const Guid& id, IUnknown** out) = 0;                      // 9
    virtual HRESULT RegisterProvider(const Guid& id, IUnknown* provider) = 0;            // 10
    virtual HRESULT RegisterService(const Guid& id, IUnknown* service) = 0;              // 11
    virtual HRESULT UnregisterProvider(const Guid& id, IUnknown* provider) = 0;          // 12
    virtual HRESULT UnregisterService(const Guid& id, IUnknown* service) = 0;            // 13
    virtual HRESULT IsBusy(const Guid& id) = 0;                                          // 17, 0 when free
    virtual HRESULT SetBusy(const Guid& id) = 0;                                         // 18
    virtual HRESULT ClearBusy(const Guid& id) = 0;                                       // 19
};

// GetService with the interface's type.
template <class T> T* GetServiceAs(IQServiceRegistry* registry, const Guid& id)
{
    IUnknown* out = nullptr;
    if (registry == nullptr || Failed(registry->GetService(id, &out)))
        return nullptr;
    return static_cast<T*>(out);
}

// Code to text, shared by all components of the workbench.
struct IQErrorTable : IUnknown {
    virtual HRESULT GetText(HRESULT code, std::string& text) = 0; // 3
    // A text that needs a code of its own: the table hands out one no one uses.
    virtual HRESULT RegisterErrorText(const std::string& text, HRESULT& code) = 0; // 4
    virtual HRESULT AddText(HRESULT code, const std::string& text) = 0;            // 5
    virtual HRESULT RemoveText(HRESULT code) = 0;                                  // 7
};

// Questions the user can switch off ("do not ask again").
struct IQUserPromptTable : IUnknown {
    virtual HRESULT AddPrompt(const Guid& owner, const std::string& name, VariantBool defaultEnabled,
                              Guid& key) = 0;      // 3
    virtual HRESULT DeletePrompt(Guid key) = 0;    // 4
    virtual HRESULT IsPromptEnabled(Guid key) = 0; // 5, non-zero is enabled
    virtual HRESULT AskYesNo(Guid key, const std::string& question, VariantBool& answer) = 0;       // 6
    virtual HRESULT SetPromptEnabled(Guid key, int32_t enabled) = 0;                                // 7
    virtual HRESULT AskYesNoReload(Guid key, const std::string& question, VariantBool& answer) = 0; // 8
    // Our own: a warning while the prompt is on, with the offer to switch it off for good.
    virtual HRESULT ShowWarning(Guid key, const std::string& text) = 0; // 9
};

// The command log: what a user does from a menu, written as the command that does it.
struct IQCommandRecorder : IUnknown {
    virtual HRESULT IsLogging() = 0;                         // 3, S_OK when on
    virtual HRESULT LogCommand(const std::string& text) = 0; // 4
};

struct IQPostMessageClient;
struct IQTimerClient;

// Deferred calls and timers, delivered on the main thread after the current call returns.
struct IQPostMessageService : IUnknown {
    virtual HRESULT Post(IQPostMessageClient* client, uint32_t value) = 0;         // 3
    virtual HRESULT SetTimer(IQTimerClient* client, uint32_t id, uint32_t ms) = 0; // 4
    virtual HRESULT KillTimer(IQTimerClient* client, uint32_t id) = 0;             // 5
    // Drops what is queued for a client that is going away; main thread only.
    virtual HRESULT ForgetClient(IUnknown* client) = 0; // 6
};

// Files whose changes the workbench reports to every IQFileMonitorClient, on
// the main thread. Paths are compared as given; a file that is replaced (a
// rebuild writing a new file and renaming it over the old) counts as changed.
struct IQFileMonitor : IUnknown {
    virtual HRESULT AddFile(const std::string& path) = 0;    // 3
    virtual HRESULT RemoveFile(const std::string& path) = 0; // 4
    virtual HRESULT RemoveAllFiles() = 0;                    // 5
    // S_OK when the path is watched, S_FALSE when not.
    virtual HRESULT IsWatching(const std::string& path) = 0; // 6
    // S_OK when changes can be noticed on this system at all, S_FALSE when not.
    virtual HRESULT IsActive() = 0; // 7
};

enum class MessageIcon : int32_t { Information = 0, Warning = 1, Stop = 2, Question = 3 };

// Message boxes: in the console, a line of text; a question is asked on the
// terminal, and in batch mode answered with its default.
struct IQMessageBox : IUnknown {
    virtual HRESULT ShowMessage(const std::string& text, MessageIcon icon) = 0; // 3
    virtual HRESULT AskYesNo(const std::string& text, VariantBool defaultAnswer,
                             VariantBool& answer) = 0; // 4
};

// Numbers as text and back, in the session's radix. A radix argument of 0
// means the current one. Every operation gives S_OK or E_FAIL.
struct IQEvaluator : IUnknown {
    virtual HRESULT GetRadix(int32_t& radix) = 0;                                                    // 3
    virtual HRESULT SetRadix(int32_t radix) = 0;                                                     // 4
    virtual HRESULT TextToAddress(const std::string& text, uint32_t& value) = 0;                     // 5
    virtual HRESULT TextToAddressRadix(const std::string& text, int32_t radix, uint32_t& value) = 0; // 6
    virtual HRESULT TextToUInt8(const std::string& text, uint8_t& value) = 0;                        // 7
    virtual HRESULT TextToUInt8Radix(const std::string& text, int32_t radix, uint8_t& value) = 0;    // 8
    virtual HRESULT TextToUInt16(const std::string& text, uint16_t& value) = 0;                      // 9
    virtual HRESULT TextToUInt16Radix(const std::string& text, int32_t radix, uint16_t& value) = 0;  // 10
    virtual HRESULT TextToUInt32(const std::string& text, uint32_t& value) = 0;                      // 11
    virtual HRESULT TextToUInt32Radix(const std::string& text, int32_t radix, uint32_t& value) = 0;  // 12
    virtual HRESULT TextToUInt64(const std::string& text, uint64_t& value) = 0;                      // 13
    virtual HRESULT TextToUInt64Radix(const std::string& text, int32_t radix, uint64_t& value) = 0;  // 14
    virtual HRESULT TextToInt8(const std::string& text, int8_t& value) = 0;                          // 15
    virtual HRESULT TextToInt8Radix(const std::string& text, int32_t radix, int8_t& value) = 0;      // 16
    virtual HRESULT TextToInt16(const std::string& text, int16_t& value) = 0;                        // 17
    virtual HRESULT TextToInt16Radix(const std::string& text, int32_t radix, int16_t& value) = 0;    // 18
    virtual HRESULT TextToInt32(const std::string& text, int32_t& value) = 0;                        // 19
    virtual HRESULT TextToInt32Radix(const std::string& text, int32_t radix, int32_t& value) = 0;    // 20
    virtual HRESULT TextToInt64(const std::string& text, int64_t& value) = 0;                        // 21
    virtual HRESULT TextToInt64Radix(const std::string& text, int32_t radix, int64_t& value) = 0;    // 22
    virtual HRESULT AddressToText(uint32_t value, int32_t radix, VariantBool symbol,
                                  std::string& text) = 0;                                        // 23
    virtual HRESULT AddressToTextHex(uint32_t value, VariantBool symbol, std::string& text) = 0; // 24
    virtual HRESULT UInt8ToText(uint8_t value, int32_t radix, std::string& text) = 0;            // 25
    virtual HRESULT UInt16ToText(uint16_t value, int32_t radix, std::string& text) = 0;          // 26
    virtual HRESULT UInt32ToText(uint32_t value, int32_t radix, std::string& text) = 0;          // 27
    virtual HRESULT UInt64ToText(uint64_t value, int32_t radix, std::string& text) = 0;          // 28
    virtual HRESULT Int8ToText(int8_t value, int32_t radix, std::string& text) = 0;              // 29
    virtual HRESULT Int16ToText(int16_t value, int32_t radix, std::string& text) = 0;            // 30
    virtual HRESULT Int32ToText(int32_t value, int32_t radix, std::string& text) = 0;            // 31
    virtual HRESULT Int64ToText(int64_t value, int32_t radix, std::string& text) = 0;            // 32
    virtual HRESULT TextToFloat(const std::string& text, float& value) = 0;                      // 33
    virtual HRESULT TextToDouble(const std::string& text, double& value) = 0;                    // 34
    virtual HRESULT FloatToText(float value, int32_t radix, std::string& text) = 0;              // 35
    virtual HRESULT DoubleToText(double value, int32_t radix, std::string& text) = 0;            // 36
};
struct IQEvaluator2 : IQEvaluator {
    virtual HRESULT FormatAddress(uint32_t value, VariantBool symbol, VariantBool autoSize,
                                  VariantBool prefix,
                                  std::string& text) = 0; // 37
};

// A page of the workbench's status window: rows of two columns.
struct IQStatusClient : IUnknown {
    // Rows are built anew at each count; another page has none.
    virtual HRESULT GetRowCount(const Guid& page, int32_t& count) = 0;                  // 3
    virtual HRESULT GetRowText(const Guid& page, int32_t index, std::string& text) = 0; // 4
    virtual HRESULT GetPageInfo(Guid& page, std::string& name, std::string& firstColumn,
                                std::string& secondColumn, int32_t& firstWidth,
                                int32_t& secondWidth) = 0; // 5
};

// Where a session's own evaluator makes itself the one the workbench hands out
// as IQEvaluator2, in place of the platform's.
struct IQEvaluatorHost : IUnknown {
    virtual HRESULT SetEvaluator(IQEvaluator2* evaluator) = 0; // 3
    virtual HRESULT ClearEvaluator() = 0;                      // 4
};

// The output window: one tab a text stream ("Debug" is the debugger's log).
struct IQOutputWindow : IUnknown {
    virtual HRESULT AppendText(const std::string& tab, const std::string& text) = 0; // 3
    virtual HRESULT ClearTab(const std::string& tab) = 0;                            // 4
    virtual HRESULT BringForward(const std::string& tab) = 0;                        // 5
};

// The progress of a long task (a download, a save, a verify) as the user
// sees it: a bar with the share done, the bytes and the rate, and the way to
// stop the task without stopping the program. One task at a time.
struct IQProgressDisplay : IUnknown {
    // `visible` false: the platform shows its own progress; only the cancel is watched.
    virtual HRESULT Begin(const std::string& title, const std::string& text, VariantBool visible) = 0;
    virtual HRESULT SetText(const std::string& text) = 0;
    virtual HRESULT SetRange(uint32_t upper) = 0;
    virtual HRESULT SetPosition(uint32_t position) = 0;
    // S_OK once the user has asked to stop the task, S_FALSE until then.
    virtual HRESULT IsCancelRequested() = 0;
    // Runs what the workbench has queued for at most `ms` milliseconds, for a
    // task whose end comes as a posted message.
    virtual HRESULT Wait(uint32_t ms) = 0;
    virtual HRESULT End() = 0;
};

// Recent lists of files, kept by the workbench for a component across its
// runs: text values under a section. A value never written is not read.
struct IQRecentListStore : IUnknown {
    // 3: not used by the component
    virtual HRESULT WriteValue(const std::string& section, const std::string& key,
                               const std::string& value) = 0; // 4
    // 5 to 7: not used by the component
    virtual HRESULT ReadValue(const std::string& section, const std::string& key,
                              std::string& value) = 0; // 8
};

// Given to LibraryRegister2.
struct IQRegistrar : IUnknown {
    virtual HRESULT RegisterComponent(const std::string& name, int32_t count, const Guid* const* ids,
                                      int32_t a, int32_t b, int32_t c, const Guid& identity) = 0;
    virtual HRESULT RegisterDataType(const std::string& name, int32_t a, int32_t b, int32_t c,
                                     const Guid& id) = 0;
};
