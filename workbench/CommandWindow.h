#pragma once
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "boundary/interfaces/Command.h"
#include "workbench/BatchReader.h"

class ServiceRegistry;
class MessageLoop;
class CommandHelpService;

// The command-line window: matches the first word of a line against the names
// the registered command clients answer to, hands the line over and shows the
// text that comes back. Runs batch files as if typed, a nested one before the
// rest of its caller, and every running batch before the next typed line. A
// command that answers "pending" holds every later line back until its final
// text arrives.
class CommandWindow final : public IQCommandLineService, public IQCmdCompletionSink
{
public:
    CommandWindow(ServiceRegistry& registry, MessageLoop& loop, CommandHelpService& help, std::ostream& out);
    ~CommandWindow();
    CommandWindow(const CommandWindow&) = delete;
    CommandWindow& operator=(const CommandWindow&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // A batch file starts after the current call returns, before the next
    // waiting line; its end is broadcast.
    HRESULT RunBatchFile(const std::string& path) override;
    HRESULT GetQuotingVersion(int32_t& version) override;
    HRESULT OnCommandComplete(const std::string& text, HRESULT result) override;

    // A typed line. It runs now, or after the lines before it when a command
    // is still pending.
    void Submit(const std::string& line);
    // Lines joined by ';' outside quotes and braces, as one command line.
    void SubmitSequence(const std::string& lines);
    // Runs before the typed lines waiting. False when the file cannot be read;
    // then nothing is queued.
    bool SubmitBatchFile(const std::string& path);

    // Each line shown before its text, as a transcript does.
    void SetEcho(bool echo) { echo_ = echo; }
    bool Idle() const
    {
        return quit_ || (!pending_ && typed_.empty() && batches_.empty() && started_.empty());
    }
    bool Pending() const { return pending_; }
    // The prompt to show: a command's own while it is continuing.
    std::string Prompt() const;
    int Failures() const { return failures_; }
    // "quit" or "exit" was run: nothing more runs.
    bool QuitRequested() const { return quit_; }
    // Every name the clients answer to, and the window's own, sorted.
    std::vector<std::string> CommandNames() const;

    // Longest accepted line: beyond it a line is refused whole.
    static constexpr size_t kMaxLineLength = 64 * 1024;
    // Batch files running inside each other; a file that calls itself stops here.
    static constexpr size_t kMaxBatchDepth = 16;

private:
    struct Client {
        IQCmdClient2* client;
        std::vector<std::string> names;
    };

    void Pump();
    bool TakeStartedBatches();
    bool NextBatchLine(std::string& line);
    void EndBatch();
    void RunItem(const std::string& text);
    void RunLine(const std::string& line);
    bool RunBuiltIn(const std::string& name, const std::string& rest);
    void Execute(IQCmdClient2* client, const std::string& line);
    void ShowResult(const std::string& text, HRESULT result);
    void Fail(const std::string& text);
    void Show(const std::string& text);
    void ShowError(const std::string& text);
    std::vector<Client> Clients() const;
    void StopBatches(bool report = true);
    bool PushBatch(std::unique_ptr<BatchReader> batch);
    void Abandon(const BatchReader& batch);

    ServiceRegistry& registry_;
    MessageLoop& loop_;
    CommandHelpService& help_;
    std::ostream& out_;
    std::deque<std::string> typed_;
    // The innermost batch last.
    std::vector<std::unique_ptr<BatchReader>> batches_;
    // Handed over by components during the present call, in their order.
    std::vector<std::unique_ptr<BatchReader>> started_;
    bool echo_ = false;
    bool pending_ = false;
    // The line running, or pending, came from a batch file.
    bool fromBatch_ = false;
    bool pumping_ = false;
    bool quit_ = false;
    IQCmdClient2* continuing_ = nullptr;
    // How many batches ran when the continuing command started: it ends with them.
    size_t continuingDepth_ = 0;
    std::string continuationPrompt_;
    int failures_ = 0;
};
