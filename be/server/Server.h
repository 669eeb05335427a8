#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <functional>
#include <string>

// The window server: Qt on the process's main thread. It owns the native windows, input, menus, the
// clipboard, cursors and screens. It never takes a looper's lock and never waits for a looper;
// others may wait for it.
namespace server {

// Main thread. Connects to the desktop as a program of this name; false with a line on standard
// error if there is none. Once a process.
bool Start(const std::string& programName);
// Main thread: handles events and what is posted until Stop.
void Serve();
// Any thread. What is posted afterwards is dropped and nobody who calls waits any more.
void Stop();
// Main thread, after Serve: windows and the connection go.
void Disconnect();

bool IsServerThread();

// Any thread; runs in order on the server's thread. Dropped when the server is not there.
void Post(std::function<void()> work);
// The same, and waits until it is done. False if the server is not there.
bool Call(const std::function<void()>& work);
// On the server's thread, after at least that time.
void PostLater(bigtime_t microseconds, std::function<void()> work);

// Any thread: the window that had the keyboard last, or what blocks it, comes to the front.
void BringForward();

// Called on the server's thread when the desktop or a signal asks the program to end.
void SetQuitHandler(std::function<void()> handler);
// Called on the server's thread when the program becomes the active one, or another does.
void SetActivationHandler(std::function<void(bool)> handler);

} // namespace server
