#include <OS.h>

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include <unistd.h>

#include "kernel/Deadline.h"
#include "kernel/Threads.h"

namespace {

constexpr int32 kMaxCapacity = 4096;
constexpr size_t kMaxPorts = 4096;
constexpr size_t kMaxMessageSize = 256 * 1024;
// A shorter wait than this costs more than it is worth: it becomes a look.
constexpr bigtime_t kShortestWait = 100;

struct PortMessage {
    int32 code;
    std::string body;
};

struct Port {
    Port(int32 messages, const char* portName) : capacity(messages), name(portName) {}

    // Constant after construction
    const int32 capacity;
    const std::string name;

    std::mutex mutex;
    std::condition_variable changed;
    // Guarded by mutex
    std::deque<PortMessage> queue;
    int32 readCount = 0;
    bool isClosed = false;
    bool isDeleted = false;

    bool IsFull() const { return queue.size() >= static_cast<size_t>(capacity); }
    void Delete() {
        std::lock_guard guard(mutex);
        isClosed = true;
        isDeleted = true;
        queue.clear();
        changed.notify_all();
    }
};

// Never destroyed: threads may still use their ports while the process ends.
struct PortTable {
    std::mutex mutex;
    // Guarded by mutex
    std::map<port_id, std::shared_ptr<Port>> ports;
    port_id lastId = 0;
};

PortTable& table() {
    static PortTable& instance = *new PortTable;
    return instance;
}

std::shared_ptr<Port> portWithId(port_id id) {
    std::lock_guard guard(table().mutex);
    auto found = table().ports.find(id);
    return found == table().ports.end() ? nullptr : found->second;
}

bool isPoll(uint32 flags, bigtime_t timeout) {
    return (flags & B_RELATIVE_TIMEOUT) && timeout < kShortestWait;
}

// The port's mutex is held. B_OK once `isReady`, else why not.
template <class Ready>
status_t waitFor(Port& port, std::unique_lock<std::mutex>& guard, uint32 flags, bigtime_t timeout,
                 Ready isReady) {
    bool isDone = isReady();
    if (!isDone && !isPoll(flags, timeout)) {
        Deadline deadline = Deadline::Never();
        if (flags & B_RELATIVE_TIMEOUT)
            deadline = Deadline::After(timeout);
        else if (flags & B_ABSOLUTE_TIMEOUT)
            deadline = Deadline::After(timeout - system_time());
        isDone = deadline.Wait(port.changed, guard, isReady);
    }
    if (isDone)
        return B_OK;
    return (flags & B_RELATIVE_TIMEOUT) && timeout <= 0 ? B_WOULD_BLOCK : B_TIMED_OUT;
}

// B_OK with a message at the head of the queue.
status_t waitForMessage(Port& port, std::unique_lock<std::mutex>& guard, uint32 flags,
                        bigtime_t timeout) {
    auto isReady = [&] { return !port.queue.empty() || port.isClosed; };
    status_t status = waitFor(port, guard, flags, timeout, isReady);
    return status == B_OK && port.queue.empty() ? B_BAD_PORT_ID : status;
}

} // namespace

port_id create_port(int32 capacity, const char* name) {
    if (capacity < 1 || capacity > kMaxCapacity)
        return B_BAD_VALUE;
    PortTable& all = table();
    std::lock_guard guard(all.mutex);
    if (all.ports.size() >= kMaxPorts)
        return B_NO_MORE_PORTS;
    all.ports[++all.lastId] = std::make_shared<Port>(capacity, name ? name : "unnamed port");
    return all.lastId;
}

port_id find_port(const char* name) {
    if (!name)
        return B_BAD_VALUE;
    std::lock_guard guard(table().mutex);
    for (const auto& [id, port] : table().ports) {
        if (port->name == name)
            return id;
    }
    return B_NAME_NOT_FOUND;
}

status_t close_port(port_id id) {
    std::shared_ptr<Port> port = portWithId(id);
    if (!port)
        return B_BAD_PORT_ID;
    std::lock_guard guard(port->mutex);
    port->isClosed = true;
    port->changed.notify_all();
    return B_OK;
}

