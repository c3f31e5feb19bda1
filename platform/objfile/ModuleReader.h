#pragma once
#include <functional>
#include <memory>
#include <vector>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/ObjectReader.h"
#include "platform/catalog/PlatformTable.h"

// A reader the factory offers under a format name: it makes and owns one
// module handle per program, and answers the texts of the object codes.
class ModuleReader : public PlatformDriver, public IQObjectReader2, public IQErrorReporter
{
public:
    using Maker = std::function<std::shared_ptr<IQModuleLoader>(IQProgram*)>;
    explicit ModuleReader(Maker make) : make_(std::move(make)) {}

    IUnknown* Object() override { return static_cast<IQObjectReader2*>(this); }
    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT CreateModule(IUnknown** handle, IQProgram* program) override;
    HRESULT DestroyModule(IUnknown* handle) override;
    HRESULT GetErrorText(HRESULT code, std::string& text) override;

private:
    Maker make_;
    std::vector<std::shared_ptr<IQModuleLoader>> modules_;
};
