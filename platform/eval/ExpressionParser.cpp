#include "platform/eval/ExpressionParser.h"

#include <array>
#include <initializer_list>

#include "platform/eval/EvalErrors.h"

namespace
{

// Binary operators from the loosest binding to the tightest.
const std::array<std::initializer_list<TokenKind>, 6> kLevels = {{
    {TokenKind::Pipe},
    {TokenKind::Caret},
    {TokenKind::Ampersand},
    {TokenKind::ShiftLeft, TokenKind::ShiftRight},
    {TokenKind::Plus, TokenKind::Minus},
    {TokenKind::Star, TokenKind::Slash, TokenKind::Percent},
}};

bool InLevel(size_t level, TokenKind kind)
{
    for (TokenKind k : kLevels[level])
        if (k == kind)
            return true;
    return false;
}

} // namespace

HRESULT ExpressionParser::Parse(uint64_t& value)
{
    if (tokens_.empty())
        return QE_EVAL_SYNTAX;
    uint64_t result = 0;
    if (!ParseBinary(0, result) || Peek().kind != TokenKind::End)
        return QE_EVAL_SYNTAX;
    if (Failed(deferred_))
        return deferred_;
    value = result;
    return S_OK;
}

void ExpressionParser::Defer(HRESULT code)
{
    if (deferred_ == S_OK)
        deferred_ = code;
}

bool ExpressionParser::ParseBinary(int level, uint64_t& value)
{
    const auto index = static_cast<size_t>(level);
    if (index == kLevels.size())
        return ParseUnary(value);
    if (!ParseBinary(level + 1, value))
        return false;
    while (InLevel(index, Peek().kind)) {
        const TokenKind op = Peek().kind;
        ++pos_;
        uint64_t right = 0;
        if (!ParseBinary(level + 1, right))
            return false;
        Apply(op, value, right, value);
    }
    return true;
}

bool ExpressionParser::ParseUnary(uint64_t& value)
{
    const TokenKind kind = Peek().kind;
    if (kind != TokenKind::Minus && kind != TokenKind::Plus && kind != TokenKind::Tilde)
        return ParsePrimary(value);
    if (++depth_ > kMaxDepth)
        return false;
    ++pos_;
    uint64_t operand = 0;
    const bool ok = ParseUnary(operand);
    --depth_;
    if (!ok)
        return false;
    if (kind == TokenKind::Minus)
        value = 0 - operand;
    else if (kind == TokenKind::Tilde)
        value = ~operand;
    else
        value = operand;
    return true;
}

bool ExpressionParser::ParsePrimary(uint64_t& value)
{
    const Token& token = Peek();
    switch (token.kind) {
    case TokenKind::Number:
        value = token.value;
        ++pos_;
        return true;
    case TokenKind::Name: {
        std::optional<uint64_t> found;
        if (lookup_)
            found = lookup_(token.name);
        if (found)
            value = *found;
        else
            Defer(QE_EVAL_UNDEFINED_SYMBOL);
        ++pos_;
        return true;
    }
    case TokenKind::Open: {
        if (++depth_ > kMaxDepth)
            return false;
        ++pos_;
        const bool ok = ParseBinary(0, value);
        --depth_;
        if (!ok || Peek().kind != TokenKind::Close)
            return false;
        ++pos_;
        return true;
    }
    default:
        return false;
    }
}

void ExpressionParser::Apply(TokenKind op, uint64_t left, uint64_t right, uint64_t& result)
{
    switch (op) {
    case TokenKind::Pipe:
        result = left | right;
        break;
    case TokenKind::Caret:
        result = left ^ right;
        break;
    case TokenKind::Ampersand:
        result = left & right;
        break;
    // Shifting a 64-bit value by 64 or more empties it, as if one bit at a time.
    case TokenKind::ShiftLeft:
        result = right >= 64 ? 0 : left << right;
        break;
    case TokenKind::ShiftRight:
        result = right >= 64 ? 0 : left >> right;
        break;
    case TokenKind::Plus:
        result = left + right;
        break;
    case TokenKind::Minus:
        result = left - right;
        break;
    case TokenKind::Star:
        result = left * right;
        break;
    case TokenKind::Slash:
    case TokenKind::Percent:
        if (right == 0) {
            Defer(QE_EVAL_DIVIDE_BY_ZERO);
            result = 0;
            return;
        }
        result = op == TokenKind::Slash ? left / right : left % right;
        break;
    default:
        break;
    }
}
