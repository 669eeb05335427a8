#pragma once

#include <time.h>

#include <memory>

#include <AppDefs.h>
#include <DataIO.h>
#include <GraphicsDefs.h>
#include <Messenger.h>
#include <OS.h>
#include <Rect.h>
#include <TypeConstants.h>

class BEntry;
class BHandler;
class BString;
struct entry_ref;

// A code (`what`) and named, typed fields, each an array of one or more values. Fields keep the
// order in which they were first added. Results: B_BAD_VALUE for a missing name, B_NAME_NOT_FOUND,
// B_BAD_TYPE when the field has another type, B_BAD_INDEX. When a FindX fails it may have changed
// its output: look at the status. Found pointers (strings, data) belong to the message and die with
// the next change of it. Not synchronised.
class BMessage {
public:
    uint32 what;

    BMessage();
    explicit BMessage(uint32 code);
    BMessage(const BMessage& message);
    virtual ~BMessage();
    BMessage& operator=(const BMessage& message);

    status_t GetInfo(type_code typeRequested, int32 index, char** nameFound, type_code* typeFound,
                     int32* countFound = nullptr) const;
    status_t GetInfo(const char* name, type_code* typeFound, int32* countFound = nullptr) const;
    status_t GetInfo(const char* name, type_code* typeFound, bool* fixedSize) const;
    int32 CountNames(type_code type) const; // B_ANY_TYPE counts all
    bool IsEmpty() const;
    bool IsSystem() const;
    bool IsReply() const;
    void PrintToStream() const;
    status_t Rename(const char* oldEntry, const char* newEntry);

    // Delivery. The sender learns what a handler answered; a handler that answers nothing has
    // B_NO_REPLY sent for it.
    bool WasDelivered() const;
    bool IsSourceWaiting() const;
    bool IsSourceRemote() const;
    BMessenger ReturnAddress() const;
    bool WasDropped() const;
    status_t SendReply(uint32 command, BHandler* replyTo = nullptr);
    status_t SendReply(BMessage* reply, BHandler* replyTo = nullptr,
                       bigtime_t timeout = B_INFINITE_TIMEOUT);
    status_t SendReply(BMessage* reply, BMessenger replyTo, bigtime_t timeout = B_INFINITE_TIMEOUT);
    status_t SendReply(uint32 command, BMessage* replyToReply);
    status_t SendReply(BMessage* reply, BMessage* replyToReply,
                       bigtime_t sendTimeout = B_INFINITE_TIMEOUT,
                       bigtime_t replyTimeout = B_INFINITE_TIMEOUT);

    // A self-describing form that knows its length. What is not such a form gives B_BAD_VALUE (or
    // B_IO_ERROR when the stream ends early) and leaves the message empty.
    ssize_t FlattenedSize() const;
    status_t Flatten(char* buffer, ssize_t size) const;
    status_t Flatten(BDataIO* stream, ssize_t* size = nullptr) const;
    status_t Unflatten(const char* flatBuffer); // the buffer holds a whole flattened message
    status_t Unflatten(BDataIO* stream);

    status_t AddRect(const char* name, BRect rect);
    status_t AddPoint(const char* name, BPoint point);
    status_t AddString(const char* name, const char* string);
    status_t AddString(const char* name, const BString& string);
    status_t AddInt8(const char* name, int8 value);
    status_t AddUInt8(const char* name, uint8 value);
    status_t AddInt16(const char* name, int16 value);
    status_t AddUInt16(const char* name, uint16 value);
    status_t AddInt32(const char* name, int32 value);
    status_t AddUInt32(const char* name, uint32 value);
    status_t AddInt64(const char* name, int64 value);
    status_t AddUInt64(const char* name, uint64 value);
    status_t AddBool(const char* name, bool value);
    status_t AddFloat(const char* name, float value);
    status_t AddDouble(const char* name, double value);
    status_t AddColor(const char* name, rgb_color value);
    status_t AddPointer(const char* name, const void* pointer);
    status_t AddMessenger(const char* name, BMessenger messenger);
    status_t AddRef(const char* name, const entry_ref* ref);
    status_t AddMessage(const char* name, const BMessage* message);
    status_t AddData(const char* name, type_code type, const void* data, ssize_t numBytes,
                     bool isFixedSize = true, int32 count = 1);

