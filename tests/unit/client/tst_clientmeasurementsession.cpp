#include "client/sessions/measurementsession.h"

#include <QtTest>

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using VesmarClient::MeasurementPicture;
using Action = VesmarClient::MeasurementSession::Action;
using Outcome = VesmarClient::MeasurementSession::Outcome;
using Phase = VesmarClient::MeasurementSession::Phase;
using Reason = VesmarClient::MeasurementSession::Reason;

namespace
{

MeasurementPicture Idle()
{
    return {Error::NoErrors,
            MeasurementState::Idle,
            FunctionState::Unknown,
            MeasurementType::Monitoring,
            0,
            false,
            false};
}

MeasurementPicture Active(MeasurementState status, FunctionState functionStatus,
                          MeasurementType function = MeasurementType::HVTest)
{
    return {Error::NoErrors, status, functionStatus, function, 0, false, true};
}

MeasurementPicture Prepared(MeasurementType function = MeasurementType::HVTest)
{
    return Active(MeasurementState::Prepared, FunctionState::Prepared, function);
}

MeasurementPicture Measuring(int seconds)
{
    MeasurementPicture picture = Active(MeasurementState::Measuring, FunctionState::Running);
    picture.seconds = seconds;
    picture.hasResult = true;
    return picture;
}

MeasurementPicture Stopping()
{
    MeasurementPicture picture = Active(MeasurementState::Stopping, FunctionState::Running);
    picture.hasResult = true;
    return picture;
}

MeasurementPicture WithError(MeasurementPicture picture, Error error)
{
    picture.error = error;
    return picture;
}

/// A high-voltage test of 5 seconds that has come to a phase.
VesmarClient::MeasurementSession SessionIn(Phase phase)
{
    VesmarClient::MeasurementSession session(MeasurementType::HVTest, false, 5);
    if (phase >= Phase::Preparing) {
        session.Begin(Idle());
    }
    if (phase >= Phase::Starting) {
        session.Observe(Prepared());
    }
    if (phase >= Phase::Running) {
        session.Observe(Measuring(0));
    }
    if (phase >= Phase::Stopping) {
        session.Observe(Measuring(5));
        session.Observe(Stopping());
    }
    if (phase >= Phase::Leaving) {
        session.Observe(Active(MeasurementState::Stopped, FunctionState::Completed));
    }
    return session;
}

/// The library is never asked to abort where the instrument has not reported the function yet: it would wait
/// without end.
Action EndingFrom(Phase phase)
{
    return phase < Phase::Starting ? Action::Leave : Action::Abort;
}

/// The instrument stops, and the library reports that.
void Confirm(VesmarClient::MeasurementSession* session)
{
    QVERIFY(session->CurrentPhase() == Phase::Leaving);
    QVERIFY(session->IdentityRead(Idle()) == Action::Finish);
    QVERIFY(session->IsStopConfirmed());
}

} // namespace

class TestClientMeasurementSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ContinuousToItsEnd();
    void SingleToItsEnd();
    void SingleWithoutAResultHasFailed();
    void IecIsRlnToTheInstrument();
    void OtherFunctionIsAwaited();
    void OtherFunctionThatDoesNotStop();
    void LeftoversDoNotCountAsPrepared();
    void LeftoversAreNoEnd_data();
    void LeftoversAreNoEnd();
    void PendingStartIsCarriedOut();
    void FunctionBeingPreparedIsAborted();
    void InstrumentWithAnErrorIsNotStarted();
    void ErrorsOfTheMeasurement_data();
    void ErrorsOfTheMeasurement();
    void FirstErrorIsKept();
    void EndBeforeItsTime();
    void FunctionThatIsLost_data();
    void FunctionThatIsLost();
    void SingleFunctionMayBeOverWithItsResult();
    void EndSeenOnlyAfterwards();
    void FunctionThatIsGoneNeedsNoStop();
    void TooSlow_data();
    void TooSlow();
    void AbortInEveryPhase_data();
    void AbortInEveryPhase();
    void EndUnderWayIsNotAborted_data();
    void EndUnderWayIsNotAborted();
    void LinkLostInEveryPhase_data();
    void LinkLostInEveryPhase();
    void StopNeedsAFreshStatus();
    void StopThatIsNotConfirmed();
};

