#include "cli/frames/frame.h"

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

} // namespace

QString Hex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

unsigned ByteAt(const QByteArray& frame, int position)
{
    return position < frame.size() ? static_cast<unsigned char>(frame.at(position)) : 0U;
}

bool IsIntact(const QByteArray& frame)
{
    if (frame.size() <= ChecksumSize) {
        return false;
    }
    boost::crc_optimal<16, 0x1021, 0, 0, false, false> checksum;
    checksum.process_bytes(frame.constData(), static_cast<std::size_t>(frame.size() - ChecksumSize));
    const unsigned found =
        ByteAt(frame, frame.size() - ChecksumSize) | (ByteAt(frame, frame.size() - 1) << 8U);
    return checksum.checksum() == found;
}

AnswerKind KindOf(const QByteArray& answer)
{
    if (answer.isEmpty()) {
        return AnswerKind::None;
    }
    if (answer.startsWith("\x21\x43\x34")) {
        return AnswerKind::Refusal;
    }
    if (answer.startsWith("\x06\xC6\x60")) {
        return AnswerKind::Acknowledge;
    }
    return IsIntact(answer) ? AnswerKind::Data : AnswerKind::Damaged;
}

bool IsStatus(const QByteArray& answer)
{
    return answer.size() == StatusSize && KindOf(answer) == AnswerKind::Data;
}

InstrumentStatus StatusIn(const QByteArray& frame)
{
    const unsigned first = ByteAt(frame, 0);
    const unsigned second = ByteAt(frame, 1);
    const auto function = static_cast<MeasurementType>(first & 0x1FU);
    const unsigned processStatus = second & 0x0FU;
    InstrumentStatus status{static_cast<OperationMode>(first >> 5U & 0x03U),
                            function,
                            static_cast<Error>(second >> 4U),
                            (first & 0x80U) != 0,
                            std::nullopt,
                            std::nullopt};
    if (function == MeasurementType::Monitoring) {
        status.startTestResult = static_cast<StartTestResult>(processStatus);
    } else {
        status.functionState = static_cast<FunctionState>(processStatus);
    }
    return status;
}

Error InTest(Error error)
{
    return error == Error::NoErrors
               ? error
               : static_cast<Error>(static_cast<int>(Error::RCDDeviceError0) + static_cast<int>(error));
}

bool IsRCD(MeasurementType function)
{
    return function == MeasurementType::RCD || function == MeasurementType::RCDIEC;
}

} // namespace Cli
