#pragma once
#include <string_view>

// The function of that name ("IN1_Move", "EXP_Eval", ...), or null. Each
// acts on LegacyPlatform::Current() and answers 0 when none is bound.
void* LegacyFunction(std::string_view name);