void TestClientMeasurementSession::ContinuousToItsEnd()
{
    VesmarClient::MeasurementSession session(MeasurementType::HVTest, false, 5);
    QVERIFY(session.Begin(Idle()) == Action::Prepare);
    QVERIFY(session.Observe(Active(MeasurementState::Preparing, FunctionState::Preparing)) == Action::None);
    QVERIFY(session.Observe(Prepared()) == Action::Start);
    QVERIFY(session.Observe(Prepared()) == Action::None);
    QVERIFY(session.Observe(Active(MeasurementState::Starting, FunctionState::Starting)) == Action::None);
    QVERIFY(session.Observe(Active(MeasurementState::Running, FunctionState::Running)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Starting);
    QVERIFY(session.Observe(Measuring(0)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Running);
    QVERIFY(session.Observe(Measuring(5)) == Action::None);
    QVERIFY(session.Observe(Stopping()) == Action::None);
    QVERIFY(session.Observe(Active(MeasurementState::Stopped, FunctionState::Completed)) == Action::Leave);
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Completed);
}

void TestClientMeasurementSession::SingleToItsEnd()
{
    VesmarClient::MeasurementSession session(MeasurementType::RLN, true, std::nullopt);
    session.Begin(Idle());
    QVERIFY(session.Observe(Prepared(MeasurementType::RLN)) == Action::Start);
    session.Observe(Active(MeasurementState::Running, FunctionState::Running, MeasurementType::RLN));
    QVERIFY(session.CurrentPhase() == Phase::Running);
    QVERIFY(session.Observe(Stopping()) == Action::None);
    QVERIFY(session.Observe(Active(MeasurementState::Stopped, FunctionState::Completed)) == Action::Leave);
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Completed);
}

void TestClientMeasurementSession::SingleWithoutAResultHasFailed()
{
    VesmarClient::MeasurementSession session(MeasurementType::RLN, true, std::nullopt);
    session.Begin(Idle());
    session.Observe(Prepared(MeasurementType::RLN));
    session.Observe(Active(MeasurementState::Stopped, FunctionState::Terminated, MeasurementType::RLN));
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
}

void TestClientMeasurementSession::IecIsRlnToTheInstrument()
{
    VesmarClient::MeasurementSession session(MeasurementType::IEC, true, std::nullopt);
    session.Begin(Idle());
    QVERIFY(session.Observe(Prepared(MeasurementType::RLN)) == Action::Start);
}

void TestClientMeasurementSession::OtherFunctionIsAwaited()
{
    VesmarClient::MeasurementSession session(MeasurementType::HVTest, false, 5);
    MeasurementPicture picture = Idle();
    picture.function = MeasurementType::RPE;
    QVERIFY(session.Begin(picture) == Action::None);
    QVERIFY(session.Observe(Idle()) == Action::Prepare);
}

void TestClientMeasurementSession::OtherFunctionThatDoesNotStop()
{
    VesmarClient::MeasurementSession session(MeasurementType::HVTest, false, 5);
    MeasurementPicture picture = Idle();
    picture.function = MeasurementType::RPE;
    session.Begin(picture);
    QVERIFY(session.TimeOver() == Action::Finish);
    QVERIFY(session.FailureReason() == Reason::OtherFunction);
    QVERIFY(!session.IsStopConfirmed());
}

void TestClientMeasurementSession::LeftoversDoNotCountAsPrepared()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Preparing);
    QVERIFY(session.Observe(Prepared(MeasurementType::Monitoring)) == Action::None);
    QVERIFY(session.Observe(Prepared(MeasurementType::RPE)) == Action::None);
    QVERIFY(session.Observe(Active(MeasurementState::Prepared, FunctionState::Preparing)) == Action::None);
    QVERIFY(session.Observe(Prepared()) == Action::Start);
}

void TestClientMeasurementSession::LeftoversAreNoEnd_data()
{
    QTest::addColumn<int>("leftover");
    QTest::newRow("stopped") << int(MeasurementState::Stopped);
    QTest::newRow("stopping, when the link was lost") << int(MeasurementState::Stopping);
    QTest::newRow("measuring, when the link was lost") << int(MeasurementState::Measuring);
}

/// The status stays as the measurement before has left it until the library prepares.
void TestClientMeasurementSession::LeftoversAreNoEnd()
{
    QFETCH(int, leftover);
    MeasurementPicture picture = Idle();
    picture.status = static_cast<MeasurementState>(leftover);
    VesmarClient::MeasurementSession session(MeasurementType::HVTest, false, 5);
    QVERIFY(session.Begin(picture) == Action::Prepare);
    picture.isModeActive = true;
    QVERIFY(session.Observe(picture) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Preparing);
    session.Observe(Active(MeasurementState::Preparing, FunctionState::Preparing));
    QVERIFY(session.Observe(Active(MeasurementState::Stopped, FunctionState::PrepareError)) == Action::Abort);
}

