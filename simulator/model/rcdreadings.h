#pragma once

#include <random>

#include <QByteArray>

namespace Simulator
{

/// The results of RCD tests, with noise that differs for each seed. Each call returns the 24 bytes of a new
/// result, which begins with the earth resistance, whatever was asked for.
class RcdReadings
{
public:
    explicit RcdReadings(quint32 seed);

    /// Returns a result with the earth resistance alone.
    QByteArray UbRe();

    /// Returns a result with tripping current and, unless it is missing, tripping time.
    QByteArray IaTa(bool hasTa);

private:
    float Near(float value);

    std::mt19937 _generator;
};

} // namespace Simulator
