#include "fuzz/parserbench.h"

namespace
{

void RequireField(const QString& text, const QByteArray& field)
{
    const int end = field.indexOf('\0');
    Require(text.toLatin1() == (end < 0 ? field : field.left(end)), "a text ends at its size or at a zero");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ParserBench bench;
    const QByteArray frame = Input(data, size).Rest();
    const bool isPublished = bench.Checked(bench.parser.ParseVersionFrame(frame, bench.context));
    Require(isPublished == (frame.size() == 25), "a version has 25 bytes");
    if (!isPublished) {
        return 0;
    }
    const Vesmar::TesterInformation& information = *bench.context.DeviceInformation.Get();
    RequireField(information.DeviceName, frame.mid(0, 3));
    RequireField(information.DeviceCode, frame.mid(3, 3));
    RequireField(information.SerialNumber, frame.mid(6, 6));
    RequireField(information.VersionCode, frame.mid(15, 2));
    RequireField(information.RevisionCode, frame.mid(17, 2));
    bool isNumber = false;
    Require(information.BuildNumber.toInt(&isNumber) <= 255 * 1111 && isNumber, "the build is a number");
    Require(information.Version.contains(QLatin1Char('.')), "the version has a point");
    return 0;
}
