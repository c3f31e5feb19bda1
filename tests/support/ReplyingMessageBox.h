#pragma once
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Workbench.h"

// Records every message and question and answers questions with a set reply.
class ReplyingMessageBox final : public IQMessageBox
{
public:
    struct Question {
        std::string text;
        VariantBool defaultAnswer;
    };

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        *out = iid == Ids::IUnknown ? this : nullptr;
        return *out != nullptr ? S_OK : E_NOINTERFACE;
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT ShowMessage(const std::string& text, MessageIcon) override
    {
        messages.push_back(text);
        return S_OK;
    }
    HRESULT AskYesNo(const std::string& text, VariantBool defaultAnswer, VariantBool& answer) override
    {
        questions.push_back({text, defaultAnswer});
        answer = reply;
        return result;
    }

    VariantBool reply = VARIANT_FALSE;
    HRESULT result = S_OK;
    std::vector<std::string> messages;
    std::vector<Question> questions;
};
