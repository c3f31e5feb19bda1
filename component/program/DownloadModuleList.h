#pragma once
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "boundary/Variant.h"
#include "component/program/CDownloadModule.h"

// The session's list of download modules: its stored form, its check for
// duplicates and the check of one edited entry against it.

inline constexpr const char* kDuplicateModulesText =
    "Duplicate download modules found. They have not been added.";
inline constexpr const char* kModuleExistsText = "Download module already exists.";

struct ModuleKeyLess {
    bool operator()(const std::string& a, const std::string& b) const;
};
using ModuleKeyMap = std::map<std::string, CDownloadModule, ModuleKeyLess>;

// The modules by key, the first of each key kept. True when a later module
// had the key of an earlier one.
bool MakeModuleKeyMap(const std::vector<CDownloadModule>& modules, ModuleKeyMap& map);

// The stored form: seven strings a module, numbers in signed decimal. Another
// type or a count that is no multiple of seven reads as no modules; a text
// that is no number reads as 0.
void ReadModuleList(const Variant& stored, std::vector<CDownloadModule>& modules);
void WriteModuleList(const std::vector<CDownloadModule>& modules, Variant& stored);

enum class ModuleEdit { Accepted, Cancelled, AlreadyExists };

// Whether the values of the module dialog may be taken, once they are read.
// `opened` is the module the dialog began with, `list` the modules it must
// not repeat (none: any values are taken). Keys are compared as `expand`
// gives them, with their placeholders filled in. On AlreadyExists the dialog
// shows kModuleExistsText and stays; Cancelled leaves the settings unchanged.
ModuleEdit CheckModuleEdit(const CDownloadModule& edited, const CDownloadModule& opened,
                           const std::vector<CDownloadModule>* list,
                           const std::function<std::string(const std::string&)>& expand);
