#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "boundary/Flags.h"
#include "boundary/interfaces/MemoryManager.h"
#include "component/command/CArgKeyword.h"
#include "component/command/CArgNumberUnsigned.h"
#include "component/command/CCmd.h"
#include "component/command/CmdParse.h"

// The base of the memory commands: the mode and verify keywords, address
// arguments bounded by the memory map, the manager's failure texts, and values
// of a mode turned into text and back through the session's evaluator.
//
// Each command parses its line by a static Parse of the text, the map's
// bounds and an evaluator, and its Run is the manager call and the text.
class CCmdMemory : public CCmd
{
public:
    // Called after a command may have changed target memory; the debugger
    // state passes it on to every view. May be empty.
    using MemoryChanged = std::function<void()>;

    // Indices of the <mode> keywords, in list order.
    enum : int32_t {
        ModeByte = 0,
        ModeWord = 1,
        ModeLong = 2,
        ModeAscii = 3,
        ModeSingle = 4,
        ModeDouble = 5,
    };

    // The lowest start and the highest end of the map; an empty map, or a
    // manager that cannot tell, gives address 0 alone.
    static AddressRange MapBounds(IQMemoryManagerCmdLine5& manager);

    // One unit of memory as this system's own value (as the ...Values
    // operations hold it), in text without a hexadecimal prefix. radix 0 is
    // the session's radix. An "ascii" unit is its character, "." for zero and
    // "?" for anything else that cannot be shown; a real that no integer
    // text shows is "NaN", "Inf", "-Inf" or its decimal exponent form.
    static std::optional<std::string> FormatUnit(IQEvaluator2* evaluator, int32_t mode, const uint8_t* unit,
                                                 int32_t radix);
    // Text to one unit in this system's byte order, in the session's radix;
    // "ascii" takes exactly one character.
    static std::optional<std::vector<uint8_t>> EvaluateUnit(IQEvaluator2* evaluator, int32_t mode,
                                                            const std::string& text);
    // The address in hexadecimal without prefix, or "Invalid address".
    static std::string AddressText(IQEvaluator2* evaluator, TargetAddress address);

protected:
    CCmdMemory(IQServiceRegistry* host, std::string fullName, std::string abbreviation,
               std::string parameterText, MemoryChanged memoryChanged);

    // Asked for at each run: the manager comes and goes with the platform.
    IQMemoryManagerCmdLine5* Manager() const;

    // Optional, "byte" by default.
    static CArgKeyword ModeArgument();
    // Optional, "verify" by default.
    static CArgKeyword VerifyArgument();
    // A required address within the map.
    static CArgNumberUnsigned AddressArgument(AddressRange map, const CCmdEvaluator& evaluator,
                                              std::string name);
    static AccessSize AccessSizeOf(int32_t mode);
    static VariantBool VerifyFlagOf(const CArgKeyword& verify);

    // What the manager says of a failed result, or "Unknown error code".
    static std::string FailureText(IQMemoryManagerCmdLine5& manager, HRESULT hr);
    static bool HasErrorReporter(IQMemoryManagerCmdLine5& manager);

    void NotifyMemoryChanged() const;

private:
    MemoryChanged memoryChanged_;
};

// Cuts "H'" or "h'" off the front of a number text.
std::string WithoutHexPrefix(std::string text);
