#pragma once

#include "origin/HostRests.h"
#include "origin/Transfer.h"
#include "origin/Way.h"
#include "settings/GateSettings.h"

#include <condition_variable>
#include <ctime>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace gate {

class EasyHandles;

// What is asked of a server.
struct OriginRequest {
    const Family* family = nullptr; // never null
    std::string host;               // one of the family's, as it is called today
    std::string path;               // "/…", with its query
    int64_t rangeStart = -1;        // −1: the whole
    time_t ifModifiedSince = 0;     // 0: whenever
    bool takesCompressed = false;
    std::vector<std::string> headers; // more lines, "Name: value"
    bool isPost = false;
    std::string body;         // of a post
    Deadline endsBy{};        // the transfer fails then, where the settings don't end it earlier
    std::shared_ptr<Way> way; // filled in before the end; null: nobody looks
};

// The way to the servers: TLS with its certificates checked, no redirect followed, no address of
// this machine or network, nothing endless. Equal requests that are on their way are one. Any
// thread may call; transfers run on threads of their own, which the end waits for.
class Origin {
public:
    explicit Origin(const Settings& settings); // which outlive it
    ~Origin();
    Origin(const Origin&) = delete;
    Origin& operator=(const Origin&) = delete;

    std::shared_ptr<Transfer> Start(const OriginRequest& request);

    // Ends what is on its way and takes nothing more.
    void End();

    const Settings& Rules() const { return fSettings; }

private:
    void _Run(const OriginRequest& request, const std::string& key,
              const std::shared_ptr<Transfer>& transfer);
    bool _WaitForTurn(const OriginRequest& request);
    void _Receive(const OriginRequest& request, Transfer* transfer);

    const Settings& fSettings;
    const std::unique_ptr<EasyHandles> fHandles;
    HostRests fRests;
    std::mutex fMutex;
    std::condition_variable fChanged;
    // Guarded by fMutex
    std::map<std::string, std::shared_ptr<Transfer>> fRunning; // by what is asked
    int fThreads = 0;
    bool fIsEnding = false;
};

} // namespace gate
