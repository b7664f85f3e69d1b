#include "cli/sessions/rcdsession.h"

#include <QtTest>

using Cli::MeasurementPicture;
using Cli::RcdSession;
using Cli::RcdTest;
using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Action = Cli::MeasurementSession::Action;
using Outcome = Cli::MeasurementSession::Outcome;
using Phase = Cli::MeasurementSession::Phase;
using Reason = Cli::MeasurementSession::Reason;

Q_DECLARE_METATYPE(MeasurementPicture)
Q_DECLARE_METATYPE(RcdTest)

namespace
{

/// Of an instrument that does nothing.
MeasurementPicture Idle(MeasurementState status = MeasurementState::Idle)
{
    return {Error::NoErrors, status, FunctionState::Unknown, MeasurementType::Monitoring, 0, false, false};
}

/// In measurement mode.
MeasurementPicture At(MeasurementState status, Error error = Error::NoErrors)
{
    MeasurementPicture picture = Idle(status);
    picture.error = error;
    picture.isModeActive = true;
    return picture;
}

/// A Ub/Re test that is prepared, and not started yet.
MeasurementPicture Watched(FunctionState functionStatus, Error error = Error::NoErrors)
{
    MeasurementPicture picture = At(MeasurementState::Idle, error);
    picture.function = MeasurementType::RCD;
    picture.functionStatus = functionStatus;
    return picture;
}

MeasurementPicture Stopped(bool hasResult, Error error = Error::NoErrors)
{
    MeasurementPicture picture = At(MeasurementState::Stopped, error);
    picture.hasResult = hasResult;
    return picture;
}

/// What the library goes through from the start of a test to its run.
void GoThrough(RcdSession* session, const QVector<MeasurementState>& statuses)
{
    for (const MeasurementState status : statuses) {
        QVERIFY(session->Follow(At(status)) == Action::None);
    }
}

void Run(RcdSession* session)
{
    GoThrough(session, {MeasurementState::Unknown, MeasurementState::Idle, MeasurementState::Preparing,
                        MeasurementState::Prepared, MeasurementState::Starting, MeasurementState::Running});
    QVERIFY(session->CurrentPhase() == Phase::Running);
}

/// One that is being prepared or, the Ub/Re test, run.
RcdSession Begun(RcdTest test)
{
    RcdSession session(test);
    session.Begin(Idle());
    if (test == RcdTest::UbRe) {
        session.Follow(Watched(FunctionState::Prepared));
    }
    return session;
}

/// The instrument stops, and the library tells of it.
void Confirm(RcdSession* session, int exitStatus)
{
    QVERIFY(session->CurrentPhase() == Phase::Leaving);
    QVERIFY(session->IdentityRead(Idle()) == Action::Finish);
    QCOMPARE(session->ExitStatus(), exitStatus);
}

void AddTests(std::initializer_list<RcdTest> tests)
{
    QTest::addColumn<RcdTest>("test");
    const char* const names[]{"Ub/Re", "Ia/Ta", "IEC Ia/Ta", "clean-up"};
    for (const RcdTest test : tests) {
        QTest::newRow(names[static_cast<int>(test)]) << test;
    }
}

} // namespace

class TestCliRcdSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ToItsEnd_data();
    void ToItsEnd();
    void UbReIsWatchedBeforeItsStart();
    void LeftoversAreNotTakenForPrepared();
    void WatchThatFails_data();
    void WatchThatFails();
    void ObjectErrorThatIsOvercome();
    void ObjectErrorThatStays();
    void CheckThatFindsNothing();
    void ErrorAtTheEnd_data();
    void ErrorAtTheEnd();
    void ErrorBeforeTheTest();
    void ErrorThatIsOvercomeDoesNotCount();
    void EndWithoutAResult_data();
    void EndWithoutAResult();
    void EndSeenOnlyAfterwards();
    void EndOfTheTestBeforeIsNotTaken();
    void SilentTestIsStartedAgain();
    void CleanUpIsLeftAlone();
    void CleanUpThatWasNotStartedHasFailed();
    void CleanUpCanBeAborted();
    void MainsAreAwaitedWithoutLimit();
    void TooSlow_data();
    void TooSlow();
    void AbortInEveryPhase_data();
    void AbortInEveryPhase();
    void LinkLostInEveryPhase_data();
    void LinkLostInEveryPhase();
};

