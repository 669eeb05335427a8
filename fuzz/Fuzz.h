#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

// What the targets share.

// What the engine calls with one input after another.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size);

inline std::string TextOf(const unsigned char* data, size_t size) {
    return std::string(reinterpret_cast<const char*>(data), size);
}

// Standard error as it was at the start: a run shuts out what the code under test writes there.
inline const int kErrorOutput = dup(STDERR_FILENO);

// A claim about a result. One that does not hold ends the program: a finding.
inline void Claim(bool holds, const char* claim) {
    if (holds)
        return;
    dprintf(kErrorOutput, "not true: %s\n", claim);
    abort();
}
