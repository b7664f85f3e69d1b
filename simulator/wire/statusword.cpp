#include "simulator/wire/statusword.h"

namespace Simulator
{

QByteArray StatusWord::Data() const
{
    const int process = function == NoFunction ? startTestResult : functionState;
    QByteArray data;
    data.append(static_cast<char>((newMeasurement ? 0x80 : 0x00) | mode << 5 | function));
    data.append(static_cast<char>(error << 4 | process));
    return data;
}

} // namespace Simulator
