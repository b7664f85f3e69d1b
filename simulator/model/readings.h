#pragma once

#include <chrono>
#include <random>

#include <QByteArray>

#include "simulator/wire/measurement.h"
#include "simulator/wire/packedvalues.h"

namespace Simulator
{

/// The readings of a measurement: values that settle, with noise that differs for each seed.
class Readings
{
public:
    explicit Readings(quint32 seed);

    /// Begins a measurement and forgets the values of the one before.
    void Begin(Measurement measurement);

    /// Moves on to the readings of a later moment of the measurement.
    void Advance(std::chrono::milliseconds step);

    /// Returns the six values as a result carries them. They are zero before the first step.
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
