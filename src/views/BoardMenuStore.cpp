#include "views/BoardMenuStore.h"

#include "settings/ReplaceFile.h"

#include <Autolock.h>
#include <File.h>
#include <Locker.h>
#include <NodeInfo.h>

namespace {

constexpr const char* kType = "text/html";

// Two updates may end at once, in this program or in two that share the folder.
class StoreLock {
public:
    explicit StoreLock(const std::string& folder)
        : fLock(InProcess()), fFolder(folder.c_str()),
          fStatus(fFolder.InitCheck() == B_OK ? fFolder.Lock() : fFolder.InitCheck()) {}
    status_t Status() const { return fStatus; }

private:
    static BLocker& InProcess() {
        static BLocker& lock = *new BLocker("board menu");
        return lock;
    }

    const BAutolock fLock;
    BNode fFolder; // unlocked as it closes
    const status_t fStatus;
};

status_t WritePage(BFile* file, const std::string& page) {
    const ssize_t written = file->Write(page.data(), page.size());
    if (written < 0)
        return static_cast<status_t>(written);
    if (static_cast<size_t>(written) != page.size())
        return B_DEVICE_FULL;
    return BNodeInfo(file).SetType(kType);
}

// A copy, so that the menu itself is never missing; it keeps the time of what it copies.
status_t SetAside(const std::string& menu, const std::string& aside) {
    std::string page;
    time_t modified = 0;
    status_t status = ReadWholeFile(menu.c_str(), &page);
    if (status == B_OK)
        status = BNode(TargetOf(menu.c_str()).c_str()).GetModificationTime(&modified);
    if (status != B_OK)
        return status;
    return ReplaceFile(aside.c_str(), [&](BFile* file) {
        const status_t result = WritePage(file, page);
        return result == B_OK ? file->SetModificationTime(modified) : result;
    });
}

} // namespace

status_t StoreBoardMenu(const std::string& folder, const std::string& page, time_t now) {
    const StoreLock lock(folder);
    if (lock.Status() != B_OK)
        return lock.Status();
    const std::string menu = folder + "/newbbsmenu.html";
    const status_t status = SetAside(menu, menu + "." + std::to_string(now));
    if (status != B_OK)
        return status;
    return ReplaceFile(menu.c_str(), [&](BFile* file) { return WritePage(file, page); });
}
