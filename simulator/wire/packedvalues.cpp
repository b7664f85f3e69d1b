#include "simulator/wire/packedvalues.h"

#include <QtEndian>

namespace Simulator
{

QByteArray PackValues(const Values& values)
{
    QByteArray data(static_cast<int>(sizeof(values)), '\0');
    qToLittleEndian<float>(values.data(), static_cast<qsizetype>(values.size()), data.data());
    return data;
}

} // namespace Simulator
