#pragma once
#include <istream>
#include <ostream>
#include <string>

#include "boundary/interfaces/Workbench.h"

// Message boxes on a terminal. Without an input stream, or when not
// interactive, a question is written with the default answer taken, so a
// batch log shows what was decided.
class ConsoleMessageBox final : public IQMessageBox
{
public:
    ConsoleMessageBox(std::ostream& out, std::istream* in, bool interactive);
    ConsoleMessageBox(const ConsoleMessageBox&) = delete;
    ConsoleMessageBox& operator=(const ConsoleMessageBox&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // Every line of the text gets the icon's prefix ("Error: ", "Warning: ").
    HRESULT ShowMessage(const std::string& text, MessageIcon icon) override;
    HRESULT AskYesNo(const std::string& text, VariantBool defaultAnswer, VariantBool& answer) override;

    bool Interactive() const { return in_ != nullptr && interactive_; }
    // How many errors were shown: a script that met one did not run as asked.
    int Errors() const { return errors_; }

    static constexpr int kAttempts = 3;

private:
    enum class Reply { Yes, No, Default, Invalid };
    static Reply Classify(std::string line);

    std::ostream& out_;
    std::istream* in_;
    bool interactive_;
    int errors_ = 0;
};