void TestCliRcdSession::ToItsEnd_data()
{
    AddTests({RcdTest::IaTa, RcdTest::IecIaTa});
}

void TestCliRcdSession::ToItsEnd()
{
    QFETCH(RcdTest, test);
    RcdSession session(test);
    QVERIFY(session.Begin(Idle()) == Action::PrepareAndStart);
    Run(&session);
    QVERIFY(session.Follow(Stopped(true)) == Action::Leave);
    QVERIFY(session.CurrentOutcome() == Outcome::Completed);
    QVERIFY(session.FirstError() == Error::NoErrors);
    Confirm(&session, 0);
}

void TestCliRcdSession::UbReIsWatchedBeforeItsStart()
{
    RcdSession session(RcdTest::UbRe);
    QVERIFY(session.Begin(Idle()) == Action::Prepare);
    GoThrough(&session, {MeasurementState::Unknown, MeasurementState::Preparing, MeasurementState::Prepared});
    QVERIFY(session.Follow(Watched(FunctionState::Preparing)) == Action::None);
    QVERIFY(session.Follow(Watched(FunctionState::Prepared)) == Action::Start);
    QVERIFY(session.Follow(Watched(FunctionState::Prepared)) == Action::None); // only once
    QVERIFY(session.CurrentPhase() == Phase::Preparing);
    GoThrough(&session, {MeasurementState::Preparing, MeasurementState::Prepared, MeasurementState::Starting,
                         MeasurementState::Running});
    QVERIFY(session.Follow(Stopped(true)) == Action::Leave);
    Confirm(&session, 0);
}

void TestCliRcdSession::LeftoversAreNotTakenForPrepared()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    MeasurementPicture picture = Watched(FunctionState::Prepared);
    picture.function = MeasurementType::Monitoring;
    QVERIFY(session.Follow(picture) == Action::None);
    picture = Watched(FunctionState::Prepared);
    picture.status = MeasurementState::Preparing;
    QVERIFY(session.Follow(picture) == Action::None);
    QVERIFY(session.Follow(Watched(FunctionState::Prepared, Error::RCDCheckObject2)) == Action::None);
    QVERIFY(session.Follow(Watched(FunctionState::Prepared)) == Action::Start);
}

void TestCliRcdSession::WatchThatFails_data()
{
    QTest::addColumn<int>("error");
    for (const int error : {0, 14, 200, 398, 400, 401, 520, 534}) {
        QTest::addRow("%d", error) << error;
    }
}

void TestCliRcdSession::WatchThatFails()
{
    QFETCH(int, error);
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    QVERIFY(session.Follow(At(MeasurementState::Unknown, static_cast<Error>(error))) == Action::Abort);
    QVERIFY(session.FailureReason() == Reason::Error);
    QCOMPARE(int(session.FirstError()), error);
    Confirm(&session, 4);
}

void TestCliRcdSession::ObjectErrorThatIsOvercome()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    QVERIFY(session.Follow(Watched(FunctionState::PrepareError)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Checking);
    QVERIFY(session.Follow(Watched(FunctionState::PrepareError, Error::RCDCheckObjectFailed)) ==
            Action::None);
    QVERIFY(session.Follow(Watched(FunctionState::PrepareError, Error::RCDCheckObjectULNIECInvalid)) ==
            Action::None);
    QVERIFY(session.Follow(Watched(FunctionState::PrepareError)) == Action::Start);
    QVERIFY(session.FirstError() == Error::NoErrors);
}

void TestCliRcdSession::ObjectErrorThatStays()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    session.Follow(Watched(FunctionState::PrepareError, Error::RCDCheckObject9));
    QVERIFY(session.TimeOver() == Action::Abort);
    QVERIFY(session.FailureReason() == Reason::Error);
    QVERIFY(session.FirstError() == Error::RCDCheckObject9);
    Confirm(&session, 4);
}

void TestCliRcdSession::CheckThatFindsNothing()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    session.Follow(Watched(FunctionState::PrepareError));
    QVERIFY(session.TimeOver() == Action::Start); // which checks once more
    QVERIFY(session.CurrentPhase() == Phase::Preparing);
}

