#pragma once
#include <cstdint>
#include <string>

#include "boundary/HResult.h"
#include "boundary/interfaces/Workbench.h"

// What a download, save or verify task shows while the reader works: a title,
// a text and a bar, with the user's cancel. On this system that is the
// workbench's progress display on the terminal. A task runs modally: Run
// returns once the reader has said that it finished, or the user has stopped
// a task whose reader never will.
class CDlgProgressGeneric
{
public:
    CDlgProgressGeneric(IQServiceRegistry* registry, std::string title);
    virtual ~CDlgProgressGeneric();
    CDlgProgressGeneric(const CDlgProgressGeneric&) = delete;
    CDlgProgressGeneric& operator=(const CDlgProgressGeneric&) = delete;

    // Set before Run; a task may change it while it runs.
    void SetText(const std::string& text);
    // Shown only when `visible`: the function-name platforms show their own progress.
    void Run(bool visible);

    // A path of more than four components keeps its first two and last two.
    static std::string ShortPath(const std::string& path);

protected:
    // Calls the reader's operation with this task.
    virtual void Start() = 0;
    virtual int32_t CurrentStatus() const = 0;
    // The Cancel button: the reader learns of it at its next poll.
    virtual void Cancel() = 0;

    void Progress(uint32_t upper);
    void Position(uint32_t position);
    // The close message: the task has ended.
    void Close() { finished_ = true; }
    bool Finished() const { return finished_; }
    // Asked at each poll of the reader: a cancel typed meanwhile counts.
    void PollCancel();

private:
    IQProgressDisplay* display_ = nullptr;
    std::string title_;
    std::string text_;
    bool shown_ = false;
    bool cancelled_ = false;
    bool finished_ = false;
};
