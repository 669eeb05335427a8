#pragma once

#include <SupportDefs.h>

class BMessenger;

// To an alert: it ends without an answer.
constexpr uint32 kMsgAlertDismissed = '_ALD';

// Any thread: open alerts end without an answer, and whoever waits for one goes on.
void DismissAlerts();

// The alerts that DismissAlerts knows.
void AlertOpens(const BMessenger& alert);
void AlertCloses(const BMessenger& alert);
