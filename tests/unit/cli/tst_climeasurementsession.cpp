#include "cli/sessions/measurementsession.h"

#include <QtTest>

using Cli::MeasurementPicture;
using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Action = Cli::MeasurementSession::Action;
using Phase = Cli::MeasurementSession::Phase;
using Reason = Cli::MeasurementSession::Reason;

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
Cli::MeasurementSession SessionIn(Phase phase)
{
    Cli::MeasurementSession session(MeasurementType::HVTest, false, 5);
    if (phase >= Phase::Preparing) {
        session.Begin(Idle());
    }
    if (phase >= Phase::Starting) {
        session.Follow(Prepared());
    }
    if (phase >= Phase::Running) {
        session.Follow(Measuring(0));
    }
    if (phase >= Phase::Stopping) {
        session.Follow(Measuring(5));
        session.Follow(Stopping());
    }
    if (phase >= Phase::Leaving) {
        session.Follow(Active(MeasurementState::Stopped, FunctionState::Completed));
    }
    return session;
}

/// The instrument stops, and the library tells of it.
void Confirm(Cli::MeasurementSession* session)
{
    QVERIFY(session->CurrentPhase() == Phase::Leaving);
    QVERIFY(session->IdentityRead(Idle()) == Action::Finish);
    QVERIFY(session->IsStopConfirmed());
}

} // namespace

class TestCliMeasurementSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ContinuousToItsEnd();
    void SingleToItsEnd();
    void SingleWithoutAResultHasFailed();
    void IecIsRlnToTheInstrument();
    void OtherFunctionIsAwaited();
    void OtherFunctionThatDoesNotStop();
    void LeftoversAreNotTakenForPrepared();
    void InstrumentWithAnErrorIsNotStarted();
    void ErrorsOfTheMeasurement_data();
    void ErrorsOfTheMeasurement();
    void FirstErrorIsKept();
    void EndBeforeItsTime();
    void FunctionThatIsLost_data();
    void FunctionThatIsLost();
    void SingleFunctionMayBeOverWithItsResult();
    void EndSeenOnlyAfterwards();
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

void TestCliMeasurementSession::ContinuousToItsEnd()
{
    Cli::MeasurementSession session(MeasurementType::HVTest, false, 5);
    QVERIFY(session.Begin(Idle()) == Action::Prepare);
    QVERIFY(session.Follow(Active(MeasurementState::Preparing, FunctionState::Preparing)) == Action::None);
    QVERIFY(session.Follow(Prepared()) == Action::Start);
    QVERIFY(session.Follow(Prepared()) == Action::None);
    QVERIFY(session.Follow(Active(MeasurementState::Starting, FunctionState::Starting)) == Action::None);
    QVERIFY(session.Follow(Active(MeasurementState::Running, FunctionState::Running)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Starting);
    QVERIFY(session.Follow(Measuring(0)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Running);
    QVERIFY(session.Follow(Measuring(5)) == Action::None);
    QVERIFY(session.Follow(Stopping()) == Action::None);
    QVERIFY(session.Follow(Active(MeasurementState::Stopped, FunctionState::Completed)) == Action::Leave);
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 0);
}

void TestCliMeasurementSession::SingleToItsEnd()
{
    Cli::MeasurementSession session(MeasurementType::RLN, true, std::nullopt);
    session.Begin(Idle());
    QVERIFY(session.Follow(Prepared(MeasurementType::RLN)) == Action::Start);
    session.Follow(Active(MeasurementState::Running, FunctionState::Running, MeasurementType::RLN));
    QVERIFY(session.CurrentPhase() == Phase::Running);
    QVERIFY(session.Follow(Stopping()) == Action::None);
    QVERIFY(session.Follow(Active(MeasurementState::Stopped, FunctionState::Completed)) == Action::Leave);
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 0);
}

void TestCliMeasurementSession::SingleWithoutAResultHasFailed()
{
    Cli::MeasurementSession session(MeasurementType::RLN, true, std::nullopt);
    session.Begin(Idle());
    session.Follow(Prepared(MeasurementType::RLN));
    session.Follow(Active(MeasurementState::Stopped, FunctionState::Terminated, MeasurementType::RLN));
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    QCOMPARE(session.ExitStatus(), 4);
}

void TestCliMeasurementSession::IecIsRlnToTheInstrument()
{
    Cli::MeasurementSession session(MeasurementType::IEC, true, std::nullopt);
    session.Begin(Idle());
    QVERIFY(session.Follow(Prepared(MeasurementType::RLN)) == Action::Start);
}

