#pragma once

#include <QDateTime>
#include <QSharedPointer>
#include <QVector>

#include <VesmarClient/functions.h>
#include <VesmarClient/identity.h>
#include <VesmarClient/measurement.h>

namespace Panel
{

/// Everything of one measurement, while it runs and after: what is plotted, reported and written to files.
struct Record {
    VesmarClient::Settings settings;
    QDateTime begun;
    VesmarClient::Identity identity;
    QDateTime calibrationDate;

    QVector<double> times;           ///< When each result was read, in seconds since the measurement began.
    QVector<QVector<double>> values; ///< For each reading of the catalogue, a value for each of the times;
                                     ///< not a number where the instrument had none.
    VesmarClient::Result latest;
    QVector<VesmarClient::Gap> gaps;

    VesmarClient::Outcome outcome = VesmarClient::Outcome::None; ///< `None` while it is under way.
    VesmarClient::Failure failure;
    bool isStopConfirmed = false;

    VesmarClient::FunctionInfo function() const;
    void append(double time, const VesmarClient::Result& result);
};

using RecordPointer = QSharedPointer<const Record>;

} // namespace Panel
