#pragma once

#include <memory>
#include <string>

#include <Statable.h>
#include <StorageDefs.h>

class BDirectory;
class BEntry;
class BString;
struct attr_info;
struct entry_ref;

struct node_ref {
    node_ref() = default;
    bool operator==(const node_ref& other) const {
        return device == other.device && node == other.node;
    }
    bool operator!=(const node_ref& other) const { return !(*this == other); }
    bool operator<(const node_ref& other) const {
        return device != other.device ? device < other.device : node < other.node;
    }

    dev_t device = 0;
    ino_t node = 0;
};

// An open file, folder or link (it follows no links itself) and its attributes: named values of a
// type and any number of bytes. Attributes live in a side file, FOLDER/.attributes/NAME, that
// follows its file when it is renamed, replaced or removed through this kit. Attributes of one file
// may be written by several threads. B_FILE_ERROR when nothing is open.
class BNode : public BStatable {
public:
    BNode();
    BNode(const entry_ref* ref);
    BNode(const BEntry* entry);
    BNode(const char* path);
    BNode(const BDirectory* directory, const char* path);
    BNode(const BNode& node);
    ~BNode() override;
    BNode& operator=(const BNode& node);
    bool operator==(const BNode& node) const;
    bool operator!=(const BNode& node) const { return !(*this == node); }

    status_t InitCheck() const { return fStatus; }
    status_t SetTo(const entry_ref* ref);
    status_t SetTo(const BEntry* entry);
    status_t SetTo(const char* path);
    status_t SetTo(const BDirectory* directory, const char* path);
    void Unset();
    status_t GetStat(struct stat* info) const override;

    // Exclusive against other BNode::Lock calls, never waiting: B_BUSY. Goes with the object.
    status_t Lock();
    status_t Unlock(); // B_BAD_VALUE when it is not locked
    status_t Sync();   // data and attributes are on the disk when it returns
    int Dup();         // a file descriptor that the caller closes

    // The number of bytes written or read; B_ENTRY_NOT_FOUND for a missing attribute, B_BAD_TYPE is
    // never given. Writing at 0 replaces the whole value, writing further on changes and extends
    // it.
    ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                      size_t length);
    ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                     size_t length) const;
    status_t RemoveAttr(const char* name);
    status_t RenameAttr(const char* oldName, const char* newName);
    status_t GetAttrInfo(const char* name, attr_info* info) const;
    status_t
    GetNextAttrName(char* buffer); // B_ATTR_NAME_LENGTH bytes; B_ENTRY_NOT_FOUND at the end
    status_t RewindAttrs();
    status_t WriteAttrString(const char* name, const BString* data);
    status_t ReadAttrString(const char* name, BString* result) const;

    class Private;

protected:
    status_t _Open(const std::string& path, int openFlags, mode_t createMode);
    virtual void _Close();
    status_t _Fail(status_t status); // closes, and keeps the status
    int _Descriptor() const { return fDescriptor; }

private:
    status_t _SetPermissions(mode_t permissions) override;
    status_t _SetTimes(const time_t* accessTime, const time_t* modificationTime) override;

    struct Attributes; // a walk through the attributes
    int fDescriptor = -1;
    status_t fStatus;
    bool fIsLocked = false;
    std::string fPath; // as it was opened, absolute
    mutable std::unique_ptr<Attributes> fAttributes;
};