void TestCliMeasurementSession::OtherFunctionIsAwaited()
{
    Cli::MeasurementSession session(MeasurementType::HVTest, false, 5);
    MeasurementPicture picture = Idle();
    picture.function = MeasurementType::RPE;
    QVERIFY(session.Begin(picture) == Action::None);
    QVERIFY(session.Follow(Idle()) == Action::Prepare);
}

void TestCliMeasurementSession::OtherFunctionThatDoesNotStop()
{
    Cli::MeasurementSession session(MeasurementType::HVTest, false, 5);
    MeasurementPicture picture = Idle();
    picture.function = MeasurementType::RPE;
    session.Begin(picture);
    QVERIFY(session.TimeOver() == Action::Finish);
    QVERIFY(session.FailureReason() == Reason::OtherFunction);
    QCOMPARE(session.ExitStatus(), 6);
}

void TestCliMeasurementSession::LeftoversAreNotTakenForPrepared()
{
    Cli::MeasurementSession session = SessionIn(Phase::Preparing);
    QVERIFY(session.Follow(Prepared(MeasurementType::Monitoring)) == Action::None);
    QVERIFY(session.Follow(Prepared(MeasurementType::RPE)) == Action::None);
    QVERIFY(session.Follow(Active(MeasurementState::Prepared, FunctionState::Preparing)) == Action::None);
    QVERIFY(session.Follow(Prepared()) == Action::Start);
}

void TestCliMeasurementSession::InstrumentWithAnErrorIsNotStarted()
{
    Cli::MeasurementSession session = SessionIn(Phase::Preparing);
    QVERIFY(session.Follow(WithError(Prepared(), Error::DeviceError3)) == Action::Abort);
    QVERIFY(session.FirstError() == Error::DeviceError3);
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 4);
}

void TestCliMeasurementSession::ErrorsOfTheMeasurement_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("error");
    QTest::newRow("preparing") << int(Phase::Preparing) << 200;
    QTest::newRow("starting, 201") << int(Phase::Starting) << 201;
    QTest::newRow("starting, 202") << int(Phase::Starting) << 202;
    QTest::newRow("running, 202") << int(Phase::Running) << 202;
    QTest::newRow("running, the instrument's own") << int(Phase::Running) << 7;
}

void TestCliMeasurementSession::ErrorsOfTheMeasurement()
{
    QFETCH(int, phase);
    QFETCH(int, error);
    Cli::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    session.Follow(WithError(Stopping(), static_cast<Error>(error)));
    session.Follow(Active(MeasurementState::Stopped, FunctionState::Terminated)); // a status took it away
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::Error);
    QCOMPARE(int(session.FirstError()), error);
    QCOMPARE(session.ExitStatus(), 4);
}

void TestCliMeasurementSession::FirstErrorIsKept()
{
    Cli::MeasurementSession session = SessionIn(Phase::Running);
    session.Follow(WithError(Measuring(1), Error::MeasurementFailed));
    session.Follow(WithError(Measuring(1), Error::DeviceError2));
    QVERIFY(session.FirstError() == Error::MeasurementFailed);
}

void TestCliMeasurementSession::EndBeforeItsTime()
{
    Cli::MeasurementSession session = SessionIn(Phase::Running);
    session.Follow(Measuring(4));
    session.Follow(Stopping());
    session.Follow(Active(MeasurementState::Stopped, FunctionState::Completed));
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    QCOMPARE(session.ExitStatus(), 4);
}

void TestCliMeasurementSession::FunctionThatIsLost_data()
{
    QTest::addColumn<int>("function");
    QTest::newRow("none any more") << static_cast<int>(MeasurementType::Monitoring);
    QTest::newRow("another one") << static_cast<int>(MeasurementType::RPE);
}

void TestCliMeasurementSession::FunctionThatIsLost()
{
    QFETCH(const int, function);
    Cli::MeasurementSession session = SessionIn(Phase::Running);
    MeasurementPicture picture = Measuring(3);
    picture.function = static_cast<MeasurementType>(function);
    QVERIFY(session.Follow(picture) == Action::Leave);
    Confirm(&session);
    QVERIFY(session.FailureReason() == Reason::FunctionLost);
    QCOMPARE(session.ExitStatus(), 4);
}

void TestCliMeasurementSession::SingleFunctionMayBeOverWithItsResult()
{
    Cli::MeasurementSession session(MeasurementType::RLN, true, std::nullopt);
    session.Begin(Idle());
    session.Follow(Prepared(MeasurementType::RLN));
    session.Follow(Active(MeasurementState::Running, FunctionState::Running, MeasurementType::RLN));
    MeasurementPicture picture =
        Active(MeasurementState::Measuring, FunctionState::Completed, MeasurementType::Monitoring);
    picture.hasResult = true;
    QVERIFY(session.Follow(picture) == Action::None);
    picture.status = MeasurementState::Stopped;
    QVERIFY(session.Follow(picture) == Action::Leave);
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 0);
}

