#include <VesmarClient/failure.h>

#include <tuple>

#include <QDebug>

#include "client/words/errorguide.h"
#include "client/words/names.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

auto Fields(const Failure& failure)
{
    return std::tie(failure.code, failure.name, failure.whatHappened, failure.causes, failure.nextStep);
}

} // namespace

Failure Failure::ofError(Error error)
{
    if (error == Error::NoErrors) {
        return {};
    }
    const auto driverError = static_cast<Vesmar::Error>(error);
    const QString name = Name(driverError);
    const ErrorAdvice advice = Advice(driverError);
    return {error, name.isEmpty() ? QString::number(static_cast<int>(error)) : name,
            Capitalized(Meaning(driverError)) + QLatin1Char('.'), advice.causes, advice.nextStep};
}

bool operator==(const Failure& left, const Failure& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const Failure& left, const Failure& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Failure& failure)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << "Failure(" << failure.name;
    if (failure.code != Error::NoErrors) {
        debug << ", " << static_cast<int>(failure.code);
    }
    for (const QString& text :
         {failure.whatHappened, failure.causes.join(QStringLiteral("; ")), failure.nextStep}) {
        if (!text.isEmpty()) {
            debug << ", " << text;
        }
    }
    debug << ')';
    return debug;
}

} // namespace VesmarClient
