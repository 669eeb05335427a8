#pragma once

#include "settings/GateSettings.h"

#include <string>

namespace gate {

// Reads the file that is shipped beside the executable and then the user's own: `config`, or
// without that the one in the user's folder of settings, which may be missing. Remarks go to
// standard error.
bool ReadAllSettings(const std::string& config, Settings* settings, std::string* error);

std::string UserSettingsFile(); // in $XDG_CONFIG_HOME or ~/.config
// Where the store stands, in $XDG_DATA_HOME or ~/.local/share; its folder is made, for the user
// alone.
std::string StoreFile();

} // namespace gate