/// The library carries out a start that the measurement before was aborted over.
void TestClientMeasurementSession::PendingStartIsCarriedOut()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Preparing);
    QVERIFY(session.Observe(Active(MeasurementState::Starting, FunctionState::Starting)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Starting);
    QVERIFY(session.Observe(Measuring(0)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Running);
}

void TestClientMeasurementSession::FunctionBeingPreparedIsAborted()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Preparing);
    session.Observe(Active(MeasurementState::Preparing, FunctionState::Preparing));
    QVERIFY(session.Abort() == Action::Abort);
}

void TestClientMeasurementSession::InstrumentWithAnErrorIsNotStarted()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Preparing);
    QVERIFY(session.Observe(WithError(Prepared(), Error::DeviceError3)) == Action::Abort);
    QVERIFY(session.FirstError() == Error::DeviceError3);
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
}

void TestClientMeasurementSession::ErrorsOfTheMeasurement_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("error");
    QTest::newRow("preparing") << int(Phase::Preparing) << 200;
    QTest::newRow("starting, 201") << int(Phase::Starting) << 201;
    QTest::newRow("starting, 202") << int(Phase::Starting) << 202;
    QTest::newRow("running, 202") << int(Phase::Running) << 202;
    QTest::newRow("running, the instrument's own") << int(Phase::Running) << 7;
}

void TestClientMeasurementSession::ErrorsOfTheMeasurement()
{
    QFETCH(int, phase);
    QFETCH(int, error);
    VesmarClient::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    session.Observe(WithError(Stopping(), static_cast<Error>(error)));
    session.Observe(Active(MeasurementState::Stopped, FunctionState::Terminated)); // a status took it away
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::Error);
    QCOMPARE(int(session.FirstError()), error);
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
}

void TestClientMeasurementSession::FirstErrorIsKept()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Running);
    session.Observe(WithError(Measuring(1), Error::MeasurementFailed));
    session.Observe(WithError(Measuring(1), Error::DeviceError2));
    QVERIFY(session.FirstError() == Error::MeasurementFailed);
}

void TestClientMeasurementSession::EndBeforeItsTime()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Running);
    session.Observe(Measuring(4));
    session.Observe(Stopping());
    session.Observe(Active(MeasurementState::Stopped, FunctionState::Completed));
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
}

void TestClientMeasurementSession::FunctionThatIsLost_data()
{
    QTest::addColumn<int>("function");
    QTest::newRow("none any more") << static_cast<int>(MeasurementType::Monitoring);
    QTest::newRow("another one") << static_cast<int>(MeasurementType::RPE);
}

void TestClientMeasurementSession::FunctionThatIsLost()
{
    QFETCH(const int, function);
    VesmarClient::MeasurementSession session = SessionIn(Phase::Running);
    MeasurementPicture picture = Measuring(3);
    picture.function = static_cast<MeasurementType>(function);
    QVERIFY(session.Observe(picture) == Action::Leave);
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::FunctionLost);
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
}

void TestClientMeasurementSession::SingleFunctionMayBeOverWithItsResult()
{
    VesmarClient::MeasurementSession session(MeasurementType::RLN, true, std::nullopt);
    session.Begin(Idle());
    session.Observe(Prepared(MeasurementType::RLN));
    session.Observe(Active(MeasurementState::Running, FunctionState::Running, MeasurementType::RLN));
    MeasurementPicture picture =
        Active(MeasurementState::Measuring, FunctionState::Completed, MeasurementType::Monitoring);
    picture.hasResult = true;
    QVERIFY(session.Observe(picture) == Action::None);
    picture.status = MeasurementState::Stopped;
    QVERIFY(session.Observe(picture) == Action::Leave);
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Completed);
}

void TestClientMeasurementSession::EndSeenOnlyAfterwards()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Running);
    session.Observe(Measuring(5));
    MeasurementPicture again = Active(MeasurementState::Preparing, FunctionState::Completed);
    again.hasResult = true;
    QVERIFY(session.Observe(again) == Action::Leave);
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Completed);
}

/// The library would go on to stop it without end.
void TestClientMeasurementSession::FunctionThatIsGoneNeedsNoStop()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Stopping);
    MeasurementPicture gone = Stopping();
    gone.function = MeasurementType::Monitoring;
    QVERIFY(session.Observe(gone) == Action::Leave);
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Completed);
}

