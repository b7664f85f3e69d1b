#include "client/sessions/updatesession.h"

#include <QtTest>

using Vesmar::Error;
using Vesmar::OperationMode;
using Vesmar::OperationState;
using VesmarClient::UpdatePicture;
using Outcome = VesmarClient::UpdateSession::Outcome;
using Phase = VesmarClient::UpdateSession::Phase;

namespace
{

constexpr int Sectors = 3;

UpdatePicture Before()
{
    return {Error::NoErrors, OperationState::Idle, 0, OperationMode::Normal};
}

UpdatePicture Under(OperationState status, int progress)
{
    return {Error::NoErrors, status, progress, OperationMode::Update};
}

UpdatePicture WithError(UpdatePicture picture, Error error)
{
    picture.error = error;
    return picture;
}

/// An update of three sectors that has come to a phase.
VesmarClient::UpdateSession SessionIn(Phase phase, bool isOffline = false)
{
    VesmarClient::UpdateSession session(Sectors, isOffline);
    if (phase >= Phase::ChangingMode) {
        session.Begin();
    }
    if (phase >= Phase::Initializing) {
        session.Observe(Under(OperationState::Started, 0));
    }
    if (phase >= Phase::Sending) {
        session.Observe(Under(OperationState::InProgress, 0));
    }
    if (phase >= Phase::Restarting) {
        session.Observe(Under(OperationState::InProgress, 100));
        session.Observe(Under(OperationState::Finished, 100));
    }
    return session;
}

} // namespace

class TestClientUpdateSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ToItsEnd();
    void OfflineToItsEnd();
    void ConfirmedSectors_data();
    void ConfirmedSectors();
    void ErrorsAreKept_data();
    void ErrorsAreKept();
    void ErrorsThatWereMissed_data();
    void ErrorsThatWereMissed();
    void FinishThatWasMissed();
    void ErrorOfTheInstrumentIsNoFailure();
    void LinkLostBeforeAnythingIsSent();
    void LinkLostWhileItComesBackIsWaitedFor();
    void RestartOutOfAnotherModeIsWaitedFor();
    void StaysInUpdateMode();
    void TooSlow();
    void InterruptedOnlyWhereItDoesNoHarm_data();
    void InterruptedOnlyWhereItDoesNoHarm();
    void InterruptedAMomentTooLate();
    void NothingAfterTheEnd();
};

void TestClientUpdateSession::ToItsEnd()
{
    VesmarClient::UpdateSession session(Sectors, false);
    QVERIFY(session.CurrentPhase() == Phase::Connecting);
    session.Begin();
    session.Observe(Before());
    QVERIFY(session.CurrentPhase() == Phase::ChangingMode);
    session.Observe(Under(OperationState::Idle, 0));
    QVERIFY(session.CurrentPhase() == Phase::ChangingMode);
    session.Observe(Under(OperationState::Started, 0));
    QVERIFY(session.CurrentPhase() == Phase::Initializing);
    session.Observe(Under(OperationState::InProgress, 0));
    QVERIFY(session.CurrentPhase() == Phase::Sending);
    session.Observe(Under(OperationState::InProgress, 66));
    QCOMPARE(session.Progress(), 66);
    session.Observe(Under(OperationState::InProgress, 100));
    QVERIFY(session.CurrentPhase() == Phase::Sending);
    session.Observe(Under(OperationState::Finished, 100));
    QVERIFY(session.CurrentPhase() == Phase::Restarting);
    session.Observe(Before());
    QVERIFY(session.CurrentPhase() == Phase::Restarting);
    session.IdentityRead(OperationMode::Normal);
    QVERIFY(session.CurrentPhase() == Phase::Ended);
    QVERIFY(session.CurrentOutcome() == Outcome::Updated);
}

/// Offline, the operation state goes from idle to in progress, and stays finished.
void TestClientUpdateSession::OfflineToItsEnd()
{
    VesmarClient::UpdateSession session(Sectors, true);
    session.Begin();
    session.Observe(Before());
    session.Observe(Under(OperationState::InProgress, 0));
    session.Observe(Under(OperationState::InProgress, 100));
    session.Observe(Under(OperationState::Finished, 100));
    QVERIFY(session.CurrentPhase() == Phase::Restarting);
    session.IdentityRead(OperationMode::Normal);
    QVERIFY(session.CurrentOutcome() == Outcome::Updated);
}

void TestClientUpdateSession::ConfirmedSectors_data()
{
    QTest::addColumn<int>("sectors");
    QTest::addColumn<int>("progress");
    QTest::addColumn<int>("confirmed");
    QTest::newRow("none") << 3 << 0 << 0;
    QTest::newRow("one of three") << 3 << 33 << 1;
    QTest::newRow("two of three") << 3 << 66 << 2;
    QTest::newRow("all of three") << 3 << 100 << 3;
    QTest::newRow("one of one") << 1 << 100 << 1;
    QTest::newRow("29 of 50, truncated") << 50 << 57 << 29; // 29 / 50 is a little less than 0.58 here
    QTest::newRow("a per cent of many") << 1000 << 1 << 10;
    QTest::newRow("all of far too many") << 50000000 << 100 << 50000000;
}

