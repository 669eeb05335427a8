#include "app/DefaultSettings.h"

#include <Font.h>
#include <Rect.h>

#include <cstdio>
#include <iterator>

namespace {

bool Has(const BMessage& settings, const char* key) {
    type_code type;
    return settings.GetInfo(key, &type) == B_OK;
}

void AddInt32(BMessage* settings, const char* key, int32 value) {
    if (!Has(*settings, key))
        settings->AddInt32(key, value);
}

void AddFloat(BMessage* settings, const char* key, float value) {
    if (!Has(*settings, key))
        settings->AddFloat(key, value);
}

void AddBool(BMessage* settings, const char* key, bool value) {
    if (!Has(*settings, key))
        settings->AddBool(key, value);
}

void AddString(BMessage* settings, const char* key, const char* value) {
    if (!Has(*settings, key))
        settings->AddString(key, value);
}

void AddRect(BMessage* settings, const char* key, BRect value) {
    if (!Has(*settings, key))
        settings->AddRect(key, value);
}

// Asking a font for its names loads it: only what is missing is asked for.
void AddFont(BMessage* settings) {
    if (!Has(*settings, "font_family") || !Has(*settings, "font_style")) {
        font_family family;
        font_style style;
        be_plain_font->GetFamilyAndStyle(&family, &style);
        AddString(settings, "font_family", family);
        AddString(settings, "font_style", style);
    }
    AddFloat(settings, "font_size", be_plain_font->Size());
}

// The rest of a group is only looked at when its first key is missing.
void AddNetwork(BMessage* settings) {
    if (Has(*settings, "proxy"))
        return;
    settings->AddBool("proxy", false);
    AddString(settings, "proxy_host", "localhost");
    AddString(settings, "proxy_port", "8080");
    AddBool(settings, "enable_cache", false);
}

void AddColumnWidths(BMessage* settings) {
    if (Has(*settings, "column_no"))
        return;
    settings->AddFloat("column_no", 35);
    AddFloat(settings, "column_thread", 250);
    AddFloat(settings, "column_res", 45);
    AddFloat(settings, "column_gotten", 45);
    AddFloat(settings, "column_modified", 150);
    AddFloat(settings, "column_dat", 100);
}

// Fifteen keys are written although eight columns exist: older settings files have them all, and
// nobody reads the rest.
void AddColumnOrder(BMessage* settings) {
    constexpr int32 kOrder[] = {0, 1, 2, 3, 4, 7, 5, 6};
    if (Has(*settings, "column_order0"))
        return;
    for (int32 n = 0; n <= 14; n++) {
        char key[32];
        snprintf(key, sizeof(key), "column_order%ld", static_cast<long>(n));
        AddInt32(settings, key, n < static_cast<int32>(std::size(kOrder)) ? kOrder[n] : 0);
    }
}

} // namespace

void AddPrefsIfNotExists(BMessage* settings) {
    AddRect(settings, "window_frame", BRect(50, 50, 600, 550));
    AddInt32(settings, "bar_position", 150);
    AddFont(settings);
    AddNetwork(settings);
    AddColumnWidths(settings);
    AddColumnOrder(settings);
    AddRect(settings, "writing_window", BRect(0, 0, 0, 0));
    AddInt32(settings, "sp_align", 0);
    AddInt32(settings, "mbar_position", 120);
    AddInt32(settings, "msp_align", 1);
    AddFloat(settings, "board_barpos", 0);
    AddBool(settings, "online_mode", true);
    if (!Has(*settings, "click_mode"))
        settings->AddInt8("click_mode", 2);
    AddInt32(settings, "key_binding", 0);
}
