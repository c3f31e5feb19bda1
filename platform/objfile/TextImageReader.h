#pragma once
#include "platform/objfile/ModuleReader.h"
#include "platform/objfile/TextImage.h"

struct IQServiceRegistry;

// The reader of one text record format, offered under the format's name.
class TextImageReader final : public ModuleReader
{
public:
    TextImageReader(IQServiceRegistry* registry, const TextFormat& format);
};
