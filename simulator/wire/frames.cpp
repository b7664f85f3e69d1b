#include "simulator/wire/frames.h"

#include <boost/crc.hpp>

namespace Simulator
{

namespace
{

using Checksum = boost::crc_optimal<16, 0x1021, 0, 0, false, false>;

constexpr int CodeSize = 1;
constexpr int ChecksumSize = 2;
constexpr int DateSize = 6;
constexpr int PreparePayloadSize = 8;
constexpr int ConfirmationSize = 2;
constexpr int ModeSize = 1;

/// Returns how many bytes stand between code and checksum, or -1 for an unknown code.
int RequestDataSize(char code)
{
    switch (static_cast<RequestCode>(code)) {
    case RequestCode::ReadStatus:
    case RequestCode::ReadVersion:
    case RequestCode::StartMeasurement:
    case RequestCode::StopMeasurement:
    case RequestCode::ReadMeasurement:
    case RequestCode::ReadCurrentDate:
    case RequestCode::ReadCalibrationDate:
    case RequestCode::InitializeUpdate:
        return 0;
    case RequestCode::ProgramSector:
        return SectorSize;
    case RequestCode::FinishUpdate:
        return ConfirmationSize;
    case RequestCode::ChangeMode:
        return ModeSize;
    case RequestCode::PrepareMeasurement:
        return PreparePayloadSize;
    case RequestCode::SetCurrentDate:
    case RequestCode::SetCalibrationDate:
        return DateSize;
    }
    return -1;
}

} // namespace

QByteArray Sealed(const QByteArray& data)
{
    Checksum checksum;
    checksum.process_bytes(data.constData(), static_cast<std::size_t>(data.size()));
    QByteArray frame = data;
    frame.append(static_cast<char>(checksum.checksum() & 0xFF));
    frame.append(static_cast<char>(checksum.checksum() >> 8));
    return frame;
}

bool IsIntact(const QByteArray& frame)
{
    return frame.size() > ChecksumSize && Sealed(DataOf(frame)) == frame;
}

QByteArray DataOf(const QByteArray& frame)
{
    return frame.chopped(ChecksumSize);
}

QByteArray Acknowledge()
{
    return Sealed(QByteArrayLiteral("\x06"));
}

QByteArray Refusal()
{
    return Sealed(QByteArrayLiteral("!"));
}

int RequestSize(char code)
{
    const int dataSize = RequestDataSize(code);
    return dataSize < 0 ? 0 : CodeSize + dataSize + ChecksumSize;
}

} // namespace Simulator
