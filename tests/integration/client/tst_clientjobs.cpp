#include <QSignalSpy>

#include "integration/client/clientbench.h"
#include "integration/updating.h"
#include "simulator/faults/faultfile.h"
#include "support/serialdevice.h"
#include "support/wire.h"

using VesmarClient::CalibrationJob;
using VesmarClient::ClockJob;
using VesmarClient::Job;
using VesmarClient::LinkState;
using VesmarClient::Outcome;
using VesmarClient::Phase;
using VesmarClient::StopJob;
using VesmarClient::UpdateJob;

namespace
{

/// Waits for the end, for which the failure's name is empty where nothing failed.
void VerifyEnd(const Job& job, Outcome outcome, const char* failure)
{
    AWAIT(job.isFinished());
    QCOMPARE(job.failure().name, QString::fromLatin1(failure));
    QCOMPARE(job.outcome(), outcome);
    QCOMPARE(job.phase(), Phase::Finished);
}

void VerifyCompletion(const Job& job)
{
    VerifyEnd(job, Outcome::Completed, "");
}

UpdateJob* Update(ClientBench& bench, const QByteArray& image)
{
    return bench.client.update(image, WithChecksum(image));
}

const QDateTime SomeTime(QDate(2031, 2, 3), QTime(4, 5, 6), Qt::UTC);

} // namespace

/// Every job but the measurements.
class TestClientJobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void StopEndsAMeasurement();
    void StopTakesThePlaceOfTheOneThatWaits();
    void StopEndsWhatAnotherProgramLeft();
    void StopRestartsAnInstrumentThatDoesNotStop();
    void StopIsNotProvedWithoutALink();
    void StopIsProvedOverAReplacedDevice();
    void StopFailsAtAnInstrumentThatDoesNotStop();
    void StopLeadsOutOfADriverThatWaits();
    void OneJobAtATime();
    void JobFailsWithoutALink();
    void JobThatIsDeletedIsAborted();
    void ClockIsSetInTheInstrumentsFields_data();
    void ClockIsSetInTheInstrumentsFields();
    void CalibrationDateIsSet();
    void DatesOutOfRangeAreRefused_data();
    void DatesOutOfRangeAreRefused();
    void DateIsNotConfirmedWithoutALink();
    void ClockIsAborted();
    void InstrumentIsRestarted();
    void RestartLeavesUpdateMode();
    void LostRestartIsTold();
    void FirmwareIsReplaced_data();
    void FirmwareIsReplaced();
    void FirmwareIsReplacedBlindly();
    void UselessFilesAreRefused_data();
    void UselessFilesAreRefused();
    void UpdateFails_data();
    void UpdateFails();
    void UpdateThatHasNotBegunIsWithdrawn();
    void SendingIsNotAborted();
};

void TestClientJobs::StopEndsAMeasurement()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time-offset 0");
    measured.AwaitPhase(Phase::Running);
    StopJob* const stop = bench.client.stop();
    VerifyCompletion(*stop);
    QVERIFY(bench.IsOff());
    measured.VerifyAbort();
    QVERIFY(!bench.client.isBusy());
}

void TestClientJobs::StopTakesThePlaceOfTheOneThatWaits()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time-offset 0");
    measured.AwaitPhase(Phase::Running);
    StopJob* const first = bench.client.stop();
    StopJob* const second = bench.client.stop();
    VerifyEnd(*first, Outcome::Aborted, "");
    VerifyCompletion(*second);
    QVERIFY(bench.IsOff());
    QVERIFY(!bench.client.isBusy());
}

void TestClientJobs::StopEndsWhatAnotherProgramLeft()
{
    ClientBench bench;
    bench.Connect();
    bench.Execute("function 9");
    VerifyCompletion(*bench.client.stop());
    QVERIFY(bench.IsOff());
}

