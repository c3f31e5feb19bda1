#pragma once
#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/ObjectReader.h"
#include "platform/objfile/TextImage.h"

struct IQServiceRegistry;

// The module handle of one program whose file is a text record format: the
// whole file is read and checked before a byte goes to the target. Such a
// file has no symbols and no debug data.
class TextImageModule final : public IQModuleLoader, public IQErrorReporter
{
public:
    TextImageModule(IQServiceRegistry* registry, IQProgram* program, const TextFormat& format)
        : registry_(registry), program_(program), format_(format)
    {
    }

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Load(IQTCPObject* task, int32_t mode) override;
    HRESULT Save(IQTCPObject* task, int32_t mode) override;
    HRESULT Verify(IQTCPObject* task) override;

    HRESULT GetErrorText(HRESULT code, std::string& text) override;

private:
    HRESULT Read(const std::string& path, TextImage& image) const;

    IQServiceRegistry* registry_;
    IQProgram* program_;
    const TextFormat& format_;
};
