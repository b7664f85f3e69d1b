#include "client/sessions/rcdsession.h"

#include <QtTest>

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using VesmarClient::MeasurementPicture;
using VesmarClient::RcdSession;
using VesmarClient::RcdTest;
using Action = VesmarClient::MeasurementSession::Action;
using Outcome = VesmarClient::MeasurementSession::Outcome;
using Phase = VesmarClient::MeasurementSession::Phase;
using Reason = VesmarClient::MeasurementSession::Reason;

Q_DECLARE_METATYPE(MeasurementPicture)
Q_DECLARE_METATYPE(RcdTest)

namespace
{

/// The picture of an instrument that does nothing.
MeasurementPicture Idle(MeasurementState status = MeasurementState::Idle)
{
    return {Error::NoErrors, status, FunctionState::Unknown, MeasurementType::Monitoring, 0, false, false};
}

/// The picture in measurement mode.
MeasurementPicture At(MeasurementState status, Error error = Error::NoErrors)
{
    MeasurementPicture picture = Idle(status);
    picture.error = error;
    picture.isModeActive = true;
    return picture;
}

/// The picture of a Ub/Re test that is watched, and not started yet.
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
        QVERIFY(session->Observe(At(status)) == Action::None);
    }
}

void Run(RcdSession* session)
{
    GoThrough(session, {MeasurementState::Unknown, MeasurementState::Idle, MeasurementState::Preparing,
                        MeasurementState::Prepared, MeasurementState::Starting, MeasurementState::Running});
    QVERIFY(session->CurrentPhase() == Phase::Running);
}

/// A session whose test is being prepared, or for the Ub/Re test, has been started.
RcdSession Begun(RcdTest test)
{
    RcdSession session(test);
    session.Begin(Idle());
    if (test == RcdTest::UbRe) {
        session.Observe(Watched(FunctionState::Prepared));
    }
    return session;
}

/// The instrument stops, and the library reports that.
void Confirm(RcdSession* session, Outcome outcome)
{
    QVERIFY(session->CurrentPhase() == Phase::Leaving);
    QVERIFY(session->IdentityRead(Idle()) == Action::Finish);
    QVERIFY(session->IsStopConfirmed());
    QVERIFY(session->CurrentOutcome() == outcome);
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

class TestClientRcdSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ToItsEnd_data();
    void ToItsEnd();
    void UbReIsWatchedBeforeItsStart();
    void LeftoversDoNotCountAsPrepared();
    void WatchThatFails_data();
    void WatchThatFails();
    void ObjectErrorThatIsOvercome();
    void ObjectErrorThatStays();
    void CheckThatFindsNothing();
    void ErrorAtTheEnd_data();
    void ErrorAtTheEnd();
    void ErrorLeftBehindByAGoodTestDoesNotCount();
    void ErrorBeforeTheTest();
    void ErrorThatIsOvercomeDoesNotCount();
    void EndWithoutAResult_data();
    void EndWithoutAResult();
    void EndSeenOnlyAfterwards();
    void EarlierTestDoesNotCount_data();
    void EarlierTestDoesNotCount();
    void PendingStartIsCarriedOut();
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

void TestClientRcdSession::ToItsEnd_data()
{
    AddTests({RcdTest::IaTa, RcdTest::IecIaTa});
}

void TestClientRcdSession::ToItsEnd()
{
    QFETCH(RcdTest, test);
    RcdSession session(test);
    QVERIFY(session.Begin(Idle()) == Action::PrepareAndStart);
    Run(&session);
    QVERIFY(session.Observe(Stopped(true)) == Action::Leave);
    QVERIFY(session.FirstError() == Error::NoErrors);
    Confirm(&session, Outcome::Completed);
}

void TestClientRcdSession::UbReIsWatchedBeforeItsStart()
{
    RcdSession session(RcdTest::UbRe);
    QVERIFY(session.Begin(Idle()) == Action::Prepare);
    GoThrough(&session, {MeasurementState::Unknown, MeasurementState::Preparing, MeasurementState::Prepared});
    QVERIFY(session.Observe(Watched(FunctionState::Preparing)) == Action::None);
    QVERIFY(session.Observe(Watched(FunctionState::Prepared)) == Action::Start);
    QVERIFY(session.Observe(Watched(FunctionState::Prepared)) == Action::None); // only once
    QVERIFY(session.CurrentPhase() == Phase::Preparing);
    GoThrough(&session, {MeasurementState::Preparing, MeasurementState::Prepared, MeasurementState::Starting,
                         MeasurementState::Running});
    QVERIFY(session.Observe(Stopped(true)) == Action::Leave);
    Confirm(&session, Outcome::Completed);
}

void TestClientRcdSession::LeftoversDoNotCountAsPrepared()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    MeasurementPicture picture = Watched(FunctionState::Prepared);
    picture.function = MeasurementType::Monitoring;
    QVERIFY(session.Observe(picture) == Action::None);
    picture = Watched(FunctionState::Prepared);
    picture.status = MeasurementState::Preparing;
    QVERIFY(session.Observe(picture) == Action::None);
    QVERIFY(session.Observe(Watched(FunctionState::Prepared, Error::RCDCheckObject2)) == Action::None);
    QVERIFY(session.Observe(Watched(FunctionState::Prepared)) == Action::Start);
}

