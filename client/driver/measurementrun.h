#pragma once

#include <QTimer>

#include <VesmarClient/result.h>

#include "client/driver/gapmonitor.h"
#include "client/driver/measuredresults.h"
#include "client/driver/measurementorder.h"
#include "client/driver/run.h"

namespace VesmarClient
{

/// Measures: carries out at the instrument what a session decides, and lets the session observe the
/// instrument. A measurement whose Re another test measures runs that test first, in a session of its own.
class MeasurementRun : public Run
{
    Q_OBJECT

public:
    explicit MeasurementRun(MeasurementOrder order);
    ~MeasurementRun() override;

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
    using SessionPhase = MeasurementSession::Phase;
    using Action = MeasurementSession::Action;

    void WatchTester();
    MeasurementPicture Picture();
    void BeginTest(Vesmar::MeasurementSettings& settings);
    void EndTest();
    void Finish();
    void Observe();
    void AcceptResults();
    bool AdoptRe(const Vesmar::MeasurementResults& results) const;
    void MissKeepAlive();
    void CarryOut(Action action);
    void Leave();
    void LeadOut();
    void EnterPhase();
    void BeginTime();

    MeasurementOrder _order;
    std::unique_ptr<Vesmar::RCDSettings>
        _reSettings; ///< Those of the test that measures Re; null without one.
    Vesmar::MeasurementSettings* _settings = nullptr; ///< Those of the test under way.
    Vesmar::Tester* _tester = nullptr;                ///< Null until the work begins.
    std::optional<MeasuredResults> _results;
    std::unique_ptr<MeasurementSession> _session;
    std::optional<SessionPhase> _phase;
    bool _hasResult = false; ///< Whether the test under way has a result.
    QTimer _limit;           ///< Of the present phase.
    QTimer _leadingOut;      ///< Of a driver that looks at nothing but a running test.
    GapMonitor _gaps;
    QTimer _keepAlive;
    bool _isAborted = false; ///< Somebody has asked for it.
    bool _isKeepAliveMissed = false;
};

} // namespace VesmarClient
