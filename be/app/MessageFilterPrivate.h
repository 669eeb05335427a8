#pragma once

#include <MessageFilter.h>

class BMessageFilter::Private {
public:
    explicit Private(BMessageFilter* filter) : fFilter(filter) {}

    void SetLooper(BLooper* looper) { fFilter->fLooper = looper; }
    bool Applies(const BMessage& message) const;
    filter_result Run(BMessage* message, BHandler** target);

private:
    BMessageFilter* fFilter;
};