void TestClientRcdSession::WatchThatFails_data()
{
    QTest::addColumn<int>("error");
    for (const int error : {0, 14, 200, 398, 400, 401, 520, 534}) {
        QTest::addRow("%d", error) << error;
    }
}

void TestClientRcdSession::WatchThatFails()
{
    QFETCH(int, error);
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    QVERIFY(session.Observe(At(MeasurementState::Unknown, static_cast<Error>(error))) == Action::Abort);
    QVERIFY(session.FailureReason() == Reason::Error);
    QCOMPARE(int(session.FirstError()), error);
    Confirm(&session, Outcome::Failed);
}

void TestClientRcdSession::ObjectErrorThatIsOvercome()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    QVERIFY(session.Observe(Watched(FunctionState::PrepareError)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Checking);
    QVERIFY(session.Observe(Watched(FunctionState::PrepareError, Error::RCDCheckObjectFailed)) ==
            Action::None);
    QVERIFY(session.Observe(Watched(FunctionState::PrepareError, Error::RCDCheckObjectULNIECInvalid)) ==
            Action::None);
    QVERIFY(session.Observe(Watched(FunctionState::PrepareError)) == Action::Start);
    QVERIFY(session.FirstError() == Error::NoErrors);
}

void TestClientRcdSession::ObjectErrorThatStays()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    session.Observe(Watched(FunctionState::PrepareError, Error::RCDCheckObject9));
    QVERIFY(session.TimeOver() == Action::Abort);
    QVERIFY(session.FailureReason() == Reason::Error);
    QVERIFY(session.FirstError() == Error::RCDCheckObject9);
    Confirm(&session, Outcome::Failed);
}

void TestClientRcdSession::CheckThatFindsNothing()
{
    RcdSession session(RcdTest::UbRe);
    session.Begin(Idle());
    session.Observe(Watched(FunctionState::PrepareError));
    QVERIFY(session.TimeOver() == Action::Start); // which checks once more
    QVERIFY(session.CurrentPhase() == Phase::Preparing);
}

void TestClientRcdSession::ErrorAtTheEnd_data()
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

void TestClientRcdSession::ErrorAtTheEnd()
{
    QFETCH(RcdTest, test);
    QFETCH(int, error);
    RcdSession session = Begun(test);
    Run(&session);
    QVERIFY(session.Observe(Stopped(true, static_cast<Error>(error))) == Action::Leave);
    QVERIFY(session.FailureReason() == Reason::Error);
    QCOMPARE(int(session.FirstError()), error);
    Confirm(&session, Outcome::Failed);
}

