#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "boundary/HResult.h"

class ElfImage;

struct SourcePosition {
    std::string file;
    uint32_t line = 0;
};

struct FunctionRange {
    std::string name;
    uint32_t start = 0;
    uint32_t end = 0; // the first address behind the function
};

struct VariableInfo {
    std::string name;
    uint32_t address = 0;
    uint32_t size = 0;
};

// The debug data of one module, read from its DWARF sections once: the line
// table both ways, the functions with their ranges, the global variables at
// fixed addresses and the source files. A module without debug data has none
// of these; damaged debug data is an error, so that a load takes nothing.
class DebugData
{
public:
    HRESULT Read(const ElfImage& image);

    std::optional<SourcePosition> AddressSource(uint32_t address) const;
    // The start of each row of that line; a file without a folder matches by its name.
    std::vector<uint32_t> LineAddresses(const std::string& file, uint32_t line) const;
    // The first span of code of that line, last address inclusive.
    std::optional<std::pair<uint32_t, uint32_t>> LineRange(const std::string& file, uint32_t line) const;
    // Every row address of the table, in table order.
    std::vector<uint32_t> RowAddresses() const;

    const std::vector<FunctionRange>& Functions() const { return functions_; }
    const FunctionRange* FindFunction(const std::string& name) const;
    const FunctionRange* FunctionAt(uint32_t address) const;
    const VariableInfo* FindVariable(const std::string& name) const;
    const std::vector<VariableInfo>& Variables() const { return variables_; }
    const std::vector<std::string>& SourceFiles() const { return files_; }

private:
    // One row of a sequence, covering [address, next).
    struct Row {
        uint32_t address;
        uint32_t next;
        uint32_t file;
        uint32_t line;
    };
    bool FileMatches(uint32_t index, const std::string& file) const;
    uint32_t FileIndex(const char* name);

    std::vector<Row> rows_; // by address
    std::vector<std::string> files_;
    std::vector<FunctionRange> functions_;
    std::vector<VariableInfo> variables_;
};
