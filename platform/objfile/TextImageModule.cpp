#include "platform/objfile/TextImageModule.h"

#include "boundary/Ids.h"
#include "platform/objfile/BlockTransfer.h"
#include "platform/objfile/ObjectCodes.h"

HRESULT TextImageModule::QueryInterface(const Guid& iid, void** out)
{
    if (iid == Ids::IQErrorReporter)
        return AnswerFrom({iid}, iid, static_cast<IQErrorReporter*>(this), out);
    return AnswerFrom({Ids::IUnknown, Ids::IQModuleLoader}, iid, static_cast<IQModuleLoader*>(this), out);
}

HRESULT TextImageModule::Read(const std::string& path, TextImage& image) const
{
    std::string text;
    HRESULT hr = ReadWholeFile(path, text);
    return Succeeded(hr) ? format_.parse(text, image) : hr;
}

HRESULT TextImageModule::Load(IQTCPObject* task, int32_t mode)
{
    if (task == nullptr)
        return E_POINTER;
    BlockTransfer transfer(registry_, program_, task);
    if (program_ != nullptr && (mode & 2) != 0)
        program_->ClearAreas();
    TextImage image;
    HRESULT hr = Read(transfer.Path(), image);
    if (Succeeded(hr) && (mode & 2) != 0)
        hr = transfer.Write(image.blocks);
    return transfer.Finish(hr);
}

HRESULT TextImageModule::Save(IQTCPObject* task, int32_t)
{
    if (task == nullptr)
        return E_POINTER;
    BlockTransfer transfer(registry_, program_, task);
    return transfer.Finish(transfer.Save(format_.write));
}

HRESULT TextImageModule::Verify(IQTCPObject* task)
{
    if (task == nullptr)
        return E_POINTER;
    BlockTransfer transfer(registry_, program_, task);
    TextImage image;
    HRESULT hr = Read(transfer.Path(), image);
    return transfer.Finish(Succeeded(hr) ? transfer.Compare(image.blocks) : hr);
}

HRESULT TextImageModule::GetErrorText(HRESULT code, std::string& text)
{
    return ObjectErrorText(code, text);
}
