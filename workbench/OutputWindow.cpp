#include "workbench/OutputWindow.h"

#include <ostream>

#include "boundary/Ids.h"

HRESULT OutputWindow::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::OutputWindow}, iid, static_cast<IQOutputWindow*>(this), out);
}

HRESULT OutputWindow::AppendText(const std::string& tab, const std::string& text)
{
    if (tab.empty())
        return E_INVALIDARG;
    std::string& pending = partial_[tab];
    for (char c : text) {
        if (c == '\r')
            continue;
        if (c != '\n') {
            pending += c;
            continue;
        }
        // Whole lines go out at once, so that a line shows while the debugger works on.
        tabs_[tab] += pending + "\n";
        out_ << pending << "\n" << std::flush;
        pending.clear();
    }
    return S_OK;
}

HRESULT OutputWindow::ClearTab(const std::string& tab)
{
    tabs_.erase(tab);
    partial_.erase(tab);
    return S_OK;
}

HRESULT OutputWindow::BringForward(const std::string& tab)
{
    forward_ = tab;
    return S_OK;
}

std::string OutputWindow::Text(const std::string& tab) const
{
    auto it = tabs_.find(tab);
    std::string text = it == tabs_.end() ? std::string() : it->second;
    if (auto p = partial_.find(tab); p != partial_.end())
        text += p->second;
    return text;
}
