#include "simulator/wire/statusword.h"

namespace Simulator
{

namespace
{

// The first byte holds the new-measurement bit, the mode and the function, the second one the error and the
// state of the function or the result of the start test.
constexpr int NewMeasurementBit = 0x80;
constexpr int ModeShift = 5;
constexpr int ErrorShift = 4;

} // namespace

QByteArray StatusWord::Data() const
{
    const int process = function == NoFunction ? startTestResult : functionState;
    QByteArray data;
    data.append(static_cast<char>((newMeasurement ? NewMeasurementBit : 0) | mode << ModeShift | function));
    data.append(static_cast<char>(error << ErrorShift | process));
    return data;
}

} // namespace Simulator
