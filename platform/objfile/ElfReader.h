#pragma once
#include <memory>
#include <vector>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/ObjectReader.h"
#include "platform/catalog/PlatformTable.h"
#include "platform/objfile/ElfModule.h"

struct IQServiceRegistry;

// The reader the factory offers under the format name "elf": it makes and
// owns one module handle per program, and answers the texts of its codes.
class ElfReader final : public PlatformDriver, public IQObjectReader2, public IQErrorReporter
{
public:
    explicit ElfReader(IQServiceRegistry* registry) : registry_(registry) {}

    static constexpr const char* FormatName = "elf";

    IUnknown* Object() override { return static_cast<IQObjectReader2*>(this); }
    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT CreateModule(IUnknown** handle, IQProgram* program) override;
    HRESULT DestroyModule(IUnknown* handle) override;
    HRESULT GetErrorText(HRESULT code, std::string& text) override;

private:
    IQServiceRegistry* registry_;
    std::vector<std::unique_ptr<ElfModule>> modules_;
};
