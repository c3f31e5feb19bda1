#include "support/FakeObjectReader.h"

#include <cstdio>

#include "workbench/ProgressDisplayService.h"

struct FakeObjectReaders::Module final : IQModuleLoader {
    Module(FakeObjectReaders& owner, IQProgram* program) : owner(owner), program(program) {}
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQModuleLoader}, iid, static_cast<IQModuleLoader*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED

    std::string File()
    {
        std::string file;
        program->GetFilePath(file);
        return file;
    }
    HRESULT End(IQTCPObject* task)
    {
        const ReaderScript& script = owner.script;
        task->SetProgressRange(2);
        if (script.userCancels)
            ProgressDisplayService::RequestCancel();
        int32_t status = TASK_RUNNING;
        task->GetStatus(status);
        if (status != TASK_CANCELLED)
            task->SetStatus(script.status);
        task->SetProgressPosition(2);
        task->SetResultCode(script.code);
        return task->OnFinished();
    }
    HRESULT Load(IQTCPObject* task, int32_t mode) override
    {
        owner.log.push_back("Load " + std::to_string(mode) + " " + File());
        if (auto* labels = GetServiceAs<IQLabelManager2>(&owner.registry, Ids::IQLabelManager2))
            labels->AddLabel(LabelRecord{owner.script.label, 0x1000});
        for (auto [start, end] : owner.script.areas)
            program->AddArea(start, end);
        auto* load = QueryAs<IQTCPObjectLoad2>(task, Ids::IQTCPObjectLoad2);
        if (owner.script.mismatch && load != nullptr)
            load->ReportMismatch(std::get<0>(*owner.script.mismatch), std::get<1>(*owner.script.mismatch),
                                 std::get<2>(*owner.script.mismatch));
        return End(task);
    }
    HRESULT Save(IQTCPObject* task, int32_t) override
    {
        TargetAddress start, end;
        task->GetStartAddress(start);
        if (auto* save = QueryAs<IQTCPObjectSave>(task, Ids::IQTCPObjectSave))
            save->GetEndAddress(end);
        char range[40];
        std::snprintf(range, sizeof range, " 0x%X-0x%X", start.Value(), end.Value());
        owner.log.push_back("Save " + File() + range);
        return End(task);
    }
    HRESULT Verify(IQTCPObject* task) override
    {
        owner.log.push_back("Verify " + File());
        auto* verify = QueryAs<IQTCPObjectVerify>(task, Ids::IQTCPObjectVerify);
        if (owner.script.mismatch && verify != nullptr)
            verify->ReportMismatch(std::get<0>(*owner.script.mismatch), std::get<1>(*owner.script.mismatch),
                                   std::get<2>(*owner.script.mismatch));
        return End(task);
    }

    FakeObjectReaders& owner;
    IQProgram* program;
};

struct FakeObjectReaders::Reader final : IQObjectReader2, IQErrorReporter {
    explicit Reader(FakeObjectReaders& owner) : owner(owner) {}
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        if (iid == Ids::IQErrorReporter)
            return AnswerFrom({iid}, iid, static_cast<IQErrorReporter*>(this), out);
        return AnswerFrom({Ids::IUnknown, Ids::IQObjectReader2}, iid, static_cast<IQObjectReader2*>(this),
                          out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT CreateModule(IUnknown** handle, IQProgram* program) override
    {
        modules.push_back(std::make_unique<Module>(owner, program));
        *handle = modules.back().get();
        return S_OK;
    }
    HRESULT DestroyModule(IUnknown*) override { return S_OK; }
    // The reader's own text for its own codes only.
    HRESULT GetErrorText(HRESULT code, std::string& text) override
    {
        if (code != MakeResult(0x80043010u))
            return E_FAIL;
        text = "Checksum error in object module";
        return S_OK;
    }

    FakeObjectReaders& owner;
    std::vector<std::unique_ptr<Module>> modules;
};

FakeObjectReaders::FakeObjectReaders(CallLog& log, IQServiceRegistry& registry) : log(log), registry(registry)
{
}
FakeObjectReaders::~FakeObjectReaders() = default;

HRESULT FakeObjectReaders::CreateReader(In, Reg, I, I, I, I, IUnknown** out)
{
    readers_.push_back(std::make_unique<Reader>(*this));
    *out = static_cast<IQObjectReader2*>(readers_.back().get());
    return S_OK;
}
