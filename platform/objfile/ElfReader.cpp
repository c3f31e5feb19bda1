#include "platform/objfile/ElfReader.h"

#include "platform/objfile/ElfModule.h"

ElfReader::ElfReader(IQServiceRegistry* registry)
    : ModuleReader([registry](IQProgram* program) { return std::make_shared<ElfModule>(registry, program); })
{
}
