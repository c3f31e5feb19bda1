#include "component/program/CDlgProgressGeneric.h"

#include <vector>

#include "boundary/Ids.h"

CDlgProgressGeneric::CDlgProgressGeneric(IQServiceRegistry* registry, std::string title)
    : display_(GetServiceAs<IQProgressDisplay>(registry, Ids::ProgressDisplay)), title_(std::move(title))
{
}

CDlgProgressGeneric::~CDlgProgressGeneric()
{
    if (shown_ && display_ != nullptr)
        display_->End();
}

void CDlgProgressGeneric::SetText(const std::string& text)
{
    text_ = text;
    if (shown_ && display_ != nullptr)
        display_->SetText(text);
}

void CDlgProgressGeneric::Run(bool visible)
{
    if (display_ != nullptr) {
        display_->Begin(title_, text_, visible ? VARIANT_TRUE : VARIANT_FALSE);
        shown_ = true;
    }
    Start();
    // A reader that finishes on another thread tells so through a posted
    // message; until then the workbench's queue runs, and a cancel is taken.
    while (!finished_ && display_ != nullptr) {
        PollCancel();
        if (cancelled_ && CurrentStatus() != 0)
            break;
        display_->Wait(20);
    }
    if (shown_ && display_ != nullptr)
        display_->End();
    shown_ = false;
}

void CDlgProgressGeneric::Progress(uint32_t upper)
{
    if (display_ != nullptr)
        display_->SetRange(upper);
}

void CDlgProgressGeneric::Position(uint32_t position)
{
    if (display_ != nullptr)
        display_->SetPosition(position);
}

void CDlgProgressGeneric::PollCancel()
{
    if (cancelled_ || display_ == nullptr || display_->IsCancelRequested() != S_OK)
        return;
    cancelled_ = true;
    Cancel();
}

std::string CDlgProgressGeneric::ShortPath(const std::string& path)
{
    std::vector<std::string> parts;
    size_t from = 0;
    for (size_t i = 0; i <= path.size(); ++i)
        if (i == path.size() || path[i] == '/' || path[i] == '\\') {
            parts.push_back(path.substr(from, i - from));
            from = i + 1;
        }
    if (parts.size() <= 4)
        return path;
    const char separator =
        path.find('\\') != std::string::npos && path.find('/') == std::string::npos ? '\\' : '/';
    const std::string s(1, separator);
    return parts[0] + s + parts[1] + s + "..." + s + parts[parts.size() - 2] + s + parts.back();
}
