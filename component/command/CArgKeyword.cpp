#include "component/command/CArgKeyword.h"

#include <cctype>
#include <cstring>
#include <utility>

namespace
{

std::vector<std::string> SplitZeroList(const char* list)
{
    std::vector<std::string> words;
    if (list == nullptr)
        return words;
    while (*list != '\0') {
        words.emplace_back(list);
        list += std::strlen(list) + 1;
    }
    return words;
}

char Lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

// Whether the keyword begins with the token, ignoring case.
bool StartsWithNoCase(const std::string& keyword, const std::string& token)
{
    if (token.size() > keyword.size())
        return false;
    for (size_t i = 0; i < token.size(); ++i) {
        if (Lower(keyword[i]) != Lower(token[i]))
            return false;
    }
    return true;
}

} // namespace

CArgKeyword::CArgKeyword(bool required, const char* keywords, int32_t defaultIndex, std::string name)
    : CArgKeyword(required, SplitZeroList(keywords), defaultIndex, std::move(name))
{
}

CArgKeyword::CArgKeyword(bool required, std::vector<std::string> keywords, int32_t defaultIndex,
                         std::string name)
    : CArg(required, std::move(name)), Keywords(std::move(keywords)), DefaultIndex(defaultIndex)
{
}

bool CArgKeyword::TakeDefault(int32_t error)
{
    if (Required) {
        Error = error;
        return false;
    }
    Selected = DefaultIndex;
    UsedDefault = true;
    return true;
}

bool CArgKeyword::Parse(const std::string& text, int32_t quoteKind)
{
    Reset();
    Selected = -1;
    if (quoteKind == QuotePlain || quoteKind == QuoteDouble)
        Raw = text;
    if (Raw.empty())
        return TakeDefault(ErrorEmpty);
    int32_t prefix = -1;
    for (size_t i = 0; i < Keywords.size(); ++i) {
        if (!StartsWithNoCase(Keywords[i], Raw))
            continue;
        if (Keywords[i].size() == Raw.size()) {
            Selected = static_cast<int32_t>(i);
            return true;
        }
        prefix = static_cast<int32_t>(i);
    }
    if (prefix >= 0) {
        Selected = prefix;
        return true;
    }
    return TakeDefault(ErrorKeyword);
}

std::string CArgKeyword::KeywordList() const
{
    std::string list = "(";
    for (size_t i = 0; i < Keywords.size(); ++i) {
        if (i != 0)
            list += ',';
        list += Keywords[i];
    }
    return list + ")";
}

std::string CArgKeyword::SelectedKeyword() const
{
    if (Selected < 0 || static_cast<size_t>(Selected) >= Keywords.size())
        return {};
    return Keywords[static_cast<size_t>(Selected)];
}
