#pragma once
#include <cstdint>
#include <string>

#include "component/symbols/LabelRecord.h"

// One label of the store. The record lives inside the label so that the store
// can lend out a pointer to it for as long as the label lives.
class CDataLabel
{
public:
    CDataLabel(const LabelRecord& record, uint32_t moduleId) : ModuleId(moduleId), Record(record) {}

    const std::string& NarrowName() const { return Record.Name; }

    // The module the label came from; 0 when no load was running.
    uint32_t ModuleId;
    LabelRecord Record;
};
