#include "workbench/ProgressDisplayService.h"

#include <cstdio>

#include "boundary/Ids.h"

std::atomic<bool> ProgressDisplayService::cancel_{false};

namespace
{

void OnInterrupt(int)
{
    ProgressDisplayService::RequestCancel();
}

} // namespace

ProgressDisplayService::ProgressDisplayService(MessageLoop& loop, std::ostream& out, bool draw)
    : loop_(loop), out_(out), draw_(draw)
{
}

ProgressDisplayService::~ProgressDisplayService()
{
    if (running_)
        End();
}

HRESULT ProgressDisplayService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::ProgressDisplay}, iid, static_cast<IQProgressDisplay*>(this), out);
}

HRESULT ProgressDisplayService::Begin(const std::string& title, const std::string& text, VariantBool visible)
{
    if (running_)
        End();
    running_ = true;
    visible_ = visible == VARIANT_TRUE;
    text_ = text;
    upper_ = position_ = 0;
    started_ = drawn_ = std::chrono::steady_clock::now();
    cancel_ = false;
    struct sigaction interrupt {
    };
    interrupt.sa_handler = OnInterrupt;
    sigemptyset(&interrupt.sa_mask);
    sigaction(SIGINT, &interrupt, &previous_);
    if (draw_ && visible_)
        out_ << title << ": " << text << "\n" << std::flush;
    return S_OK;
}

HRESULT ProgressDisplayService::SetText(const std::string& text)
{
    text_ = text;
    if (draw_ && visible_ && running_)
        out_ << "\r\x1b[K" << text << "\n" << std::flush;
    return S_OK;
}

HRESULT ProgressDisplayService::SetRange(uint32_t upper)
{
    upper_ = upper;
    Draw(true);
    return S_OK;
}

HRESULT ProgressDisplayService::SetPosition(uint32_t position)
{
    position_ = position;
    Draw(position_ >= upper_);
    return S_OK;
}

HRESULT ProgressDisplayService::IsCancelRequested()
{
    return running_ && cancel_ ? S_OK : S_FALSE;
}

HRESULT ProgressDisplayService::Wait(uint32_t ms)
{
    loop_.RunOnce(std::chrono::milliseconds(ms));
    return S_OK;
}

HRESULT ProgressDisplayService::End()
{
    if (!running_)
        return S_FALSE;
    running_ = false;
    sigaction(SIGINT, &previous_, nullptr);
    cancel_ = false;
    if (draw_ && visible_ && upper_ != 0)
        out_ << "\n" << std::flush;
    return S_OK;
}

std::string ProgressDisplayService::Line() const
{
    const uint32_t done = std::min(position_, upper_);
    const int percent = upper_ == 0 ? 0 : static_cast<int>(uint64_t{done} * 100 / upper_);
    const int filled = percent * 30 / 100;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started_).count();
    const double rate = seconds > 0 ? done / seconds / 1e6 : 0;
    char line[160];
    std::snprintf(line, sizeof line, "[%-30s] %3d%%  %u/%u bytes  %.1f MB/s",
                  std::string(filled, '#').c_str(), percent, done, upper_, rate);
    return line;
}

// At most ten redraws a second, so that drawing never slows a task.
void ProgressDisplayService::Draw(bool force)
{
    if (!draw_ || !visible_ || !running_ || upper_ == 0)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (!force && now - drawn_ < std::chrono::milliseconds(100))
        return;
    drawn_ = now;
    out_ << "\r" << Line() << std::flush;
}
