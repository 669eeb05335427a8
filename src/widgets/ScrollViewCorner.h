#pragma once

#include <View.h>

// Fills the place where two scroll bars meet.
class ScrollViewCorner : public BView {
public:
    explicit ScrollViewCorner(BRect frame);
};
