#pragma once
#include <gtest/gtest.h>

#include <memory>

#include "component/frame/CDebuggerState.h"
#include "support/FakePlatform.h"
#include "support/Recording.h"

// A debugger state with a recording workbench around it.
struct StateFixture : ::testing::Test {
    CallLog log;
    RecordingRegistry registry{log};
    RecordingErrorTable errors;
    RecordingPromptTable prompts{log};
    RecordingMessageBox messages;
    RecordingRecorder recorder;
    FakeEvaluator evaluator;
    FakePlatform platforms{log};
    std::unique_ptr<CDebuggerState> state = std::make_unique<CDebuggerState>();

    StateFixture()
    {
        registry.Provide(Ids::ErrorTable, &errors);
        registry.Provide(Ids::UserPromptTable, &prompts);
        registry.Provide(Ids::MessageBoxService, &messages);
        registry.Provide(Ids::IQCommandRecorder, &recorder);
        registry.Provide(Ids::IQEvaluator2, &evaluator);
        registry.Provide(Ids::PlatformList, static_cast<IQPlatformList*>(&platforms));
        registry.Provide(Ids::DriverFactory, static_cast<IQDriverFactory*>(&platforms));
    }
    // Log entries from `from` on.
    CallLog Since(size_t from) const { return CallLog(log.begin() + static_cast<long>(from), log.end()); }
};
