#include "panel/kit/words.h"

#include <cmath>

#include <QCoreApplication>
#include <QLocale>

namespace Panel
{

using VesmarClient::Mode;
using VesmarClient::Outcome;
using VesmarClient::Phase;

namespace
{

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Words)
};

} // namespace

QString words(Mode mode)
{
    switch (mode) {
    case Mode::Normal:
        return Words::tr("Normal");
    case Mode::Calibration:
        return Words::tr("Calibration");
    case Mode::Mode2:
        return Words::tr("Mode 2");
    case Mode::Update:
        return Words::tr("Update");
    }
    return {};
}

QString words(Phase phase)
{
    switch (phase) {
    case Phase::Waiting:
        return Words::tr("Waiting");
    case Phase::AwaitingIdle:
        return Words::tr("Ending what still runs");
    case Phase::Preparing:
        return Words::tr("Preparing");
    case Phase::Checking:
        return Words::tr("Checking the object");
    case Phase::AwaitingMains:
        return Words::tr("Waiting for the mains");
    case Phase::Starting:
        return Words::tr("Starting");
    case Phase::Running:
        return Words::tr("Measuring");
    case Phase::Stopping:
        return Words::tr("Stopping");
    case Phase::CleaningUp:
        return Words::tr("Cleaning up");
    case Phase::Confirming:
        return Words::tr("Confirming the stop");
    case Phase::Writing:
        return Words::tr("Writing");
    case Phase::Reading:
        return Words::tr("Reading");
    case Phase::Restarting:
        return Words::tr("Restarting");
    case Phase::ChangingMode:
        return Words::tr("Changing to update mode");
    case Phase::Initializing:
        return Words::tr("Beginning the update");
    case Phase::Sending:
        return Words::tr("Sending the firmware");
    case Phase::Finished:
        return Words::tr("Finished");
    }
    return {};
}

QString words(Outcome outcome)
{
    switch (outcome) {
    case Outcome::None:
        return Words::tr("Under way");
    case Outcome::Completed:
        return Words::tr("Completed");
    case Outcome::Failed:
        return Words::tr("Failed");
    case Outcome::Aborted:
        return Words::tr("Aborted");
    case Outcome::LinkLost:
        return Words::tr("Connection lost");
    case Outcome::Interrupted:
        return Words::tr("Completed with gaps");
    }
    return {};
}

QString shownValue(double value, const QString& unit, int decimals)
{
    if (std::isnan(value)) {
        return QStringLiteral("–");
    }
    constexpr int Digits = 4;
    const int before = value == 0 ? 1 : static_cast<int>(std::floor(std::log10(std::abs(value)))) + 1;
    const int behind = decimals >= 0 ? decimals : qBound(0, Digits - before, Digits - 1);
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const QString number = locale.toString(value, 'f', behind);
    return unit.isEmpty() ? number : number + QChar(QChar::Nbsp) + unit;
}

QString duration(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    const QString end = QStringLiteral("%1:%2")
                            .arg(seconds / 60 % 60, seconds < 3600 ? 1 : 2, 10, QLatin1Char('0'))
                            .arg(seconds % 60, 2, 10, QLatin1Char('0'));
    return seconds < 3600 ? end : QStringLiteral("%1:%2").arg(seconds / 3600).arg(end);
}

} // namespace Panel
