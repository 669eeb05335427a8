#include "widgets/Alerts.h"

#include <Alert.h>

#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

thread_local AlertOwner* sOwner = nullptr;

BAlert* MakeAlert(const char* text) {
    return new BAlert("", text, "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT);
}

} // namespace

AlertOwner::AlertOwner() {
    sOwner = this;
}

AlertOwner::~AlertOwner() {
    sOwner = nullptr;
}

void BindAlert(BAlert* alert, BWindow* window) {
    alert->SetFeel(B_MODAL_SUBSET_WINDOW_FEEL);
    alert->AddToSubset(window);
}

void ShowAlert(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    std::string text(vsnprintf(nullptr, 0, format, arguments), '\0');
    vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    BAlert* alert = MakeAlert(text.c_str());
    if (sOwner != nullptr) {
        sOwner->PresentAlert(alert);
        return;
    }
    BLooper* looper = BLooper::LooperForThread(find_thread(nullptr));
    if (BWindow* window = dynamic_cast<BWindow*>(looper))
        BindAlert(alert, window);
    alert->Go();
}

void LeaveAlert(const char* text) {
    MakeAlert(text)->Go(nullptr);
}