    status_t RemoveData(const char* name, int32 index = 0);
    status_t RemoveName(const char* name);
    status_t MakeEmpty();

    status_t FindRect(const char* name, BRect* rect) const;
    status_t FindRect(const char* name, int32 index, BRect* rect) const;
    status_t FindPoint(const char* name, BPoint* point) const;
    status_t FindPoint(const char* name, int32 index, BPoint* point) const;
    status_t FindString(const char* name, const char** string) const;
    status_t FindString(const char* name, int32 index, const char** string) const;
    status_t FindString(const char* name, BString* string) const;
    status_t FindString(const char* name, int32 index, BString* string) const;
    status_t FindInt8(const char* name, int8* value) const;
    status_t FindInt8(const char* name, int32 index, int8* value) const;
    status_t FindUInt8(const char* name, uint8* value) const;
    status_t FindUInt8(const char* name, int32 index, uint8* value) const;
    status_t FindInt16(const char* name, int16* value) const;
    status_t FindInt16(const char* name, int32 index, int16* value) const;
    status_t FindUInt16(const char* name, uint16* value) const;
    status_t FindUInt16(const char* name, int32 index, uint16* value) const;
    status_t FindInt32(const char* name, int32* value) const;
    status_t FindInt32(const char* name, int32 index, int32* value) const;
    status_t FindUInt32(const char* name, uint32* value) const;
    status_t FindUInt32(const char* name, int32 index, uint32* value) const;
    status_t FindInt64(const char* name, int64* value) const;
    status_t FindInt64(const char* name, int32 index, int64* value) const;
    status_t FindUInt64(const char* name, uint64* value) const;
    status_t FindUInt64(const char* name, int32 index, uint64* value) const;
    status_t FindBool(const char* name, bool* value) const;
    status_t FindBool(const char* name, int32 index, bool* value) const;
    status_t FindFloat(const char* name, float* value) const;
    status_t FindFloat(const char* name, int32 index, float* value) const;
    status_t FindDouble(const char* name, double* value) const;
    status_t FindDouble(const char* name, int32 index, double* value) const;
    status_t FindColor(const char* name, rgb_color* value) const;
    status_t FindColor(const char* name, int32 index, rgb_color* value) const;
    status_t FindPointer(const char* name, void** pointer) const;
    status_t FindPointer(const char* name, int32 index, void** pointer) const;
    status_t FindMessenger(const char* name, BMessenger* messenger) const;
    status_t FindMessenger(const char* name, int32 index, BMessenger* messenger) const;
    status_t FindRef(const char* name, entry_ref* ref) const;
    status_t FindRef(const char* name, int32 index, entry_ref* ref) const;
    status_t FindMessage(const char* name, BMessage* message) const;
    status_t FindMessage(const char* name, int32 index, BMessage* message) const;
    status_t FindData(const char* name, type_code type, const void** data, ssize_t* numBytes) const;
    status_t FindData(const char* name, type_code type, int32 index, const void** data,
                      ssize_t* numBytes) const;