void TestClientJobs::StopRestartsAnInstrumentThatDoesNotStop()
{
    Simulator::InstrumentOptions options;
    options.model.functionTimings.runOn = std::chrono::minutes(2);
    ClientBench bench(options);
    bench.Execute("scenario runs-on-after-stop");
    bench.Connect();
    const Measured measured(bench, "hv --time-offset 0");
    measured.AwaitPhase(Phase::Running);
    measured->abort();
    measured.AwaitEnd();
    QVERIFY(!measured->isStopConfirmed());
    QVERIFY(bench.client.isUnattended());
    VerifyCompletion(*bench.client.stop());
    QVERIFY(bench.IsOff());
    QVERIFY(!bench.client.isUnattended());
}

void TestClientJobs::StopIsNotProvedWithoutALink()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time-offset 0");
    measured.AwaitPhase(Phase::Running);
    bench.simulator.Unplug();
    VerifyEnd(*bench.client.stop(), Outcome::LinkLost, "stop-not-confirmed");
    QVERIFY(!bench.IsOff());
    bench.simulator.Plug();
    VerifyCompletion(*bench.client.stop());
    QVERIFY(bench.IsOff());
}

/// As with an adapter that was pulled out in the middle of a measurement, and is plugged in again.
void TestClientJobs::StopIsProvedOverAReplacedDevice()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time-offset 0");
    measured.AwaitPhase(Phase::Running);
    bench.Execute("fault hang-up");
    RedirectSerialDevice({});
    measured.AwaitEnd();
    StopJob* const stop = bench.client.stop();
    AWAIT_EQUAL(stop->phase(), Phase::AwaitingIdle);
    bench.Plug();
    VerifyCompletion(*stop);
    QVERIFY(bench.IsOff());
}

/// Every status has a function that runs, although the link is good and every stop is acknowledged.
void TestClientJobs::StopFailsAtAnInstrumentThatDoesNotStop()
{
    ClientBench bench;
    bench.Connect();
    bench.simulator.AddFaults(
        Simulator::ParseFaults(R"({"faults": [{"command": "function 9", "when": {"request": "s"}}]})"));
    StopJob* const stop = bench.client.stop();
    VerifyEnd(*stop, Outcome::Failed, "stop-not-confirmed");
    QCOMPARE(bench.client.linkState(), LinkState::Up);
    QVERIFY(bench.simulator.Sent().contains(Wire::StopMeasurement));
    QVERIFY(bench.simulator.Sent().contains(Wire::ChangeToNormalMode)); // a restart
    constexpr qint64 LeastMs = 19000; // Twenty seconds, by a timer that may be a twentieth early.
    QVERIFY(stop->elapsed() >= LeastMs);
    bench.simulator.ClearFaults();
    VerifyCompletion(*bench.client.stop());
    QVERIFY(bench.IsOff());
}

/// An abort in measurement mode with nothing prepared: the driver waits for a state that no status names.
void TestClientJobs::StopLeadsOutOfADriverThatWaits()
{
    ClientBench bench(WithQuickRestart());
    bench.Connect();
    Vesmar::Tester* const tester = Vesmar::Tester::Instance();
    tester->SetIsMeasurementModeActive(true);
    AWAIT_EQUAL(tester->MeasurementStatus(), Vesmar::MeasurementState::Preparing);
    QMetaObject::invokeMethod(
        tester, [tester] { tester->AbortMeasurement(); }, Qt::BlockingQueuedConnection);
    AWAIT_EQUAL(tester->MeasurementStatus(), Vesmar::MeasurementState::Stopping);
    VerifyCompletion(*bench.client.stop());
    QVERIFY(bench.simulator.Sent().contains(Wire::ChangeToNormalMode));
}

void TestClientJobs::OneJobAtATime()
{
    ClientBench bench;
    bench.Connect();
    QSignalSpy busy(&bench.client, &VesmarClient::Instrument::isBusyChanged);
    ClockJob* const first = bench.client.setClock(SomeTime);
    QVERIFY(bench.client.isBusy());
    VerifyEnd(*bench.client.restart(), Outcome::Failed, "busy");
    ClockJob* next = nullptr;
    connect(first, &Job::finished, this, [&] { next = bench.client.setClock(SomeTime); });
    VerifyCompletion(*first);
    VerifyCompletion(*next);
    QVERIFY(!bench.client.isBusy());
    QCOMPARE(busy.size(), 4);
}