status_t delete_port(port_id id) {
    std::shared_ptr<Port> port;
    {
        std::lock_guard guard(table().mutex);
        auto found = table().ports.find(id);
        if (found == table().ports.end())
            return B_BAD_PORT_ID;
        port = std::move(found->second);
        table().ports.erase(found);
    }
    port->Delete();
    return B_OK;
}

void DeleteAllPorts() {
    std::map<port_id, std::shared_ptr<Port>> ports;
    {
        std::lock_guard guard(table().mutex);
        ports.swap(table().ports);
    }
    for (const auto& [id, port] : ports)
        port->Delete();
}

status_t get_port_info(port_id id, port_info* info) {
    std::shared_ptr<Port> port = portWithId(id);
    if (!info)
        return B_BAD_VALUE;
    if (!port)
        return B_BAD_PORT_ID;
    std::lock_guard guard(port->mutex);
    info->port = id;
    info->team = static_cast<team_id>(getpid());
    snprintf(info->name, sizeof(info->name), "%s", port->name.c_str());
    info->capacity = port->capacity;
    info->queue_count = static_cast<int32>(port->queue.size());
    info->total_count = port->readCount;
    return B_OK;
}

ssize_t port_count(port_id id) {
    port_info info;
    status_t status = get_port_info(id, &info);
    return status == B_OK ? info.queue_count : status;
}

status_t write_port(port_id id, int32 code, const void* buffer, size_t bufferSize) {
    return write_port_etc(id, code, buffer, bufferSize, 0, 0);
}

status_t write_port_etc(port_id id, int32 code, const void* buffer, size_t bufferSize, uint32 flags,
                        bigtime_t timeout) {
    if (bufferSize > kMaxMessageSize || (!buffer && bufferSize > 0))
        return B_BAD_VALUE;
    std::shared_ptr<Port> port = portWithId(id);
    if (!port)
        return B_BAD_PORT_ID;
    std::unique_lock guard(port->mutex);
    auto isReady = [&] { return !port->IsFull() || port->isClosed; };
    status_t status = waitFor(*port, guard, flags, timeout, isReady);
    if (port->isClosed)
        return B_BAD_PORT_ID;
    if (status != B_OK)
        return status;
    std::string body;
    if (bufferSize > 0)
        body.assign(static_cast<const char*>(buffer), bufferSize);
    port->queue.push_back({code, std::move(body)});
    port->changed.notify_all();
    return B_OK;
}

ssize_t read_port(port_id id, int32* code, void* buffer, size_t bufferSize) {
    return read_port_etc(id, code, buffer, bufferSize, 0, 0);
}

ssize_t read_port_etc(port_id id, int32* code, void* buffer, size_t bufferSize, uint32 flags,
                      bigtime_t timeout) {
    if (!buffer && bufferSize > 0)
        return B_BAD_VALUE;
    std::shared_ptr<Port> port = portWithId(id);
    if (!port)
        return B_BAD_PORT_ID;
    std::unique_lock guard(port->mutex);
    status_t status = waitForMessage(*port, guard, flags, timeout);
    if (status != B_OK)
        return status;
    PortMessage message = std::move(port->queue.front());
    port->queue.pop_front();
    port->readCount++;
    port->changed.notify_all();
    if (code)
        *code = message.code;
    return static_cast<ssize_t>(message.body.copy(static_cast<char*>(buffer), bufferSize));
}

ssize_t port_buffer_size(port_id id) {
    return port_buffer_size_etc(id, 0, 0);
}

ssize_t port_buffer_size_etc(port_id id, uint32 flags, bigtime_t timeout) {
    std::shared_ptr<Port> port = portWithId(id);
    if (!port)
        return B_BAD_PORT_ID;
    std::unique_lock guard(port->mutex);
    status_t status = waitForMessage(*port, guard, flags, timeout);
    return status == B_OK ? static_cast<ssize_t>(port->queue.front().body.size()) : status;
}
