#include "component/command/CmdTokens.h"

#include "component/command/CArg.h"

namespace
{

std::string ReadQuoted(std::string_view& cursor)
{
    std::string token(1, '"');
    size_t i = 1;
    while (i < cursor.size()) {
        char c = cursor[i++];
        token += c;
        if (c != '"')
            continue;
        if (i < cursor.size() && cursor[i] == '"') {
            ++i;
            continue;
        }
        break;
    }
    cursor.remove_prefix(i);
    return token;
}

std::string ReadBraced(std::string_view& cursor)
{
    size_t close = cursor.find('}', 1);
    if (close == std::string_view::npos) {
        std::string token(cursor.substr(1));
        cursor = cursor.substr(cursor.size());
        return token;
    }
    std::string token(cursor.substr(1, close - 1));
    cursor.remove_prefix(close + 1);
    return token;
}

} // namespace

std::string ReadToken(std::string_view& cursor, int32_t& quoteKind)
{
    quoteKind = CArg::QuotePlain;
    size_t start = cursor.find_first_not_of(' ');
    cursor.remove_prefix(start == std::string_view::npos ? cursor.size() : start);
    if (cursor.empty())
        return {};
    if (cursor.front() == '"') {
        quoteKind = CArg::QuoteDouble;
        return ReadQuoted(cursor);
    }
    if (cursor.front() == '{')
        return ReadBraced(cursor);
    size_t end = cursor.find(' ');
    if (end == std::string_view::npos)
        end = cursor.size();
    std::string token(cursor.substr(0, end));
    cursor.remove_prefix(end);
    return token;
}

int ParseArguments(std::string_view& cursor, std::span<CArg* const> arguments)
{
    int count = 0;
    for (CArg* argument : arguments) {
        if (argument == nullptr)
            break;
        std::string_view before = cursor;
        int32_t quoteKind = CArg::QuotePlain;
        std::string token = ReadToken(cursor, quoteKind);
        if (!argument->Parse(token, quoteKind)) {
            cursor = before;
            break;
        }
        ++count;
        if (argument->UsedDefault)
            cursor = before;
    }
    return count;
}

bool HasNoMoreText(std::string_view rest)
{
    return rest.find_first_not_of(" \t") == std::string_view::npos;
}
