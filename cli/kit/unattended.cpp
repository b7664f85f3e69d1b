#include "cli/kit/unattended.h"

#include <VesmarClient/functions.h>

#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

using VesmarClient::Function;
using VesmarClient::Instrument;

QString UnattendedText(Function function)
{
    return VesmarClient::Functions::find(function).isDangerous
               ? Text::tr(
                     "%1 is active at the instrument, %2, and no program attends it: a dangerous voltage "
                     "may be present. Keep away from the appliance.")
               : Text::tr("%1 is active at the instrument, %2, and no program attends it.");
}

UnattendedWatch::UnattendedWatch(Instrument& instrument) : _instrument(instrument)
{
    connect(&instrument, &Instrument::isUnattendedChanged, this, &UnattendedWatch::ReceiveChange);
}

void UnattendedWatch::ReceiveChange(bool isUnattended)
{
    if (isUnattended) {
        _function = _instrument.activeFunction();
        Tell(UnattendedText(_function).arg(Show(_function).text, Show(_instrument.functionState()).text) +
                 QLatin1Char(' ') + Text::tr("It is told to stop; vesmar stop proves that it has."),
             true);
    } else if (_instrument.activeFunction() == Function::Monitoring) {
        Tell(Text::tr("%1 is not active any more.").arg(Show(_function).text), false);
    }
}

void UnattendedWatch::Tell(const QString& sentence, bool isActive)
{
    Q_EMIT Told(sentence,
                {{QStringLiteral("function"), Show(_function).json},
                 {QStringLiteral("state"), Show(_instrument.functionState()).json},
                 {QStringLiteral("active"), isActive},
                 {QStringLiteral("dangerous"), VesmarClient::Functions::find(_function).isDangerous},
                 {QStringLiteral("message"), sentence}});
}

} // namespace Cli
