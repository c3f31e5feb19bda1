#include "workbench/CommandRecorder.h"

#include <new>

#include "boundary/Ids.h"

HRESULT CommandRecorder::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQCommandRecorder}, iid, static_cast<IQCommandRecorder*>(this),
                      out);
}

HRESULT CommandRecorder::IsLogging()
{
    return logging_ ? S_OK : S_FALSE;
}

HRESULT CommandRecorder::LogCommand(const std::string& text)
{
    if (!logging_)
        return S_FALSE;
    // An empty line would replay as nothing and only blur the log.
    if (text.empty())
        return E_INVALIDARG;
    try {
        // Dropped a block at a time, so each line costs the same on average.
        if (lines_.size() >= 2 * kKept)
            lines_.erase(lines_.begin(), lines_.end() - kKept);
        lines_.push_back(text);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    if (sink_ != nullptr) {
        *sink_ << text << '\n';
        sink_->flush();
    }
    return S_OK;
}