void TestClientMeasurementSession::TooSlow_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("reason");
    QTest::newRow("preparing") << int(Phase::Preparing) << int(Reason::NotPrepared);
    QTest::newRow("starting") << int(Phase::Starting) << int(Reason::NotStarted);
}

void TestClientMeasurementSession::TooSlow()
{
    QFETCH(int, phase);
    QFETCH(int, reason);
    VesmarClient::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    QVERIFY(session.TimeOver() == EndingFrom(static_cast<Phase>(phase)));
    QCOMPARE(int(session.FailureReason()), reason);
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
}

void TestClientMeasurementSession::AbortInEveryPhase_data()
{
    QTest::addColumn<int>("phase");
    QTest::newRow("awaiting idle") << int(Phase::AwaitingIdle);
    QTest::newRow("preparing") << int(Phase::Preparing);
    QTest::newRow("starting") << int(Phase::Starting);
    QTest::newRow("running") << int(Phase::Running);
}

void TestClientMeasurementSession::AbortInEveryPhase()
{
    QFETCH(int, phase);
    VesmarClient::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    QVERIFY(session.Abort() == EndingFrom(static_cast<Phase>(phase)));
    QVERIFY(session.Abort() == Action::None);
    QVERIFY(session.Observe(Prepared()) == Action::None); // it is never started after that
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Aborted);
}

void TestClientMeasurementSession::EndUnderWayIsNotAborted_data()
{
    QTest::addColumn<int>("phase");
    QTest::newRow("stopping") << int(Phase::Stopping);
    QTest::newRow("leaving") << int(Phase::Leaving);
}

void TestClientMeasurementSession::EndUnderWayIsNotAborted()
{
    QFETCH(int, phase);
    VesmarClient::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    QVERIFY(session.Abort() == Action::None);
    session.Observe(Active(MeasurementState::Stopped, FunctionState::Completed));
    Confirm(&session);
    QVERIFY(session.CurrentOutcome() == Outcome::Completed);
}

void TestClientMeasurementSession::LinkLostInEveryPhase_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<bool>("isSeen");
    QTest::newRow("awaiting idle") << int(Phase::AwaitingIdle) << true;
    for (const bool isSeen : {true, false}) {
        const char* how = isSeen ? "seen" : "over before it was seen";
        QTest::addRow("preparing, %s", how) << int(Phase::Preparing) << isSeen;
        QTest::addRow("starting, %s", how) << int(Phase::Starting) << isSeen;
        QTest::addRow("running, %s", how) << int(Phase::Running) << isSeen;
    }
}

void TestClientMeasurementSession::LinkLostInEveryPhase()
{
    QFETCH(int, phase);
    QFETCH(bool, isSeen);
    VesmarClient::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    MeasurementPicture lost = Measuring(1);
    lost.isModeActive = false; // the library leaves measurement mode
    lost.error = isSeen ? Error::CommunicationRecovery : Error::NoErrors;
    QVERIFY(session.Observe(lost) == Action::Leave);
    QVERIFY(session.Abort() == Action::None);
    QCOMPARE(int(session.LostIn()), phase);
    QVERIFY(session.CurrentOutcome() == Outcome::LinkLost);
    QVERIFY(session.IdentityRead(Measuring(1)) == Action::None); // it is back, and the function still runs
    QVERIFY(!session.IsStopConfirmed());
    QVERIFY(session.Observe(Idle()) == Action::Finish);
    QVERIFY(session.IsStopConfirmed());
    QVERIFY(session.CurrentOutcome() == Outcome::LinkLost);
}

void TestClientMeasurementSession::StopNeedsAFreshStatus()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Preparing);
    session.Abort();
    QVERIFY(session.Observe(Idle()) == Action::None); // as it was before the preparation
    QVERIFY(session.IdentityRead(Prepared()) == Action::None);
    QVERIFY(session.Observe(Idle()) == Action::Finish);
}

void TestClientMeasurementSession::StopThatIsNotConfirmed()
{
    VesmarClient::MeasurementSession session = SessionIn(Phase::Stopping);
    QVERIFY(session.TimeOver() == Action::Leave);
    QVERIFY(session.IdentityRead(Stopping()) == Action::None);
    QVERIFY(session.TimeOver() == Action::Finish);
    QVERIFY(!session.IsStopConfirmed());
}

QTEST_GUILESS_MAIN(TestClientMeasurementSession)
#include "tst_clientmeasurementsession.moc"
