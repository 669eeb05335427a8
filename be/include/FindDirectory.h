#pragma once

#include <SupportDefs.h>

class BPath;
class BVolume;

enum directory_which : int {
    B_SYSTEM_TEMP_DIRECTORY = 1014,
    B_USER_DIRECTORY = 3000,
    B_USER_CONFIG_DIRECTORY = 3001,
    B_USER_SETTINGS_DIRECTORY = 3006 // $XDG_CONFIG_HOME, else ~/.config
};

// B_BAD_VALUE for a folder that is not known here. The volume is not looked at.
status_t find_directory(directory_which which, BPath* path, bool createIt = false,
                        BVolume* volume = nullptr);
