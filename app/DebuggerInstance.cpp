#include "app/DebuggerInstance.h"

#include "boundary/Ids.h"
#include "workbench/ServiceRegistry.h"

DebuggerInstance::DebuggerInstance(const ComponentLibrary& library, ServiceRegistry& registry, uint32_t id)
    : library_(library), registry_(registry), id_(id)
{
}

DebuggerInstance::~DebuggerInstance()
{
    Stop();
}

bool DebuggerInstance::Start(std::string& error)
{
    if (Failed(library_.CreateInstance(id_))) {
        error = "The debugger component could not create an instance";
        return false;
    }
    created_ = true;
    // The component identity gives the state; the session data type gives the
    // controller, whose IQComponent is a face of its own.
    auto* stateRoot = library_.Query<IUnknown>(id_, Ids::Component);
    auto* sessionRoot = library_.Query<IUnknown>(id_, Ids::SessionDataType);
    state_ = QueryAs<IQComponent>(stateRoot, Ids::IQComponent);
    controller_ = QueryAs<IQComponent>(sessionRoot, Ids::IQComponent);
    notices_ = QueryAs<IQWorkSpaceExtendedClient>(sessionRoot, Ids::IQWorkSpaceExtendedClient);
    if (state_ == nullptr || controller_ == nullptr) {
        error = "The debugger component does not answer its interfaces";
        Stop();
        return false;
    }
    state_->Initialise(&registry_, 1);
    controller_->Initialise(&registry_, 1);
    registry_.AddComponent(state_);
    started_ = true;
    return true;
}

void DebuggerInstance::Stop()
{
    if (started_) {
        registry_.RemoveComponent(state_);
        state_->Terminate(1);
        controller_->Terminate(1);
        started_ = false;
    }
    state_ = nullptr;
    controller_ = nullptr;
    notices_ = nullptr;
    if (created_) {
        library_.DestroyInstance(id_);
        created_ = false;
    }
}

void DebuggerInstance::OpenSession(const ActiveSession& key)
{
    if (!started_ || notices_ == nullptr)
        return;
    key_ = key;
    notices_->SessionOpening(key.workspace, key.project, key.configuration, key.session);
    notices_->SessionOpened(key.workspace, key.project, key.configuration, key.session);
}

void DebuggerInstance::CloseSession()
{
    if (started_ && notices_ != nullptr && !key_.workspace.empty())
        notices_->WorkspaceClosing(key_.workspace);
}
