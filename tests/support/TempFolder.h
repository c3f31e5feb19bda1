#pragma once
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

// A fresh folder under /tmp, removed with everything in it when the test ends.
class TempFolder
{
public:
    TempFolder()
    {
        char pattern[] = "/tmp/tessel-store-XXXXXX";
        if (mkdtemp(pattern) != nullptr)
            path_ = pattern;
    }
    ~TempFolder()
    {
        std::error_code ec;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ec);
        std::filesystem::remove_all(path_, ec);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    std::filesystem::path WriteFile(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};
