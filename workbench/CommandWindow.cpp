#include "workbench/CommandWindow.h"

#include <algorithm>
#include <fstream>
#include <ostream>
#include <strings.h>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"
#include "workbench/CommandHelpService.h"
#include "workbench/MessageLoop.h"
#include "workbench/ServiceRegistry.h"

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
    std::ifstream probe(path);
    if (!probe)
        return E_FAIL;
    loop_.PostTask([this, path] {
        if (!SubmitBatchFile(path))
            ShowError("Cannot open batch file: " + path);
    });
    return S_OK;
}

bool CommandWindow::QueueBatch(const std::string& path, bool atFront)
{
    std::ifstream in(path);
    if (!in)
        return false;
    std::vector<Item> items;
    int batch = nextBatch_++;
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        items.push_back(Item{line, batch, number, false, path});
    }
    items.push_back(Item{"", batch, number, true, path});
    if (atFront)
        queue_.insert(queue_.begin(), items.begin(), items.end());
    else
        queue_.insert(queue_.end(), items.begin(), items.end());
    return true;
}

bool CommandWindow::SubmitBatchFile(const std::string& path)
{
    if (!QueueBatch(path, false))
        return false;
    Pump();
    return true;
}

void CommandWindow::Submit(const std::string& line)
{
    queue_.push_back(Item{line, 0, 0, false, {}});
    Pump();
}

void CommandWindow::SubmitSequence(const std::string& lines)
{
    std::string current;
    char quote = 0;
    bool brace = false;
    for (char c : lines) {
        if (quote == 0 && !brace && c == ';') {
            queue_.push_back(Item{current, 0, 0, false, {}});
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
    queue_.push_back(Item{current, 0, 0, false, {}});
    Pump();
}

void CommandWindow::Pump()
{
    // A completion arriving while a line runs continues the queue from the
    // outer call, so lines never run inside each other.
    if (pumping_)
        return;
    pumping_ = true;
    while (!pending_ && !queue_.empty()) {
        Item item = queue_.front();
        queue_.pop_front();
        RunItem(item);
    }
    pumping_ = false;
}

void CommandWindow::RunItem(const Item& item)
{
    if (item.endOfBatch) {
        registry_.Broadcast(Event{Ids::EVENT_BATCH_FINISHED, 0});
        return;
    }
    if (item.text.size() > kMaxLineLength) {
        if (echo_)
            Show("> " + item.text.substr(0, 60) + "...");
        ShowError("Line too long: " + std::to_string(item.text.size()) + " characters, at most " +
                  std::to_string(kMaxLineLength));
        if (item.batch != 0)
            DropRestOfBatch(item.batch);
        return;
    }
    std::string line = Trim(item.text);
    // While a command continues, every line is its, blank ones too.
    if (continuing_ != nullptr) {
        if (echo_)
            Show(Prompt() + line);
        Execute(continuing_, line, item);
        return;
    }
    if (line.empty() || line[0] == '#')
        return;
    if (echo_)
        Show("> " + line);
    RunLine(line, item);
}

void CommandWindow::RunLine(const std::string& line, const Item& item)
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
                    Execute(c.client, line, item);
                    return;
                }
    if (RunBuiltIn(word, rest, item))
        return;
    std::vector<const Client*> matches;
    for (const auto& c : clients)
        if (!c.names.empty() && c.names[0].size() > word.size() &&
            strncasecmp(c.names[0].c_str(), word.c_str(), word.size()) == 0)
            matches.push_back(&c);
    if (matches.size() == 1) {
        Execute(matches[0]->client, line, item);
        return;
    }
    ++failures_;
    if (matches.empty()) {
        ShowError("Unknown command: " + word);
    } else {
        std::vector<std::string> names;
        for (const Client* c : matches)
            names.push_back(c->names[0]);
        std::sort(names.begin(), names.end());
        std::string list;
        for (const auto& n : names)
            list += (list.empty() ? "" : ", ") + n;
        ShowError("Ambiguous command: " + word + " (" + list + ")");
    }
    if (item.batch != 0)
        DropRestOfBatch(item.batch);
}

bool CommandWindow::RunBuiltIn(const std::string& word, const std::string& rest, const Item& item)
{
    if (SameName(word, "help")) {
        if (!rest.empty()) {
            const auto* entry = help_.Find(rest);
            if (entry == nullptr) {
                ++failures_;
                ShowError("No help for: " + rest);
                if (item.batch != 0)
                    DropRestOfBatch(item.batch);
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
    if (SameName(word, "batch")) {
        std::string path = rest;
        if (path.size() >= 2 && path.front() == '"' && path.back() == '"')
            path = path.substr(1, path.size() - 2);
        if (path.empty() || !QueueBatch(path, true)) {
            ++failures_;
            ShowError("Cannot open batch file: " + path);
            if (item.batch != 0)
                DropRestOfBatch(item.batch);
        }
        return true;
    }
    return false;
}

void CommandWindow::Execute(IQCmdClient2* client, const std::string& line, const Item& item)
{
    std::string message, prompt;
    VariantBool continuing = VARIANT_FALSE, pending = VARIANT_FALSE;
    HRESULT hr = client->ExecuteCommand(line, message, prompt, continuing, pending, this);
    if (continuing != 0) {
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
        pendingItem_ = item;
        return;
    }
    ShowResult(message, hr, item);
}

void CommandWindow::ShowResult(const std::string& text, HRESULT result, const Item& item)
{
    if (!Failed(result)) {
        if (!text.empty())
            Show(text);
        return;
    }
    ++failures_;
    ShowError(text.empty() ? "Command failed: " + Hex(result) : text);
    if (item.batch != 0)
        DropRestOfBatch(item.batch);
}

HRESULT CommandWindow::OnCommandComplete(const std::string& text, HRESULT result)
{
    if (!pending_)
        return E_FAIL;
    pending_ = false;
    ShowResult(text, result, pendingItem_);
    // Later lines go on after the completing call has returned.
    loop_.PostTask([this] { Pump(); });
    return S_OK;
}

void CommandWindow::DropRestOfBatch(int batch)
{
    std::string name;
    int line = 0;
    for (auto& entry : queue_) {
        if (entry.batch == batch && entry.endOfBatch) {
            name = entry.batchName;
            break;
        }
    }
    for (const auto& entry : queue_)
        if (entry.batch == batch && !entry.endOfBatch)
            ++line;
    queue_.erase(std::remove_if(queue_.begin(), queue_.end(),
                                [batch](const Item& e) { return e.batch == batch && !e.endOfBatch; }),
                 queue_.end());
    continuing_ = nullptr;
    if (!name.empty())
        ShowError("Batch file " + name + " stopped; " + std::to_string(line) + " line(s) not run");
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
    std::vector<std::string> names{"batch", "help"};
    for (const auto& c : Clients())
        names.insert(names.end(), c.names.begin(), c.names.end());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

namespace
{

// Components write line ends as carriage return and line feed; a terminal
// wants the line feed alone.
std::string TerminalLines(const std::string& text)
{
    std::string lines;
    lines.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i)
        if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n'))
            lines += text[i];
    return lines;
}

} // namespace

void CommandWindow::Show(const std::string& text)
{
    out_ << TerminalLines(text) << "\n";
}

void CommandWindow::ShowError(const std::string& text)
{
    out_ << "Error: " << TerminalLines(text) << "\n";
}
