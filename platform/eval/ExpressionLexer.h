#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "boundary/HResult.h"

enum class TokenKind {
    Number,
    Name,
    Plus,
    Minus,
    Tilde,
    Star,
    Slash,
    Percent,
    ShiftLeft,
    ShiftRight,
    Ampersand,
    Caret,
    Pipe,
    Open,
    Close,
    End,
};

struct Token {
    TokenKind kind = TokenKind::End;
    uint64_t value = 0;
    std::string name;
};

// Splits an expression into tokens. Literals are converted here, because
// whether a word is a number or a name depends on the radix.
class ExpressionLexer
{
public:
    explicit ExpressionLexer(int radix) : radix_(radix) {}

    // The list always ends with an End token when S_OK is answered.
    HRESULT Tokenize(std::string_view text, std::vector<Token>& tokens) const;

private:
    HRESULT ReadWord(std::string_view text, size_t& pos, Token& token) const;

    int radix_;
};
