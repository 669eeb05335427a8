#pragma once

#include <functional>
#include <memory>
#include <string>

// One running program to a settings folder: whoever holds the lock is it, a later start hands over
// to it.
class Instance {
public:
    enum class Claim {
        kOurs,       // this process is the one
        kHandedOver, // another is, and has been told
        kRefused     // another is, and does not answer
    };

    // A folder that can't be written to claims nothing: then everyone is the one.
    explicit Instance(const std::string& signature);
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    Claim Result() const { return fClaim; }
    // The server's thread: calls whenever another start hands over.
    void Listen(std::function<void()> handler);

private:
    class Listener;

    bool _TryLock();
    bool _TryHandOver() const;
    void _Bind();

    std::string fFolder; // of lock and socket
    std::string fName;
    int fFolderDescriptor = -1;
    int fLock = -1;
    int fSocket = -1;
    Claim fClaim = Claim::kOurs;
    std::unique_ptr<Listener> fListener;
};
