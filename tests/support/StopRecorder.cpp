#include "support/StopRecorder.h"

SimTarget::StopCallback StopRecorder::StopCallback()
{
    return [this](const StopInfo& info) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            stops_.push_back(info);
        }
        changed_.notify_all();
    };
}

SimTarget::OutputCallback StopRecorder::OutputCallback()
{
    return [this](std::string_view text) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            output_ += text;
        }
        changed_.notify_all();
    };
}

std::optional<StopInfo> StopRecorder::Next(std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(mutex_);
    if (!changed_.wait_for(lock, timeout, [this] { return !stops_.empty(); }))
        return std::nullopt;
    StopInfo info = stops_.front();
    stops_.pop_front();
    return info;
}

bool StopRecorder::WaitForOutput(const std::string& text, std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(mutex_);
    return changed_.wait_for(lock, timeout, [&] { return output_.find(text) != std::string::npos; });
}

std::string StopRecorder::Output() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return output_;
}

size_t StopRecorder::Pending() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return stops_.size();
}
