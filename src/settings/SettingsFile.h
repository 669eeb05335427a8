#pragma once

#include <FindDirectory.h>
#include <Locker.h>
#include <Message.h>
#include <Messenger.h>
#include <Path.h>
#include <Rect.h>
#include <String.h>

class BFile;

// From the settings to whom TellChanges names: there is something to save.
constexpr uint32 kMsgSettingsChanged = 'mSTC';

// A message that knows where it lives on disk and loads and saves itself. The file holds everything
// twice: flattened as its data, and each field as a typed attribute that people can read and edit;
// on loading, an attribute's value replaces that of a field that the data already has.
//
// All windows share one object. Get, Replace and Put take a short lock of the object's own and copy
// values out: any thread may call them. The inherited interface is unlocked, for a single owner.
// Nothing is shown to the user here; results are status codes.
class SettingsFile : public BMessage {
public:
    // A directory of −1 is the root. Without a folder one is made from the application's signature:
    // "application/x-vnd.Maker.Program" lives in "Maker/Program". Without a name it is "Settings".
    SettingsFile(const char* name, const char* folder = nullptr,
                 int32 which = B_USER_SETTINGS_DIRECTORY);

    // Whether the path could be formed.
    status_t InitCheck() const { return fStatus; }

    // Replaces the content with the file's. A file that can't be read or understood empties the
    // message; it is then kept under another name by the next Save.
    status_t Load();
    // Replaces the file as a whole: a crash or a full disk leaves the old one.
    status_t Save() const;

    // From now on the first change after each Save is told, by Replace and PutAt.
    void TellChanges(const BMessenger& target);

    status_t Get(const char* key, bool* value, int32 index = 0) const;
    status_t Get(const char* key, int8* value) const;
    status_t Get(const char* key, int32* value) const;
    status_t Get(const char* key, float* value) const;
    status_t Get(const char* key, BRect* value) const;
    status_t Get(const char* key, BString* value, int32 index = 0) const;

    // B_NAME_NOT_FOUND when the key is missing.
    status_t Replace(const char* key, bool value);
    status_t Replace(const char* key, int8 value);
    status_t Replace(const char* key, int32 value);
    status_t Replace(const char* key, float value);
    status_t Replace(const char* key, BRect value);
    status_t Replace(const char* key, const char* value);

    // Replaces the value at an index, or adds one at the end when there is none.
    void PutAt(const char* key, int32 index, bool value);
    void PutAt(const char* key, int32 index, int32 value);
    void PutAt(const char* key, int32 index, float value);
    void PutAt(const char* key, int32 index, const char* value);

private:
    template <typename Change>
    status_t _Change(const char* key, int32 index, Change change);
    status_t _MakePath(const char* name, const char* folder, int32 which);
    status_t _Replace(const char* path) const;
    status_t _Read(BFile* file);
    status_t _Write(BFile* file) const;
    status_t _SetBrokenAside(const char* path) const;

    // Constant after construction
    status_t fStatus;
    BPath fPath;

    mutable BLocker fLock; // innermost: nothing else is locked while it is held
    mutable bool fBroken = false;
    mutable bool fChanged = false; // since the last Save
    BMessenger fWatcher;
};
