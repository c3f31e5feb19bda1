#pragma once
#include <optional>
#include <string>

// Where a person picks a file or a directory for the file manager; the console
// answers it from its command line. An empty answer means the choice was cancelled.
class FileManagerChooser
{
public:
    // filter: "(name)|name|", the file the person looks for.
    virtual std::optional<std::string> ChooseFile(const std::string& title, const std::string& filter,
                                                  const std::string& startDirectory) = 0;
    // historyKey: the recent list the choice is offered from.
    virtual std::optional<std::string> ChooseDirectory(const std::string& title,
                                                       const std::string& historyKey) = 0;

protected:
    ~FileManagerChooser() = default;
};
