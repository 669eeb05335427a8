#pragma once

#include <string>

// The text of the alert that is open, waited for; "" when none comes.
std::string WaitForAlert();
// Closes it, as its button would.
void DismissAlert();
