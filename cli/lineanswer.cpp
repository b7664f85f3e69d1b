#include "cli/lineanswer.h"

#include <boost/crc.hpp>

namespace Cli
{

namespace
{

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::StartTestResult;

constexpr int StatusSize = 4;
constexpr int ChecksumSize = 2;

bool HasChecksum(const QByteArray& frame)
{
    const int dataSize = frame.size() - ChecksumSize;
    boost::crc_optimal<16, 0x1021, 0, 0, false, false> checksum;
    checksum.process_bytes(frame.constData(), static_cast<std::size_t>(dataSize));
    const int low = static_cast<quint8>(frame.at(dataSize));
    const int high = static_cast<quint8>(frame.at(dataSize + 1));
    return checksum.checksum() == (high << 8 | low);
}

/// While a residual-current device is tested, the numbers are the test's.
Error ErrorIn(int number, MeasurementType function)
{
    const bool isRcd = function == MeasurementType::RCD || function == MeasurementType::RCDIEC;
    const bool isError = number != static_cast<int>(Error::NoErrors);
    return static_cast<Error>(isRcd && isError ? static_cast<int>(Error::RCDDeviceError0) + number : number);
}

} // namespace

QByteArray StatusRequest()
{
    return QByteArrayLiteral("\x73\xF4\x4E");
}

LineAnswer Classify(const QByteArray& answer)
{
    if (answer.isEmpty()) {
        return LineAnswer::Silent;
    }
    if (answer.startsWith(QByteArrayLiteral("\x21\x43\x34"))) {
        return LineAnswer::Refused;
    }
    return answer.size() == StatusSize && HasChecksum(answer) ? LineAnswer::Proper : LineAnswer::Damaged;
}

LineStatus StatusIn(const QByteArray& answer)
{
    const unsigned int first = static_cast<quint8>(answer.at(0));
    const unsigned int second = static_cast<quint8>(answer.at(1));
    const auto function = static_cast<MeasurementType>(first & 0x1FU);
    const int processStatus = static_cast<int>(second & 0x0FU);
    LineStatus status{static_cast<OperationMode>(first >> 5U & 0x3U), function,
                      ErrorIn(static_cast<int>(second >> 4U), function), std::nullopt, std::nullopt};
    if (function == MeasurementType::Monitoring) {
        status.startTestResult = static_cast<StartTestResult>(processStatus);
    } else {
        status.functionState = static_cast<FunctionState>(processStatus);
    }
    return status;
}

} // namespace Cli
