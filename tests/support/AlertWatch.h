#pragma once

#include <string>

// The text of the alert that is open, waited for; "" when none comes.
std::string WaitForAlert();
// The open ones.
int CountAlerts();
// Closes it, as its button would.
void DismissAlert();
