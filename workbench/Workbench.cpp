#include "workbench/Workbench.h"

#include <utility>

#include "boundary/Ids.h"

Workbench::Workbench(std::ostream& out, std::istream* in, bool interactive, MessageLoop::Clock clock,
                     std::ostream* questions)
    : loop_(std::move(clock)), messages_(questions != nullptr ? *questions : out, in, interactive),
      prompts_(&messages_, &registry_), posts_(loop_), output_(out), evaluators_(registry_),
      files_(loop_, registry_), recent_(registry_),
      progress_(loop_, questions != nullptr ? *questions : out, interactive),
      window_(registry_, loop_, help_, out)
{
    // Registration only fails when memory runs out, and then the console
    // could not start anyway; a missing service is answered E_FAIL to the component.
    registry_.RegisterService(Ids::ErrorTable, static_cast<IQErrorTable*>(&errors_));
    registry_.RegisterService(Ids::UserPromptTable, static_cast<IQUserPromptTable*>(&prompts_));
    registry_.RegisterService(Ids::IQCommandRecorder, static_cast<IQCommandRecorder*>(&recorder_));
    registry_.RegisterService(Ids::PostMessageService, static_cast<IQPostMessageService*>(&posts_));
    registry_.RegisterService(Ids::MessageBoxService, static_cast<IQMessageBox*>(&messages_));
    registry_.RegisterService(Ids::CommandHelpService, static_cast<IQCommandHelpService*>(&help_));
    registry_.RegisterService(Ids::ProjectFileService, static_cast<IQProjectFileService*>(&projectFiles_));
    registry_.RegisterService(Ids::OutputWindow, static_cast<IQOutputWindow*>(&output_));
    registry_.RegisterService(Ids::IQEvaluatorHost, static_cast<IQEvaluatorHost*>(&evaluators_));
    registry_.RegisterService(Ids::FileMonitor, static_cast<IQFileMonitor*>(&files_));
    // Answers from the workspace's store for as long as one is registered.
    registry_.RegisterService(Ids::RecentListService, static_cast<IQRecentListStore*>(&recent_));
    registry_.RegisterService(Ids::ProgressDisplay, static_cast<IQProgressDisplay*>(&progress_));
}
