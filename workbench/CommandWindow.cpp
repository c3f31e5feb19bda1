#include "workbench/CommandWindow.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <strings.h>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"
#include "boundary/ScopeGuard.h"
#include "workbench/CommandHelpService.h"
#include "workbench/MessageLoop.h"
#include "workbench/ServiceRegistry.h"
#include "workbench/TerminalText.h"

namespace
{

bool SameName(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

std::string Trim(const std::string& s)
{
    size_t first = 0;
    while (first < s.size() && IsBlank(s[first]))
        ++first;
    size_t last = s.size();
    while (last > first && IsBlank(s[last - 1]))
        --last;
    return s.substr(first, last - first);
}

// `word` begins `name` and is shorter.
bool IsPrefix(const std::string& word, const std::string& name)
{
    return name.size() > word.size() && strncasecmp(name.c_str(), word.c_str(), word.size()) == 0;
}

std::string Hex(HRESULT hr)
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%08X", static_cast<uint32_t>(hr));
    return buffer;
}

} // namespace

CommandWindow::CommandWindow(ServiceRegistry& registry, MessageLoop& loop, CommandHelpService& help,
                             std::ostream& out)
    : registry_(registry), loop_(loop), help_(help), out_(out)
{
    registry_.RegisterService(Ids::CommandLineService, static_cast<IQCommandLineService*>(this));
    help_.AddCommandHelp("batch", "<filename>", 0);
    help_.AddCommandHelp("help", "[<command>]", 0);
}

CommandWindow::~CommandWindow()
{
    registry_.UnregisterService(Ids::CommandLineService, static_cast<IQCommandLineService*>(this));
    help_.RemoveCommandHelp("batch", "<filename>", 0);
    help_.RemoveCommandHelp("help", "[<command>]", 0);
}

HRESULT CommandWindow::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::CommandLineService}, iid, static_cast<IQCommandLineService*>(this),
                      out);
}

HRESULT CommandWindow::GetQuotingVersion(int32_t& version)
{
    version = 65535;
    return S_OK;
}

HRESULT CommandWindow::RunBatchFile(const std::string& path)
{
    // The caller counts the batch as started only on success, so refuse here
    // what cannot be read rather than later.
    auto batch = BatchReader::Open(path, true);
    if (!batch)
        return E_FAIL;
    if (batches_.size() + started_.size() >= kMaxBatchDepth) {
        Fail("Batch files nested too deeply (more than " + std::to_string(kMaxBatchDepth) + "): " + path);
        StopBatches();
        return E_FAIL;
    }
    started_.push_back(std::move(batch));
    // Inside a line's run the running pump takes it up next; otherwise later.
    if (!pumping_)
        loop_.PostTask([this] { Pump(); });
    return S_OK;
}

bool CommandWindow::SubmitBatchFile(const std::string& path)
{
    auto batch = BatchReader::Open(path, false);
    if (!batch)
        return false;
    PushBatch(std::move(batch));
    Pump();
    return true;
}

bool CommandWindow::PushBatch(std::unique_ptr<BatchReader> batch)
{
    if (batches_.size() >= kMaxBatchDepth) {
        Fail("Batch files nested too deeply (more than " + std::to_string(kMaxBatchDepth) +
             "): " + batch->Name());
        Abandon(*batch);
        StopBatches();
        return false;
    }
    batches_.push_back(std::move(batch));
    return true;
}

void CommandWindow::Submit(const std::string& line)
{
    typed_.push_back(line);
    Pump();
}

void CommandWindow::SubmitSequence(const std::string& lines)
{
    std::string current;
    char quote = 0;
    bool brace = false;
    for (char c : lines) {
        if (quote == 0 && !brace && c == ';') {
            typed_.push_back(current);
            current.clear();
            continue;
        }
        if (quote == 0 && !brace && c == '"')
            quote = c;
        else if (quote != 0 && c == '"')
            quote = 0;
        else if (quote == 0 && c == '{')
            brace = true;
        else if (brace && c == '}')
            brace = false;
        current += c;
    }
    typed_.push_back(current);
    Pump();
}

void CommandWindow::Pump()
{
    // A completion arriving while a line runs continues the queue from the
    // outer call, so lines never run inside each other.
    if (pumping_)
        return;
    ScopedValue pumping(pumping_, true);
    while (!pending_ && !quit_) {
        if (!TakeStartedBatches())
            continue;
        std::string line;
        if (!batches_.empty()) {
            if (NextBatchLine(line)) {
                fromBatch_ = true;
                RunItem(line);
            }
            continue;
        }
        if (typed_.empty())
            break;
        line = std::move(typed_.front());
        typed_.pop_front();
        fromBatch_ = false;
        RunItem(line);
    }
}

