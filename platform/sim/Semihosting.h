#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/sim/SimTypes.h"

// The semihosting calls firmware makes with BKPT 0xAB, operation in r0 and its
// argument in r1. Output is handed back rather than printed so the caller decides
// whether it is shown (a replay must not show it twice).
class Semihosting
{
public:
    static constexpr uint8_t kBkptImmediate = 0xAB;
    static constexpr uint32_t kWriteC = 0x03;
    static constexpr uint32_t kWrite0 = 0x04;
    static constexpr uint32_t kWrite = 0x05;
    static constexpr uint32_t kExit = 0x18;
    static constexpr uint32_t kExitExtended = 0x20;
    // The reason code for a normal end of the application.
    static constexpr uint32_t kApplicationExit = 0x20026;

    using Reader = std::function<SimResult(uint32_t address, size_t size, void* out)>;

    enum class Action { Continue, Exit, Fault };
    struct Result {
        Action action = Action::Continue;
        bool setR0 = false;
        uint32_t r0 = 0;
        int exitCode = 0;
        uint32_t faultAddress = 0;
        std::string output;
    };

    // Unknown operations answer -1 in r0 and let the firmware continue. SYS_EXIT with
    // the application-exit reason gives code 0, another reason code of the protocol
    // gives 1, and any other value is taken as the exit code itself.
    static Result Handle(uint32_t operation, uint32_t argument, const Reader& read);
};
