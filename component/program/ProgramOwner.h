#pragma once
#include <cstdint>
#include <string>

// The session names in which a program's file name is expanded: the first,
// second and fourth strings of the session key.
struct ProgramContext {
    std::string WorkspaceName;
    std::string ProjectName;
    std::string SessionName;
};

// What a program asks of the session that owns it, at the moment it asks:
// which reader family to use and how the workbench makes drivers.
class ProgramOwner
{
public:
    // True while the session holds the platform family driven by function name.
    virtual bool UsesFunctionFamily() const = 0;
    // The connected target's platform, for which that family's readers are made.
    virtual std::string TargetPlatformName() const = 0;
    // The workbench's driver creation mode, passed on to the reader factory.
    virtual int32_t DriverMode() const = 0;

protected:
    ~ProgramOwner() = default;
};
