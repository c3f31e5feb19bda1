#pragma once
// The record crosses the label interfaces, so it lives with them.
#include "boundary/interfaces/LabelManager.h"
