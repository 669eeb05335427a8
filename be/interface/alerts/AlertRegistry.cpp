#include "interface/alerts/AlertPrivate.h"

#include <Messenger.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

struct Alerts {
    std::mutex lock;
    std::vector<BMessenger> open; // guarded by lock
};

// Never destroyed: alerts may be open while the process ends.
Alerts& TheAlerts() {
    static Alerts* alerts = new Alerts;
    return *alerts;
}

} // namespace

void AlertOpens(const BMessenger& alert) {
    Alerts& alerts = TheAlerts();
    std::lock_guard lock(alerts.lock);
    alerts.open.push_back(alert);
}

void AlertCloses(const BMessenger& alert) {
    Alerts& alerts = TheAlerts();
    std::lock_guard lock(alerts.lock);
    std::erase(alerts.open, alert);
}

void DismissAlerts() {
    Alerts& alerts = TheAlerts();
    std::vector<BMessenger> open;
    {
        std::lock_guard lock(alerts.lock);
        open = alerts.open;
    }
    for (const BMessenger& alert : open)
        alert.SendMessage(kMsgAlertDismissed);
}
