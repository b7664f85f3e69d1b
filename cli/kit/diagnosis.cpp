#include "cli/kit/diagnosis.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include <Vesmar/serialdevice.h>

#include "cli/words/names.h"

namespace Cli
{

namespace
{

using Vesmar::Error;
using Vesmar::OperationMode;

Failure DiagnoseDevice(int openError)
{
    const QString device = QString::fromLatin1(Vesmar::SerialDevicePath);
    switch (openError) {
    case ENOENT:
        return {QStringLiteral("device-missing"),
                QStringLiteral("The serial device %1 does not exist. Check that the board's serial line has "
                               "this name, or try it without an instrument: "
                               "vesmar-simulator run -- vesmar info")
                    .arg(device)};
    case EACCES:
    case EPERM:
        return {QStringLiteral("no-permission"),
                QStringLiteral("No permission to open the serial device %1. Join the group that owns it "
                               "(usually: sudo usermod -a -G dialout \"$USER\") and log in again.")
                    .arg(device)};
    default:
        return {QStringLiteral("device-unusable"),
                QStringLiteral("The serial device %1 cannot be opened: %2. Check the line and its driver, "
                               "and whether another program holds the device.")
                    .arg(device, qt_error_string(openError))};
    }
}

/// "10 s", "0.5 s".
QString Seconds(std::chrono::milliseconds time)
{
    return QString::number(static_cast<double>(time.count()) / 1000.0) + QStringLiteral(" s");
}

Failure DiagnoseAnsweringInstrument(const Situation& situation)
{
    if (situation.mode != OperationMode::Normal) {
        return {QStringLiteral("wrong-mode"),
                QStringLiteral("The instrument answers, but does not leave its mode %1. Switch it off and "
                               "on again.")
                    .arg(NameAndNumber(situation.mode))};
    }
    if (situation.error == Error::NoResponse) {
        return {QStringLiteral("no-answer"),
                QStringLiteral("The instrument answered, but fell silent. Check cable and power, and start "
                               "again."),
                situation.error};
    }
    return {QStringLiteral("incomplete"),
            QStringLiteral("The instrument answers, but its clocks could not be read within %1. Check the "
                           "cable, and give it more time with --timeout.")
                .arg(Seconds(situation.waited))};
}

} // namespace

int TryToOpenSerialDevice()
{
    const int descriptor = ::open(Vesmar::SerialDevicePath, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return errno;
    }
    ::close(descriptor);
    return 0;
}

Failure Diagnose(const Situation& situation)
{
    if (situation.openError != 0) {
        return DiagnoseDevice(situation.openError);
    }
    if (situation.mode == OperationMode::Update) {
        return InUpdateMode();
    }
    if (situation.error == Error::RequestRefused) {
        return {QStringLiteral("refused"),
                QStringLiteral("The instrument refuses every request. Switch it off and on again, and check "
                               "that it is of the right kind."),
                situation.error};
    }
    if (situation.error == Error::InvalidResponse) {
        return {QStringLiteral("damaged"),
                QStringLiteral("The instrument's answers arrive damaged. Check the cable and its shield, and "
                               "that no other program uses the line."),
                situation.error};
    }
    if (situation.hasAnswer) {
        return DiagnoseAnsweringInstrument(situation);
    }
    if (situation.error == Error::CommunicationRecovery) {
        return {QStringLiteral("no-proper-answer"),
                QStringLiteral("The instrument gave no proper answer within %1: it refuses, answers damaged "
                               "or falls silent. Check cable and power; --timeout 30 finds out which.")
                    .arg(Seconds(situation.waited))};
    }
    return {QStringLiteral("no-answer"),
            QStringLiteral("The instrument did not answer within %1. Check that it is switched on and the "
                           "cable is plugged in, or try it without an instrument: "
                           "vesmar-simulator run -- vesmar info")
                .arg(Seconds(situation.waited)),
            Verdict(situation.error)};
}

Failure InUpdateMode()
{
    return {QStringLiteral("update-mode"),
            QStringLiteral("The instrument is in update mode (%1) and waits for firmware; run "
                           "vesmar update IMAGE --confirmation FILE.")
                .arg(static_cast<int>(OperationMode::Update)),
            Error::NoErrors, Ending::Outcome::UpdateMode};
}

Failure LinkLost(const QString& notDone, Error error)
{
    return {QStringLiteral("link-lost"),
            notDone + QStringLiteral(" The link to it was lost; check cable and power, and try again."),
            Verdict(error), Ending::Outcome::LinkLost};
}

Error Verdict(Error error)
{
    return error >= Error::NoResponse && error <= Error::InvalidResponse ? error : Error::NoErrors;
}

bool IsLinkError(Error error)
{
    return error >= Error::NoResponse && error <= Error::CommunicationRecovery;
}

} // namespace Cli
