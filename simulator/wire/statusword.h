#pragma once

#include <QByteArray>

namespace Simulator
{

/// The modes of the instrument: a change of mode asks for them, and the status reports them.
namespace Mode
{

inline constexpr int Normal = 0;
inline constexpr int Calibration = 1;
inline constexpr int Service = 2;
inline constexpr int Update = 3;
inline constexpr int Highest = Update;

} // namespace Mode

/// How far a measurement function has come, as the status reports it.
enum class FunctionState : int {
    Idle = 0,
    Preparing = 1,
    Completed = 2,
    PrepareError = 3,
    Prepared = 4,
    Starting = 5,
    StartError = 6,
    Running = 7,
    Stopping = 8,
    Terminated = 9,
};

/// What the instrument reports about itself in its two status bytes.
struct StatusWord {
    static constexpr int NoFunction = 0;
    static constexpr int HighestFunction = 31;
    static constexpr int HighestError = 15;
    static constexpr int NoError = 15;
    static constexpr int UsualStartTestResult = 14;

    bool newMeasurement = false;
    int mode = Mode::Normal;
    int function = NoFunction;
    int error = NoError;
    int functionState = 0;                      ///< reported while a function is active
    int startTestResult = UsualStartTestResult; ///< reported while no function is active

    QByteArray Data() const;
};

} // namespace Simulator
