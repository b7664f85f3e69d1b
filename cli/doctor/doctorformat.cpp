#include "cli/doctor/doctorformat.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

#include "cli/doctor/doctorverdict.h"
#include "cli/words/advice.h"
#include "cli/words/format.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

using Vesmar::Error;

constexpr mode_t ReadBit = 4;
constexpr mode_t WriteBit = 2;
constexpr unsigned int OwnerShift = 6;
constexpr unsigned int GroupShift = 3;
constexpr mode_t PermissionBits = 07777;

QString Kind(const DeviceFindings& device)
{
    if (!device.IsCharacterDevice()) {
        return Text::tr("no character device");
    }
    if (device.openError != 0) {
        return Text::tr("a character device that cannot be opened: %1")
            .arg(qt_error_string(device.openError));
    }
    return device.isTerminal ? Text::tr("a terminal") : Text::tr("a character device, but no terminal");
}

QString Rights(mode_t bits)
{
    const bool isReadable = (bits & ReadBit) != 0;
    if ((bits & WriteBit) != 0) {
        return isReadable ? Text::tr("read and write") : Text::tr("write");
    }
    return isReadable ? Text::tr("read") : Text::tr("nothing");
}

/// What this user may do.
QString OwnRights(const DeviceFindings& device)
{
    if (device.isReadable && device.isWritable) {
        return Text::tr("may read and write");
    }
    if (!device.isReadable && !device.isWritable) {
        return Text::tr("may neither read nor write");
    }
    return device.isReadable ? Text::tr("may only read") : Text::tr("may only write");
}

/// The time to a tenth of a millisecond.
double Rounded(double milliseconds)
{
    constexpr double Tenths = 10;
    return std::round(milliseconds * Tenths) / Tenths;
}

QString Milliseconds(double time)
{
    return QString::number(Rounded(time), 'f', 1) + QStringLiteral(" ms");
}

bool IsFilled(const TimeBucket& bucket)
{
    return bucket.count > 0;
}

QByteArray BarLine(const TimeBucket& bucket)
{
    constexpr int NumberWidth = 4;
    constexpr int LabelWidth = 13;
    const QString limit =
        bucket.below ? Text::tr("below %1 ms").arg(*bucket.below, NumberWidth) : Text::tr("later");
    const QString count = QString::number(bucket.count).rightJustified(NumberWidth);
    const QString bar =
        bucket.count > 0 ? QStringLiteral("  ") + QString(bucket.count, QLatin1Char('#')) : QString();
    return (QStringLiteral("  ") + limit.leftJustified(LabelWidth) + count + bar + QLatin1Char('\n'))
        .toUtf8();
}

/// A mark for each answer, from the first bucket with an answer to the last one.
QByteArray HistogramText(const QVector<TimeBucket>& histogram)
{
    using Bucket = QVector<TimeBucket>::const_iterator;
    const Bucket first = std::find_if(histogram.cbegin(), histogram.cend(), IsFilled);
    const Bucket behindLast = std::find_if(histogram.crbegin(), histogram.crend(), IsFilled).base();
    QByteArray text;
    for (Bucket bucket = first; bucket < behindLast; ++bucket) {
        text += BarLine(*bucket);
    }
    return text;
}

QJsonArray HistogramJson(const QVector<TimeBucket>& histogram)
{
    QJsonArray buckets;
    for (const TimeBucket& bucket : histogram) {
        buckets.append(
            QJsonObject{{QStringLiteral("below"), bucket.below ? QJsonValue(*bucket.below) : QJsonValue()},
                        {QStringLiteral("count"), bucket.count}});
    }
    return buckets;
}

QJsonValue TimeJson(const std::optional<TimeRange>& times, double TimeRange::*time)
{
    return times ? QJsonValue(Rounded((*times).*time)) : QJsonValue();
}

QJsonValue ErrorText(int error)
{
    return error != 0 ? QJsonValue(qt_error_string(error)) : QJsonValue();
}

template <typename Value>
QJsonValue OptionalJson(const std::optional<Value>& value)
{
    return value ? Show(*value).json : QJsonValue();
}

} // namespace

QByteArray DeviceText(const DeviceFindings& device)
{
    QString text = DevicePath();
    if (!device.IsThere()) {
        if (!device.target.isEmpty()) {
            text = Text::tr("%1 is a link to %2").arg(text, Printable(device.target));
        }
        return InfoLine(Text::tr("Device"), text + QStringLiteral(": ") + qt_error_string(device.pathError));
    }
    if (device.target != text) {
        text = Text::tr("%1 leads to %2").arg(text, Printable(device.target));
    }
    return InfoLine(Text::tr("Device"), text + QStringLiteral(", ") + Kind(device));
}

QJsonObject DeviceJson(const DeviceFindings& device)
{
    const bool isOpen = device.IsCharacterDevice() && device.openError == 0;
    return {{QStringLiteral("path"), DevicePath()},
            {QStringLiteral("target"), device.target.isEmpty() ? QJsonValue() : QJsonValue(device.target)},
            {QStringLiteral("exists"), device.IsThere()},
            {QStringLiteral("characterDevice"), device.IsCharacterDevice()},
            {QStringLiteral("terminal"), isOpen ? QJsonValue(device.isTerminal) : QJsonValue()},
            {QStringLiteral("problem"), ErrorText(device.IsThere() ? device.openError : device.pathError)}};
}

