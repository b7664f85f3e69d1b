#pragma once

#include <unistd.h>

#include <utility>

namespace Simulator
{

/// Owns a file descriptor.
class Descriptor
{
public:
    explicit Descriptor(int descriptor) : _descriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : _descriptor(std::exchange(other._descriptor, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    ~Descriptor()
    {
        if (_descriptor >= 0) {
            ::close(_descriptor);
        }
    }

    int Get() const { return _descriptor; }

private:
    int _descriptor;
};

} // namespace Simulator
