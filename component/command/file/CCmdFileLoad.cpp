#include "component/command/file/CCmdFileLoad.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/ObjectReader.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNoFileName = 5119;
constexpr uint32_t TextNotConnected = 5121;
constexpr uint32_t TextNoFormat = 5122;
constexpr uint32_t TextAreas = 5144;
constexpr uint32_t TextCancelled = 5136;
constexpr uint32_t TextFailed = 5137;
} // namespace

CCmdFileLoad::CCmdFileLoad(IQServiceRegistry* host, CDebuggerState& debugger)
    : CCmdFile(host, debugger, "file_load", "fl",
               "[<format>] <filename> [<offset>] [<verify>] [<style>] [<mode>]")
{
}

HRESULT CCmdFileLoad::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    std::string_view cursor = text;
    if (!Begin(cursor, TextNotConnected, message))
        return E_FAIL;
    CArgStringFileNameEx file = FileNameArgument(true);
    CArgNumberUnsigned offset = NumberArgument(false, "<offset>");
    CArgKeyword verify(false, "v\0n\0", 0);
    CArgKeyword style(false, "r\0p\0", 0);
    CArgKeyword mode = ModeArgument();
    const int count = ParseArguments(cursor, {&file, &offset, &verify, &style, &mode});
    if (count == 0) {
        message = FormatMessageText(TextNoFileName);
        return E_FAIL;
    }
    // Only an offset out of range stops the line here; it ends the command quietly.
    if (count != 5)
        return S_OK;
    if (!HasNoMoreText(cursor)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    const Style chosen = style.UsedDefault     ? Style::ForThisLoad
                         : style.Selected == 0 ? Style::Replace
                                               : Style::Add;
    return Load(
        {file.Path, static_cast<uint32_t>(offset.Value), verify.Selected == 0, chosen, AccessSizeOf(mode)},
        message);
}

HRESULT CCmdFileLoad::Load(const Request& request, std::string& message)
{
    bool listChanged = false;
    std::vector<CDownloadModule> modules;
    if (request.style == Style::Replace) {
        // The others go even if this file then fails to load.
        Debugger.RemoveAllPrograms();
        Debugger.WriteModules({});
        listChanged = true;
    } else {
        modules = Debugger.ReadModules();
    }
    const CDownloadModule module(request.file, request.offset, Format, 0, request.verify ? 1 : 0,
                                 request.accessSize, 0);
    const std::string key = module.Key();
    const bool known = Debugger.FindProgramIndexByKey(key).has_value();
    HRESULT result = S_OK;
    bool takeOutAfter = false;
    CQProgram probe = Debugger.MakeProgram(module);
    IQServiceRegistry* services = Debugger.GetRegistry();
    // Whether the format's reader takes the file matters only for a module not yet in the list.
    const bool formatKnown = FindFormat(Format).has_value();
    const bool opened = formatKnown && probe.Open(services);
    probe.Close(services);
    if (!formatKnown || (!known && !opened)) {
        message = FormatMessageText(TextNoFormat, Format.c_str());
        result = E_FAIL;
    } else {
        if (!known) {
            Debugger.InsertProgram(-1, probe);
            modules.push_back(module);
            Debugger.WriteModules(modules);
            listChanged = true;
            takeOutAfter = request.style == Style::ForThisLoad;
        }
        const std::optional<int32_t> index = Debugger.FindProgramIndexByKey(key);
        const int32_t status = index ? Debugger.DownloadProgram(*index, true) : TASK_FAILED;
        result = Answer(status, request.file, key, message);
        if (takeOutAfter) {
            Debugger.RemoveProgramByName(key);
            modules.pop_back();
            Debugger.WriteModules(modules);
        }
    }
    Debugger.Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 0});
    if (listChanged)
        Debugger.Broadcast(Event{Ids::EVENT_MODULES_CHANGED, 0});
    return result;
}

HRESULT CCmdFileLoad::Answer(int32_t status, const std::string& file, const std::string& key,
                             std::string& message)
{
    if (status != TASK_DONE)
        return AnswerStatus(status, {TextAreas, TextCancelled, TextFailed}, file, message);
    message = FormatMessageText(TextAreas, file.c_str());
    const std::optional<int32_t> index = Debugger.FindProgramIndexByKey(key);
    const CQProgram* program = index ? Debugger.GetPrograms().At(*index) : nullptr;
    IQEvaluator2* evaluator = Evaluator.Interface();
    if (program == nullptr || evaluator == nullptr)
        return S_OK;
    for (const CMemoryLoadData& area : program->Areas().Ranges()) {
        std::string start, end;
        evaluator->FormatAddress(area.Start.Value(), VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, start);
        evaluator->FormatAddress(area.End.Value(), VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, end);
        message += "\n" + start + " - " + end;
    }
    return S_OK;
}
