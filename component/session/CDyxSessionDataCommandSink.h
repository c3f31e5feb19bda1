#pragma once

// The session's menus, toolbars and tabs in the workbench. The state tells it
// when the platform family changes, so that the family's own commands come and go.
class CDyxSessionDataCommandSink
{
public:
    virtual ~CDyxSessionDataCommandSink() = default;
    virtual void AddPlatformCommands() = 0;
    virtual void RemovePlatformCommands() = 0;
};
