#pragma once
#include <istream>
#include <ostream>

#include "workbench/CommandHelpService.h"
#include "workbench/CommandRecorder.h"
#include "workbench/CommandWindow.h"
#include "workbench/ConsoleMessageBox.h"
#include "workbench/ErrorTableService.h"
#include "workbench/EvaluatorHost.h"
#include "workbench/FileMonitorService.h"
#include "workbench/MessageLoop.h"
#include "workbench/OutputWindow.h"
#include "workbench/PostMessageService.h"
#include "workbench/ProgressDisplayService.h"
#include "workbench/ProjectFileService.h"
#include "workbench/RecentListService.h"
#include "workbench/ServiceRegistry.h"
#include "workbench/UserPromptTableService.h"

// The console's host: the main loop, the registry a component is handed, and
// the services registered in it. Declared so that the services are torn down
// before the loop their timers live in.
class Workbench
{
public:
    // questions: where message boxes write, when not `out`: a question must
    // show before its answer is read.
    Workbench(std::ostream& out, std::istream* in, bool interactive, MessageLoop::Clock clock = {},
              std::ostream* questions = nullptr);
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    ServiceRegistry& Registry() { return registry_; }
    MessageLoop& Loop() { return loop_; }
    ErrorTableService& Errors() { return errors_; }
    UserPromptTableService& Prompts() { return prompts_; }
    CommandRecorder& Recorder() { return recorder_; }
    ConsoleMessageBox& Messages() { return messages_; }
    PostMessageService& Posts() { return posts_; }
    CommandHelpService& Help() { return help_; }
    CommandWindow& Commands() { return window_; }
    OutputWindow& Output() { return output_; }
    EvaluatorHost& Evaluators() { return evaluators_; }
    FileMonitorService& Files() { return files_; }
    RecentListService& RecentLists() { return recent_; }
    ProgressDisplayService& Progress() { return progress_; }

private:
    MessageLoop loop_;
    ServiceRegistry registry_;
    ErrorTableService errors_;
    ConsoleMessageBox messages_;
    UserPromptTableService prompts_;
    CommandRecorder recorder_;
    PostMessageService posts_;
    CommandHelpService help_;
    ProjectFileService projectFiles_;
    OutputWindow output_;
    EvaluatorHost evaluators_;
    FileMonitorService files_;
    RecentListService recent_;
    ProgressDisplayService progress_;
    CommandWindow window_;
};
