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
    std::string lines;
    lines.reserve(text.size());
    for (char c : text)
        if (c != '\r')
            lines += c;
    // Written at once, an unfinished line too: a firmware's "> " asks for
    // input and must show before the line ends.
    out_ << lines << std::flush;
    std::string& kept = tabs_[tab];
    kept += lines;
    if (kept.size() > kMaxTabText) {
        // The oldest text goes, from a line's start where there is one.
        size_t cut = kept.size() - kMaxTabText;
        size_t lineStart = kept.find('\n', cut);
        if (lineStart != std::string::npos && lineStart + 1 < kept.size())
            cut = lineStart + 1;
        kept.erase(0, cut);
    }
    return S_OK;
}

HRESULT OutputWindow::ClearTab(const std::string& tab)
{
    tabs_.erase(tab);
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
    return it == tabs_.end() ? std::string() : it->second;
}
