#pragma once

#include <Message.h>

// Adds each setting that is missing, with its default; one that is there keeps its value.
void AddPrefsIfNotExists(BMessage* settings);
