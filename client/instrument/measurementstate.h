#pragma once

#include <QElapsedTimer>

#include <VesmarClient/measurement.h>

#include "client/measuring/measurementrun.h"

namespace VesmarClient
{

/// What a measurement knows, and its tie to the run that measures on the driver's thread. It is on the
/// application's thread.
struct MeasurementState : public QObject {
    Q_OBJECT

public:
    MeasurementState(Measurement& measurement, const Settings& asked);

    /// To be called before the run is moved to the driver's thread.
    void Connect(const MeasurementRun& run);
    /// In milliseconds; -1 where it is not known.
    qint64 Age() const { return latest.isEmpty() ? -1 : time.elapsed() - _readAt; }
    qint64 Remaining() const;
    void SetKeepAliveInterval(int milliseconds);

    const Settings settings;
    QElapsedTimer time; ///< The times that the run tells are told by it.
    Result latest;
    QVector<Gap> gaps;
    bool isStopConfirmed = false;
    int keepAliveInterval = 0;

Q_SIGNALS:
    void KeepAliveIntervalSet(int milliseconds);
    void KeptAlive();

private:
    void KeepResult(const Result& result, qint64 readAt);
    void KeepGaps(const QVector<Gap>& told);
    void ConfirmStop();
    void TellTimes();

    Measurement& _measurement;
    qint64 _readAt = 0;
    qint64 _endsAt = -1;
};

} // namespace VesmarClient
