#include "component/command/CArgStringFileNameEx.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

void SlashesForward(std::string& path)
{
    // A '\' byte never occurs inside a multibyte UTF-8 character, so a byte
    // walk is a character walk here.
    for (char& c : path) {
        if (c == '\\')
            c = '/';
    }
}

void RemoveSurroundingQuotes(std::string& path)
{
    if (path.size() >= 2 && path.front() == '"' && path.back() == '"')
        path = path.substr(1, path.size() - 2);
}

void CollapseDoubledSeparators(std::string& path)
{
    // A leading pair names a network location; it survives the collapse.
    bool network = path.size() > 2 && path[0] == '/' && path[1] == '/';
    std::string out;
    out.reserve(path.size() + 1);
    for (char c : path) {
        if (c == '/' && !out.empty() && out.back() == '/')
            continue;
        out += c;
    }
    if (network)
        out.insert(out.begin(), '/');
    path = std::move(out);
}

void MakePathAbsolute(std::string& path)
{
    // An empty name stays empty: the command reports it, not the directory.
    if (path.empty() || path.front() == '/')
        return;
    std::error_code error;
    std::filesystem::path directory = std::filesystem::current_path(error);
    if (error)
        return;
    std::string joined = directory.string();
    if (joined.empty() || joined.back() != '/')
        joined += '/';
    joined += path;
    path = std::filesystem::path(joined).lexically_normal().string();
}

} // namespace

CArgStringFileNameEx::CArgStringFileNameEx(IQServiceRegistry* /*host*/, bool required,
                                           std::string defaultValue, bool expandPlaceholders,
                                           bool stripQuotes, bool collapseSeparators, bool makeAbsolute,
                                           PlaceholderExpander expander)
    : CArgString(required, std::move(defaultValue)), Expander(std::move(expander)),
      ExpandPlaceholders(expandPlaceholders), StripQuotes(stripQuotes),
      CollapseSeparators(collapseSeparators), MakeAbsolute(makeAbsolute)
{
}

bool CArgStringFileNameEx::Parse(const std::string& text, int32_t quoteKind)
{
    bool result = CArgString::Parse(text, quoteKind);
    Path = Value;
    SlashesForward(Path);
    if (ExpandPlaceholders && Expander)
        Path = Expander(Path);
    if (StripQuotes)
        RemoveSurroundingQuotes(Path);
    if (CollapseSeparators)
        CollapseDoubledSeparators(Path);
    if (ExpandPlaceholders && MakeAbsolute)
        MakePathAbsolute(Path);
    return result;
}
