#pragma once
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <string>
#include <vector>

#include "boundary/interfaces/Command.h"

class ServiceRegistry;
class MessageLoop;
class CommandHelpService;

// The command-line window: matches the first word of a line against the names
// the registered command clients answer to, hands the line over and shows the
// text that comes back. Runs batch files as if typed. A command that answers
// "pending" holds every later line back until its final text arrives.
class CommandWindow final : public IQCommandLineService, public IQCmdCompletionSink
{
public:
    CommandWindow(ServiceRegistry& registry, MessageLoop& loop, CommandHelpService& help, std::ostream& out);
    ~CommandWindow();
    CommandWindow(const CommandWindow&) = delete;
    CommandWindow& operator=(const CommandWindow&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // A batch file starts after the current call returns; its end is broadcast.
    HRESULT RunBatchFile(const std::string& path) override;
    HRESULT GetQuotingVersion(int32_t& version) override;
    HRESULT OnCommandComplete(const std::string& text, HRESULT result) override;

    // A typed line. It runs now, or after the lines before it when a command
    // is still pending.
    void Submit(const std::string& line);
    // Lines joined by ';' outside quotes and braces, as one command line.
    void SubmitSequence(const std::string& lines);
    // False when the file cannot be read; then nothing is queued.
    bool SubmitBatchFile(const std::string& path);

    // Each line shown before its text, as a transcript does.
    void SetEcho(bool echo) { echo_ = echo; }
    bool Idle() const { return !pending_ && queue_.empty(); }
    bool Pending() const { return pending_; }
    // The prompt to show: a command's own while it is continuing.
    std::string Prompt() const;
    int Failures() const { return failures_; }
    // Every name the clients answer to, and the window's own, sorted.
    std::vector<std::string> CommandNames() const;

    // Longest accepted line: beyond it a line is refused whole.
    static constexpr size_t kMaxLineLength = 64 * 1024;

private:
    struct Item {
        std::string text;
        int batch = 0; // 0: typed
        int lineNumber = 0;
        bool endOfBatch = false;
        std::string batchName;
    };
    struct Client {
        IQCmdClient2* client;
        std::vector<std::string> names;
    };

    void Pump();
    void RunItem(const Item& item);
    void RunLine(const std::string& line, const Item& item);
    bool RunBuiltIn(const std::string& word, const std::string& rest, const Item& item);
    void Execute(IQCmdClient2* client, const std::string& line, const Item& item);
    void ShowResult(const std::string& text, HRESULT result, const Item& item);
    void Show(const std::string& text);
    void ShowError(const std::string& text);
    std::vector<Client> Clients() const;
    void DropRestOfBatch(int batch);
    bool QueueBatch(const std::string& path, bool atFront);

    ServiceRegistry& registry_;
    MessageLoop& loop_;
    CommandHelpService& help_;
    std::ostream& out_;
    std::deque<Item> queue_;
    bool echo_ = false;
    bool pending_ = false;
    Item pendingItem_;
    bool pumping_ = false;
    IQCmdClient2* continuing_ = nullptr;
    std::string continuationPrompt_;
    int failures_ = 0;
    int nextBatch_ = 1;
};
