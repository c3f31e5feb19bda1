#pragma once
// A reader as the platform hands it out, through the factory under a format
// name, with a program that records the areas it is told of, over the fake
// target memory.
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>

#include "boundary/Ids.h"
#include "boundary/interfaces/ObjectReader.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/catalog/PlatformList.h"
#include "platform/simdriver/InstalledPlatforms.h"
#include "support/FakePlatformMemory.h"
#include "support/Recording.h"
#include "support/RecordingProgram.h"
#include "support/RecordingTask.h"

inline const std::string Firmware = std::string(TESSEL_FIRMWARE_DIR) + "/sensors.elf";

// What a command prints.
inline std::string ToolOutput(const std::string& command)
{
    std::string out;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    char buffer[4096];
    size_t n;
    while (pipe && (n = fread(buffer, 1, sizeof buffer, pipe.get())) > 0)
        out.append(buffer, n);
    return out;
}

inline std::string FileText(const std::string& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class ReaderRig
{
public:
    explicit ReaderRig(const std::string& format) : format_(format)
    {
        memory.RegisterIn(registry);
        program.path = Firmware;
    }

    // The module handle's loader of a new reader for the format.
    IQModuleLoader* Loader()
    {
        IUnknown* object = nullptr;
        int32_t index = -1;
        EXPECT_EQ(PlatformList(table).FindReader(format_, index), S_OK) << format_;
        EXPECT_EQ(factory.CheckReader(format_, 0, 0), S_OK) << format_;
        EXPECT_EQ(factory.CreateReader(format_, &registry, 0, -1, 0, 0, &object), S_OK) << format_;
        reader = QueryAs<IQObjectReader2>(object, Ids::IQObjectReader2);
        if (reader == nullptr || reader->CreateModule(&handle, &program) != S_OK)
            return nullptr;
        return QueryAs<IQModuleLoader>(handle, Ids::IQModuleLoader);
    }
    std::string ErrorText(HRESULT code)
    {
        std::string text;
        QueryAs<IQErrorReporter>(handle, Ids::IQErrorReporter)->GetErrorText(code, text);
        return text;
    }

    PlatformTable table = InstalledPlatforms();
    DriverFactory factory{table};
    CallLog calls;
    RecordingRegistry registry{calls};
    FakePlatformMemory memory{{{0x08000000, 0x0800FFFF}, {0x20000000, 0x2003FFFF}}, {1}};
    ProgramRecord program;
    IQObjectReader2* reader = nullptr;
    IUnknown* handle = nullptr;

private:
    std::string format_;
};
