#pragma once
#include <functional>
#include <string>

#include "boundary/interfaces/Workbench.h"
#include "component/command/CArgString.h"

// A file name as the user typed it, turned into a path the file system takes:
// '\' accepted as a separator, placeholders expanded, quotes dropped, doubled
// separators collapsed, a relative name made absolute. Value keeps the text as
// typed, Path the outcome.
class CArgStringFileNameEx : public CArgString
{
public:
    // Replaces the workbench's "$(NAME)" placeholders in a text.
    using PlaceholderExpander = std::function<std::string(const std::string&)>;

    // An empty expander leaves placeholders as they stand. makeAbsolute acts
    // only together with expandPlaceholders, so that a name the user wants
    // kept as typed is kept whole. host is taken for the day the workbench
    // offers its placeholders as a service; until then the expander is given.
    CArgStringFileNameEx(IQServiceRegistry* host, bool required, std::string defaultValue,
                         bool expandPlaceholders, bool stripQuotes, bool collapseSeparators,
                         bool makeAbsolute, PlaceholderExpander expander = {});

    bool Parse(const std::string& text, int32_t quoteKind) override;

    std::string Path;
    PlaceholderExpander Expander;
    bool ExpandPlaceholders;
    bool StripQuotes;
    bool CollapseSeparators;
    bool MakeAbsolute;
};
