#pragma once

#include "Child.h"

#include <string>

// The gate's own program, on a port of its own, with the user's settings from a file. What it keeps
// goes beside that file.
class Gate {
public:
    // Waits until it takes connections.
    Gate(const std::string& program, const std::string& settings);

    const std::string& Port() const { return fPort; }
    Child& Process() { return fChild; }
    // The processor time until then, in milliseconds.
    double TimeToStart() const { return fTimeToStart; }

private:
    const std::string fPort;
    Child fChild;
    double fTimeToStart = 0;
};
