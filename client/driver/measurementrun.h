#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <optional>

#include <Vesmar/rcdsettings.h>

#include <VesmarClient/result.h>

#include "client/driver/measuredresults.h"
#include "client/driver/run.h"
#include "client/sessions/gapwatch.h"
#include "client/sessions/measurementsession.h"

namespace VesmarClient
{

/// How long a measurement may keep one waiting.
struct MeasurementLimits {
    std::chrono::milliseconds prepare{10000}; ///< For preparing, and then again for starting.
    std::chrono::milliseconds check{2000};    ///< Enough for several checks of the object under test.
    std::chrono::milliseconds stop{15000};    ///< For stopping, and for its confirmation.
    std::chrono::milliseconds cleanUp{5000};  ///< For a clean-up, whose end nobody reports.
};

/// What is to be measured, in the driver's settings.
struct MeasurementOrder {
    std::unique_ptr<Vesmar::MeasurementSettings> settings;
    bool isReMeasured = false; ///< Whether a Ub/Re test runs first, and gives the Re of these settings.
    MeasurementLimits limits;
    QElapsedTimer time; ///< The job's own clock: all times are told by it, in milliseconds.
};

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
    bool AdoptRe(const Vesmar::MeasurementResults& results);
    void MissKeepAlive();
    void CarryOut(Action action);
    void Leave();
    void EnterPhase();
    void Limit(SessionPhase phase);
    void WatchGaps(SessionPhase phase);
    void TellGaps(bool haveChanged);
    void TellTime();

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
    QTimer _silence;         ///< Runs from one reading to the next.
    GapWatch _gaps;
    QTimer _keepAlive;
    bool _isKeepAliveMissed = false;
};

} // namespace VesmarClient
