#pragma once

#include <memory>

#include <Handler.h>

class BMessageQueue;

#define B_LOOPER_PORT_DEFAULT_CAPACITY 200

// A thread that takes messages from a queue, one after another, and hands each to a handler with
// the looper locked. Create it with new; Run() starts the thread; Quit(), with the looper locked,
// ends it and deletes the object. A new looper is locked by the thread that made it until Run().
// The queue takes any number of messages: the capacity is not a limit here.
class BLooper : public BHandler {
public:
    BLooper(const char* name = nullptr, int32 priority = B_NORMAL_PRIORITY,
            int32 portCapacity = B_LOOPER_PORT_DEFAULT_CAPACITY);
    ~BLooper() override;

    // From any thread, locked or not. A copy is posted; the caller keeps its message. A handler of
    // another looper gives B_MISMATCHED_VALUES. A null handler is the preferred one, or the looper.
    status_t PostMessage(uint32 command);
    status_t PostMessage(BMessage* message);
    status_t PostMessage(uint32 command, BHandler* handler, BHandler* replyTo = nullptr);
    status_t PostMessage(BMessage* message, BHandler* handler, BHandler* replyTo = nullptr);

    virtual void DispatchMessage(BMessage* message, BHandler* handler);
    void MessageReceived(BMessage* message) override;
    BMessage* CurrentMessage() const; // null outside of dispatching
    BMessage* DetachCurrentMessage(); // the caller frees it
    BMessageQueue* MessageQueue() const;
    bool IsMessageWaiting() const;

    void AddHandler(BHandler* handler); // the looper is locked, the handler has no looper yet
    bool RemoveHandler(BHandler* handler);
    int32 CountHandlers() const;
    BHandler* HandlerAt(int32 index) const;
    int32 IndexOf(BHandler* handler) const;
    BHandler* PreferredHandler() const;
    void SetPreferredHandler(BHandler* handler);

    virtual thread_id Run(); // the thread, or an error
    // From another thread: returns when the queue has been worked off and the object is gone. From
    // its own thread: does not return. One that never ran is deleted at once.
    virtual void Quit();
    virtual bool QuitRequested(); // true lets B_QUIT_REQUESTED go on to Quit()

    bool Lock(); // false when the looper has gone
    void Unlock();
    bool IsLocked() const;                       // by the calling thread
    status_t LockWithTimeout(bigtime_t timeout); // B_TIMED_OUT, B_BAD_VALUE when it has gone
    thread_id Thread() const;
    team_id Team() const;
    static BLooper* LooperForThread(thread_id thread);
    thread_id LockingThread() const;
    int32 CountLocks() const;
    int32 CountLockRequests() const;

    // Filters for every message, whichever its handler. Ownership as in BHandler.
    virtual void AddCommonFilter(BMessageFilter* filter);
    virtual bool RemoveCommonFilter(BMessageFilter* filter);
    virtual void SetCommonFilterList(BList* filters);
    BList* CommonFilterList() const;

    class Private;

private:
    // The loop: takes messages and dispatches them until the looper has gone. Runs on the looper's
    // thread.
    virtual void _TaskLooper();

    struct Data;
    std::unique_ptr<Data> fData;
};