    // Replace a value that is there: B_NAME_NOT_FOUND otherwise, and nothing is added.
    status_t ReplaceRect(const char* name, BRect rect);
    status_t ReplaceRect(const char* name, int32 index, BRect rect);
    status_t ReplacePoint(const char* name, BPoint point);
    status_t ReplacePoint(const char* name, int32 index, BPoint point);
    status_t ReplaceString(const char* name, const char* string);
    status_t ReplaceString(const char* name, int32 index, const char* string);
    status_t ReplaceString(const char* name, const BString& string);
    status_t ReplaceString(const char* name, int32 index, const BString& string);
    status_t ReplaceInt8(const char* name, int8 value);
    status_t ReplaceInt8(const char* name, int32 index, int8 value);
    status_t ReplaceUInt8(const char* name, uint8 value);
    status_t ReplaceUInt8(const char* name, int32 index, uint8 value);
    status_t ReplaceInt16(const char* name, int16 value);
    status_t ReplaceInt16(const char* name, int32 index, int16 value);
    status_t ReplaceUInt16(const char* name, uint16 value);
    status_t ReplaceUInt16(const char* name, int32 index, uint16 value);
    status_t ReplaceInt32(const char* name, int32 value);
    status_t ReplaceInt32(const char* name, int32 index, int32 value);
    status_t ReplaceUInt32(const char* name, uint32 value);
    status_t ReplaceUInt32(const char* name, int32 index, uint32 value);
    status_t ReplaceInt64(const char* name, int64 value);
    status_t ReplaceInt64(const char* name, int32 index, int64 value);
    status_t ReplaceUInt64(const char* name, uint64 value);
    status_t ReplaceUInt64(const char* name, int32 index, uint64 value);
    status_t ReplaceBool(const char* name, bool value);
    status_t ReplaceBool(const char* name, int32 index, bool value);
    status_t ReplaceFloat(const char* name, float value);
    status_t ReplaceFloat(const char* name, int32 index, float value);
    status_t ReplaceDouble(const char* name, double value);
    status_t ReplaceDouble(const char* name, int32 index, double value);
    status_t ReplaceColor(const char* name, rgb_color value);
    status_t ReplaceColor(const char* name, int32 index, rgb_color value);
    status_t ReplacePointer(const char* name, const void* pointer);
    status_t ReplacePointer(const char* name, int32 index, const void* pointer);
    status_t ReplaceMessenger(const char* name, BMessenger messenger);
    status_t ReplaceMessenger(const char* name, int32 index, BMessenger messenger);
    status_t ReplaceRef(const char* name, const entry_ref* ref);
    status_t ReplaceRef(const char* name, int32 index, const entry_ref* ref);
    status_t ReplaceMessage(const char* name, const BMessage* message);
    status_t ReplaceMessage(const char* name, int32 index, const BMessage* message);
    status_t ReplaceData(const char* name, type_code type, const void* data, ssize_t numBytes);
    status_t ReplaceData(const char* name, type_code type, int32 index, const void* data,
                         ssize_t numBytes);

    bool HasRect(const char* name, int32 index = 0) const;
    bool HasPoint(const char* name, int32 index = 0) const;
    bool HasString(const char* name, int32 index = 0) const;
    bool HasInt8(const char* name, int32 index = 0) const;
    bool HasUInt8(const char* name, int32 index = 0) const;
    bool HasInt16(const char* name, int32 index = 0) const;
    bool HasUInt16(const char* name, int32 index = 0) const;
    bool HasInt32(const char* name, int32 index = 0) const;
    bool HasUInt32(const char* name, int32 index = 0) const;
    bool HasInt64(const char* name, int32 index = 0) const;
    bool HasUInt64(const char* name, int32 index = 0) const;
    bool HasBool(const char* name, int32 index = 0) const;
    bool HasFloat(const char* name, int32 index = 0) const;
    bool HasDouble(const char* name, int32 index = 0) const;
    bool HasColor(const char* name, int32 index = 0) const;
    bool HasPointer(const char* name, int32 index = 0) const;
    bool HasMessenger(const char* name, int32 index = 0) const;
    bool HasRef(const char* name, int32 index = 0) const;
    bool HasMessage(const char* name, int32 index = 0) const;
    bool HasData(const char* name, type_code type, int32 index = 0) const;

    class Private;

private:
    struct Content;
    std::unique_ptr<Content> fContent;
};
