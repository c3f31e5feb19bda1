#pragma once
#include <cstdint>
#include <string>

#include "app/ComponentLibrary.h"
#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Debugger.h"
#include "workbench/store/WorkspaceModel.h"

class ServiceRegistry;

// One debugger instance of a loaded component, from creation to destruction,
// driven in the order the component expects: the state is initialised before
// the session controller, and both are terminated before the instance goes.
class DebuggerInstance
{
public:
    DebuggerInstance(const ComponentLibrary& library, ServiceRegistry& registry, uint32_t id);
    ~DebuggerInstance();
    DebuggerInstance(const DebuggerInstance&) = delete;
    DebuggerInstance& operator=(const DebuggerInstance&) = delete;

    // False with a message when the component gives no state or controller.
    bool Start(std::string& error);
    void Stop();
    bool Started() const { return started_; }
    // The workbench's notices of the session opening and of its workspace closing.
    void OpenSession(const ActiveSession& key);
    void CloseSession();
    uint32_t Id() const { return id_; }
    IQComponent* State() const { return state_; }
    IQComponent* Controller() const { return controller_; }

private:
    const ComponentLibrary& library_;
    ServiceRegistry& registry_;
    uint32_t id_;
    IQComponent* state_ = nullptr;
    IQComponent* controller_ = nullptr;
    IQWorkSpaceExtendedClient* notices_ = nullptr;
    ActiveSession key_;
    bool created_ = false;
    bool started_ = false;
};
