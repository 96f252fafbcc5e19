// The file with the host's settings, in the user's profile.
#pragma once

#include "rules/settings.h"

// What the last run has left; the settings of a first run when there is no file, or a damaged one.
kx::host::Settings LoadSettings();

// Writes the file. Where that is not possible, the next run starts as this one did.
void SaveSettings(const kx::host::Settings& settings);
