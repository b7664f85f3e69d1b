#include "jobs.h"

#include <QDebug>
#include <QFile>

#include "catalogue.h"

using namespace VesmarClient;

namespace
{

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Job* watchDate(DateJob* job)
{
    QObject::connect(job, &DateJob::reportedChanged,
                     [](const QDateTime& reported) { qInfo() << "The instrument says" << reported; });
    return job;
}

Job* update(Instrument& instrument, const QStringList& words)
{
    UpdateJob* job = instrument.update(content(words.value(1)), content(words.value(2)));
    QObject::connect(job, &UpdateJob::progressChanged,
                     [job] { qInfo() << job->sectorsConfirmed() << "of" << job->sectors() << "sectors"; });
    return job;
}

Job* measure(Instrument& instrument, const Settings& settings)
{
    check(settings); // What is not valid fails before anything is sent.
    MeasurementTimeouts timeouts;
    timeouts.prepare = 20000; // Twice the usual time.
    Measurement* measurement = instrument.measure(settings, timeouts);
    QObject::connect(measurement, &Measurement::reading, [](const Result& result) {
        for (const Reading& reading : result.readings()) {
            qInfo().noquote() << reading.name << reading.text();
        }
    });
    QObject::connect(measurement, &Job::finished, [measurement] {
        for (const Gap& gap : measurement->gaps()) {
            qWarning() << "No reading for" << gap.duration << "ms, after" << gap.begin << "ms";
        }
        qInfo() << "Stopped:" << measurement->isStopConfirmed();
    });
    return measurement;
}

} // namespace

Job* begin(Instrument& instrument, const QStringList& words)
{
    const QString verb = words.value(0);
    if (verb == "clock") {
        ClockJob* job = instrument.setClock(QDateTime::currentDateTime());
        return watchDate(job);
    }
    if (verb == "calibration") {
        CalibrationJob* job =
            instrument.setCalibrationDate(QDateTime::fromString(words.value(1), Qt::ISODate));
        return watchDate(job);
    }
    if (verb == "restart") {
        RestartJob* job = instrument.restart();
        return job;
    }
    if (verb == "stop") {
        StopJob* job = instrument.stop();
        return job;
    }
    if (verb == "update") {
        return update(instrument, words);
    }
    return verb == "measure" ? measure(instrument, Settings(words.value(1))) : nullptr;
}
