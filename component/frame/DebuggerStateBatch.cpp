// The session's batch files: when they start, and which timing a command in
// them runs at.
#include <sys/stat.h>
#include <unistd.h>

#include "boundary/Ids.h"
#include "boundary/ScopeGuard.h"
#include "boundary/interfaces/Command.h"
#include "boundary/interfaces/Store.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/CUserPrompts.h"
#include "component/frame/StringTable.h"
#include "component/memory/CMemoryManager.h"
#include "component/session/PlaceholderExpander.h"

namespace
{

bool IsFile(const std::string& path)
{
    struct stat st {
    };
    return !path.empty() && stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool IsDirectory(const std::string& path)
{
    struct stat st {
    };
    return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

} // namespace

HRESULT CDebuggerState::GetBatchState(int32_t& value)
{
    value = BatchRunning >= 1 ? CCommandFile::BatchStateOf(BatchTiming) : 0;
    return S_OK;
}

void CDebuggerState::LoadCommandFiles()
{
    CommandFiles.clear();
    auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore);
    Variant stored;
    if (store != nullptr &&
        Succeeded(store->GetCommandFiles(WorkspaceName, ProjectName, SessionName, stored)))
        CommandFiles = CCommandFile::Read(stored);
}

bool CDebuggerState::HasBatchFiles(int32_t timing) const
{
    for (const auto& f : CommandFiles)
        if (f.Timing() == timing)
            return true;
    return false;
}

void CDebuggerState::StartBatchFiles(int32_t timing)
{
    // Only the start is guarded: every file of one timing is handed over in a
    // row, and a start at another timing while any of them runs does nothing.
    if (BatchRunning >= 1)
        return;
    BatchTiming = timing;
    auto* commandLine = GetServiceAs<IQCommandLineService>(Registry, Ids::CommandLineService);
    if (commandLine == nullptr)
        return;
    PlaceholderExpander expander(Registry);
    for (const auto& entry : CommandFiles) {
        if (entry.Timing() != timing)
            continue;
        std::string text = expander.ExpandFor(entry.Entry(), WorkspaceName, ProjectName, ConfigurationName);
        std::string file = text, directory;
        if (auto bar = text.find('|'); bar != std::string::npos) {
            file = text.substr(0, bar);
            directory = text.substr(bar + 1);
        }
        if (!IsFile(file)) {
            if (Prompts)
                Prompts->ShowWarning(PromptBatchMissing,
                                     FormatText(StringTable::Load(57727).c_str(), file.c_str()));
            continue;
        }
        // The batch's commands name files relative to its folder; the old
        // directory is not restored, as a user who set one expects.
        if (!directory.empty() && IsDirectory(directory) && chdir(directory.c_str()) != 0)
            continue;
        // Counted before the hand-over, as the batch may end inside it; a
        // refused file gives its count back.
        ++BatchRunning;
        ScopeGuard giveBack([this] { --BatchRunning; });
        if (Succeeded(commandLine->RunBatchFile(file)))
            giveBack.Release();
    }
}

bool CDebuggerState::DisableMemoryUntilBatch()
{
    auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore);
    int32_t value = 0;
    return store != nullptr &&
           Succeeded(store->GetDisableMemoryUntilBatch(WorkspaceName, ProjectName, SessionName, value)) &&
           value == 1;
}

void CDebuggerState::RunConnectionBatch()
{
    if (!HasBatchFiles(TIMING_AT_CONNECTION))
        return;
    StartBatchFiles(TIMING_AT_CONNECTION);
    // The command window runs the files later, line by line: memory stays
    // closed until the last of them has finished.
    if (BatchRunning > 0 && Memory && Memory->IsMemoryDisabled())
        OpenMemoryAfterBatch = true;
    else
        OpenMemoryAfterConnection();
}

void CDebuggerState::OpenMemoryAfterConnection()
{
    OpenMemoryAfterBatch = false;
    if (Memory && Memory->IsMemoryDisabled()) {
        bool refused = Memory->WasAccessedWhileDisabled();
        Memory->EnableMemory();
        if (refused)
            Broadcast(Event{Ids::EVENT_MEMORY_CHANGED, 0});
    }
}