void TestCliRcdSession::ErrorAtTheEnd_data()
{
    QTest::addColumn<RcdTest>("test");
    QTest::addColumn<int>("error");
    const std::pair<const char*, RcdTest> tests[]{{"Ub/Re", RcdTest::UbRe},
                                                  {"Ia/Ta", RcdTest::IaTa},
                                                  {"IEC Ia/Ta", RcdTest::IecIaTa},
                                                  {"clean-up", RcdTest::CleanUp}};
    for (const auto& [name, test] : tests) {
        for (const int error : {3, 200, 201, 398, 400, 401, 502, 520, 521}) {
            QTest::addRow("%s, %d", name, error) << test << error;
        }
    }
}

void TestCliRcdSession::ErrorAtTheEnd()
{
    QFETCH(RcdTest, test);
    QFETCH(int, error);
    RcdSession session = Begun(test);
    Run(&session);
    QVERIFY(session.Follow(Stopped(true, static_cast<Error>(error))) == Action::Leave);
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
    QVERIFY(session.FailureReason() == Reason::Error);
    QCOMPARE(int(session.FirstError()), error);
    Confirm(&session, 4);
}

/// An instrument with an error of its own ends the test in its first step.
void TestCliRcdSession::ErrorBeforeTheTest()
{
    RcdSession session = Begun(RcdTest::IaTa);
    QVERIFY(session.Follow(At(MeasurementState::Unknown, Error::DeviceError3)) == Action::Leave);
    QVERIFY(session.FirstError() == Error::DeviceError3);
    Confirm(&session, 4);
}

void TestCliRcdSession::ErrorThatIsOvercomeDoesNotCount()
{
    RcdSession session = Begun(RcdTest::IecIaTa);
    Run(&session);
    QVERIFY(session.Follow(At(MeasurementState::Running, Error::RCDDeviceError5)) == Action::None);
    QVERIFY(session.Follow(At(MeasurementState::Idle)) == Action::None); // it begins anew
    QVERIFY(session.CurrentPhase() == Phase::Preparing);
    session.Follow(Stopped(true));
    QVERIFY(session.FirstError() == Error::NoErrors);
    Confirm(&session, 0);
}

void TestCliRcdSession::EndWithoutAResult_data()
{
    AddTests({RcdTest::UbRe, RcdTest::IaTa, RcdTest::IecIaTa});
}

void TestCliRcdSession::EndWithoutAResult()
{
    QFETCH(RcdTest, test);
    RcdSession session = Begun(test);
    Run(&session);
    QVERIFY(session.Follow(Stopped(false)) == Action::Leave);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    Confirm(&session, 4);
}

void TestCliRcdSession::EndSeenOnlyAfterwards()
{
    RcdSession session = Begun(RcdTest::IaTa);
    Run(&session);
    MeasurementPicture over = At(MeasurementState::Unknown);
    over.hasResult = true;
    QVERIFY(session.Follow(over) == Action::Leave);
    Confirm(&session, 0);
}

void TestCliRcdSession::EndOfTheTestBeforeIsNotTaken()
{
    RcdSession session(RcdTest::IaTa);
    QVERIFY(session.Begin(Idle(MeasurementState::Stopped)) == Action::PrepareAndStart);
    QVERIFY(session.Follow(Stopped(false)) == Action::None);
    Run(&session);
    QVERIFY(session.Follow(Stopped(true)) == Action::Leave);
    Confirm(&session, 0);
}

