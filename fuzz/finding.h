#pragma once

#include <cstddef>
#include <cstdint>

#include <QByteArray>

/// What libFuzzer and replay.cpp call with one input after the other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the program when something that must hold does not: that is a finding.
void Require(bool holds, const char* what);

/// The bytes of an input, one value after the other. Behind its end there are zeros.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size)
        : _bytes(reinterpret_cast<const char*>(data), static_cast<int>(size))
    {
    }

    bool IsOver() const { return _position >= _bytes.size(); }

    int Byte() { return IsOver() ? 0 : static_cast<unsigned char>(_bytes.at(_position++)); }

    /// Low byte first.
    std::int32_t Number();

    /// At most so many bytes: those that are left.
    QByteArray Bytes(int count);
    QByteArray Rest() { return Bytes(_bytes.size()); }

private:
    QByteArray _bytes;
    int _position = 0;
};