bool CommandWindow::TakeStartedBatches()
{
    // Files one call started run in the order they were handed over.
    auto started = std::move(started_);
    started_.clear();
    for (auto it = started.rbegin(); it != started.rend(); ++it) {
        if (!PushBatch(std::move(*it))) {
            while (++it != started.rend())
                Abandon(**it);
            return false;
        }
    }
    return true;
}

void CommandWindow::Abandon(const BatchReader& batch)
{
    // Whoever started it counts on hearing of its end, run or not.
    if (batch.Announce())
        registry_.Broadcast(Event{Ids::EVENT_BATCH_FINISHED, 0});
}

bool CommandWindow::NextBatchLine(std::string& line)
{
    BatchReader& batch = *batches_.back();
    switch (batch.Next(line, kMaxLineLength)) {
    case BatchReader::Read::Line:
        return true;
    case BatchReader::Read::End:
        EndBatch();
        return false;
    case BatchReader::Read::TooLong:
        if (echo_)
            Show("> " + line.substr(0, 60) + "...");
        Fail("Line too long: more than " + std::to_string(kMaxLineLength) + " characters, in " +
             batch.Name() + " line " + std::to_string(batch.LineNumber()));
        StopBatches();
        return false;
    }
    return false;
}

void CommandWindow::EndBatch()
{
    const bool announce = batches_.back()->Announce();
    batches_.pop_back();
    // A command left waiting for more lines ends with the file that started
    // it, so that it never takes the next file's or the person's lines.
    if (continuing_ != nullptr && continuingDepth_ > batches_.size()) {
        std::string message, prompt;
        VariantBool continuing = VARIANT_FALSE, pending = VARIANT_FALSE;
        continuing_->ExecuteCommand(".", message, prompt, continuing, pending, this);
        continuing_ = nullptr;
        continuationPrompt_.clear();
    }
    if (announce)
        registry_.Broadcast(Event{Ids::EVENT_BATCH_FINISHED, 0});
}

void CommandWindow::StopBatches(bool report)
{
    auto started = std::move(started_);
    started_.clear();
    for (const auto& batch : started)
        Abandon(*batch);
    // The innermost file is always named; a caller only when it had lines
    // left, so a runaway nesting does not repeat one line per level.
    bool innermost = true;
    while (!batches_.empty()) {
        BatchReader& batch = *batches_.back();
        const size_t rest = batch.CountRest(kMaxLineLength);
        if (report && (innermost || rest > 0))
            ShowError("Batch file " + batch.Name() + " stopped; " + std::to_string(rest) +
                      " line(s) not run");
        innermost = false;
        EndBatch();
    }
}

void CommandWindow::RunItem(const std::string& text)
{
    if (text.size() > kMaxLineLength) {
        if (echo_)
            Show("> " + text.substr(0, 60) + "...");
        Fail("Line too long: " + std::to_string(text.size()) + " characters, at most " +
             std::to_string(kMaxLineLength));
        return;
    }
    std::string line = Trim(text);
    // While a command continues, every line is its, blank ones too.
    if (continuing_ != nullptr) {
        if (echo_)
            Show(Prompt() + line);
        Execute(continuing_, line);
        return;
    }
    if (line.empty() || line[0] == '#')
        return;
    if (echo_)
        Show("> " + line);
    RunLine(line);
}

namespace
{

constexpr const char* kBuiltIns[] = {"batch", "exit", "help", "quit"};

} // namespace

void CommandWindow::RunLine(const std::string& line)
{
    size_t end = 0;
    while (end < line.size() && !IsBlank(line[end]))
        ++end;
    std::string word = line.substr(0, end);
    std::string rest = Trim(line.substr(end));

    auto clients = Clients();
    // An exact name wins, full names before aliases; then a prefix of one full name.
    for (int pass = 0; pass < 2; ++pass)
        for (const auto& c : clients)
            for (size_t i = 0; i < c.names.size(); ++i)
                if ((pass == 0) == (i == 0) && SameName(c.names[i], word)) {
                    Execute(c.client, line);
                    return;
                }
    for (const char* name : kBuiltIns)
        if (SameName(name, word)) {
            RunBuiltIn(name, rest);
            return;
        }
    std::vector<std::string> names;
    IQCmdClient2* match = nullptr;
    for (const auto& c : clients)
        if (IsPrefix(word, c.names[0])) {
            names.push_back(c.names[0]);
            match = c.client;
        }
    const char* builtIn = nullptr;
    for (const char* name : kBuiltIns)
        if (IsPrefix(word, name)) {
            names.push_back(name);
            builtIn = name;
        }
    if (names.size() == 1) {
        if (builtIn != nullptr)
            RunBuiltIn(builtIn, rest);
        else
            Execute(match, line);
        return;
    }
    if (names.empty()) {
        Fail("Unknown command: " + word);
        return;
    }
    std::sort(names.begin(), names.end());
    std::string list;
    for (const auto& n : names)
        list += (list.empty() ? "" : ", ") + n;
    Fail("Ambiguous command: " + word + " (" + list + ")");
}

