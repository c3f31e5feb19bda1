#pragma once
#include "platform/catalog/PlatformTable.h"

// The platforms this build installs, the simulator first: it is the default.
PlatformTable InstalledPlatforms();
