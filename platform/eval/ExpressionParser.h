#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "boundary/HResult.h"
#include "platform/eval/ExpressionLexer.h"

using LabelLookup = std::function<std::optional<uint64_t>(std::string_view)>;

// Recursive descent over the tokens, C precedence, 64-bit wrapping arithmetic.
class ExpressionParser
{
public:
    // Nesting beyond this is refused so that hostile input cannot exhaust the stack.
    static constexpr int kMaxDepth = 256;

    ExpressionParser(const std::vector<Token>& tokens, const LabelLookup& lookup)
        : tokens_(tokens), lookup_(lookup)
    {
    }

    HRESULT Parse(uint64_t& value);

private:
    bool ParseBinary(int level, uint64_t& value);
    bool ParseUnary(uint64_t& value);
    bool ParsePrimary(uint64_t& value);
    void Apply(TokenKind op, uint64_t left, uint64_t right, uint64_t& result);
    const Token& Peek() const { return tokens_[pos_]; }
    void Defer(HRESULT code);

    const std::vector<Token>& tokens_;
    const LabelLookup& lookup_;
    size_t pos_ = 0;
    int depth_ = 0;
    // A semantic error waits until the whole text is known to be well formed,
    // so that a malformed text is always reported as such.
    HRESULT deferred_ = S_OK;
};
