#include "platform/sim/Semihosting.h"

#include <algorithm>

namespace
{

// Bounds what one call can print, so a garbage length cannot exhaust memory; the
// remainder is reported as not written, as the protocol allows.
constexpr uint32_t kMaxWrite = 1u << 20;
constexpr uint32_t kMaxString = 1u << 16;
constexpr uint32_t kFirstReason = 0x20000;
constexpr uint32_t kLastReason = 0x20031;

using Result = Semihosting::Result;

Result Fault(uint32_t address)
{
    Result result;
    result.action = Semihosting::Action::Fault;
    result.faultAddress = address;
    return result;
}

Result Answer(uint32_t r0)
{
    Result result;
    result.setR0 = true;
    result.r0 = r0;
    return result;
}

Result Exit(int code)
{
    Result result;
    result.action = Semihosting::Action::Exit;
    result.exitCode = code;
    return result;
}

Result WriteC(uint32_t argument, const Semihosting::Reader& read)
{
    char c = 0;
    if (SimResult r = read(argument, 1, &c); !r)
        return Fault(r.address);
    Result result;
    result.output.assign(1, c);
    return result;
}

Result Write0(uint32_t argument, const Semihosting::Reader& read)
{
    Result result;
    for (uint32_t i = 0; i < kMaxString; ++i) {
        char c = 0;
        if (SimResult r = read(argument + i, 1, &c); !r)
            return Fault(r.address);
        if (c == '\0')
            break;
        result.output.push_back(c);
    }
    return result;
}

Result Write(uint32_t argument, const Semihosting::Reader& read)
{
    uint32_t block[3] = {};
    if (SimResult r = read(argument, sizeof block, block); !r)
        return Fault(r.address);
    const uint32_t handle = block[0], data = block[1], length = block[2];
    if (handle != 1 && handle != 2)
        return Answer(length);
    const uint32_t shown = std::min(length, kMaxWrite);
    std::string text(shown, '\0');
    if (SimResult r = read(data, shown, text.data()); !r)
        return Fault(r.address);
    Result result = Answer(length - shown);
    result.output = std::move(text);
    return result;
}

int ExitCode(uint32_t reason)
{
    if (reason == Semihosting::kApplicationExit)
        return 0;
    if (reason >= kFirstReason && reason <= kLastReason)
        return 1;
    return static_cast<int>(reason);
}

Result ExitExtended(uint32_t argument, const Semihosting::Reader& read)
{
    uint32_t block[2] = {};
    if (SimResult r = read(argument, sizeof block, block); !r)
        return Fault(r.address);
    return Exit(block[0] == Semihosting::kApplicationExit ? static_cast<int>(block[1]) : 1);
}

} // namespace

Semihosting::Result Semihosting::Handle(uint32_t operation, uint32_t argument, const Reader& read)
{
    switch (operation) {
    case kWriteC:
        return WriteC(argument, read);
    case kWrite0:
        return Write0(argument, read);
    case kWrite:
        return Write(argument, read);
    case kExit:
        return Exit(ExitCode(argument));
    case kExitExtended:
        return ExitExtended(argument, read);
    default:
        return Answer(0xFFFFFFFFu);
    }
}