void TestClientJobs::JobFailsWithoutALink()
{
    ClientBench bench;
    VerifyEnd(*bench.client.stop(), Outcome::Failed, "not-connected");
    VerifyEnd(*bench.client.restart(), Outcome::Failed, "not-connected");
    VerifyEnd(*Update(bench, ImageOf(1)), Outcome::Failed, "not-connected");
    QCOMPARE(bench.simulator.Sent(), QByteArrayList());
}

void TestClientJobs::JobThatIsDeletedIsAborted()
{
    ClientBench bench;
    bench.Connect();
    {
        const std::unique_ptr<Job> job(
            bench.client.measure(SettingsOf(QStringLiteral("hv --time-offset 0"))));
        AWAIT_EQUAL(job->phase(), Phase::Running);
    }
    QVERIFY(bench.client.isBusy());
    AWAIT(!bench.client.isBusy());
    QVERIFY(bench.IsOff());
}

void TestClientJobs::ClockIsSetInTheInstrumentsFields_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::newRow("in UTC") << SomeTime;
    QTest::newRow("in local time") << QDateTime(SomeTime.date(), SomeTime.time());
    QTest::newRow("in another zone") << QDateTime(SomeTime.date(), SomeTime.time(), Qt::OffsetFromUTC, 3600);
    // The driver has 04:30:00 in local time, which is the same instant.
    const QDateTime present(SomeTime.date(), QTime(4, 30));
    QTest::newRow("at the present instant") << present.toOffsetFromUtc(present.offsetFromUtc() + 7200);
}

void TestClientJobs::ClockIsSetInTheInstrumentsFields()
{
    QFETCH(QDateTime, value);
    ClientBench bench(WithClock(QDateTime(SomeTime.date(), QTime(4, 30), Qt::UTC)));
    bench.Connect();
    ClockJob* const job = bench.client.setClock(value);
    VerifyCompletion(*job);
    const QDateTime fields(value.date(), value.time(), Qt::UTC);
    QVERIFY(fields.secsTo(job->reported()) <= 60);
    QVERIFY(fields.secsTo(job->reported()) >= 0);
    QCOMPARE(bench.client.clock(), job->reported());
    QCOMPARE(bench.simulator.Date().date(), value.date());
    QCOMPARE(bench.simulator.Date().time().hour(), value.time().hour());
}

void TestClientJobs::CalibrationDateIsSet()
{
    ClientBench bench(WithQuickRestart());
    bench.Connect();
    QSignalSpy changed(&bench.client, &VesmarClient::Instrument::calibrationDateChanged);
    CalibrationJob* const job = bench.client.setCalibrationDate(SomeTime);
    AWAIT_EQUAL(job->phase(), Phase::Writing);
    job->abort(); // It would leave the instrument in calibration mode.
    VerifyCompletion(*job);
    const QDateTime midnight(SomeTime.date(), QTime(0, 0), Qt::UTC);
    QCOMPARE(job->reported(), midnight);
    QCOMPARE(bench.client.calibrationDate(), midnight);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(bench.simulator.CalibrationDate().date(), SomeTime.date());
}

void TestClientJobs::DatesOutOfRangeAreRefused_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::newRow("none") << QDateTime();
    QTest::newRow("too early") << QDateTime(QDate(2000, 12, 31), QTime(12, 0));
    QTest::newRow("too late") << QDateTime(QDate(2100, 1, 1), QTime(12, 0));
}

void TestClientJobs::DatesOutOfRangeAreRefused()
{
    QFETCH(QDateTime, value);
    ClientBench bench;
    VerifyEnd(*bench.client.setClock(value), Outcome::Failed, "invalid-date");
    VerifyEnd(*bench.client.setCalibrationDate(value), Outcome::Failed, "invalid-date");
}