/// The mains have come to suit the test, and the library has left its error behind.
void TestClientRcdSession::ErrorLeftBehindByAGoodTestDoesNotCount()
{
    RcdSession session = Begun(RcdTest::IecIaTa);
    Run(&session);
    QVERIFY(session.Observe(Stopped(true, Error::RCDCheckObjectULNIECInvalid)) == Action::Leave);
    QVERIFY(session.FirstError() == Error::NoErrors);
    Confirm(&session, Outcome::Completed);
}

/// An instrument with an error of its own ends the test in its first step.
void TestClientRcdSession::ErrorBeforeTheTest()
{
    RcdSession session = Begun(RcdTest::IaTa);
    QVERIFY(session.Observe(At(MeasurementState::Unknown, Error::DeviceError3)) == Action::Leave);
    QVERIFY(session.FirstError() == Error::DeviceError3);
    Confirm(&session, Outcome::Failed);
}

void TestClientRcdSession::ErrorThatIsOvercomeDoesNotCount()
{
    RcdSession session = Begun(RcdTest::IecIaTa);
    Run(&session);
    QVERIFY(session.Observe(At(MeasurementState::Running, Error::RCDDeviceError5)) == Action::None);
    QVERIFY(session.Observe(At(MeasurementState::Idle)) == Action::None); // it begins anew
    QVERIFY(session.CurrentPhase() == Phase::Preparing);
    session.Observe(Stopped(true));
    QVERIFY(session.FirstError() == Error::NoErrors);
    Confirm(&session, Outcome::Completed);
}

void TestClientRcdSession::EndWithoutAResult_data()
{
    AddTests({RcdTest::UbRe, RcdTest::IaTa, RcdTest::IecIaTa});
}

void TestClientRcdSession::EndWithoutAResult()
{
    QFETCH(RcdTest, test);
    RcdSession session = Begun(test);
    Run(&session);
    QVERIFY(session.Observe(Stopped(false)) == Action::Leave);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    Confirm(&session, Outcome::Failed);
}

void TestClientRcdSession::EndSeenOnlyAfterwards()
{
    RcdSession session = Begun(RcdTest::IaTa);
    Run(&session);
    MeasurementPicture over = At(MeasurementState::Unknown);
    over.hasResult = true;
    QVERIFY(session.Observe(over) == Action::Leave);
    Confirm(&session, Outcome::Completed);
}

void TestClientRcdSession::EarlierTestDoesNotCount_data()
{
    QTest::addColumn<int>("leftover");
    QTest::newRow("to its end") << int(MeasurementState::Stopped);
    QTest::newRow("aborted while it ran") << int(MeasurementState::Running);
}

void TestClientRcdSession::EarlierTestDoesNotCount()
{
    QFETCH(int, leftover);
    RcdSession session(RcdTest::IaTa);
    const auto status = static_cast<MeasurementState>(leftover);
    QVERIFY(session.Begin(Idle(status)) == Action::PrepareAndStart);
    QVERIFY(session.Observe(At(status)) == Action::None);
    Run(&session);
    QVERIFY(session.Observe(Stopped(true)) == Action::Leave);
    Confirm(&session, Outcome::Completed);
}

/// The library carries out a start that the measurement before was aborted over, and does not watch the test.
void TestClientRcdSession::PendingStartIsCarriedOut()
{
    RcdSession session(RcdTest::UbRe);
    QVERIFY(session.Begin(Idle()) == Action::Prepare);
    Run(&session);
    QVERIFY(session.Observe(Stopped(true)) == Action::Leave);
    Confirm(&session, Outcome::Completed);
}