QByteArray PermissionsText(const DeviceFindings& device)
{
    const mode_t mode = device.identity.st_mode;
    QByteArray text =
        InfoLine(Text::tr("Permissions"), Text::tr("owner %1: %2; group %3: %4; others: %5")
                                              .arg(device.owner, Rights(mode >> OwnerShift), device.group,
                                                   Rights(mode >> GroupShift), Rights(mode)));
    const QString group = GroupToJoin(device);
    const QString rights = OwnRights(device);
    return text + InfoLine(Text::tr("This user"),
                           group.isEmpty() ? rights : Text::tr("%1; members of %2 may").arg(rights, group));
}

QJsonObject PermissionsJson(const DeviceFindings& device)
{
    constexpr int Octal = 8;
    constexpr int Digits = 4;
    const QString group = GroupToJoin(device);
    return {{QStringLiteral("mode"), QStringLiteral("%1").arg(device.identity.st_mode & PermissionBits,
                                                              Digits, Octal, QLatin1Char('0'))},
            {QStringLiteral("owner"), device.owner},
            {QStringLiteral("group"), device.group},
            {QStringLiteral("readable"), device.isReadable},
            {QStringLiteral("writable"), device.isWritable},
            {QStringLiteral("join"), group.isEmpty() ? QJsonValue() : QJsonValue(group)}};
}

QByteArray HoldersText(const DeviceHolders& holders)
{
    QByteArray text;
    for (const VesmarClient::DeviceHolder& holder : holders.programs) {
        text += InfoLine(Text::tr("Held by"), VesmarClient::ShowHolder(holder));
    }
    const QString nobody =
        holders.isComplete
            ? Text::tr("nobody else")
            : Text::tr("nobody else that can be seen; programs of other users show to root only");
    return text.isEmpty() ? InfoLine(Text::tr("Held by"), nobody) : text;
}

QJsonObject HoldersJson(const DeviceHolders& holders)
{
    QJsonArray programs;
    for (const VesmarClient::DeviceHolder& holder : holders.programs) {
        programs.append(QJsonObject{{QStringLiteral("process"), static_cast<int>(holder.process)},
                                    {QStringLiteral("program"), Printable(holder.program)}});
    }
    return {{QStringLiteral("programs"), programs}, {QStringLiteral("complete"), holders.isComplete}};
}

QByteArray AnswersText(const LineRecord& line)
{
    QByteArray text =
        InfoLine(Text::tr("Answers"), Text::tr("of %1 requests %2 proper, %3 refused, %4 damaged, %5 silent")
                                          .arg(line.Asked())
                                          .arg(line.Count(LineAnswer::Proper))
                                          .arg(line.Count(LineAnswer::Refused))
                                          .arg(line.Count(LineAnswer::Damaged))
                                          .arg(line.Count(LineAnswer::Silent)));
    if (line.LineError() != 0) {
        text += InfoLine(Text::tr("Line"), Text::tr("broken: %1").arg(qt_error_string(line.LineError())));
    }
    if (const std::optional<TimeRange> times = line.Times()) {
        text += InfoLine(Text::tr("Answer times"),
                         Text::tr("fastest %1, median %2, slowest %3")
                             .arg(Milliseconds(times->fastest), Milliseconds(times->median),
                                  Milliseconds(times->slowest)));
        text += HistogramText(line.Histogram());
    }
    if (line.LateCount() > 0) {
        text += InfoLine(Text::tr("Too late"),
                         Text::tr("%1 later than %2 ms; a lost link does not return with them")
                             .arg(line.LateCount())
                             .arg(LineRecord::LatestForRecovery));
    }
    return text;
}

QJsonObject AnswersJson(const LineRecord& line)
{
    const std::optional<TimeRange> times = line.Times();
    return {{QStringLiteral("asked"), line.Asked()},
            {QStringLiteral("proper"), line.Count(LineAnswer::Proper)},
            {QStringLiteral("refused"), line.Count(LineAnswer::Refused)},
            {QStringLiteral("damaged"), line.Count(LineAnswer::Damaged)},
            {QStringLiteral("silent"), line.Count(LineAnswer::Silent)},
            {QStringLiteral("late"), line.LateCount()},
            {QStringLiteral("fastest"), TimeJson(times, &TimeRange::fastest)},
            {QStringLiteral("median"), TimeJson(times, &TimeRange::median)},
            {QStringLiteral("slowest"), TimeJson(times, &TimeRange::slowest)},
            {QStringLiteral("histogram"), HistogramJson(line.Histogram())},
            {QStringLiteral("problem"), ErrorText(line.LineError())}};
}

QByteArray ConditionText(const Vesmar::Status& status)
{
    QByteArray text = InfoLine(Text::tr("Mode"), Show(status.mode).text) +
                      InfoLine(Text::tr("Function"), Show(status.function).text);
    if (status.functionState) {
        text += InfoLine(Text::tr("Function state"), Show(*status.functionState).text);
    }
    if (status.startTestResult) {
        text += InfoLine(Text::tr("Start test"), Show(*status.startTestResult).text);
    }
    text += InfoLine(Text::tr("Error"), Show(status.error).text);
    return status.error == Error::NoErrors
               ? text
               : text + AdviceText(static_cast<VesmarClient::Error>(status.error));
}

QJsonObject ConditionJson(const Vesmar::Status& status)
{
    return {{QStringLiteral("TesterMode"), Show(status.mode).json},
            {QStringLiteral("CurrentMeasurementType"), Show(status.function).json},
            {QStringLiteral("MeasurementFunctionStatus"), OptionalJson(status.functionState)},
            {QStringLiteral("StartTestStatus"), OptionalJson(status.startTestResult)},
            {QStringLiteral("ErrorCode"), Show(status.error).json}};
}

} // namespace Cli