void TestClientJobs::DateIsNotConfirmedWithoutALink()
{
    ClientBench bench;
    bench.Connect();
    const QDateTime before = bench.client.clock();
    bench.simulator.Unplug();
    VerifyEnd(*bench.client.setClock(SomeTime), Outcome::LinkLost, "link-lost");
    QCOMPARE(bench.client.clock(), before);
}

void TestClientJobs::ClockIsAborted()
{
    ClientBench bench;
    bench.Connect();
    ClockJob* const job = bench.client.setClock(SomeTime);
    job->abort();
    VerifyEnd(*job, Outcome::Aborted, "");
    job->abort(); // Nothing happens.
    QVERIFY(!job->reported().isValid());
}

void TestClientJobs::InstrumentIsRestarted()
{
    ClientBench bench;
    bench.Connect();
    const auto versions = bench.simulator.Sent().count(Wire::ReadVersion);
    Job* const job = bench.client.restart();
    VerifyCompletion(*job);
    QVERIFY(bench.simulator.Sent().contains(Wire::ChangeToNormalMode));
    QVERIFY(bench.simulator.Sent().count(Wire::ReadVersion) > versions);
    QCOMPARE(bench.client.linkState(), LinkState::Up);
    QVERIFY(job->elapsed() >= 2000); // The driver's pause.
}

void TestClientJobs::RestartLeavesUpdateMode()
{
    ClientBench bench;
    bench.Execute("mode 3");
    bench.client.open();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::UpdateMode);
    VerifyCompletion(*bench.client.restart());
    QCOMPARE(bench.client.linkState(), LinkState::Up);
}

void TestClientJobs::LostRestartIsTold()
{
    ClientBench bench;
    bench.Connect();
    Job* const job = bench.client.restart();
    AWAIT_EQUAL(job->phase(), Phase::Restarting);
    bench.simulator.Unplug();
    VerifyEnd(*job, Outcome::LinkLost, "link-lost");
}

void TestClientJobs::FirmwareIsReplaced_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<LinkState>("state");
    QTest::newRow("while the link is up") << QByteArray("mode 0") << LinkState::Up;
    QTest::newRow("in update mode") << QByteArray("mode 3") << LinkState::UpdateMode;
    QTest::newRow("of an instrument that comes back in another mode")
        << QByteArray("scenario comes-back-in-mode-2") << LinkState::Up;
}

void TestClientJobs::FirmwareIsReplaced()
{
    QFETCH(QByteArray, command);
    QFETCH(LinkState, state);
    ClientBench bench;
    bench.Execute(command);
    bench.client.open();
    AWAIT_EQUAL(bench.client.linkState(), state);
    UpdateJob* const job = Update(bench, ImageOf(3));
    QVector<int> confirmed;
    QVector<qint64> left;
    connect(job, &UpdateJob::progressChanged, this, [&] {
        confirmed.append(job->sectorsConfirmed());
        left.append(job->timeLeft());
    });
    QCOMPARE(job->sectors(), 3);
    QCOMPARE(job->timeLeft(), qint64(-1));
    VerifyCompletion(*job);
    QCOMPARE(confirmed, (QVector<int>{1, 2, 3}));
    QVERIFY(left.at(0) > left.at(1) && left.at(1) > 0);
    QCOMPARE(job->timeLeft(), qint64(0));
    QCOMPARE(job->versionBefore(), QStringLiteral("1.05"));
    QCOMPARE(job->versionAfter(), QStringLiteral("1.06"));
    QCOMPARE(bench.simulator.Firmware(), ImageOf(3));
    QCOMPARE(bench.client.linkState(), LinkState::Up);
}

/// The link is not up, and nothing ends the sending.
void TestClientJobs::FirmwareIsReplacedBlindly()
{
    ClientBench bench;
    bench.Execute("unplug");
    bench.client.open();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Opening);
    UpdateJob* const job = bench.client.updateBlindly(ImageOf(3), WithChecksum(ImageOf(3)));
    connect(job, &Job::phaseChanged, job, &Job::abort);
    bench.Execute("plug");
    AWAIT_EQUAL(bench.simulator.Firmware(), ImageOf(3));
    AWAIT(job->isFinished());
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Up);
}

