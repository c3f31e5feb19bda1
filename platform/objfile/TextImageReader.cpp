#include "platform/objfile/TextImageReader.h"

#include "platform/objfile/TextImageModule.h"

TextImageReader::TextImageReader(IQServiceRegistry* registry, const TextFormat& format)
    : ModuleReader([registry, &format](IQProgram* program) {
          return std::make_shared<TextImageModule>(registry, program, format);
      })
{
}
