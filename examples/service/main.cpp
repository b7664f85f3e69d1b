// Everything that the client can do with an instrument, one job at a time: "service" prints the catalogue,
// and "service clock" sets the clock; jobs.h says what else there is.
#include <QCoreApplication>
#include <QDebug>
#include <VesmarClient/serialdevice.h>
#include <VesmarClient/tracerouter.h>

#include "catalogue.h"
#include "jobs.h"

using namespace VesmarClient;

namespace
{

/// Prints who is there, carries the job out, and ends with it.
void carryOut(Instrument& instrument, const QStringList& words)
{
    const Identity identity = instrument.identity();
    qInfo().noquote() << identity.deviceName << identity.serialNumber << identity.version;
    Job* job = begin(instrument, words);
    if (job == nullptr) {
        QCoreApplication::exit(2);
        return;
    }
    QObject::connect(job, &Job::finished, [&instrument, job](Outcome outcome) {
        const Failure failure = job->failure();
        if (failure.isFailure()) {
            qCritical().noquote() << failure.whatHappened << failure.nextStep;
        }
        const LinkStatistics statistics = instrument.statistics();
        qInfo() << outcome << "with" << statistics.retransmissions << "requests sent once more";
        QCoreApplication::exit(outcome == Outcome::Completed ? 0 : 1);
    });
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.isEmpty()) {
        printCatalogue();
        qInfo().noquote() << SerialDevice::path() << SerialDevice::problem().whatHappened;
        return 0;
    }
    const TraceRouter router; // The driver's trace goes nowhere, and is counted.
    Instrument instrument;
    QObject::connect(&instrument, &Instrument::linkStateChanged, [&](LinkState state) {
        static bool isBegun = false;
        if (state == LinkState::Up && !isBegun) {
            isBegun = true;
            carryOut(instrument, words);
        }
    });
    QObject::connect(&instrument, &Instrument::openFailed, [](const Failure& failure) {
        qCritical().noquote() << failure.whatHappened << failure.nextStep;
        QCoreApplication::exit(2);
    });
    instrument.open();
    return QCoreApplication::exec();
}
