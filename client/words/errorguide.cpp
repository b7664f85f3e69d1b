#include "client/words/errorguide.h"

#include <algorithm>
#include <array>

#include "client/words/names.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Error;

/// The advice that is the same for all errors from the first to the last.
struct Entry {
    Error first;
    Error last;
    std::array<const char*, 3> causes;
    const char* nextStep;
};

constexpr std::array<Entry, 25> Entries{{
    {Error::DeviceError0,
     Error::DeviceError14,
     {"the instrument has found something wrong with itself, its supply or the connected appliance"},
     "Look the number up in the instrument's own manual; restart the instrument (vesmar restart) and see "
     "whether it comes back."},
    {Error::NoErrors, Error::NoErrors, {}, "Nothing is to be done."},
    {Error::NoResponse,
     Error::NoResponse,
     {"the instrument is switched off or still starting", "the cable is unplugged or broken",
      "the serial device is another instrument's, or none"},
     "Switch the instrument on and check its cable; the link comes back by itself. A device that was missing "
     "when the link was enabled needs a disable and an enable."},
    {Error::RequestRefused,
     Error::RequestRefused,
     {"the instrument is in a condition in which it takes no requests", "another program uses the same line",
      "the firmware and this library do not suit each other"},
     "End other programs that use the line, switch the instrument off and on, and compare its version "
     "(vesmar info) with the one that this library was made for."},
    {Error::InvalidResponse,
     Error::InvalidResponse,
     {"the cable or a plug is damaged, or runs beside a source of interference",
      "another program uses the same line",
      "the instrument's line settings are not 115200 baud, 8 bits, even parity"},
     "Change the cable, end other programs that use the line, and switch the instrument off and on."},
    {Error::CommunicationRecovery,
     Error::CommunicationRecovery,
     {"a request has just failed, or the instrument is restarting"},
     "Wait: within about half a minute the link is back, or one of 100 to 102 says what is wrong. A "
     "measurement that was running has to be started anew."},
    {Error::PrepareFailed,
     Error::PrepareFailed,
     {"the settings do not suit the instrument or what is connected",
      "the instrument found a fault while it prepared, such as a missing protective conductor"},
     "Check the settings and the connection of the appliance, then prepare again."},
    {Error::StartFailed,
     Error::StartFailed,
     {"the instrument fell back while it started, such as for a missing mains voltage",
      "the instrument refused the start"},
     "Check the mains supply and the connection of the appliance, then prepare and start again."},
    {Error::MeasurementFailed,
     Error::MeasurementFailed,
     {"the measurement was ended at the instrument", "the instrument found a fault while it measured"},
     "Check the connection of the appliance and measure again; do not take the readings so far for a "
     "result."},
    {Error::UpdateModeChangeFailed,
     Error::UpdateModeChangeFailed,
     {"the instrument refused the change of mode", "the answer was lost on the line"},
     "The firmware is unchanged. End any measurement, switch the instrument off and on, and update again."},
    {Error::UpdateDataInvalid,
     Error::UpdateDataInvalid,
     {"the file is not a firmware image, or not a whole one: its size is no multiple of 512 bytes"},
     "Take the image file as it was delivered. The instrument waits in update mode: update it with the right "
     "file."},
    {Error::UpdateConfirmationDataInvalid,
     Error::UpdateConfirmationDataInvalid,
     {"the confirmation file is not the one that belongs to the image: it is shorter than 2 bytes"},
     "Take both files as they were delivered. The instrument waits in update mode: update it with the right "
     "files."},
    {Error::UpdateInitializationFailed,
     Error::UpdateInitializationFailed,
     {"the instrument refused the update or one of its sectors",
      "a sector or its acknowledge was lost on the line"},
     "The instrument waits in update mode and has no complete firmware: do not switch it off, check the "
     "cable, and update it again from the beginning."},
    {Error::UpdateConfirmationFailed,
     Error::UpdateConfirmationFailed,
     {"the confirmation file belongs to another image", "the image arrived damaged"},
     "The instrument waits in update mode: update it again with the image and the confirmation that belong "
     "together."},
    {Error::RCDFunctionMismatch,
     Error::RCDFunctionMismatch,
     {"somebody has changed the function at the instrument while the test was prepared"},
     "Leave the instrument alone during the test and prepare it again."},
    {Error::RCDIdleStatusAttemptsExhausted,
     Error::RCDIdleStatusAttemptsExhausted,
     {"the start test has not been passed: no mains voltage, or L and N swapped",
      "the instrument did not answer in time"},
     "Check the mains supply and the start test that the instrument shows, then start the test again."},
    {Error::RCDPreparedStatusAttemptsExhausted,
     Error::RCDPreparedStatusAttemptsExhausted,
     {"the instrument took too long to prepare", "the instrument did not answer in time"},
     "Check the connection of the RCD and start the test again."},
    {Error::RCDCheckObjectFailed,
     Error::RCDCheckObjectFailed,
     {"the RCD is not connected, is switched off or is of another kind",
      "the instrument did not answer the check"},
     "Check that the RCD is connected and switched on, and start the test again."},
    {Error::RCDCheckObject2,
     Error::RCDCheckObject9,
     {"the RCD is not connected, is switched off or does not suit the settings",
      "the mains voltage at the RCD is not what the test needs"},
     "Check the connection of the RCD and the settings (current, type, phase); look the check code up in the "
     "instrument's own manual, then start the test again."},
    {Error::RCDCheckObjectULNIECInvalid,
     Error::RCDCheckObjectULNIECInvalid,
     {"L and N are swapped, or the mains voltage is out of the range of the IEC test"},
     "Turn the mains plug or set the swap of L and N, and check the mains voltage; the test goes on by "
     "itself once it suits, or abort it."},
    {Error::RCDDeviceError0,
     Error::RCDDeviceError0,
     {"the instrument reports its error 0", "a Ub/Re test was started and the instrument stayed silent"},
     "Check the connection of the RCD and start the test again; if it stays so, restart the instrument."},
    {Error::RCDDeviceError1,
     Error::RCDDeviceError1,
     {"the test was aborted", "the instrument ended the test by itself",
      "the instrument reports its error 1"},
     "If nobody aborted the test, check the connection of the RCD and start it again."},
    {Error::RCDDeviceError2,
     Error::RCDDeviceError4,
     {"the instrument has found something wrong with the RCD, the mains or itself"},
     "Look the number, less 520, up in the instrument's own manual, and start the test again."},
    {Error::RCDDeviceError5,
     Error::RCDDeviceError5,
     {"the instrument reports its error 5; an IEC test that runs begins anew by itself"},
     "Let an IEC test go on; otherwise look error 5 up in the instrument's own manual, and start the test "
     "again."},
    {Error::RCDDeviceError6,
     Error::RCDDeviceError14,
     {"the instrument has found something wrong with the RCD, the mains or itself"},
     "Look the number, less 520, up in the instrument's own manual, and start the test again."},
}};

} // namespace

