#include "panel/plan/planwords.h"

#include <cmath>

#include <QCoreApplication>

#include "panel/kit/words.h"

namespace Panel
{

using VesmarClient::Reading;
using VesmarClient::ReadingInfo;

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Panel::Plan)
};

} // namespace

QString words(StepState state)
{
    switch (state) {
    case StepState::Waiting:
        return Texts::tr("not measured yet");
    case StepState::AwaitingHold:
        return Texts::tr("hold the button to measure");
    case StepState::Running:
        return Texts::tr("measuring");
    case StepState::Measured:
        return Texts::tr("measured");
    case StepState::Passed:
        return Texts::tr("passed");
    case StepState::Failed:
        return Texts::tr("failed");
    case StepState::NotMeasured:
        return Texts::tr("not completed");
    }
    return {};
}

QString words(Verdict verdict)
{
    switch (verdict) {
    case Verdict::None:
        return Texts::tr("Measured, without limits");
    case Verdict::Passed:
        return Texts::tr("Passed");
    case Verdict::Failed:
        return Texts::tr("Failed");
    case Verdict::Incomplete:
        return Texts::tr("Not complete");
    }
    return {};
}

QString readingsOf(const StepRecord& step)
{
    QStringList texts;
    if (!step.record.isNull()) {
        for (const ReadingInfo& info : step.record->function().readings) {
            const Reading reading = step.record->latest.reading(info.identifier);
            const double value = reading.isPresent ? reading.value : std::nan("");
            texts.append(info.title + QLatin1Char(' ') + shownValue(value, info.unit, info.decimals));
        }
    }
    return texts.join(QStringLiteral(", "));
}

QString stopWords(bool isConfirmed)
{
    return isConfirmed ? Texts::tr("The instrument is confirmed to have stopped.")
                       : Texts::tr("It is NOT confirmed that the instrument has stopped.");
}

} // namespace Panel
