#pragma once
#include <map>
#include <string>
#include <utility>

#include "boundary/interfaces/Workbench.h"
#include "support/Recording.h"

// The recent-list store as a map by section and key. Writes are logged in
// order as "key=value"; a key never written fails to read.
class FakeRecentListStore : public IQRecentListStore
{
public:
    FAKE_WITHOUT_INTERFACES

    std::map<std::pair<std::string, std::string>, std::string> values;
    CallLog writes;

    HRESULT WriteValue(const std::string& section, const std::string& key, const std::string& value) override
    {
        writes.push_back(key + "=" + value);
        values[{section, key}] = value;
        return S_OK;
    }
    HRESULT ReadValue(const std::string& section, const std::string& key, std::string& value) override
    {
        auto it = values.find({section, key});
        if (it == values.end())
            return E_FAIL;
        value = it->second;
        return S_OK;
    }
};