void TestCliRcdSession::SilentTestIsStartedAgain()
{
    RcdSession session = Begun(RcdTest::IaTa);
    Run(&session);
    QVERIFY(session.Follow(At(MeasurementState::Starting)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Starting);
    session.Follow(At(MeasurementState::Running));
    QVERIFY(session.CurrentPhase() == Phase::Running);
}

void TestCliRcdSession::CleanUpIsLeftAlone()
{
    RcdSession session = Begun(RcdTest::CleanUp);
    Run(&session);
    QVERIFY(session.Follow(Stopped(false)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::CleaningUp);
    QVERIFY(session.Follow(At(MeasurementState::Unknown)) == Action::None);
    QVERIFY(session.CurrentOutcome() == Outcome::None);
    QVERIFY(session.TimeOver() == Action::Leave);
    Confirm(&session, 0);
}

void TestCliRcdSession::CleanUpThatWasNotStartedHasFailed()
{
    RcdSession session = Begun(RcdTest::CleanUp);
    GoThrough(&session, {MeasurementState::Unknown, MeasurementState::Idle, MeasurementState::Preparing,
                         MeasurementState::Prepared});
    QVERIFY(session.Follow(Stopped(false)) == Action::Leave);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    Confirm(&session, 4);
}

void TestCliRcdSession::CleanUpCanBeAborted()
{
    RcdSession session = Begun(RcdTest::CleanUp);
    Run(&session);
    session.Follow(Stopped(false));
    QVERIFY(session.Abort() == Action::Abort);
    QVERIFY(session.TimeOver() == Action::Finish); // the confirmation does not come
    QCOMPARE(session.ExitStatus(), 6);
}

void TestCliRcdSession::MainsAreAwaitedWithoutLimit()
{
    RcdSession session = Begun(RcdTest::IecIaTa);
    GoThrough(&session, {MeasurementState::Idle, MeasurementState::Preparing, MeasurementState::Prepared});
    QVERIFY(session.Follow(At(MeasurementState::Prepared, Error::RCDCheckObjectULNIECInvalid)) ==
            Action::None);
    QVERIFY(session.CurrentPhase() == Phase::AwaitingMains);
    QVERIFY(session.TimeOver() == Action::None);
    GoThrough(&session, {MeasurementState::Starting, MeasurementState::Running});
    QVERIFY(session.Follow(Stopped(true)) == Action::Leave);
    Confirm(&session, 0);
}

void TestCliRcdSession::TooSlow_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("reason");
    QTest::newRow("idle") << int(MeasurementState::Idle) << int(Reason::NotPrepared);
    QTest::newRow("prepared") << int(MeasurementState::Prepared) << int(Reason::NotPrepared);
    QTest::newRow("starting") << int(MeasurementState::Starting) << int(Reason::NotStarted);
}

void TestCliRcdSession::TooSlow()
{
    QFETCH(int, status);
    QFETCH(int, reason);
    RcdSession session = Begun(RcdTest::IaTa);
    session.Follow(At(static_cast<MeasurementState>(status)));
    QVERIFY(session.TimeOver() == Action::Abort);
    QCOMPARE(int(session.FailureReason()), reason);
    Confirm(&session, 4);
}

void TestCliRcdSession::AbortInEveryPhase_data()
{
    QTest::addColumn<RcdTest>("test");
    QTest::addColumn<MeasurementPicture>("picture");
    QTest::newRow("watching") << RcdTest::UbRe << Watched(FunctionState::Preparing);
    QTest::newRow("checking") << RcdTest::UbRe
                              << Watched(FunctionState::PrepareError, Error::RCDCheckObject3);
    QTest::newRow("preparing") << RcdTest::IaTa << At(MeasurementState::Prepared);
    QTest::newRow("awaiting the mains")
        << RcdTest::IecIaTa << At(MeasurementState::Prepared, Error::RCDCheckObjectULNIECInvalid);
    QTest::newRow("starting") << RcdTest::IaTa << At(MeasurementState::Starting);
    QTest::newRow("running") << RcdTest::IecIaTa << At(MeasurementState::Running);
}

void TestCliRcdSession::AbortInEveryPhase()
{
    QFETCH(RcdTest, test);
    QFETCH(MeasurementPicture, picture);
    RcdSession session(test);
    session.Begin(Idle());
    session.Follow(picture);
    QVERIFY(session.Abort() == Action::Abort);
    QVERIFY(session.Abort() == Action::None);
    QVERIFY(session.Follow(Stopped(true, Error::RCDDeviceError1)) == Action::None);
    QVERIFY(session.FirstError() == Error::NoErrors); // 521 is the abort's own
    Confirm(&session, 5);
}

void TestCliRcdSession::LinkLostInEveryPhase_data()
{
    AbortInEveryPhase_data();
}

void TestCliRcdSession::LinkLostInEveryPhase()
{
    QFETCH(RcdTest, test);
    QFETCH(MeasurementPicture, picture);
    RcdSession session(test);
    session.Begin(Idle());
    session.Follow(picture);
    picture.error = Error::CommunicationRecovery;
    QVERIFY(session.Follow(picture) == Action::Leave);
    QVERIFY(session.CurrentOutcome() == Outcome::LinkLost);
    Confirm(&session, 7);
}

QTEST_GUILESS_MAIN(TestCliRcdSession)
#include "tst_clircdsession.moc"
