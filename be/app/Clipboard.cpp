#include <Clipboard.h>

#include "server/Desktop.h"

#include <Application.h>
#include <Message.h>

#include <string>

namespace {

const char kText[] = "text/plain";

std::string TextOf(const BMessage& message) {
    const void* data = nullptr;
    ssize_t size = 0;
    if (message.FindData(kText, B_MIME_TYPE, &data, &size) != B_OK || size <= 0)
        return std::string();
    return std::string(static_cast<const char*>(data), static_cast<size_t>(size));
}

BClipboard sClipboard("system");

} // namespace

BClipboard* be_clipboard = &sClipboard;

class BClipboard::Private {
public:
    explicit Private(const char* clipboardName)
        : name(clipboardName != nullptr ? clipboardName : "system"), lock("clipboard"),
          isSystem(name == "system") {}

    // Another program's text replaces what was committed here; our own keeps its other data.
    void Download() {
        if (!isSystem)
            return;
        const server::ClipboardText text = server::ReadClipboard();
        if (!text.known || text.utf8 == TextOf(data))
            return;
        data.MakeEmpty();
        if (!text.utf8.empty())
            data.AddData(kText, B_MIME_TYPE, text.utf8.data(),
                         static_cast<ssize_t>(text.utf8.size()));
        count++;
    }

    const std::string name;
    BLocker lock;
    const bool isSystem;
    // Guarded by lock
    BMessage data;
    BMessage committed;
    BMessenger source;
    uint32 count = 0;
};

BClipboard::BClipboard(const char* name, bool) : fPrivate(std::make_unique<Private>(name)) {}

BClipboard::~BClipboard() = default;

const char* BClipboard::Name() const {
    return fPrivate->name.c_str();
}
uint32 BClipboard::LocalCount() const {
    return fPrivate->count;
}
uint32 BClipboard::SystemCount() const {
    return fPrivate->count;
}

bool BClipboard::Lock() {
    if (!fPrivate->lock.Lock())
        return false;
    if (fPrivate->lock.CountLocks() == 1) {
        fPrivate->Download();
        fPrivate->committed = fPrivate->data;
    }
    return true;
}

void BClipboard::Unlock() {
    fPrivate->lock.Unlock();
}

bool BClipboard::IsLocked() const {
    return fPrivate->lock.IsLocked();
}

status_t BClipboard::Clear() {
    if (!IsLocked())
        return B_NOT_ALLOWED;
    return fPrivate->data.MakeEmpty();
}

status_t BClipboard::Commit() {
    return Commit(false);
}

status_t BClipboard::Commit(bool) {
    if (!IsLocked())
        return B_NOT_ALLOWED;
    fPrivate->count++;
    fPrivate->committed = fPrivate->data;
    fPrivate->source = be_app_messenger;
    if (fPrivate->isSystem)
        server::SetClipboardText(TextOf(fPrivate->data));
    return B_OK;
}

status_t BClipboard::Revert() {
    if (!IsLocked())
        return B_NOT_ALLOWED;
    fPrivate->data = fPrivate->committed;
    return B_OK;
}

BMessenger BClipboard::DataSource() const {
    return fPrivate->source;
}

BMessage* BClipboard::Data() const {
    return IsLocked() ? &fPrivate->data : nullptr;
}
