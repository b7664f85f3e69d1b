#include <cstring>

#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>

#include "context/replaceowned.h"
#include "fuzz/parserbench.h"
#include "protocol/readings.h"

using namespace Vesmar;

namespace
{

/// Compares bits: a reading may be no number.
void RequireReading(float value, const QByteArray& frame, int position)
{
    const QByteArray bytes = frame.mid(position, 4).leftJustified(4, '\0');
    Require(std::memcmp(&value, bytes.constData(), sizeof value) == 0, "a reading is its four bytes");
}

void RequireFixedPoint(float value, const QByteArray& frame, int position)
{
    const QByteArray bytes = frame.mid(position, 2).leftJustified(2, '\0');
    const int number =
        static_cast<unsigned char>(bytes.at(0)) + static_cast<unsigned char>(bytes.at(1)) * 256;
    Require(number == 0xEEEE ? value == MeasurementResults::NoValue
                             : qRound(static_cast<double>(value) * 10000) == number,
            "a reading of an RCD test counts ten-thousandths");
}

void CheckSixReadings(MeasurementType function, const QByteArray& frame)
{
    ParserBench bench;
    const MeasurementResults* const before = bench.context.TestResults.Get();
    const bool isRead = bench.Checked(bench.parser.ParseMeasurementResults(frame, bench.context, function));
    Require(isRead == (frame.size() == 26), "six readings have 26 bytes");
    const MeasurementResults* const results = bench.context.TestResults.Get();
    Require((results != before) == (isRead && FindReadingsKind(function) != nullptr),
            "a function that has results publishes them");
    for (int i = 0; results != before && i < 6; ++i) {
        RequireReading(results->_values.at(static_cast<std::size_t>(i)), frame, i * 4);
    }
}

void CheckUbRe(const QByteArray& frame)
{
    ParserBench bench;
    ReplaceOwned<MeasurementSettings>(bench.context.TestSettings, new RCDSettings);
    Require(bench.parser.ParseUbReMeasurementResponse(frame, bench.context), "Re needs the settings alone");
    RequireReading(dynamic_cast<RCDResults&>(*bench.context.TestResults.Get())._re, frame, 0);
}

void CheckIaTa(MeasurementType function, const QByteArray& frame)
{
    ParserBench bench;
    bench.context.CurrentMeasurementType.Set(function);
    const bool isOfTest = function == MeasurementType::RCD || function == MeasurementType::RCDIEC;
    Require(bench.parser.ParseIaTaMeasurementResponse(frame, bench.context) == isOfTest,
            "Ia and Ta belong to an RCD test");
    if (isOfTest) {
        RequireFixedPoint(bench.context.TestResults.Get()->_values.at(0), frame, 4);
        RequireFixedPoint(bench.context.TestResults.Get()->_values.at(1), frame, 6);
    }
}

} // namespace

/// The first byte is the function, the others are the frame.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const auto function = static_cast<MeasurementType>(input.Byte());
    const QByteArray frame = input.Rest();
    CheckSixReadings(function, frame);
    CheckUbRe(frame);
    CheckIaTa(function, frame);
    return 0;
}
