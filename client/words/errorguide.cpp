#include "client/words/errorguide.h"

#include <algorithm>
#include <array>

#include "client/words/names.h"
#include "client/words/translation.h"

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
     {QT_TRANSLATE_NOOP(
         "VesmarClient",
         "the instrument has found something wrong with itself, its supply or the connected appliance")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Look the number up in the instrument's own manual; restart the instrument (vesmar restart) and see "
         "whether it comes back.")},
    {Error::NoErrors, Error::NoErrors, {}, QT_TRANSLATE_NOOP("VesmarClient", "Nothing is to be done.")},
    {Error::NoResponse,
     Error::NoResponse,
     {QT_TRANSLATE_NOOP("VesmarClient", "the instrument is switched off or still starting"),
      QT_TRANSLATE_NOOP("VesmarClient", "the cable is unplugged or broken"),
      QT_TRANSLATE_NOOP("VesmarClient", "the serial device is another instrument's, or none")},
     QT_TRANSLATE_NOOP("VesmarClient", "Switch the instrument on and check its cable; the link comes back by "
                                       "itself. A device that was missing "
                                       "when the link was enabled needs a disable and an enable.")},
    {Error::RequestRefused,
     Error::RequestRefused,
     {QT_TRANSLATE_NOOP("VesmarClient", "the instrument is in a condition in which it takes no requests"),
      QT_TRANSLATE_NOOP("VesmarClient", "another program uses the same line"),
      QT_TRANSLATE_NOOP("VesmarClient", "the firmware and this library do not suit each other")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "End other programs that use the line, switch the instrument off and on, and compare its version "
         "(vesmar info) with the one that this library was made for.")},
    {Error::InvalidResponse,
     Error::InvalidResponse,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "the cable or a plug is damaged, or runs beside a source of interference"),
      QT_TRANSLATE_NOOP("VesmarClient", "another program uses the same line"),
      QT_TRANSLATE_NOOP("VesmarClient",
                        "the instrument's line settings are not 115200 baud, 8 bits, even parity")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Change the cable, end other programs that use the line, and switch the instrument off and on.")},
    {Error::CommunicationRecovery,
     Error::CommunicationRecovery,
     {QT_TRANSLATE_NOOP("VesmarClient", "a request has just failed, or the instrument is restarting")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Wait: within about half a minute the link is back, or one of 100 to 102 says what is wrong. A "
         "measurement that was running has to be started anew.")},
    {Error::PrepareFailed,
     Error::PrepareFailed,
     {QT_TRANSLATE_NOOP("VesmarClient", "the settings do not suit the instrument or what is connected"),
      QT_TRANSLATE_NOOP(
          "VesmarClient",
          "the instrument found a fault while it prepared, such as a missing protective conductor")},
     QT_TRANSLATE_NOOP("VesmarClient",
                       "Check the settings and the connection of the appliance, then prepare again.")},
    {Error::StartFailed,
     Error::StartFailed,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "the instrument fell back while it started, such as for a missing mains voltage"),
      QT_TRANSLATE_NOOP("VesmarClient", "the instrument refused the start")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Check the mains supply and the connection of the appliance, then prepare and start again.")},
    {Error::MeasurementFailed,
     Error::MeasurementFailed,
     {QT_TRANSLATE_NOOP("VesmarClient", "the measurement was ended at the instrument"),
      QT_TRANSLATE_NOOP("VesmarClient", "the instrument found a fault while it measured")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Check the connection of the appliance and measure again; do not take the readings so far for a "
         "result.")},
    {Error::UpdateModeChangeFailed,
     Error::UpdateModeChangeFailed,
     {QT_TRANSLATE_NOOP("VesmarClient", "the instrument refused the change of mode"),
      QT_TRANSLATE_NOOP("VesmarClient", "the answer was lost on the line")},
     QT_TRANSLATE_NOOP("VesmarClient", "The firmware is unchanged. End any measurement, switch the "
                                       "instrument off and on, and update again.")},
    {Error::UpdateDataInvalid,
     Error::UpdateDataInvalid,
     {QT_TRANSLATE_NOOP(
         "VesmarClient",
         "the file is not a firmware image, or not a whole one: its size is no multiple of 512 bytes")},
     QT_TRANSLATE_NOOP("VesmarClient", "Take the image file as it was delivered. The instrument waits in "
                                       "update mode: update it with the right "
                                       "file.")},
    {Error::UpdateConfirmationDataInvalid,
     Error::UpdateConfirmationDataInvalid,
     {QT_TRANSLATE_NOOP(
         "VesmarClient",
         "the confirmation file is not the one that belongs to the image: it is shorter than 2 bytes")},
     QT_TRANSLATE_NOOP("VesmarClient", "Take both files as they were delivered. The instrument waits in "
                                       "update mode: update it with the right "
                                       "files.")},
    {Error::UpdateInitializationFailed,
     Error::UpdateInitializationFailed,
     {QT_TRANSLATE_NOOP("VesmarClient", "the instrument refused the update or one of its sectors"),
      QT_TRANSLATE_NOOP("VesmarClient", "a sector or its acknowledge was lost on the line")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "The instrument waits in update mode and has no complete firmware: do not switch it off, check the "
         "cable, and update it again from the beginning.")},
    {Error::UpdateConfirmationFailed,
     Error::UpdateConfirmationFailed,
     {QT_TRANSLATE_NOOP("VesmarClient", "the confirmation file belongs to another image"),
      QT_TRANSLATE_NOOP("VesmarClient", "the image arrived damaged")},
     QT_TRANSLATE_NOOP("VesmarClient", "The instrument waits in update mode: update it again with the image "
                                       "and the confirmation that belong "
                                       "together.")},
    {Error::RCDFunctionMismatch,
     Error::RCDFunctionMismatch,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "somebody has changed the function at the instrument while the test was prepared")},
     QT_TRANSLATE_NOOP("VesmarClient", "Leave the instrument alone during the test and prepare it again.")},
    {Error::RCDIdleStatusAttemptsExhausted,
     Error::RCDIdleStatusAttemptsExhausted,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "the start test has not been passed: no mains voltage, or L and N swapped"),
      QT_TRANSLATE_NOOP("VesmarClient", "the instrument did not answer in time")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Check the mains supply and the start test that the instrument shows, then start the test again.")},
    {Error::RCDPreparedStatusAttemptsExhausted,
     Error::RCDPreparedStatusAttemptsExhausted,
     {QT_TRANSLATE_NOOP("VesmarClient", "the instrument took too long to prepare"),
      QT_TRANSLATE_NOOP("VesmarClient", "the instrument did not answer in time")},
     QT_TRANSLATE_NOOP("VesmarClient", "Check the connection of the RCD and start the test again.")},
    {Error::RCDCheckObjectFailed,
     Error::RCDCheckObjectFailed,
     {QT_TRANSLATE_NOOP("VesmarClient", "the RCD is not connected, is switched off or is of another kind"),
      QT_TRANSLATE_NOOP("VesmarClient", "the instrument did not answer the check")},
     QT_TRANSLATE_NOOP("VesmarClient",
                       "Check that the RCD is connected and switched on, and start the test again.")},
    {Error::RCDCheckObject2,
     Error::RCDCheckObject9,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "the RCD is not connected, is switched off or does not suit the settings"),
      QT_TRANSLATE_NOOP("VesmarClient", "the mains voltage at the RCD is not what the test needs")},
     QT_TRANSLATE_NOOP("VesmarClient", "Check the connection of the RCD and the settings (current, type, "
                                       "phase); look the check code up in the "
                                       "instrument's own manual, then start the test again.")},
    {Error::RCDCheckObjectULNIECInvalid,
     Error::RCDCheckObjectULNIECInvalid,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "L and N are swapped, or the mains voltage is out of the range of the IEC test")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Turn the mains plug or set the swap of L and N, and check the mains voltage; the test goes on by "
         "itself once it suits, or abort it.")},
    {Error::RCDDeviceError0,
     Error::RCDDeviceError0,
     {QT_TRANSLATE_NOOP("VesmarClient", "the instrument reports its error 0"),
      QT_TRANSLATE_NOOP("VesmarClient", "a Ub/Re test was started and the instrument stayed silent")},
     QT_TRANSLATE_NOOP("VesmarClient", "Check the connection of the RCD and start the test again; if it "
                                       "stays so, restart the instrument.")},
    {Error::RCDDeviceError1,
     Error::RCDDeviceError1,
     {QT_TRANSLATE_NOOP("VesmarClient", "the test was aborted"),
      QT_TRANSLATE_NOOP("VesmarClient", "the instrument ended the test by itself"),
      QT_TRANSLATE_NOOP("VesmarClient", "the instrument reports its error 1")},
     QT_TRANSLATE_NOOP("VesmarClient",
                       "If nobody aborted the test, check the connection of the RCD and start it again.")},
    {Error::RCDDeviceError2,
     Error::RCDDeviceError4,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "the instrument has found something wrong with the RCD, the mains or itself")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Look the number, less 520, up in the instrument's own manual, and start the test again.")},
    {Error::RCDDeviceError5,
     Error::RCDDeviceError5,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "the instrument reports its error 5; an IEC test that runs begins anew by itself")},
     QT_TRANSLATE_NOOP("VesmarClient", "Let an IEC test go on; otherwise look error 5 up in the instrument's "
                                       "own manual, and start the test "
                                       "again.")},
    {Error::RCDDeviceError6,
     Error::RCDDeviceError14,
     {QT_TRANSLATE_NOOP("VesmarClient",
                        "the instrument has found something wrong with the RCD, the mains or itself")},
     QT_TRANSLATE_NOOP(
         "VesmarClient",
         "Look the number, less 520, up in the instrument's own manual, and start the test again.")},
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
            advice.causes.append(Translated(cause));
        }
    }
    advice.nextStep = Translated(entry->nextStep);
    return advice;
}

std::optional<Error> FindError(const QString& numberOrName)
{
    const QVector<Error> errors = AllErrors();
    bool isNumber = false;
    const int number = numberOrName.toInt(&isNumber);
    const QVector<Error>::const_iterator found =
        std::find_if(errors.cbegin(), errors.cend(), [&](Error error) {
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
