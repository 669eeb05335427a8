#include "app/Instance.h"

#include <QSocketNotifier>

#include <FindDirectory.h>
#include <OS.h>
#include <Path.h>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const bigtime_t kPatience = 3000000; // for one that is just starting or ending
const bigtime_t kRetry = 50000;

std::string Variable(const char* name) {
    const char* value = getenv(name);
    return value != nullptr ? value : "";
}

std::string SettingsFolder() {
    BPath path;
    find_directory(B_USER_SETTINGS_DIRECTORY, &path, true);
    std::error_code error;
    const std::filesystem::path folder = path.Path() != nullptr ? path.Path() : "/";
    const std::filesystem::path real = std::filesystem::weakly_canonical(folder, error);
    return error ? folder.string() : real.string();
}

std::string NameFor(const std::string& signature, const std::string& settings) {
    std::string leaf = signature.substr(signature.rfind('/') + 1);
    for (char& character : leaf) {
        if (!isalnum(static_cast<unsigned char>(character)) && character != '.' && character != '-')
            character = '_';
    }
    char number[32];
    snprintf(number, sizeof(number), "-%016zx", std::hash<std::string>()(settings));
    return leaf.substr(0, 60) + number;
}

// Paths of sockets are short; the open folder stands for its own, however long.
sockaddr_un AddressIn(int folder, const std::string& name) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof(address.sun_path), "/proc/self/fd/%d/%s.socket", folder,
             name.c_str());
    return address;
}

} // namespace

class Instance::Listener {
public:
    Listener(int socket, std::function<void()> handler) : fNotifier(socket, QSocketNotifier::Read) {
        QObject::connect(&fNotifier, &QSocketNotifier::activated,
                         [socket, handler = std::move(handler)] {
                             const int caller = accept4(socket, nullptr, nullptr, SOCK_CLOEXEC);
                             if (caller < 0)
                                 return;
                             close(caller);
                             handler();
                         });
    }

private:
    QSocketNotifier fNotifier;
};

Instance::Instance(const std::string& signature) {
    const std::string settings = SettingsFolder();
    fName = NameFor(signature, settings);
    const std::string runtime = Variable("XDG_RUNTIME_DIR");
    fFolder = !runtime.empty() && access(runtime.c_str(), W_OK) == 0 ? runtime : settings;
    fFolderDescriptor = open(fFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fFolderDescriptor < 0)
        return;
    const bigtime_t end = system_time() + kPatience;
    while (!_TryLock()) {
        if (_TryHandOver()) {
            fClaim = Claim::kHandedOver;
            return;
        }
        if (system_time() > end) {
            fClaim = Claim::kRefused;
            return;
        }
        snooze(kRetry);
    }
    _Bind();
}

Instance::~Instance() {
    fListener.reset();
    if (fSocket >= 0) {
        unlinkat(fFolderDescriptor, (fName + ".socket").c_str(), 0);
        close(fSocket);
    }
    if (fLock >= 0)
        close(fLock);
    if (fFolderDescriptor >= 0)
        close(fFolderDescriptor);
}

// True also where there can't be a lock.
bool Instance::_TryLock() {
    const std::string name = fName + ".lock";
    if (fLock < 0)
        fLock = openat(fFolderDescriptor, name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    return fLock < 0 || flock(fLock, LOCK_EX | LOCK_NB) == 0;
}

bool Instance::_TryHandOver() const {
    const int caller = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (caller < 0)
        return false;
    const sockaddr_un address = AddressIn(fFolderDescriptor, fName);
    const int status =
        connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    close(caller);
    return status == 0;
}

void Instance::_Bind() {
    if (fLock < 0)
        return;
    unlinkat(fFolderDescriptor, (fName + ".socket").c_str(), 0);
    fSocket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const sockaddr_un address = AddressIn(fFolderDescriptor, fName);
    if (fSocket >= 0 &&
        bind(fSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
        listen(fSocket, 8) == 0)
        return;
    if (fSocket >= 0)
        close(fSocket);
    fSocket = -1;
}

void Instance::Listen(std::function<void()> handler) {
    if (fSocket >= 0)
        fListener = std::make_unique<Listener>(fSocket, std::move(handler));
}
