#pragma once

#include <memory>

#include <QString>
#include <QTest>

#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>

#include "states/state.h"
#include "unit/states/measurementengine.h"
#include "unit/states/pauselog.h"

/// What an instrument says about an RCD test.
namespace RCDWire
{

/// Of function 10, RCD.
inline QByteArray Status(int functionState, bool isNewMeasurement = false, int error = Wire::NoError)
{
    return MeasurementEngine::Status(Vesmar::MeasurementType::RCD, functionState, isNewMeasurement, error);
}

/// Of function 11, RCD IEC.
inline QByteArray IECStatus(int functionState, bool isNewMeasurement = false, int error = Wire::NoError)
{
    return MeasurementEngine::Status(Vesmar::MeasurementType::RCDIEC, functionState, isNewMeasurement, error);
}

/// Without a function.
inline QByteArray StartTest(int result, bool isNewMeasurement, int error = Wire::NoError)
{
    return MeasurementEngine::Status(Vesmar::MeasurementType::Monitoring, result, isNewMeasurement, error);
}

/// What is wrong with the object under test, in a frame as long as the one with readings.
inline QByteArray ObjectCheck(int code)
{
    constexpr int FurtherBytes = 23;
    return WithChecksum(QByteArray(1, static_cast<char>(code)) + QByteArray(FurtherBytes, '\0'));
}

/// Re 0.5, Ia 1.0, Ta 2.5.
inline const QByteArray Result = Wire::Bytes("0000003f1027a861000000000000000000000000000000003dc3");

inline const QByteArray PrepareUbRe = Wire::Bytes("500a000000ffffffff9404");
inline const QByteArray PrepareIECIaTa = Wire::Bytes("500b00004000000000e0cb");

} // namespace RCDWire

inline Vesmar::RCDSettings* RCDSettingsOfMode(int mode)
{
    auto* settings = new Vesmar::RCDSettings;
    settings->SetMode(static_cast<Vesmar::RCDSettings::RCDMode>(mode));
    return settings;
}

inline Vesmar::RCDIECSettings* RCDIECSettingsOfMode(int mode)
{
    auto* settings = new Vesmar::RCDIECSettings;
    settings->SetMode(static_cast<Vesmar::RCDIECSettings::RCDIECMode>(mode));
    return settings;
}

/// Settings of a function; the mode is that of an RCD test and means nothing for other functions.
inline Vesmar::MeasurementSettings* SettingsOf(int function, int mode)
{
    const auto type = static_cast<Vesmar::MeasurementType>(function);
    switch (type) {
    case Vesmar::MeasurementType::RCD:
        return RCDSettingsOfMode(mode);
    case Vesmar::MeasurementType::RCDIEC:
        return RCDIECSettingsOfMode(mode);
    default:
        return new Vesmar::MeasurementSettings(type, nullptr);
    }
}

template <typename RCDState>
std::unique_ptr<Vesmar::State> Create(Vesmar::StateMachineContext* context)
{
    return std::make_unique<RCDState>(context, nullptr);
}

/// A state that has been entered, and the instrument that it talks to. Each step is recorded for itself; its
/// pauses are not waited for.
class RCDRun : public MeasurementEngine
{
public:
    using Creator = std::unique_ptr<Vesmar::State> (*)(Vesmar::StateMachineContext* context);

    RCDRun(Creator create, Vesmar::MeasurementSettings* settings) : state(create(&context))
    {
        Settings(settings);
        state->OnEntry();
    }

    /// Runs one step and returns the changes of cells that it makes.
    QString Step()
    {
        Restart();
        const PauseLog pauses;
        state->OnRunning();
        _pauses = pauses.Text();
        return Outcome();
    }

    QString StepIn(int phase)
    {
        SetPhase(phase);
        return Step();
    }

    void SetPhase(int phase) { context.MeasurementStatus.Set(static_cast<Vesmar::MeasurementState>(phase)); }

    void SetError(int error) { context.ErrorCode.Set(static_cast<Vesmar::Error>(error)); }

    int Phase() const { return static_cast<int>(context.MeasurementStatus.Get()); }

    /// The pauses of the last step, in milliseconds.
    QString Pauses() const { return _pauses; }

    const std::unique_ptr<Vesmar::State> state;

private:
    QString _pauses;
};

/// The lines of the log in which the state tells what it does: not those of the exchanges and their answers.
inline QStringList LinesOfTheState(const LogCapture& log)
{
    QStringList lines;
    for (const QString& text : log.Texts()) {
        if (text.startsWith(QLatin1String("<<<")) || text.startsWith(QLatin1String("\033[0;3"))) {
            lines.append(text);
        }
    }
    return lines;
}
