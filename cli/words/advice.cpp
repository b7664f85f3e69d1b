#include "cli/words/advice.h"

#include "cli/words/text.h"
#include "client/words/errorguide.h"

namespace Cli
{

using VesmarClient::Error;

QByteArray AdviceText(Error error)
{
    const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(static_cast<Vesmar::Error>(error));
    QByteArray text;
    QString label = Text::tr("Likely causes");
    for (const QString& cause : advice.causes) {
        text += ExplanationLine(label, cause);
        label.clear();
    }
    return advice.nextStep.isEmpty() ? text : text + ExplanationLine(Text::tr("Next step"), advice.nextStep);
}

QString WithAdvice(const QString& sentence, Error error)
{
    if (error == Error::NoErrors) {
        return sentence;
    }
    return (sentence + QLatin1Char('\n') + QString::fromUtf8(AdviceText(error))).trimmed();
}

QByteArray ExplanationLine(const QString& label, const QString& text)
{
    constexpr int LabelWidth = 16;
    return (QStringLiteral("  ") + label.leftJustified(LabelWidth) + text + QLatin1Char('\n')).toUtf8();
}

} // namespace Cli
