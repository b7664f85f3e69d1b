#include "integration/frames.h"

#include <QHash>

namespace Frames
{

QByteArray Answer(const QByteArray& request, const QByteArray& status)
{
    const QHash<QByteArray, QByteArray> data{
        {ReadStatus, status},
        {ReadVersion, Version},
        {ReadCurrentDate, CurrentDate},
        {ReadCalibrationDate, CalibrationDate},
    };
    return QByteArray::fromHex(data.value(request.toHex(), Acknowledge));
}

} // namespace Frames
