#pragma once

#include <chrono>
#include <random>

#include <QByteArray>

#include "simulator/wire/measurement.h"
#include "simulator/wire/packedvalues.h"

namespace Simulator
{

/// What a measurement reads: values that settle, with noise, each seed its own way.
class Readings
{
public:
    explicit Readings(quint32 seed);

    /// Forgets the values of the measurement before.
    void Begin(Measurement measurement);

    /// Moves on to the readings that come so much later in the measurement.
    void Advance(std::chrono::milliseconds step);

    /// The six values as a result carries them; zeros before the first step.
    QByteArray Data() const;

private:
    Values NextValues(float seconds);
    Values NextPower(float hours);
    Values NextHighVoltage();

    float Near(float value);
    float Rising(float value);
    float Falling(float value);
    float Elapsed() const;

    std::mt19937 _generator;
    Measurement _measurement = Measurement::Rln;
    std::chrono::milliseconds _elapsed{0};
    Values _values{};
};

} // namespace Simulator
