#include "net/EndpointRegistry.h"

#include <sys/socket.h>
#include <unistd.h>

EndpointRegistry& EndpointRegistry::Instance() {
    static EndpointRegistry& instance = *new EndpointRegistry;
    return instance;
}

void EndpointRegistry::Add(int socket) {
    std::lock_guard guard(fMutex);
    fSockets.insert(socket);
    if (fIsShutDown)
        shutdown(socket, SHUT_RDWR);
}

void EndpointRegistry::Close(int socket) {
    std::lock_guard guard(fMutex);
    fSockets.erase(socket);
    close(socket);
}

void EndpointRegistry::ShutDownAll() {
    std::lock_guard guard(fMutex);
    fIsShutDown = true;
    for (int socket : fSockets)
        shutdown(socket, SHUT_RDWR);
}
