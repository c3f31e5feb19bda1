#pragma once
#include <cstddef>
#include <string>

#include "boundary/interfaces/Workbench.h"

struct IQWorkspaceInfo;
struct IQCustomPlaceholders;

// Turns "$(NAME)" placeholders in stored file names into plain text, with what
// the workbench knows of the workspace, project and configuration.
class PlaceholderExpander
{
public:
    struct Entry {
        int index;
        const char* longName;
        const char* shortName;
        unsigned textId; // the text shown for it in a placeholder menu; 0 for none
    };

    explicit PlaceholderExpander(IQServiceRegistry* registry);

    // With the workbench's active workspace, project and configuration.
    std::string Expand(const std::string& text, const std::string& file = {}) const;
    // For the given names; an empty name stands for the active one.
    std::string ExpandFor(const std::string& text, const std::string& workspace, const std::string& project,
                          const std::string& configuration, const std::string& file = {}) const;

    static const Entry* Table();
    static size_t TableSize();
    // The table's entry for a name: long names first, then short ones; null when none.
    static const Entry* Lookup(const std::string& name);

    static constexpr int kMaxRounds = 10000;

private:
    struct Names {
        std::string workspace, project, configuration, file;
    };
    std::string ValueOf(const std::string& name, const Names& names) const;
    std::string TableValue(const Entry& entry, const std::string& written, const Names& names) const;
    std::string CustomValue(const std::string& name, const std::string& workspace) const;

    IQWorkspaceInfo* info_ = nullptr;
    IQCustomPlaceholders* custom_ = nullptr;
};