void TestClientUpdateSession::ConfirmedSectors()
{
    QFETCH(int, sectors);
    QFETCH(int, progress);
    VesmarClient::UpdateSession session(sectors, false);
    session.Begin();
    session.Observe(Under(OperationState::InProgress, progress));
    QTEST(session.ConfirmedSectors(), "confirmed");
}

void TestClientUpdateSession::ErrorsAreKept_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("error");
    QTest::newRow("mode") << int(Phase::ChangingMode) << 300;
    QTest::newRow("image") << int(Phase::Initializing) << 301;
    QTest::newRow("confirmation data") << int(Phase::Initializing) << 302;
    QTest::newRow("initialization") << int(Phase::Initializing) << 303;
    QTest::newRow("sector") << int(Phase::Sending) << 303;
    QTest::newRow("confirmation") << int(Phase::Sending) << 304;
}

void TestClientUpdateSession::ErrorsAreKept()
{
    QFETCH(int, phase);
    QFETCH(int, error);
    VesmarClient::UpdateSession session = SessionIn(static_cast<Phase>(phase));
    session.Observe(WithError(Under(OperationState::Idle, 0), static_cast<Error>(error)));
    session.Observe(WithError(Under(OperationState::Idle, 0), Error::CommunicationRecovery));
    session.Observe(Under(OperationState::Idle, 0));
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
    QCOMPARE(int(session.FirstError()), error);
    QVERIFY(session.EndedIn() == static_cast<Phase>(phase));
}

void TestClientUpdateSession::ErrorsThatWereMissed_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("progress");
    QTest::addColumn<int>("present");
    QTest::addColumn<int>("error");
    QTest::newRow("initialization, recovering") << int(Phase::Initializing) << 0 << 103 << 303;
    QTest::newRow("initialization, recovered") << int(Phase::Initializing) << 0 << 15 << 303;
    QTest::newRow("sector, recovering") << int(Phase::Sending) << 66 << 103 << 303;
    QTest::newRow("sector, no answer") << int(Phase::Sending) << 66 << 100 << 303;
    QTest::newRow("sector, recovered") << int(Phase::Sending) << 66 << 15 << 303;
    QTest::newRow("confirmation, recovering") << int(Phase::Sending) << 100 << 103 << 304;
}

void TestClientUpdateSession::ErrorsThatWereMissed()
{
    QFETCH(int, phase);
    QFETCH(int, progress);
    QFETCH(int, present);
    VesmarClient::UpdateSession session = SessionIn(static_cast<Phase>(phase));
    session.Observe(WithError(Under(OperationState::Idle, progress), static_cast<Error>(present)));
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
    QTEST(int(session.FirstError()), "error");
}

void TestClientUpdateSession::FinishThatWasMissed()
{
    VesmarClient::UpdateSession session = SessionIn(Phase::Sending);
    session.Observe(Under(OperationState::InProgress, 100));
    session.Observe({Error::NoErrors, OperationState::Idle, 100, OperationMode::Normal});
    QVERIFY(session.CurrentPhase() == Phase::Restarting);
    session.IdentityRead(OperationMode::Normal);
    QVERIFY(session.CurrentOutcome() == Outcome::Updated);
}

void TestClientUpdateSession::ErrorOfTheInstrumentIsNoFailure()
{
    VesmarClient::UpdateSession session(Sectors, false);
    session.Begin();
    session.Observe(WithError(Before(), Error::DeviceError6));
    session.Observe(WithError(Under(OperationState::InProgress, 100), Error::DeviceError6));
    session.Observe(WithError(Under(OperationState::Finished, 100), Error::DeviceError6));
    session.IdentityRead(OperationMode::Normal);
    QVERIFY(session.CurrentOutcome() == Outcome::Updated);
}

void TestClientUpdateSession::LinkLostBeforeAnythingIsSent()
{
    VesmarClient::UpdateSession session = SessionIn(Phase::ChangingMode);
    session.Observe(WithError(Before(), Error::CommunicationRecovery));
    QVERIFY(session.CurrentOutcome() == Outcome::LinkLost);
}

void TestClientUpdateSession::LinkLostWhileItComesBackIsWaitedFor()
{
    VesmarClient::UpdateSession session = SessionIn(Phase::Restarting);
    const UpdatePicture lost = WithError(Under(OperationState::Idle, 100), Error::CommunicationRecovery);
    session.Observe(lost);
    session.CheckMode(lost);
    QVERIFY(session.CurrentPhase() == Phase::Restarting);
    session.IdentityRead(OperationMode::Normal);
    QVERIFY(session.CurrentOutcome() == Outcome::Updated);
}

