#pragma once

#include "front/Journal.h"
#include "front/Listeners.h"
#include "front/Request.h"
#include "front/Responder.h"
#include "settings/GateSettings.h"

#include <condition_variable>
#include <mutex>

namespace gate {

// Who answers the requests that may be answered. Called from many threads at once.
class Answerer {
public:
    virtual ~Answerer() = default;
    virtual void Answer(const Request& request, Responder* responder) = 0;
};

// Takes connections, one request each, and notes each in the journal. As many as the
// settings say are served at a time, each on a thread of its own; others wait unaccepted.
class Server {
public:
    // All of them outlive the server.
    Server(const Settings& settings, Listeners* listeners, Answerer* answerer, Journal* journal);
    ~Server(); // waits for the connections
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    void Run();  // until somebody stops it
    void Stop(); // from any thread or signal handler

private:
    bool _IsFull();
    void _TakeConnection(int listener);
    void _Serve(int connection);
    // Appends what comes next; false when nothing more does, which the client has been told.
    bool _ReadMore(int connection, std::string* bytes, Responder* responder, int64_t until);
    bool _ReadRequest(int connection, Request* request, Responder* responder);
    bool _ReadBody(int connection, Request* request, Responder* responder, int64_t until);

    const Settings& fSettings;
    Listeners* const fListeners;
    Answerer* const fAnswerer;
    Journal* const fJournal;
    const int fStop; // an event that stays once it has come
    const int fRoom; // an event whenever a connection has ended
    std::mutex fMutex;
    std::condition_variable fChanged;
    int fConnections = 0; // guarded by fMutex
};

} // namespace gate
