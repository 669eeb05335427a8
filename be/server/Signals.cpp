#include "server/Signals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace server {

namespace {

const int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

int sPipe[2] = {-1, -1};
QSocketNotifier* sNotifier = nullptr;

void Note(int) {
    const int before = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(sPipe[1], &byte, 1);
    errno = before;
}

void Handle(void (*handler)(int)) {
    for (const int number : kSignals) {
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(number, &action, nullptr);
    }
}

} // namespace

void WatchSignals(std::function<void()> handler) {
    if (pipe2(sPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    sNotifier = new QSocketNotifier(sPipe[0], QSocketNotifier::Read);
    QObject::connect(sNotifier, &QSocketNotifier::activated, [handler = std::move(handler)] {
        char bytes[16];
        while (read(sPipe[0], bytes, sizeof(bytes)) > 0) {
        }
        // A second signal ends a program that does not.
        Handle(SIG_DFL);
        handler();
    });
    Handle(Note);
}

void ForgetSignals() {
    Handle(SIG_DFL);
    delete sNotifier;
    sNotifier = nullptr;
}

} // namespace server
