#pragma once
#include <cstddef>
#include <cstdint>

#include "boundary/interfaces/Workbench.h"

// The component's rows of the workbench's error table: a result code and the
// number of its text.
namespace ErrorTexts
{

struct Row {
    uint32_t code;
    uint32_t stringId;
};

const Row* Rows();
size_t RowCount();

// Enters the text of every row whose code has none yet: a code that another
// component entered first keeps its text. Sessions of one table share the
// entries; the last one to leave removes what the component entered.
void Register(IQErrorTable* table);
void Unregister(IQErrorTable* table);

} // namespace ErrorTexts
