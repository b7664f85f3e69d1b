#pragma once

#include <QTimer>

#include <VesmarClient/result.h>

#include "client/driver/run.h"
#include "client/measuring/gapmonitor.h"
#include "client/measuring/measurementorder.h"
#include "client/measuring/sessionrunner.h"

namespace VesmarClient
{

/// Measures, as long as the application asks for it. A measurement whose Re another test measures runs that
/// test first, in a session of its own.
class MeasurementRun : public Run
{
    Q_OBJECT

public:
    explicit MeasurementRun(MeasurementOrder order);

    bool IsEndProved() const override { return true; }
    void Begin() override;
    void Abort() override;

    /// From now on the application has to call `KeepAlive` that often; with 0 it need not.
    void SetKeepAliveInterval(int milliseconds);
    void KeepAlive();

Q_SIGNALS:
    void ResultRead(const VesmarClient::Result& result, qint64 readAt);
    /// The measurement runs, and will be over at this time.
    void TimeBegan(qint64 endsAt);
    void GapsChanged(const QVector<VesmarClient::Gap>& gaps);
    /// The latest result may be one of another function. `Finished` follows.
    void ResultsWithdrawn();
    /// It is proved that nothing runs any more. `Finished` follows.
    void StopConfirmed();

private:
    void BeginTest(Vesmar::MeasurementSettings& settings);
    void EndTest();
    void Finish();
    bool ReceiveResults(const Vesmar::MeasurementResults& results);
    void MissKeepAlive();
    void EnterPhase(MeasurementSession::Phase phase);
    void BeginTime();
    bool IsReTest() const { return &_test->Settings() == _reSettings.get(); }

    MeasurementOrder _order;
    std::unique_ptr<Vesmar::RCDSettings>
        _reSettings;                      ///< Those of the test that measures Re; null without one.
    std::unique_ptr<SessionRunner> _test; ///< Under way; null until the work begins.
    GapMonitor _gaps;
    QTimer _keepAlive;
    bool _isAborted = false; ///< Somebody has asked for it.
    bool _isKeepAliveMissed = false;
};

} // namespace VesmarClient