bool CommandWindow::RunBuiltIn(const std::string& name, const std::string& rest)
{
    if (name == "quit" || name == "exit") {
        StopBatches(false);
        typed_.clear();
        quit_ = true;
        return true;
    }
    if (name == "help") {
        if (!rest.empty()) {
            const auto* entry = help_.Find(rest);
            if (entry == nullptr) {
                Fail("No help for: " + rest);
                return true;
            }
            Show(entry->name + " " + entry->parameterText);
            return true;
        }
        std::vector<std::string> lines;
        for (const auto& e : help_.Entries()) {
            if (e.isAlias)
                continue;
            lines.push_back(e.name + " " + e.parameterText);
        }
        std::sort(lines.begin(), lines.end());
        for (const auto& l : lines)
            Show(l);
        return true;
    }
    std::string path = rest;
    if (path.size() >= 2 && path.front() == '"' && path.back() == '"')
        path = path.substr(1, path.size() - 2);
    auto batch = BatchReader::Open(path, false);
    if (!batch)
        Fail("Cannot open batch file: " + path);
    else
        PushBatch(std::move(batch));
    return true;
}

void CommandWindow::Execute(IQCmdClient2* client, const std::string& line)
{
    std::string message, prompt;
    VariantBool continuing = VARIANT_FALSE, pending = VARIANT_FALSE;
    HRESULT hr = client->ExecuteCommand(line, message, prompt, continuing, pending, this);
    if (continuing != 0) {
        if (continuing_ == nullptr)
            continuingDepth_ = batches_.size();
        continuing_ = client;
        continuationPrompt_ = prompt;
    } else {
        continuing_ = nullptr;
        continuationPrompt_.clear();
    }
    if (pending != 0 && !Failed(hr)) {
        if (!message.empty())
            Show(message);
        pending_ = true;
        return;
    }
    ShowResult(message, hr);
}

void CommandWindow::ShowResult(const std::string& text, HRESULT result)
{
    if (!Failed(result)) {
        if (!text.empty())
            Show(text);
        return;
    }
    Fail(text.empty() ? "Command failed: " + Hex(result) : text);
}

void CommandWindow::Fail(const std::string& text)
{
    ++failures_;
    ShowError(text);
    // A failure stops every batch file running, out to the outermost.
    if (fromBatch_)
        StopBatches();
}

HRESULT CommandWindow::OnCommandComplete(const std::string& text, HRESULT result)
{
    if (!pending_)
        return E_FAIL;
    pending_ = false;
    ShowResult(text, result);
    // Later lines go on after the completing call has returned.
    loop_.PostTask([this] { Pump(); });
    return S_OK;
}

std::string CommandWindow::Prompt() const
{
    if (continuing_ == nullptr)
        return "> ";
    // A command's prompt may end in the value it shows; the blank keeps the
    // typed text apart from it.
    if (!continuationPrompt_.empty() && continuationPrompt_.back() != ' ')
        return continuationPrompt_ + " ";
    return continuationPrompt_;
}

std::vector<CommandWindow::Client> CommandWindow::Clients() const
{
    std::vector<Client> clients;
    int32_t count = 0;
    IUnknown** array = nullptr;
    if (Failed(registry_.GetProviders(Ids::IQCmdClient2, count, array)) || array == nullptr)
        return clients;
    // Copied first: running a command may add or remove providers.
    std::vector<IUnknown*> providers(array, array + count);
    for (IUnknown* p : providers) {
        auto* client = static_cast<IQCmdClient2*>(p);
        Variant names;
        int32_t kind = 0;
        if (Failed(client->GetCommandNamesAndKind(names, kind)))
            continue;
        auto list = CComUtils::VariantToStringList(names);
        if (!list.empty())
            clients.push_back(Client{client, std::move(list)});
    }
    return clients;
}

std::vector<std::string> CommandWindow::CommandNames() const
{
    std::vector<std::string> names(std::begin(kBuiltIns), std::end(kBuiltIns));
    for (const auto& c : Clients())
        names.insert(names.end(), c.names.begin(), c.names.end());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

void CommandWindow::Show(const std::string& text)
{
    out_ << TerminalText::Visible(TerminalText::Lines(text)) << "\n";
}

void CommandWindow::ShowError(const std::string& text)
{
    out_ << "Error: " << TerminalText::Visible(TerminalText::Lines(text)) << "\n";
}
