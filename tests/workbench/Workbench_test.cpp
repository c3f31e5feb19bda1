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

TEST(Workbench, RegistersEachServiceUnderItsIdentifier)
{
    std::ostringstream out;
    Workbench bench(out, nullptr, false);
    IQServiceRegistry* registry = &bench.Registry();
    EXPECT_EQ(GetServiceAs<IQErrorTable>(registry, Ids::ErrorTable), &bench.Errors());
    EXPECT_EQ(GetServiceAs<IQUserPromptTable>(registry, Ids::UserPromptTable), &bench.Prompts());
    EXPECT_EQ(GetServiceAs<IQCommandRecorder>(registry, Ids::IQCommandRecorder), &bench.Recorder());
    EXPECT_EQ(GetServiceAs<IQPostMessageService>(registry, Ids::PostMessageService), &bench.Posts());
    EXPECT_EQ(GetServiceAs<IQMessageBox>(registry, Ids::MessageBoxService), &bench.Messages());
    EXPECT_EQ(GetServiceAs<IQEvaluator>(registry, Ids::IQEvaluator), nullptr);
}

TEST(Workbench, ServicesWorkTogetherThroughTheRegistry)
{
    std::ostringstream out;
    FakeClock clock;
    Workbench bench(out, nullptr, false, clock.AsClock());
    IQServiceRegistry* registry = &bench.Registry();

    auto* prompts = GetServiceAs<IQUserPromptTable>(registry, Ids::UserPromptTable);
    Guid key;
    ASSERT_EQ(prompts->AddPrompt(Ids::Component, "reset", VARIANT_TRUE, key), S_OK);
    VariantBool answer = VARIANT_FALSE;
    EXPECT_EQ(prompts->AskYesNo(key, "Reset the target?", answer), S_OK);
    EXPECT_EQ(out.str(), "Reset the target? [y/n] y (default)\n");

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
