#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "component/frame/CDebuggerState.h"
#include "support/FakePlatformCatalog.h"
#include "support/FakeStore.h"
#include "support/Recording.h"
#include "workbench/CommandRecorder.h"
#include "workbench/ErrorTableService.h"

// A debugger state with a recording workbench around it.
struct StateFixture : ::testing::Test {
    CallLog log;
    RecordingRegistry registry{log};
    ErrorTableService errors;
    RecordingPromptTable prompts{log};
    RecordingMessageBox messages;
    CommandRecorder recorder;
    RecordingEvaluator evaluator;
    FakePlatformCatalog platforms{log};
    FakeStore store{log};
    std::unique_ptr<CDebuggerState> state = std::make_unique<CDebuggerState>();

    StateFixture()
    {
        registry.Provide(Ids::ErrorTable, &errors);
        registry.Provide(Ids::UserPromptTable, &prompts);
        registry.Provide(Ids::MessageBoxService, &messages);
        registry.Provide(Ids::IQCommandRecorder, &recorder);
        registry.Provide(Ids::IQEvaluator2, evaluator.Service());
        registry.Provide(Ids::PlatformList, static_cast<IQPlatformList*>(&platforms));
        registry.Provide(Ids::DriverFactory, static_cast<IQDriverFactory*>(&platforms));
    }
    // The state initialised, hearing its own broadcasts, in a session whose
    // platform is "sim".
    void StartSession()
    {
        registry.Provide(Ids::IQDebugSettingsStore, static_cast<IQDebugSettingsStore*>(&store));
        registry.Provide(Ids::IQTargetRegistry, static_cast<IQTargetRegistry*>(&store));
        ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
        registry.deliverTo = state.get();
        state->RegisterPrompts();
        state->SetSessionKey("boards", "blinky", "Debug", "default");
        store.text["platform"] = "sim";
    }
    // Log entries from `from` on.
    CallLog Since(size_t from) const { return CallLog(log.begin() + static_cast<long>(from), log.end()); }
    bool Logged(const std::string& line) const
    {
        return std::find(log.begin(), log.end(), line) != log.end();
    }
};

// The log entry of a broadcast.
inline std::string Sent(const Guid& event)
{
    return "Broadcast " + event.ToText();
}

// One call per identifier, in the order given.
inline CallLog Each(const std::string& call, const std::vector<Guid>& ids)
{
    CallLog calls;
    for (const Guid& id : ids)
        calls.push_back(call + " " + IdName(id));
    return calls;
}

inline CallLog operator+(CallLog a, const CallLog& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// `commands` command objects, each a provider of both command faces.
inline CallLog CommandFaces(const std::string& call, int commands)
{
    CallLog calls;
    for (int i = 0; i < commands; ++i)
        calls = calls + Each(call, {Ids::IQCmdClient, Ids::IQCmdClient2});
    return calls;
}
