#pragma once
#include <optional>
#include <string_view>

// The debugger's register numbering. The program counter comes first because the
// debugger asks for it most; the special registers of the M profile follow the core
// registers.
enum SimRegister : unsigned {
    kRegPc = 0,
    kRegR0 = 1, // r0..r12 are kRegR0 + n
    kRegR12 = 13,
    kRegSp = 14, // the stack pointer in use (MSP or PSP, as CONTROL selects)
    kRegLr = 15,
    kRegXpsr = 16,
    kRegMsp = 17,
    kRegPsp = 18,
    kRegPrimask = 19,
    kRegBasepri = 20,
    kRegFaultmask = 21,
    kRegControl = 22,
    kRegisterCount = 23,
};

class SimRegisters
{
public:
    static constexpr unsigned Count() { return kRegisterCount; }
    // Lower-case names ("pc", "r0", "xpsr"); empty for an index out of range.
    static std::string_view Name(unsigned index);
    static std::optional<unsigned> Find(std::string_view name);
    // The Unicorn register id; -1 for an index out of range.
    static int EngineId(unsigned index);
};
