#include "cli/doctor/doctorverdict.h"

#include <cerrno>

#include <VesmarClient/serialdevice.h>

#include "cli/kit/failure.h"
#include "cli/kit/unattended.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "cli/words/text.h"
#include "client/line/linelock.h"
#include "client/words/errorguide.h"
#include "client/words/names.h"

namespace Cli
{

namespace
{

using Vesmar::Error;
using Vesmar::OperationMode;
using VesmarClient::NameAndNumber;

constexpr gid_t GroupOfRoot = 0;

Ending Failed(int status, const Failure& failure, Error error = Error::NoErrors)
{
    return {status, Ending::Outcome::Failed, failure.message, failure.kind,
            static_cast<VesmarClient::Error>(error)};
}

Ending NoLink(const QString& reason, const QString& message)
{
    return Failed(ExitStatus::NoLink, {reason, message});
}

Failure LineFailure(Error error, const LineRecord& line)
{
    return LinkNotUp({false, VesmarClient::Mode::Normal, static_cast<VesmarClient::Error>(error)},
                     line.Asked() * LineProbe::UsualPatience);
}

Ending Missing(const DeviceFindings& device)
{
    if (device.pathError == ENOENT && !device.target.isEmpty()) {
        return NoLink(QStringLiteral("device-missing"),
                      Text::tr("The serial device %1 is a link to %2, which does not exist. Plug the "
                               "adapter in, or let the link lead to the line that there is.")
                          .arg(DevicePath(), Printable(device.target)));
    }
    return Failed(ExitStatus::NoLink, FailureOf(VesmarClient::NotOpened(device.pathError)));
}

Ending NoSerialLine(const QString& whatItIs)
{
    return NoLink(QStringLiteral("device-unusable"),
                  Text::tr("%1 is no serial line: it is %2. Let this name lead to the serial line that the "
                           "instrument is wired to.")
                      .arg(DevicePath(), whatItIs));
}

Ending NotPermitted(const DeviceFindings& device)
{
    const QString group = GroupToJoin(device);
    const QString whatToDo = group.isEmpty()
                                 ? Text::tr("Let the administrator give the device a group that may read and "
                                            "write it, and join that.")
                                 : Text::tr("Join the group %1 (sudo usermod -a -G %1 \"$USER\") and log in "
                                            "again.")
                                       .arg(group);
    return NoLink(
        QStringLiteral("no-permission"),
        Text::tr("No permission to read and write the serial device %1. %2").arg(DevicePath(), whatToDo));
}

Ending Held(const DeviceHolders& holders)
{
    return NoLink(QStringLiteral("held"),
                  Text::tr("The serial device %1 is held by %2, so nothing was sent: a measurement may "
                           "be running. End that program, and run vesmar doctor again.")
                      .arg(DevicePath(), VesmarClient::ShowHolders(holders.programs)));
}

Failure Broken(const LineRecord& line)
{
    return {QStringLiteral("line-broken"),
            Text::tr("The line broke while the instrument was asked: %1. Check the adapter and its "
                     "plug, and run vesmar doctor again.")
                .arg(qt_error_string(line.LineError()))};
}

/// The sentence with the number of all requests, and what those got that have no proper answer.
QString WithCounts(const QString& sentence, const LineRecord& line)
{
    return sentence.arg(line.Asked())
        .arg(line.Count(LineAnswer::Refused))
        .arg(line.Count(LineAnswer::Damaged))
        .arg(line.Count(LineAnswer::Silent));
}

Ending WithoutProperAnswer(const LineRecord& line)
{
    const int asked = line.Asked();
    if (line.Count(LineAnswer::Silent) == asked) {
        return Failed(ExitStatus::NoLink, LineFailure(Error::NoResponse, line));
    }
    if (line.Count(LineAnswer::Refused) == asked) {
        return Failed(ExitStatus::NoLink, LineFailure(Error::RequestRefused, line));
    }
    if (line.Count(LineAnswer::Damaged) == asked) {
        return Failed(ExitStatus::NoLink, LineFailure(Error::InvalidResponse, line));
    }
    return NoLink(QStringLiteral("no-proper-answer"),
                  WithCounts(Text::tr("None of %1 requests got a proper answer: %2 got a refusal, %3 a "
                                      "damaged answer and %4 none. Check cable and power, and that the "
                                      "instrument is of the right kind."),
                             line));
}

Failure Unreliable(const LineRecord& line)
{
    return {QStringLiteral("unreliable"),
            WithCounts(Text::tr("The link is unreliable: of %1 requests, %2 got a refusal, %3 a damaged "
                                "answer and %4 none. Check cable, shield and plugs, and run vesmar doctor "
                                "again."),
                       line)};
}

Failure Late(const LineRecord& line)
{
    return {QStringLiteral("late"),
            Text::tr("The link is too slow: %1 of %2 answers came later than %3 ms, and a lost link "
                     "would not come back with those. Check whether the adapter or another load of "
                     "this computer delays them, and switch the instrument off and on again.")
                .arg(line.LateCount())
                .arg(line.Asked())
                .arg(LineRecord::LatestForRecovery)};
}

Failure WrongMode(OperationMode mode)
{
    if (mode == OperationMode::Update) {
        return InUpdateMode();
    }
    return {QStringLiteral("wrong-mode"),
            Text::tr("The link is sound, but the instrument is in the mode %1, in which it does not "
                     "measure. Run vesmar restart.")
                .arg(NameAndNumber(mode))};
}

Failure Unattended(const Vesmar::Status& status)
{
    const QString state = status.functionState ? Show(*status.functionState).text : Text::tr("unknown");
    return {QStringLiteral("unattended"), UnattendedText(static_cast<VesmarClient::Function>(status.function))
                                                  .arg(Show(status.function).text, state) +
                                              QLatin1Char(' ') +
                                              Text::tr("Run vesmar stop, or switch the instrument off.")};
}

Failure Reported(Error error)
{
    return {QString(), Text::tr("The link is sound, but the instrument reports %1. %2")
                           .arg(NameAndNumber(error), VesmarClient::Advice(error).nextStep)};
}

} // namespace

QString DevicePath()
{
    return VesmarClient::SerialDevice::path();
}

QString GroupToJoin(const DeviceFindings& device)
{
    const bool isAllowed = device.isReadable && device.isWritable;
    const bool isGroupAllowed = (device.identity.st_mode & S_IRGRP) != 0 &&
                                (device.identity.st_mode & S_IWGRP) != 0 &&
                                device.identity.st_gid != GroupOfRoot;
    return !isAllowed && isGroupAllowed ? device.group : QString();
}

std::optional<Ending> FindObstacle(const DeviceFindings& device, const DeviceHolders& holders)
{
    if (!device.IsThere()) {
        return Missing(device);
    }
    if (!device.IsCharacterDevice()) {
        return NoSerialLine(Text::tr("no character device"));
    }
    if (!device.isReadable || !device.isWritable) {
        return NotPermitted(device);
    }
    if (device.IsNoTerminal()) {
        return NoSerialLine(Text::tr("no terminal"));
    }
    if (!holders.programs.isEmpty()) {
        return Held(holders);
    }
    if (device.openError != 0) {
        return Failed(ExitStatus::NoLink, FailureOf(VesmarClient::NotOpened(device.openError)));
    }
    return std::nullopt;
}

Ending DecideEnding(const LineRecord& line)
{
    if (line.LineError() != 0) {
        return Failed(line.Status() ? ExitStatus::Failed : ExitStatus::NoLink, Broken(line));
    }
    if (!line.Status()) {
        return WithoutProperAnswer(line);
    }
    const Vesmar::Status& status = *line.Status();
    if (status.function != Vesmar::MeasurementType::Monitoring) {
        return Failed(ExitStatus::StopNotConfirmed, Unattended(status), status.error);
    }
    if (line.Count(LineAnswer::Proper) < line.Asked()) {
        return Failed(ExitStatus::Failed, Unreliable(line), status.error);
    }
    if (line.LateCount() > 0) {
        return Failed(ExitStatus::Failed, Late(line), status.error);
    }
    if (status.mode != OperationMode::Normal) {
        return Failed(ExitStatus::NotDone, WrongMode(status.mode), status.error);
    }
    if (status.error != Error::NoErrors) {
        return Failed(ExitStatus::Failed, Reported(status.error), status.error);
    }
    return DoneWith(
        Text::tr("The link is sound, and the instrument is in its normal mode and reports no error. "
                 "There is nothing to be done."));
}

} // namespace Cli
