#include "component/command/CArg.h"

// Out of line so that the class's virtual table has one home.
CArg::~CArg() = default;
