#pragma once

#include <optional>

#include <VesmarClient/measurement.h>

#include "cli/kit/connection.h"
#include "cli/measure/measurementview.h"

namespace Cli
{

/// Measures once the link is up, and shows what happens. A signal and an output that is lost abort the
/// measurement.
class MeasurementRun : public QObject
{
    Q_OBJECT

public:
    MeasurementRun(Connection& connection, MeasurementView& view, const VesmarClient::Settings& settings,
                   const VesmarClient::MeasurementTimeouts& timeouts);

private:
    void Begin();
    void EnterPhase(VesmarClient::Phase phase);
    void BeginTest();
    QVector<VesmarClient::Gap> Gaps() const;
    void ReportLoss(VesmarClient::LinkState state);
    void Interrupt(int signalNumber);
    void EndUnseen();
    void Abort(const QString& reason);
    bool IsEnding() const;
    void End();
    void EndUnbegun();

    Connection& _connection;
    MeasurementView& _view;
    VesmarClient::Settings _settings;
    VesmarClient::MeasurementTimeouts _timeouts;
    VesmarClient::Measurement* _measurement = nullptr; ///< Null until the link is up.
    VesmarClient::Phase _phase = VesmarClient::Phase::Waiting;
    VesmarClient::Phase _lastPhase =
        VesmarClient::Phase::Waiting; ///< The one before the instrument was told to stop.
    bool _isReNext;                   ///< The next test is the one that measures Re.
    bool _isTestNext = false;         ///< Another test follows the one under way.
    qint64 _runsSince = 0;            ///< By the job's clock.
    bool _isAborted = false;
    bool _isLossReported = false;
};

} // namespace Cli
