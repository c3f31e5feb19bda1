#pragma once
#include <cstdint>

enum RunStateValue : int32_t {
    RUN_HALTED = 0,
    RUN_STEP_IN = 1,
    RUN_STEP_IN_LINE = 2,
    RUN_STEP_IN_INSTRUCTION = 3,
    RUN_STEP_OVER = 4,
    RUN_STEP_OVER_LINE = 5,
    RUN_STEP_OVER_INSTRUCTION = 6,
    RUN_STEP_OUT = 7,
    RUN_STEP_OUT_LINE = 8,
    RUN_STEP_OUT_INSTRUCTION = 9,
    RUN_HALTING = 10,
    RUN_GOING = 11,
    RUN_DOWNLOADING = 12,
};

constexpr bool IsStepState(int32_t state)
{
    return state >= RUN_STEP_IN && state <= RUN_STEP_OUT_INSTRUCTION;
}
