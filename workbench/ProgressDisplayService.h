#pragma once
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <ostream>
#include <string>

#include "boundary/interfaces/Workbench.h"
#include "workbench/MessageLoop.h"

// A long task's progress as one line on the terminal, redrawn in place: the
// share done, the bytes and the rate. While a task runs, Ctrl-C asks it to
// stop instead of ending the program. Without a terminal nothing is drawn,
// so that a batch run's output is only what the commands say.
class ProgressDisplayService final : public IQProgressDisplay
{
public:
    ProgressDisplayService(MessageLoop& loop, std::ostream& out, bool draw);
    ~ProgressDisplayService();
    ProgressDisplayService(const ProgressDisplayService&) = delete;
    ProgressDisplayService& operator=(const ProgressDisplayService&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Begin(const std::string& title, const std::string& text, VariantBool visible) override;
    HRESULT SetText(const std::string& text) override;
    HRESULT SetRange(uint32_t upper) override;
    HRESULT SetPosition(uint32_t position) override;
    HRESULT IsCancelRequested() override;
    HRESULT Wait(uint32_t ms) override;
    HRESULT End() override;

    // What Ctrl-C does while a task runs; also for a test.
    static void RequestCancel() { cancel_ = true; }
    // The line as it is drawn now.
    std::string Line() const;

private:
    void Draw(bool force);

    MessageLoop& loop_;
    std::ostream& out_;
    bool draw_;
    bool running_ = false;
    bool visible_ = false;
    std::string text_;
    uint32_t upper_ = 0;
    uint32_t position_ = 0;
    std::chrono::steady_clock::time_point started_{}, drawn_{};
    struct sigaction previous_ {
    };
    static std::atomic<bool> cancel_;
};