void TestClientUpdateSession::RestartOutOfAnotherModeIsWaitedFor()
{
    VesmarClient::UpdateSession session = SessionIn(Phase::Restarting);
    session.CheckMode({Error::NoErrors, OperationState::Idle, 100, OperationMode::Mode2});
    session.IdentityRead(OperationMode::Mode2);
    session.IdentityRead(OperationMode::Calibration);
    QVERIFY(session.CurrentPhase() == Phase::Restarting);
    session.IdentityRead(OperationMode::Normal);
    QVERIFY(session.CurrentOutcome() == Outcome::Updated);
}

void TestClientUpdateSession::StaysInUpdateMode()
{
    VesmarClient::UpdateSession seen = SessionIn(Phase::Restarting);
    seen.CheckMode(Under(OperationState::Idle, 100));
    QVERIFY(seen.CurrentOutcome() == Outcome::StaysInUpdateMode);

    VesmarClient::UpdateSession read = SessionIn(Phase::Restarting);
    read.IdentityRead(OperationMode::Update);
    QVERIFY(read.CurrentOutcome() == Outcome::StaysInUpdateMode);
}

void TestClientUpdateSession::TooSlow()
{
    VesmarClient::UpdateSession before = SessionIn(Phase::ChangingMode);
    before.TimeOver(OperationState::Started); // which was not seen yet
    QVERIFY(before.CurrentPhase() == Phase::ChangingMode);
    before.TimeOver(OperationState::Idle);
    QVERIFY(before.CurrentOutcome() == Outcome::ModeNotChanged);

    VesmarClient::UpdateSession sending = SessionIn(Phase::Sending);
    sending.TimeOver(OperationState::InProgress);
    QVERIFY(sending.CurrentPhase() == Phase::Sending);

    VesmarClient::UpdateSession after = SessionIn(Phase::Restarting);
    after.TimeOver(OperationState::Idle);
    QVERIFY(after.CurrentOutcome() == Outcome::NotBack);
}

void TestClientUpdateSession::InterruptedOnlyWhereItDoesNoHarm_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<bool>("isOffline");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("ends");
    const auto row = [](const char* name, Phase phase, bool isOffline, OperationState status, bool ends) {
        QTest::newRow(name) << int(phase) << isOffline << int(status) << ends;
    };
    row("changing the mode", Phase::ChangingMode, false, OperationState::Idle, true);
    row("begun, not seen yet", Phase::ChangingMode, false, OperationState::Started, false);
    row("changing the mode offline", Phase::ChangingMode, true, OperationState::Idle, false);
    row("initializing", Phase::Initializing, false, OperationState::Started, false);
    row("sending", Phase::Sending, false, OperationState::InProgress, false);
    row("sending offline", Phase::Sending, true, OperationState::InProgress, false);
    row("coming back", Phase::Restarting, false, OperationState::Idle, true);
    row("coming back offline", Phase::Restarting, true, OperationState::Finished, true);
}

void TestClientUpdateSession::InterruptedOnlyWhereItDoesNoHarm()
{
    QFETCH(int, phase);
    QFETCH(bool, isOffline);
    QFETCH(int, status);
    QFETCH(bool, ends);
    VesmarClient::UpdateSession session = SessionIn(static_cast<Phase>(phase), isOffline);
    QCOMPARE(session.Interrupt(static_cast<OperationState>(status)), ends);
    QCOMPARE(session.CurrentOutcome() == Outcome::Interrupted, ends);
    session.LinkClosed(Under(static_cast<OperationState>(status), 0));
    QCOMPARE(session.CurrentOutcome() == Outcome::Interrupted, ends);
}

/// The library began the update after its state was read and before the link was closed.
void TestClientUpdateSession::InterruptedAMomentTooLate()
{
    VesmarClient::UpdateSession session = SessionIn(Phase::ChangingMode);
    QVERIFY(session.Interrupt(OperationState::Idle));
    session.LinkClosed(Under(OperationState::InProgress, 33));
    QVERIFY(session.CurrentOutcome() == Outcome::Failed);
    QVERIFY(session.FirstError() == Error::UpdateInitializationFailed);
    QVERIFY(session.EndedIn() == Phase::Sending);
    QCOMPARE(session.ConfirmedSectors(), 1);
}

void TestClientUpdateSession::NothingAfterTheEnd()
{
    VesmarClient::UpdateSession session = SessionIn(Phase::Restarting);
    session.IdentityRead(OperationMode::Normal);
    session.Observe(WithError(Before(), Error::UpdateConfirmationFailed));
    session.IdentityRead(OperationMode::Update);
    session.CheckMode(Under(OperationState::Idle, 100));
    session.TimeOver(OperationState::Idle);
    QVERIFY(!session.Interrupt(OperationState::Idle));
    QVERIFY(session.CurrentOutcome() == Outcome::Updated);
}

QTEST_GUILESS_MAIN(TestClientUpdateSession)
#include "tst_clientupdatesession.moc"