void TestCliMeasurementSession::EndSeenOnlyAfterwards()
{
    Cli::MeasurementSession session = SessionIn(Phase::Running);
    session.Follow(Measuring(5));
    MeasurementPicture again = Active(MeasurementState::Preparing, FunctionState::Completed);
    again.hasResult = true;
    QVERIFY(session.Follow(again) == Action::Leave);
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 0);
}

void TestCliMeasurementSession::TooSlow_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("reason");
    QTest::newRow("preparing") << int(Phase::Preparing) << int(Reason::NotPrepared);
    QTest::newRow("starting") << int(Phase::Starting) << int(Reason::NotStarted);
}

void TestCliMeasurementSession::TooSlow()
{
    QFETCH(int, phase);
    QFETCH(int, reason);
    Cli::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    QVERIFY(session.TimeOver() == Action::Abort);
    QCOMPARE(int(session.FailureReason()), reason);
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 4);
}

void TestCliMeasurementSession::AbortInEveryPhase_data()
{
    QTest::addColumn<int>("phase");
    QTest::newRow("awaiting idle") << int(Phase::AwaitingIdle);
    QTest::newRow("preparing") << int(Phase::Preparing);
    QTest::newRow("starting") << int(Phase::Starting);
    QTest::newRow("running") << int(Phase::Running);
}

void TestCliMeasurementSession::AbortInEveryPhase()
{
    QFETCH(int, phase);
    Cli::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    QVERIFY(session.Abort() == Action::Abort);
    QVERIFY(session.Abort() == Action::None);
    QVERIFY(session.Follow(Prepared()) == Action::None); // it is never started after that
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 5);
}

void TestCliMeasurementSession::EndUnderWayIsNotAborted_data()
{
    QTest::addColumn<int>("phase");
    QTest::newRow("stopping") << int(Phase::Stopping);
    QTest::newRow("leaving") << int(Phase::Leaving);
}

void TestCliMeasurementSession::EndUnderWayIsNotAborted()
{
    QFETCH(int, phase);
    Cli::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    QVERIFY(session.Abort() == Action::None);
    session.Follow(Active(MeasurementState::Stopped, FunctionState::Completed));
    Confirm(&session);
    QCOMPARE(session.ExitStatus(), 0);
}

void TestCliMeasurementSession::LinkLostInEveryPhase_data()
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

void TestCliMeasurementSession::LinkLostInEveryPhase()
{
    QFETCH(int, phase);
    QFETCH(bool, isSeen);
    Cli::MeasurementSession session = SessionIn(static_cast<Phase>(phase));
    MeasurementPicture lost = Measuring(1);
    lost.isModeActive = false; // the library leaves measurement mode
    lost.error = isSeen ? Error::CommunicationRecovery : Error::NoErrors;
    QVERIFY(session.Follow(lost) == Action::Leave);
    QVERIFY(session.Abort() == Action::None);
    QCOMPARE(int(session.LostIn()), phase);
    QCOMPARE(session.ExitStatus(), 7);
    QVERIFY(session.IdentityRead(Measuring(1)) == Action::None); // it is back, and the function still runs
    QVERIFY(!session.IsStopConfirmed());
    QVERIFY(session.Follow(Idle()) == Action::Finish);
    QVERIFY(session.IsStopConfirmed());
    QCOMPARE(session.ExitStatus(), 7);
}

void TestCliMeasurementSession::StopNeedsAFreshStatus()
{
    Cli::MeasurementSession session = SessionIn(Phase::Preparing);
    session.Abort();
    QVERIFY(session.Follow(Idle()) == Action::None); // as it was before the preparation
    QVERIFY(session.IdentityRead(Prepared()) == Action::None);
    QVERIFY(session.Follow(Idle()) == Action::Finish);
}

void TestCliMeasurementSession::StopThatIsNotConfirmed()
{
    Cli::MeasurementSession session = SessionIn(Phase::Stopping);
    QVERIFY(session.TimeOver() == Action::Leave);
    QVERIFY(session.IdentityRead(Stopping()) == Action::None);
    QVERIFY(session.TimeOver() == Action::Finish);
    QVERIFY(!session.IsStopConfirmed());
    QCOMPARE(session.ExitStatus(), 6);
}

QTEST_GUILESS_MAIN(TestCliMeasurementSession)
#include "tst_climeasurementsession.moc"
