#include "protocol/dates.h"
#include "fuzz/parserbench.h"

using namespace Vesmar;

namespace
{

/// What is read from bytes is written in such a way that the same is read again. The bytes of a year have no
/// room above 2099.
void CheckDate(const QByteArray& bytes)
{
    const QDate date = DecodeDate(bytes);
    if (date.isValid() && date.year() < 2100) {
        Require(EncodeDate(date).size() == 3, "a date has three bytes");
        Require(DecodeDate(EncodeDate(date)) == date, "a date is written as it is read");
    }
}

void CheckTime(const QByteArray& bytes)
{
    const QTime time = DecodeTime(bytes);
    if (time.isValid()) {
        Require(EncodeTime(time).size() == 3, "a time has three bytes");
        Require(DecodeTime(QByteArray(3, '\0') + EncodeTime(time)) == time,
                "a time is written as it is read");
    }
}

void RequirePublished(const ThreadSafeProperty<QDateTime>& cell, const QByteArray& frame)
{
    const QDateTime published = cell.Get();
    Require(published.date() == DecodeDate(frame), "the date is published");
    Require(!published.isValid() || !DecodeTime(frame).isValid() || published.time() == DecodeTime(frame),
            "the time is published with a valid date");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray frame = Input(data, size).Rest();
    CheckDate(frame);
    CheckTime(frame);
    ParserBench current;
    if (current.Checked(current.parser.ParseCurrentDateTimeFrame(frame, current.context))) {
        Require(frame.size() == 8, "a date has eight bytes");
        RequirePublished(current.context.CurrentDateTime, frame);
    }
    ParserBench calibration;
    if (calibration.Checked(calibration.parser.ParseCalibrationDateTimeFrame(frame, calibration.context))) {
        Require(frame.size() == 8, "a date has eight bytes");
        RequirePublished(calibration.context.CalibrationDateTime, frame);
    }
    return 0;
}
