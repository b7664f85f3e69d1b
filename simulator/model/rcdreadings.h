#pragma once

#include <random>

#include <QByteArray>

namespace Simulator
{

/// What RCD tests read, with noise, each seed its own way. Each call is a reading of its own: the 24 bytes of
/// a result, which begin with the resistance of the earth whatever was asked for.
class RcdReadings
{
public:
    explicit RcdReadings(quint32 seed);

    /// The resistance of the earth.
    QByteArray UbRe();

    /// The current and the time of tripping; the time may be missing.
    QByteArray IaTa(bool hasTa);

private:
    float Near(float value);

    std::mt19937 _generator;
};

} // namespace Simulator
