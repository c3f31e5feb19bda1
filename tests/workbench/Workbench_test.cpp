#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "support/FakeClock.h"
#include "support/RecordingClient.h"
#include "workbench/Workbench.h"

using namespace std::chrono_literals;

namespace
{

// What a component finds in the registry it is handed, and that the pieces
// work together: prompts ask through the message box, posts and timers run
// on the loop. Questions go where they are told.
TEST(Workbench, ServicesWorkTogetherThroughTheRegistry)
{
    std::ostringstream out, questions;
    FakeClock clock;
    Workbench bench(out, nullptr, false, clock.AsClock(), &questions);
    IQServiceRegistry* registry = &bench.Registry();
    EXPECT_EQ(GetServiceAs<IQErrorTable>(registry, Ids::ErrorTable), &bench.Errors());
    EXPECT_EQ(GetServiceAs<IQCommandRecorder>(registry, Ids::IQCommandRecorder), &bench.Recorder());
    EXPECT_EQ(GetServiceAs<IQOutputWindow>(registry, Ids::OutputWindow), &bench.Output());

    auto* prompts = GetServiceAs<IQUserPromptTable>(registry, Ids::UserPromptTable);
    Guid key;
    ASSERT_EQ(prompts->AddPrompt(Ids::Component, "reset", VARIANT_TRUE, key), S_OK);
    VariantBool answer = VARIANT_FALSE;
    EXPECT_EQ(prompts->AskYesNo(key, "Reset the target?", answer), S_OK);
    EXPECT_EQ(questions.str(), "Reset the target? [y/n] y (default)\n");
    EXPECT_EQ(out.str(), "");

    std::vector<std::string> log;
    RecordingClient client("c", log);
    auto* posts = GetServiceAs<IQPostMessageService>(registry, Ids::PostMessageService);
    posts->Post(&client, 4);
    posts->SetTimer(&client, 1, 50);
    clock.Advance(50ms);
    bench.Loop().RunUntilIdle();
    EXPECT_EQ(log, (std::vector<std::string>{"c:post:4", "c:timer:1"}));
}

} // namespace
