#pragma once

#include <unistd.h>

/// While it lives, what is written to the one descriptor goes to the other.
class Redirection
{
public:
    Redirection(int descriptor, int target) : _descriptor(descriptor), _own(::dup(descriptor))
    {
        ::dup2(target, descriptor);
    }

    ~Redirection()
    {
        ::dup2(_own, _descriptor);
        ::close(_own);
    }

    Redirection(const Redirection&) = delete;
    Redirection(Redirection&&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    Redirection& operator=(Redirection&&) = delete;

private:
    int _descriptor;
    int _own;
};