void TestClientRcdSession::SilentTestIsStartedAgain()
{
    RcdSession session = Begun(RcdTest::IaTa);
    Run(&session);
    QVERIFY(session.Observe(At(MeasurementState::Starting)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::Starting);
    session.Observe(At(MeasurementState::Running));
    QVERIFY(session.CurrentPhase() == Phase::Running);
}

void TestClientRcdSession::CleanUpIsLeftAlone()
{
    RcdSession session = Begun(RcdTest::CleanUp);
    Run(&session);
    QVERIFY(session.Observe(Stopped(false)) == Action::None);
    QVERIFY(session.CurrentPhase() == Phase::CleaningUp);
    QVERIFY(session.Observe(At(MeasurementState::Unknown)) == Action::None);
    QVERIFY(session.CurrentOutcome() == Outcome::None);
    QVERIFY(session.TimeOver() == Action::Leave);
    Confirm(&session, Outcome::Completed);
}

void TestClientRcdSession::CleanUpThatWasNotStartedHasFailed()
{
    RcdSession session = Begun(RcdTest::CleanUp);
    GoThrough(&session, {MeasurementState::Unknown, MeasurementState::Idle, MeasurementState::Preparing,
                         MeasurementState::Prepared});
    QVERIFY(session.Observe(Stopped(false)) == Action::Leave);
    QVERIFY(session.FailureReason() == Reason::NoResult);
    Confirm(&session, Outcome::Failed);
}

void TestClientRcdSession::CleanUpCanBeAborted()
{
    RcdSession session = Begun(RcdTest::CleanUp);
    Run(&session);
    session.Observe(Stopped(false));
    QVERIFY(session.Abort() == Action::Abort);
    QVERIFY(session.TimeOver() == Action::Finish); // the confirmation does not come
    QVERIFY(!session.IsStopConfirmed());
}

void TestClientRcdSession::MainsAreAwaitedWithoutLimit()
{
    RcdSession session = Begun(RcdTest::IecIaTa);
    GoThrough(&session, {MeasurementState::Idle, MeasurementState::Preparing, MeasurementState::Prepared});
    QVERIFY(session.Observe(At(MeasurementState::Prepared, Error::RCDCheckObjectULNIECInvalid)) ==
            Action::None);
    QVERIFY(session.CurrentPhase() == Phase::AwaitingMains);
    QVERIFY(session.TimeOver() == Action::None);
    GoThrough(&session, {MeasurementState::Starting, MeasurementState::Running});
    QVERIFY(session.Observe(Stopped(true)) == Action::Leave);
    Confirm(&session, Outcome::Completed);
}

void TestClientRcdSession::TooSlow_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("reason");
    QTest::newRow("idle") << int(MeasurementState::Idle) << int(Reason::NotPrepared);
    QTest::newRow("prepared") << int(MeasurementState::Prepared) << int(Reason::NotPrepared);
    QTest::newRow("starting") << int(MeasurementState::Starting) << int(Reason::NotStarted);
}

void TestClientRcdSession::TooSlow()
{
    QFETCH(int, status);
    QFETCH(int, reason);
    RcdSession session = Begun(RcdTest::IaTa);
    session.Observe(At(static_cast<MeasurementState>(status)));
    QVERIFY(session.TimeOver() == Action::Abort);
    QCOMPARE(int(session.FailureReason()), reason);
    Confirm(&session, Outcome::Failed);
}

void TestClientRcdSession::AbortInEveryPhase_data()
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

void TestClientRcdSession::AbortInEveryPhase()
{
    QFETCH(RcdTest, test);
    QFETCH(MeasurementPicture, picture);
    RcdSession session(test);
    session.Begin(Idle());
    session.Observe(picture);
    QVERIFY(session.Abort() == Action::Abort);
    QVERIFY(session.Abort() == Action::None);
    QVERIFY(session.Observe(Stopped(true, Error::RCDDeviceError1)) == Action::None);
    QVERIFY(session.FirstError() == Error::NoErrors); // 521 is the abort's own
    Confirm(&session, Outcome::Aborted);
}

void TestClientRcdSession::LinkLostInEveryPhase_data()
{
    AbortInEveryPhase_data();
}

void TestClientRcdSession::LinkLostInEveryPhase()
{
    QFETCH(RcdTest, test);
    QFETCH(MeasurementPicture, picture);
    RcdSession session(test);
    session.Begin(Idle());
    session.Observe(picture);
    picture.error = Error::CommunicationRecovery;
    QVERIFY(session.Observe(picture) == Action::Leave);
    Confirm(&session, Outcome::LinkLost);
}

QTEST_GUILESS_MAIN(TestClientRcdSession)
#include "tst_clientrcdsession.moc"
