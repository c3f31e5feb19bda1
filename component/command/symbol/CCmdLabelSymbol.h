#pragma once
#include <string>

#include "component/command/CCmd.h"
#include "component/command/CmdParse.h"

class CDebuggerState;
class CVELLabelManager;

// The base of the symbol commands, which the label manager of the family with
// its own store makes and owns: a platform that keeps its labels itself has
// no symbol commands.
class CCmdLabelSymbol : public CCmd
{
protected:
    CCmdLabelSymbol(CDebuggerState& owner, CVELLabelManager& labels, IQServiceRegistry* host,
                    std::string fullName, std::string abbreviation, std::string parameterText);

    // Tells the views that the labels were changed by a command.
    void NotifyLabelsChanged() const;
    // The one optional text argument of symbol_clear and symbol_view.
    static Parsed<std::string> ParseOptionalText(const std::string& text);
    struct FileName {
        std::string Typed;
        std::string Path;
    };
    // The one required file name of symbol_load and symbol_save; noNameText:
    // the number of the message for a line without one.
    Parsed<FileName> ParseFileName(const std::string& text, uint32_t noNameText) const;

    CDebuggerState& Owner;
    CVELLabelManager& Labels;
};