void TestClientJobs::UselessFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QByteArray>("confirmation");
    QTest::addColumn<QByteArray>("failure");
    const QByteArray image = ImageOf(1);
    QTest::newRow("no image") << QByteArray() << QByteArray(2, '0') << QByteArray("invalid-image");
    QTest::newRow("part of a sector") << image + '0' << QByteArray(2, '0') << QByteArray("invalid-image");
    QTest::newRow("short confirmation") << image << QByteArray(1, '0') << QByteArray("invalid-confirmation");
}

void TestClientJobs::UselessFilesAreRefused()
{
    QFETCH(QByteArray, image);
    QFETCH(QByteArray, confirmation);
    QFETCH(QByteArray, failure);
    ClientBench bench;
    bench.Connect();
    VerifyEnd(*bench.client.update(image, confirmation), Outcome::Failed, failure);
    QVERIFY(!bench.simulator.Sent().contains(Wire::ChangeToUpdateMode));
}

void TestClientJobs::UpdateFails_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QByteArray>("failure");
    const auto row = [](const char* command, Outcome outcome, const char* failure) {
        QTest::newRow(command) << QByteArray(command) << outcome << QByteArray(failure);
    };
    row("scenario refuses-update-mode", Outcome::Failed, "UpdateModeChangeFailed");
    row("scenario refuses-initialize", Outcome::Failed, "UpdateInitializationFailed");
    row("scenario refuses-sector 2", Outcome::Failed, "UpdateInitializationFailed");
    row("scenario loses-sector 2", Outcome::Failed, "UpdateInitializationFailed");
    row("scenario refuses-confirmation", Outcome::Failed, "UpdateConfirmationFailed");
    row("scenario stays-in-update-mode", Outcome::Failed, "update-mode");
    row("unplug", Outcome::LinkLost, "link-lost");
}

void TestClientJobs::UpdateFails()
{
    QFETCH(QByteArray, command);
    QFETCH(Outcome, outcome);
    QFETCH(QByteArray, failure);
    ClientBench bench;
    bench.Connect();
    bench.Execute(command);
    UpdateJob* const job = Update(bench, ImageOf(3));
    VerifyEnd(*job, outcome, failure);
    QVERIFY(!job->failure().whatHappened.isEmpty());
    QVERIFY(!job->failure().nextStep.isEmpty());

    bench.Execute("scenario none");
    bench.simulator.Plug();
    AWAIT(bench.client.linkState() == LinkState::Up || bench.client.linkState() == LinkState::UpdateMode);
    VerifyCompletion(*Update(bench, ImageOf(2)));
    QCOMPARE(bench.simulator.Firmware(), ImageOf(2));
}

/// The driver would carry it out as soon as it can.
void TestClientJobs::UpdateThatHasNotBegunIsWithdrawn()
{
    ClientBench bench;
    bench.Connect();
    bench.Execute("scenario refuses-update-mode");
    VerifyEnd(*Update(bench, ImageOf(1)), Outcome::Failed, "UpdateModeChangeFailed");
    bench.Execute("scenario none");
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Up);
    VerifyCompletion(*bench.client.restart());
    QVERIFY(!bench.simulator.Sent().contains(Wire::InitializeUpdate));
}

void TestClientJobs::SendingIsNotAborted()
{
    ClientBench bench;
    bench.Connect();
    UpdateJob* const job = Update(bench, ImageOf(3));
    AWAIT_EQUAL(job->phase(), Phase::Sending);
    job->abort();
    bench.client.stop()->abort();
    bench.client.close();
    AWAIT(job->isFinished());
    QCOMPARE(bench.simulator.Firmware(), ImageOf(3));
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Closed);
}

QTEST_GUILESS_MAIN(TestClientJobs)
#include "tst_clientjobs.moc"
