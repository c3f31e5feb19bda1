#pragma once
#include <iosfwd>
#include <map>
#include <string>

#include "boundary/interfaces/Workbench.h"

// The output window: a text per tab, the latest kMaxTabText bytes of it. In
// the console every tab writes through to the terminal as its text arrives.
class OutputWindow final : public IQOutputWindow
{
public:
    explicit OutputWindow(std::ostream& out) : out_(out) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED
    HRESULT AppendText(const std::string& tab, const std::string& text) override;
    HRESULT ClearTab(const std::string& tab) override;
    HRESULT BringForward(const std::string& tab) override;

    // What a tab holds, with "\n" line ends.
    std::string Text(const std::string& tab) const;
    const std::string& Forward() const { return forward_; }

    static constexpr size_t kMaxTabText = 256 * 1024;

private:
    std::ostream& out_;
    std::map<std::string, std::string> tabs_;
    std::string forward_;
};
