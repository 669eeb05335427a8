#pragma once

#include <unistd.h>

#include <utility>

// Owns a file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : fDescriptor(descriptor) {}
    ~Descriptor() { Reset(); }
    Descriptor(Descriptor&& other) noexcept : fDescriptor(std::exchange(other.fDescriptor, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other)
            Reset(std::exchange(other.fDescriptor, -1));
        return *this;
    }

    bool IsOpen() const { return fDescriptor >= 0; }
    int Get() const { return fDescriptor; }
    int Release() { return std::exchange(fDescriptor, -1); }
    void Reset(int descriptor = -1) {
        if (fDescriptor >= 0)
            close(fDescriptor);
        fDescriptor = descriptor;
    }

private:
    int fDescriptor = -1;
};
