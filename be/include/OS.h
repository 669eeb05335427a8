#pragma once

#include <SupportDefs.h>

#define B_OS_NAME_LENGTH 32

// How a time-out is meant. Without one of the two the call waits for ever.
enum {
    B_CAN_INTERRUPT = 0x01,
    B_DO_NOT_RESCHEDULE = 0x02,
    B_RELATIVE_TIMEOUT = 0x08,
    B_TIMEOUT = 0x08,
    B_ABSOLUTE_TIMEOUT = 0x10
};

// Time, in microseconds; system_time() counts from an arbitrary moment and never goes back.
bigtime_t system_time();
uint32 real_time_clock();          // seconds since the epoch
bigtime_t real_time_clock_usecs(); // microseconds since the epoch
#define B_SYSTEM_TIMEBASE 0
status_t snooze(bigtime_t microseconds);
status_t snooze_until(bigtime_t time, int timeBase);

// Threads
typedef int32 thread_id;
typedef int32 team_id;
typedef int32 (*thread_func)(void*);
typedef int32 (*thread_entry)(void*);

enum {
    B_IDLE_PRIORITY = 0,
    B_LOWEST_ACTIVE_PRIORITY = 1,
    B_LOW_PRIORITY = 5,
    B_NORMAL_PRIORITY = 10,
    B_DISPLAY_PRIORITY = 15,
    B_URGENT_DISPLAY_PRIORITY = 20,
    B_REAL_TIME_DISPLAY_PRIORITY = 100,
    B_URGENT_PRIORITY = 110,
    B_REAL_TIME_PRIORITY = 120
};

// A new thread stands still until resume_thread or wait_for_thread; the id, or B_NO_MORE_THREADS.
// The name is cut to B_OS_NAME_LENGTH - 1 bytes.
thread_id spawn_thread(thread_func function, const char* name, int32 priority, void* data);
status_t resume_thread(thread_id thread); // B_BAD_THREAD_STATE when it runs already
// Frees a thread that stands still yet. One that has been resumed can't be ended from outside here:
// B_NOT_ALLOWED.
status_t kill_thread(thread_id thread);
// Returns when the thread has ended; B_BAD_THREAD_ID for an unknown one. The last few that ended
// are remembered.
status_t wait_for_thread(thread_id thread, status_t* exitValue);
// Ends the calling thread; its exit handlers run. Locals of its functions are destroyed on the way.
[[noreturn]] void exit_thread(status_t exitValue);
// The handlers of the calling thread run as it ends, the latest first.
status_t on_exit_thread(void (*callback)(void*), void* data);
// The first thread of that name; null asks for the calling thread.
thread_id find_thread(const char* name);
status_t rename_thread(thread_id thread, const char* newName);
status_t set_thread_priority(thread_id thread, int32 newPriority); // the old priority, or an error

// Ports: queues of messages of a code and some bytes. Anybody may write and read.
typedef int32 port_id;

struct port_info {
    port_id port;
    team_id team;
    char name[B_OS_NAME_LENGTH];
    int32 capacity;    // messages it holds at most
    int32 queue_count; // messages it holds now
    int32 total_count; // messages read so far
};

// The capacity is 1 to 4096 messages, a message up to 256 KB; B_BAD_VALUE beyond.
port_id create_port(int32 capacity, const char* name);
port_id find_port(const char* name); // B_NAME_NOT_FOUND
// Nobody can write any more; what is queued can still be read, then readers get B_BAD_PORT_ID.
status_t close_port(port_id port);
// Whoever waits at the port returns with B_BAD_PORT_ID.
status_t delete_port(port_id port);
status_t get_port_info(port_id port, port_info* info);
ssize_t port_count(port_id port);

// Both wait while the port is full or empty, the …_etc calls up to the time-out: B_TIMED_OUT, or
// B_WOULD_BLOCK for a time-out of 0. A relative time-out under 100 microseconds polls and returns
// at once.
status_t write_port(port_id port, int32 code, const void* buffer, size_t bufferSize);
status_t write_port_etc(port_id port, int32 code, const void* buffer, size_t bufferSize,
                        uint32 flags, bigtime_t timeout);
// The number of bytes put into the buffer; what does not fit is lost.
ssize_t read_port(port_id port, int32* code, void* buffer, size_t bufferSize);
ssize_t read_port_etc(port_id port, int32* code, void* buffer, size_t bufferSize, uint32 flags,
                      bigtime_t timeout);
ssize_t port_buffer_size(port_id port); // of the next message
ssize_t port_buffer_size_etc(port_id port, uint32 flags, bigtime_t timeout);
