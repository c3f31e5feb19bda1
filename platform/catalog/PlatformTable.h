#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "boundary/Unknown.h"

struct IQServiceRegistry;

// A driver made by the factory: the object handed out, and what keeps it alive.
// Destroying it is releasing the driver.
class PlatformDriver
{
public:
    virtual ~PlatformDriver() = default;
    virtual IUnknown* Object() = 0;
};

// One installed platform: its CPU driver, how its target driver is made,
// and what it says of itself.
struct PlatformEntry {
    std::string name;
    std::string cpuDriver;
    bool functionFamily = false;
    bool alwaysConnected = false;
    std::function<std::unique_ptr<PlatformDriver>(IQServiceRegistry*)> makeCpu;
    std::function<std::unique_ptr<PlatformDriver>(IQServiceRegistry*)> makeTarget;
};

// One installed object reader; an empty platform serves every platform.
struct ReaderEntry {
    std::string name;
    std::string platform;
    std::function<std::unique_ptr<PlatformDriver>(IQServiceRegistry*)> make;
    // What it does besides loading; a reader that only loads says so here.
    bool savesMemory = true;
    bool verifies = true;
};

struct PlatformTable {
    std::vector<PlatformEntry> platforms;
    std::vector<ReaderEntry> readers;

    const PlatformEntry* Find(const std::string& name) const;
    const PlatformEntry* FindByCpu(const std::string& cpuDriver) const;
    const ReaderEntry* FindReader(const std::string& name) const;
};
