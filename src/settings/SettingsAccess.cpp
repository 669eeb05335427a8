#include "settings/SettingsFile.h"

#include <Autolock.h>

#include <string>

status_t SettingsFile::Get(const char* key, bool* value, int32 index) const {
    const BAutolock lock(fLock);
    return FindBool(key, index, value);
}

status_t SettingsFile::Get(const char* key, int8* value) const {
    const BAutolock lock(fLock);
    return FindInt8(key, value);
}

status_t SettingsFile::Get(const char* key, int32* value) const {
    const BAutolock lock(fLock);
    return FindInt32(key, value);
}

status_t SettingsFile::Get(const char* key, float* value) const {
    const BAutolock lock(fLock);
    return FindFloat(key, value);
}

status_t SettingsFile::Get(const char* key, BRect* value) const {
    const BAutolock lock(fLock);
    return FindRect(key, value);
}

status_t SettingsFile::Get(const char* key, BString* value, int32 index) const {
    const BAutolock lock(fLock);
    return FindString(key, index, value);
}

namespace {

std::string BytesOf(const BMessage& message, const char* key, int32 index) {
    type_code type = 0;
    const void* data = nullptr;
    ssize_t size = 0;
    if (message.GetInfo(key, &type) != B_OK ||
        message.FindData(key, type, index, &data, &size) != B_OK)
        return "";
    return std::string(static_cast<const char*>(data), static_cast<size_t>(size));
}

} // namespace

// A value that stays the same is no change. Told without the lock.
template <typename Change>
status_t SettingsFile::_Change(const char* key, int32 index, Change change) {
    BMessenger watcher;
    status_t status = B_OK;
    {
        const BAutolock lock(fLock);
        const std::string before = BytesOf(*this, key, index);
        status = change();
        if (status == B_OK && !fChanged && BytesOf(*this, key, index) != before) {
            fChanged = true;
            watcher = fWatcher;
        }
    }
    watcher.SendMessage(kMsgSettingsChanged);
    return status;
}

void SettingsFile::TellChanges(const BMessenger& target) {
    const BAutolock lock(fLock);
    fWatcher = target;
    fChanged = false;
}

status_t SettingsFile::Replace(const char* key, bool value) {
    return _Change(key, 0, [&] { return ReplaceBool(key, value); });
}

status_t SettingsFile::Replace(const char* key, int8 value) {
    return _Change(key, 0, [&] { return ReplaceInt8(key, value); });
}

status_t SettingsFile::Replace(const char* key, int32 value) {
    return _Change(key, 0, [&] { return ReplaceInt32(key, value); });
}

status_t SettingsFile::Replace(const char* key, float value) {
    return _Change(key, 0, [&] { return ReplaceFloat(key, value); });
}

status_t SettingsFile::Replace(const char* key, BRect value) {
    return _Change(key, 0, [&] { return ReplaceRect(key, value); });
}

status_t SettingsFile::Replace(const char* key, const char* value) {
    return _Change(key, 0, [&] { return ReplaceString(key, value); });
}

void SettingsFile::PutAt(const char* key, int32 index, bool value) {
    _Change(key, index,
            [&] { return ReplaceBool(key, index, value) == B_OK ? B_OK : AddBool(key, value); });
}

void SettingsFile::PutAt(const char* key, int32 index, int32 value) {
    _Change(key, index,
            [&] { return ReplaceInt32(key, index, value) == B_OK ? B_OK : AddInt32(key, value); });
}

void SettingsFile::PutAt(const char* key, int32 index, float value) {
    _Change(key, index,
            [&] { return ReplaceFloat(key, index, value) == B_OK ? B_OK : AddFloat(key, value); });
}

void SettingsFile::PutAt(const char* key, int32 index, const char* value) {
    _Change(key, index, [&] {
        return ReplaceString(key, index, value) == B_OK ? B_OK : AddString(key, value);
    });
}
