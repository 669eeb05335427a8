#pragma once

#include <Application.h>
#include <MessageFilter.h>

#include <atomic>

// Counts a message on its way to the application.
class MessageCounter {
public:
    explicit MessageCounter(uint32 code) : fFilter(new Counting(code, &fCount)) {
        be_app->Lock();
        be_app->AddCommonFilter(fFilter);
        be_app->Unlock();
    }
    ~MessageCounter() {
        be_app->Lock();
        be_app->RemoveCommonFilter(fFilter);
        be_app->Unlock();
        delete fFilter;
    }
    int Count() const { return fCount; }

private:
    class Counting : public BMessageFilter {
    public:
        Counting(uint32 code, std::atomic<int>* count) : BMessageFilter(code), fCount(count) {}
        filter_result Filter(BMessage*, BHandler**) override {
            ++*fCount;
            return B_SKIP_MESSAGE;
        }

    private:
        std::atomic<int>* fCount;
    };

    std::atomic<int> fCount = 0;
    Counting* fFilter;
};
