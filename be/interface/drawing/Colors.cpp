#include <InterfaceDefs.h>

#include "server/Keys.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace {

struct NamedColor {
    color_which which;
    uint32 rgb;
};

// One calm palette: light panels, white lists, hairlines, near-black text, one blue for focus and
// selection.
const NamedColor kPalette[] = {
    {B_PANEL_BACKGROUND_COLOR, 0xf2f2f2},
    {B_PANEL_TEXT_COLOR, 0x1f2328},
    {B_DOCUMENT_BACKGROUND_COLOR, 0xffffff},
    {B_DOCUMENT_TEXT_COLOR, 0x1f2328},
    {B_CONTROL_BACKGROUND_COLOR, 0xffffff},
    {B_CONTROL_TEXT_COLOR, 0x1f2328},
    {B_CONTROL_BORDER_COLOR, 0xc9cdd2},
    {B_CONTROL_HIGHLIGHT_COLOR, 0x2f6fd6},
    {B_CONTROL_MARK_COLOR, 0x2f6fd6},
    {B_NAVIGATION_BASE_COLOR, 0x2f6fd6},
    {B_NAVIGATION_PULSE_COLOR, 0x2f6fd6},
    {B_SHINE_COLOR, 0xffffff},
    {B_SHADOW_COLOR, 0xc9cdd2},
    {B_LINK_TEXT_COLOR, 0x1f5fc4},
    {B_MENU_BACKGROUND_COLOR, 0xf2f2f2},
    {B_MENU_SELECTED_BACKGROUND_COLOR, 0xdbe6f8},
    {B_MENU_ITEM_TEXT_COLOR, 0x1f2328},
    {B_MENU_SELECTED_ITEM_TEXT_COLOR, 0x1f2328},
    {B_MENU_SELECTED_BORDER_COLOR, 0x2f6fd6},
    {B_LIST_BACKGROUND_COLOR, 0xffffff},
    {B_LIST_SELECTED_BACKGROUND_COLOR, 0xcfe0fa},
    {B_LIST_ITEM_TEXT_COLOR, 0x1f2328},
    {B_LIST_SELECTED_ITEM_TEXT_COLOR, 0x1f2328},
    {B_SCROLL_BAR_THUMB_COLOR, 0xc1c6cc},
    {B_TOOL_TIP_BACKGROUND_COLOR, 0xfffbe6},
    {B_TOOL_TIP_TEXT_COLOR, 0x1f2328},
    {B_STATUS_BAR_COLOR, 0x2f6fd6},
    {B_SUCCESS_COLOR, 0x2e8b57},
    {B_FAILURE_COLOR, 0xc0392b},
    {B_WINDOW_TAB_COLOR, 0xe4e6ea},
    {B_WINDOW_TEXT_COLOR, 0x1f2328},
    {B_WINDOW_INACTIVE_TAB_COLOR, 0xf2f2f2},
    {B_WINDOW_INACTIVE_TEXT_COLOR, 0x7a828c},
    {B_WINDOW_BORDER_COLOR, 0xb6bbc2},
    {B_WINDOW_INACTIVE_BORDER_COLOR, 0xc9cdd2},
    {B_DESKTOP_COLOR, 0x51668a},
};

const uint32 kSet = 0x80000000U; // marks a colour that set_ui_color has replaced
const int kNames = 128;

std::atomic<uint32> sReplaced[kNames];
std::atomic<bigtime_t> sClickSpeed{400000};

rgb_color Unpack(uint32 rgb) {
    return make_color(static_cast<uint8>(rgb >> 16), static_cast<uint8>(rgb >> 8),
                      static_cast<uint8>(rgb));
}

uint8 Tinted(uint8 value, float tint) {
    const float result = tint < 1.0F ? 255.0F - (255.0F - static_cast<float>(value)) * tint
                                     : static_cast<float>(value) * (2.0F - tint);
    return static_cast<uint8>(std::clamp(std::lround(result), 0L, 255L));
}

// Where a replacement for it is kept; 0, which names no colour, for what is none.
int IndexOf(color_which which) {
    const int index = which;
    return index > 0 && index < kNames ? index : 0;
}

} // namespace

rgb_color ui_color(color_which which) {
    const uint32 replaced = sReplaced[IndexOf(which)].load(std::memory_order_relaxed);
    if (replaced & kSet)
        return Unpack(replaced);
    for (const NamedColor& named : kPalette) {
        if (named.which == which)
            return Unpack(named.rgb);
    }
    return make_color(0, 0, 0);
}

void set_ui_color(const color_which& which, const rgb_color& color) {
    if (const int index = IndexOf(which))
        sReplaced[index] = kSet | uint32(color.red) << 16 | uint32(color.green) << 8 | color.blue;
}

rgb_color tint_color(rgb_color color, float tint) {
    return make_color(Tinted(color.red, tint), Tinted(color.green, tint), Tinted(color.blue, tint),
                      color.alpha);
}

rgb_color shift_color(rgb_color color, float shift) {
    return tint_color(color, 2.0F - shift);
}

rgb_color keyboard_navigation_color() {
    return ui_color(B_KEYBOARD_NAVIGATION_COLOR);
}

uint32 modifiers() {
    return server::CurrentModifiers();
}

status_t get_key_info(key_info* info) {
    if (info == nullptr)
        return B_BAD_VALUE;
    *info = key_info{modifiers(), {}};
    return B_OK;
}

status_t get_click_speed(bigtime_t* speed) {
    if (speed == nullptr)
        return B_BAD_VALUE;
    *speed = sClickSpeed;
    return B_OK;
}

status_t set_click_speed(bigtime_t speed) {
    if (speed <= 0)
        return B_BAD_VALUE;
    sClickSpeed = speed;
    return B_OK;
}

status_t get_scroll_bar_info(scroll_bar_info* info) {
    if (info == nullptr)
        return B_BAD_VALUE;
    *info = scroll_bar_info{true, false, 0, 24};
    return B_OK;
}

status_t set_scroll_bar_info(scroll_bar_info*) {
    return B_NOT_ALLOWED;
}
