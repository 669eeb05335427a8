#pragma once

#include <SupportDefs.h>

#include <functional>

class BWindow;
class NPWindow;

// Drivers of the program in a process of its own, and what they share.

// The first browser window, idle.
NPWindow* WaitForBrowser();
// With the window locked.
void Do(BWindow* window, const std::function<void()>& work);

// In AuxiliaryDrivers.cpp. Each ends the program.
int32 UpdateBoardMenu(void*);
int32 QuitInTheUpdate(void*);
int32 QuitWithAText(void*);
int32 QuitUnderAnAlert(void*);
int32 ChooseFont(void*);
int32 PrintFont(void*);
