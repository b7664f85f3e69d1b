// Measures the protective-earth resistance for three seconds, and knows at the end that the instrument has
// stopped.
#include <QCoreApplication>
#include <QDebug>
#include <VesmarClient/instrument.h>
#include <VesmarClient/measurement.h>
#include <VesmarClient/settings.h>

using namespace VesmarClient;

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    Instrument instrument;
    QObject::connect(&instrument, &Instrument::linkStateChanged, &application, [&] {
        if (instrument.linkState() != LinkState::Up) {
            return;
        }
        Measurement* measurement = instrument.measure(Settings("rpe").set("time", 3));
        QObject::connect(measurement, &Measurement::reading,
                         [](const Result& result) { qInfo() << result.readings(); });
        QObject::connect(measurement, &Measurement::finished, [measurement](Outcome outcome) {
            qInfo() << outcome << measurement->isStopConfirmed();
            const bool isDone = outcome == Outcome::Completed && measurement->isStopConfirmed();
            QCoreApplication::exit(isDone ? 0 : 1);
        });
    });
    QObject::connect(&instrument, &Instrument::openFailed, [](const Failure& failure) {
        qCritical() << failure;
        QCoreApplication::exit(2);
    });
    instrument.open();
    return QCoreApplication::exec();
}
