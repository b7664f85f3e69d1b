#pragma once

#include <QByteArray>

namespace Simulator
{

/// What the instrument reports about itself in its two status bytes.
struct StatusWord {
    static constexpr int NoFunction = 0;
    static constexpr int NoError = 15;
    static constexpr int UsualStartTestResult = 14;

    bool newMeasurement = false;
    int mode = 0;
    int function = NoFunction;
    int error = NoError;
    int functionState = 0;                      ///< reported while a function is active
    int startTestResult = UsualStartTestResult; ///< reported while none is

    QByteArray Data() const;
};

} // namespace Simulator
