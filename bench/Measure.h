#pragma once

#include <functional>
#include <string>
#include <sys/types.h>

// What is measured: processor time (of a thread, of a process) and memory. Times are in
// milliseconds, sizes in bytes.

double ThreadTime();
double ProcessTime(pid_t process = 0); // 0 is this one
// What the process has allocated and not given back.
size_t UsedHeap();
// The proportional set size of a process: 0 is this one.
size_t SetSize(pid_t process = 0);
// What no other process shares.
size_t PrivateSize(pid_t process);

// Runs a work repeatedly and gives its best time. The work measures itself, so that it may prepare
// something first.
double BestOf(int rounds, const char* name, const std::function<double()>& work);
