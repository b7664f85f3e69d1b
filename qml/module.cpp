#include "qml/module.h"

#include <QQmlEngine>

#include <VesmarClient/instrument.h>

#include "qml/catalogue.h"

using namespace VesmarClient;

namespace
{

constexpr int Major = 1;
constexpr int Minor = 0;

/// For a type whose objects come from an instrument.
template <typename Type>
void RegisterMadeByInstrument(const char* uri, const char* name)
{
    qmlRegisterUncreatableType<Type>(uri, Major, Minor, name, QStringLiteral("Ask an Instrument for it."));
}

} // namespace

void VesmarModule::registerTypes(const char* uri)
{
    qmlRegisterType<Instrument>(uri, Major, Minor, "Instrument");
    RegisterMadeByInstrument<Job>(uri, "Job");
    RegisterMadeByInstrument<Measurement>(uri, "Measurement");
    RegisterMadeByInstrument<ClockJob>(uri, "ClockJob");
    RegisterMadeByInstrument<CalibrationJob>(uri, "CalibrationJob");
    RegisterMadeByInstrument<RestartJob>(uri, "RestartJob");
    RegisterMadeByInstrument<UpdateJob>(uri, "UpdateJob");
    RegisterMadeByInstrument<StopJob>(uri, "StopJob");
    qmlRegisterUncreatableMetaObject(VesmarClient::staticMetaObject, uri, Major, Minor, "Vesmar",
                                     QStringLiteral("It holds the enumerations."));
    qmlRegisterSingletonType<Catalogue>(uri, Major, Minor, "Catalogue",
                                        [](QQmlEngine*, QJSEngine*) -> QObject* { return new Catalogue; });
}
