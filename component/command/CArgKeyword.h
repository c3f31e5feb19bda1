#pragma once
#include <string>
#include <vector>

#include "component/command/CArg.h"

// One word of a fixed list, matched without regard to case. An exact match
// wins at once; else the last keyword the token begins wins, so that the order
// of the list decides what an abbreviation means.
class CArgKeyword : public CArg
{
public:
    // keywords: each ended by a zero byte, the list by a further one
    // ("on\0off\0" as a literal).
    CArgKeyword(bool required, const char* keywords, int32_t defaultIndex, std::string name = {});
    CArgKeyword(bool required, std::vector<std::string> keywords, int32_t defaultIndex,
                std::string name = {});

    bool Parse(const std::string& text, int32_t quoteKind) override;

    // "(a,b,c)", as messages append it.
    std::string KeywordList() const;
    // The selected keyword, or an empty string when none is.
    std::string SelectedKeyword() const;

    std::vector<std::string> Keywords;
    int32_t Selected = -1;
    int32_t DefaultIndex;

private:
    bool TakeDefault(int32_t error);
};
