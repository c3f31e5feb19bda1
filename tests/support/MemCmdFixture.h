#pragma once
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "boundary/Ids.h"
#include "component/command/memory/CCmdMemoryCompare.h"
#include "component/command/memory/CCmdMemoryDisplay.h"
#include "component/command/memory/CCmdMemoryEdit.h"
#include "component/command/memory/CCmdMemoryFill.h"
#include "component/command/memory/CCmdMemoryFind.h"
#include "component/command/memory/CCmdMemoryMove.h"
#include "component/command/memory/CCmdMemoryTest.h"
#include "support/MemoryRig.h"
#include "support/RecordingEvaluator.h"
#include "workbench/CommandHelpService.h"

// The real manager over a recording platform with one big-endian area at
// 0x1000..0x1FFF, whose bytes hold the low byte of their address; the
// evaluator and the help service beside it, as the workbench holds them for a
// connected session; lines go to a command as the command window sends them.
class MemCmd : public ::testing::Test, protected MemoryRig
{
protected:
    struct Reply {
        HRESULT hr;
        std::string message;
        std::string prompt;
        bool continuing;
    };

    MemCmd() : MemoryRig({FakeArea{0x1000, 0x1FFF, 2}})
    {
        registry.RegisterService(Ids::CommandHelpService, &help);
        registry.RegisterService(Ids::IQEvaluator2, evaluator.Service());
        for (uint32_t a = 0x1000; a <= 0x1FFF; ++a)
            platform.Poke(a, {static_cast<uint8_t>(a)});
    }

    // Attaches again, for the manager to learn a changed map or offer.
    void Reattach()
    {
        manager.DetachPlatform();
        manager.AttachPlatform(&registry);
        platform.log.clear();
    }
    // The last command the manager recorded.
    std::string Recorded() const { return recorder.Lines().empty() ? "" : recorder.Lines().back(); }

    static Reply Exec(CCmd& cmd, const std::string& line)
    {
        Reply reply{E_NOTIMPL, "", "(none)", false};
        VariantBool continuing = VARIANT_FALSE, pending = VARIANT_FALSE;
        reply.hr = cmd.ExecuteCommand(line, reply.message, reply.prompt, continuing, pending, nullptr);
        reply.continuing = continuing != VARIANT_FALSE;
        return reply;
    }

    // One of the seven by its abbreviation.
    std::unique_ptr<CCmd> Make(const std::string& abbreviation)
    {
        IQServiceRegistry* host = &registry;
        const std::pair<const char*, std::function<std::unique_ptr<CCmd>()>> commands[] = {
            {"mc", [&] { return std::make_unique<CCmdMemoryCompare>(host, onChange); }},
            {"md", [&] { return std::make_unique<CCmdMemoryDisplay>(host, onChange); }},
            {"me", [&] { return std::make_unique<CCmdMemoryEdit>(host, onChange); }},
            {"mf", [&] { return std::make_unique<CCmdMemoryFill>(host, onChange); }},
            {"mi", [&] { return std::make_unique<CCmdMemoryFind>(host, onChange); }},
            {"mv", [&] { return std::make_unique<CCmdMemoryMove>(host, onChange); }},
            {"mt", [&] { return std::make_unique<CCmdMemoryTest>(host, onChange); }},
        };
        for (const auto& [name, make] : commands)
            if (abbreviation == name)
                return make();
        ADD_FAILURE() << "no command " << abbreviation;
        return nullptr;
    }
    // Runs one line on a fresh command named by the line's first word.
    Reply Line(const std::string& line)
    {
        auto cmd = Make(line.substr(0, line.find(' ')));
        return cmd ? Exec(*cmd, line) : Reply{E_NOTIMPL, "", "", false};
    }

    CommandHelpService help;
    RecordingEvaluator evaluator;
    int changes = 0;
    CCmdMemory::MemoryChanged onChange = [this] { ++changes; };
};
