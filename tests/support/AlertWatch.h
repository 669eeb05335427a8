#pragma once

#include <string>

// The text of the alert that is open, waited for; "" when none comes.
std::string WaitForAlert();
// The open ones.
int CountAlerts();
// Presses a key in it, which closes it: Enter for the last button.
void AnswerAlert(char key);
// Closes it, as its button would where there is one.
void DismissAlert();
