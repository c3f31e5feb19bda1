#pragma once
#include <cstdint>
#include <string>
#include <utility>

// One argument of a command line: parses one token, checks it, and keeps what
// a message about it needs. A command builds its arguments for each run.
class CArg
{
public:
    enum : int32_t {
        ErrorNone = 0,
        ErrorRange = 1,
        ErrorEmpty = 2,
        ErrorKeyword = 3,
        ErrorInvalid = 4,
    };
    // How ReadToken found the token.
    enum : int32_t {
        QuotePlain = 0, // plain or in braces
        QuoteDouble = 1,
    };

    // name: how messages call the argument, angle brackets and all ("<start>").
    explicit CArg(bool required, std::string name = {}) : Required(required), Name(std::move(name)) {}
    virtual ~CArg();

    // true: go on with the next argument; false: the line stops here, and
    // Error says why. An optional argument that takes its default sets
    // UsedDefault so that the next argument sees the same token.
    virtual bool Parse(const std::string& text, int32_t quoteKind) = 0;

    bool Required;
    std::string Name;
    // When set, the message for any failure of this argument instead of the
    // one its error gives.
    std::string Refusal;
    std::string Raw;
    int32_t Error = ErrorNone;
    bool UsedDefault = false;

protected:
    void Reset()
    {
        Raw.clear();
        Error = ErrorNone;
        UsedDefault = false;
    }
};
