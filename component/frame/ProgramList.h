#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "component/program/CDownloadModule.h"
#include "component/program/CQProgram.h"

struct IQServiceRegistry;

// The session's programs, in the order of its download modules: one run-time
// program per module, owned here. A program in the list is open for as long
// as its reader can be had.
class ProgramList
{
public:
    ProgramList() = default;
    ProgramList(const ProgramList&) = delete;
    ProgramList& operator=(const ProgramList&) = delete;

    int32_t Count() const { return static_cast<int32_t>(programs_.size()); }
    // Null when the index is out of range.
    CQProgram* At(int32_t index) const;

    // A copy of the program enters the list at the index (at the end when the
    // index is out of range) and is opened; its index is the result.
    int32_t Insert(const CQProgram& program, int32_t index, IQServiceRegistry* services);
    // Takes the program out of the list; null for a bad index.
    std::unique_ptr<CQProgram> Take(int32_t index);

    // The first program whose module key equals this one without regard to
    // case; when none does, the first whose key equals it once both sides
    // have their placeholders expanded.
    std::optional<int32_t> FindByKey(const std::string& key,
                                     const std::function<std::string(const std::string&)>& expand) const;
    // Whether the programs stand in the modules' order, key by key.
    bool InOrderOf(const std::vector<CDownloadModule>& modules) const;
    // Puts the programs into the modules' order: each module its program by
    // the exact key, whatever has no module at the end. True when anything moved.
    bool ArrangeAs(const std::vector<CDownloadModule>& modules);

private:
    std::vector<std::unique_ptr<CQProgram>> programs_;
};