ErrorAdvice Advice(Error error)
{
    const auto* const entry = std::find_if(Entries.cbegin(), Entries.cend(), [error](const Entry& candidate) {
        return error >= candidate.first && error <= candidate.last;
    });
    ErrorAdvice advice;
    if (entry == Entries.cend()) {
        return advice;
    }
    for (const char* cause : entry->causes) {
        if (cause != nullptr) {
            advice.causes.append(QString::fromLatin1(cause));
        }
    }
    advice.nextStep = QString::fromLatin1(entry->nextStep);
    return advice;
}

std::optional<Error> FindError(const QString& numberOrName)
{
    const QVector<Error> errors = AllErrors();
    bool isNumber = false;
    const int number = numberOrName.toInt(&isNumber);
    const auto* const found = std::find_if(errors.cbegin(), errors.cend(), [&](Error error) {
        return isNumber ? static_cast<int>(error) == number
                        : Name(error).compare(numberOrName, Qt::CaseInsensitive) == 0;
    });
    return found != errors.cend() ? std::make_optional(*found) : std::nullopt;
}

QVector<Error> AllErrors()
{
    constexpr int Highest = static_cast<int>(Error::RCDDeviceError14);
    QVector<Error> errors;
    for (int number = 0; number <= Highest; ++number) {
        const auto error = static_cast<Error>(number);
        if (!Name(error).isEmpty()) {
            errors.append(error);
        }
    }
    return errors;
}

} // namespace VesmarClient
