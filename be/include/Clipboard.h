#pragma once

#include <Locker.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>

class BMessage;

// The clipboard shared with other programs: text under "text/plain" (B_MIME_TYPE, UTF-8). Use it
// between Lock and Unlock: Clear, fill Data(), Commit. Lock reads what another program has put
// there. Data() is the clipboard's own and valid while locked. Any thread.
class BClipboard {
public:
    explicit BClipboard(const char* name, bool transient = false);
    virtual ~BClipboard();

    const char* Name() const;

    uint32 LocalCount() const;
    uint32 SystemCount() const;

    bool Lock();
    void Unlock();
    bool IsLocked() const;

    status_t Clear();
    status_t Commit();
    status_t Commit(bool failIfChanged);
    status_t Revert();

    BMessenger DataSource() const;
    BMessage* Data() const;

private:
    class Private;

    BClipboard(const BClipboard&) = delete;
    BClipboard& operator=(const BClipboard&) = delete;

    std::unique_ptr<Private> fPrivate;
};

extern BClipboard* be_clipboard;
