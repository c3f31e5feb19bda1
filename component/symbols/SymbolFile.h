#pragma once
#include <string>

#include "boundary/interfaces/Workbench.h"

class CLabelManager;

// The symbol file: a text of one "BEGIN" line, one line "%08lxH %s" a label,
// and an "END" line.

// Writes every label, in address order and among equal addresses oldest
// first. E_FAIL, and no file touched, when the file cannot be made.
HRESULT SaveSymbolFile(CLabelManager& labels, const std::string& path);

// Adds the file's labels to those there are, duplicates and all, through the
// manager's AddLabel, then tells the registry's clients that the labels
// changed. E_FAIL with nothing added when the file cannot be read or its
// first line is not exactly "BEGIN". A file cut short keeps what came before
// the cut.
HRESULT LoadSymbolFile(CLabelManager& labels, const std::string& path, IQServiceRegistry* registry);
