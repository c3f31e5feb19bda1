#include "platform/eval/ExpressionLexer.h"

#include "platform/eval/EvalErrors.h"

namespace
{

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsNameStart(char c)
{
    return IsLetter(c) || c == '_' || c == '.' || c == '$';
}

bool IsNameChar(char c)
{
    return IsNameStart(c) || IsDigit(c);
}

int DigitValue(char c)
{
    if (IsDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z')
        return c - 'A' + 10;
    return 99;
}

bool AllDigitsOf(std::string_view digits, int radix)
{
    for (char c : digits)
        if (DigitValue(c) >= radix)
            return false;
    return true;
}

// Literals wider than 64 bits are refused rather than wrapped: a silently
// truncated address is worse than an error.
HRESULT ParseDigits(std::string_view digits, int radix, uint64_t& value)
{
    if (digits.empty() || !AllDigitsOf(digits, radix))
        return QE_EVAL_SYNTAX;
    uint64_t result = 0;
    const auto base = static_cast<uint64_t>(radix);
    for (char c : digits) {
        const auto digit = static_cast<uint64_t>(DigitValue(c));
        if (result > (UINT64_MAX - digit) / base)
            return QE_EVAL_TOO_LARGE;
        result = result * base + digit;
    }
    value = result;
    return S_OK;
}

int PrefixRadix(char c)
{
    switch (c) {
    case 'H':
    case 'h':
        return 16;
    case 'D':
    case 'd':
        return 10;
    case 'O':
    case 'o':
        return 8;
    case 'B':
    case 'b':
        return 2;
    default:
        return 0;
    }
}

bool OneCharOperator(char c, TokenKind& kind)
{
    switch (c) {
    case '+':
        kind = TokenKind::Plus;
        return true;
    case '-':
        kind = TokenKind::Minus;
        return true;
    case '~':
        kind = TokenKind::Tilde;
        return true;
    case '*':
        kind = TokenKind::Star;
        return true;
    case '/':
        kind = TokenKind::Slash;
        return true;
    case '%':
        kind = TokenKind::Percent;
        return true;
    case '&':
        kind = TokenKind::Ampersand;
        return true;
    case '^':
        kind = TokenKind::Caret;
        return true;
    case '|':
        kind = TokenKind::Pipe;
        return true;
    case '(':
        kind = TokenKind::Open;
        return true;
    case ')':
        kind = TokenKind::Close;
        return true;
    default:
        return false;
    }
}

} // namespace

HRESULT ExpressionLexer::Tokenize(std::string_view text, std::vector<Token>& tokens) const
{
    tokens.clear();
    size_t pos = 0;
    while (pos < text.size()) {
        const char c = text[pos];
        Token token;
        if (IsBlank(c)) {
            ++pos;
            continue;
        }
        if (IsNameChar(c)) {
            const HRESULT hr = ReadWord(text, pos, token);
            if (Failed(hr))
                return hr;
        } else if ((c == '<' || c == '>') && pos + 1 < text.size() && text[pos + 1] == c) {
            token.kind = c == '<' ? TokenKind::ShiftLeft : TokenKind::ShiftRight;
            pos += 2;
        } else if (OneCharOperator(c, token.kind)) {
            ++pos;
        } else {
            return QE_EVAL_SYNTAX;
        }
        tokens.push_back(std::move(token));
    }
    tokens.push_back(Token{});
    return S_OK;
}

HRESULT ExpressionLexer::ReadWord(std::string_view text, size_t& pos, Token& token) const
{
    const size_t start = pos;
    while (pos < text.size() && IsNameChar(text[pos]))
        ++pos;
    std::string_view word = text.substr(start, pos - start);
    token.kind = TokenKind::Number;

    // A single letter and an apostrophe name the radix of what follows.
    if (word.size() == 1 && pos < text.size() && text[pos] == '\'') {
        const int radix = PrefixRadix(word[0]);
        if (radix == 0)
            return QE_EVAL_SYNTAX;
        const size_t digitsStart = ++pos;
        while (pos < text.size() && (IsLetter(text[pos]) || IsDigit(text[pos])))
            ++pos;
        return ParseDigits(text.substr(digitsStart, pos - digitsStart), radix, token.value);
    }
    if (IsDigit(word[0])) {
        if (word.size() >= 2 && word[0] == '0' && (word[1] == 'x' || word[1] == 'X'))
            return ParseDigits(word.substr(2), 16, token.value);
        return ParseDigits(word, radix_, token.value);
    }
    // Above radix ten a word of letters such as DEAD is a number; a symbol
    // spelt that way needs a different spelling, as the number wins.
    if (AllDigitsOf(word, radix_))
        return ParseDigits(word, radix_, token.value);
    token.kind = TokenKind::Name;
    token.name = std::string(word);
    return S_OK;
}
