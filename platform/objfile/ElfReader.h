#pragma once
#include "platform/objfile/ModuleReader.h"

struct IQServiceRegistry;

// The reader of ELF executables, offered under the format name "elf".
class ElfReader final : public ModuleReader
{
public:
    explicit ElfReader(IQServiceRegistry* registry);

    static constexpr const char* FormatName = "elf";
};
