#pragma once
#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/ObjectReader.h"
#include "platform/objfile/DebugData.h"
#include "platform/objfile/ElfImage.h"

struct IQServiceRegistry;

// The module handle of one program: loads its ELF file into the target's
// memory through the platform memory service, hands its symbols to the label
// manager, and answers for its debug data afterwards. A failed load leaves no
// image and no debug data behind.
class ElfModule final : public IQModuleLoader,
                        public IQDebugInfo,
                        public IQLineTable,
                        public IQModuleVariables,
                        public IQErrorReporter
{
public:
    ElfModule(IQServiceRegistry* registry, IQProgram* program) : registry_(registry), program_(program) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Load(IQTCPObject* task, int32_t mode) override;
    HRESULT Save(IQTCPObject* task, int32_t mode) override;
    HRESULT Verify(IQTCPObject* task) override;

    HRESULT GetAddressSource(TargetAddress address, std::string& file, uint32_t& line) override;
    HRESULT GetSourceAddress(const std::string& file, uint32_t line, TargetAddress& address) override;
    HRESULT ListFunctions(IQFunctionList* list) override;
    HRESULT HoldsAddress(TargetAddress address, uint16_t& flag) override;
    HRESULT QueryDebugData(uintptr_t a, uintptr_t b, uintptr_t c) override;
    HRESULT GetSourceFiles(std::string& files) override;

    HRESULT FindFunction(const std::string& name, TargetAddress& address) override;
    HRESULT GetLineRange(const std::string& file, uint32_t line, TargetAddress& start,
                         TargetAddress& end) override;
    HRESULT GetAddressLines(TargetAddress address, std::string& file, uint32_t& firstLine,
                            uint32_t& lastLine) override;

    HRESULT GetVariable(const std::string& name, uint32_t& size, std::string& data, int32_t& kind,
                        std::string& typeText, std::string& valueText) override;

    HRESULT GetErrorText(HRESULT code, std::string& text) override;

private:
    void ReportLabels(const ElfImage& image, uint32_t offset);

    IQServiceRegistry* registry_;
    IQProgram* program_;
    bool hasDebug_ = false;
    bool bigEndian_ = false;
    DebugData debug_;
    std::vector<LoadSegment> loaded_; // what the last load wrote, for a variable's value
};
