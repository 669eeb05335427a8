#include "widgets/Alerts.h"

#include <Alert.h>

namespace {

BAlert* MakeAlert(const std::string& text) {
    return new BAlert("", text.c_str(), "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT);
}

} // namespace

void BindAlert(BAlert* alert, BWindow* window) {
    alert->SetFeel(B_MODAL_SUBSET_WINDOW_FEEL);
    alert->AddToSubset(window);
}

void ShowAlert(BWindow* owner, const std::string& text) {
    BAlert* alert = MakeAlert(text);
    BindAlert(alert, owner);
    alert->Go();
}

void ShowAlert(AlertOwner* owner, const std::string& text) {
    owner->PresentAlert(MakeAlert(text));
}

void ShowAlertToAll(const std::string& text) {
    MakeAlert(text)->Go();
}

void LeaveAlert(const std::string& text) {
    MakeAlert(text)->Go(nullptr);
}
