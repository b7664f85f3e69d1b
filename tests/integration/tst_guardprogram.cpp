#include "integration/guarded.h"

#include <unistd.h>

/// What the guard of `vesmar measure hv` does when the program ends in one way or another.
class TestGuardProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void KilledProgramIsFollowedByAStop();
    void EndOfTheMeasurementEndsTheGuard();
    void StoppedProgramIsLeftAlone();
    void KilledProgramWhoseDeviceOthersHaveOpen();
    void ProgramThatHasTakenTheLineIsLeftAlone();
    void ReturningInstrumentIsStopped();
    void SecondProgramHasNoGuard();
    void SignalsDoNotEndTheGuard();
    void MeasurementWithoutAGuardIsRefused();
    void GuardIsNotStartedByHand();
};

void TestGuardProgram::KilledProgramIsFollowedByAStop()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument);
    AWAIT_EQUAL(instrument.State(), QByteArray("running"));
    QCOMPARE(instrument.Guards().size(), 1);
    QVERIFY(run.Signal(SIGKILL));
    AWAIT(instrument.Guards().isEmpty());
    QCOMPARE(instrument.State(), QByteArray("deselected"));
    QCOMPARE(instrument.SystemLog().size(), 1);
    VERIFY_BEGINS(instrument.SystemLog().first(), "5 vesmar (process ");
    VERIFY_ENDS(
        instrument.SystemLog().first(),
        ") ended in the middle of a measurement. HVTest was stopped, and the instrument confirms that.");
}

/// The guard is held up until the instrument has logged all that the program has sent.
void TestGuardProgram::EndOfTheMeasurementEndsTheGuard()
{
    LastingInstrument instrument(InScenario("never-prepared"));
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument, QStringLiteral("--time 1 --prepare-timeout 60 --stop-timeout 60"));
    AWAIT_EQUAL(instrument.State(), QByteArray("preparing"));
    QCOMPARE(instrument.Guards().size(), 1);
    const HeldUp guard(instrument.Guards().first());
    QVERIFY(guard.IsHeld());
    instrument.Command("scenario none");
    const int status = run.Finish();
    const bool hasGap = status == 8 && run.Errors().contains("there was no reading"); // on a busy machine
    QVERIFY2(status == 0 || hasGap, run.Errors());
    instrument.Send("?");
    AWAIT(instrument.Log().last().contains(" 3f "));
    const int lines = instrument.Log().size();
    QVERIFY(guard.LetGoOn());
    AWAIT(instrument.Guards().isEmpty());
    QCOMPARE(instrument.Log().size(), lines);
    QVERIFY(instrument.SystemLog().isEmpty());
}

/// The guard has a second to make a mistake.
void TestGuardProgram::StoppedProgramIsLeftAlone()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument);
    AWAIT_EQUAL(instrument.State(), QByteArray("running"));
    QVERIFY(run.Signal(SIGSTOP));
    QTest::qWait(1000);
    QCOMPARE(instrument.State(), QByteArray("running"));
    QVERIFY(run.Signal(SIGCONT));
    QVERIFY(run.Signal(SIGINT));
    QCOMPARE(run.Finish(), 5);
    VERIFY_CONTAINS(run.Errors(), "The instrument is confirmed to have stopped.");
    AWAIT(instrument.Guards().isEmpty());
    QVERIFY(instrument.SystemLog().isEmpty());
}

/// As a program does that the application has started in the middle of the measurement.
void TestGuardProgram::KilledProgramWhoseDeviceOthersHaveOpen()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument);
    AWAIT_EQUAL(instrument.State(), QByteArray("running"));
    ProgramRun other(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("exec 9<>\"$VESMAR_SIMULATOR_DEVICE\"; echo open; read line")},
        instrument.Environment());
    AWAIT(other.Output() == "open\n");
    QVERIFY(run.Signal(SIGKILL));
    AWAIT(instrument.Guards().isEmpty());
    QCOMPARE(instrument.State(), QByteArray("deselected"));
    other.CloseInput();
    QVERIFY(other.Finish() != -1);
}

/// A program that waits for the line has it before the guard, which has a second to make a mistake.
void TestGuardProgram::ProgramThatHasTakenTheLineIsLeftAlone()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument);
    AWAIT_EQUAL(instrument.State(), QByteArray("running"));
    QCOMPARE(instrument.Guards().size(), 1);
    const HeldUp guard(instrument.Guards().first());
    QVERIFY(guard.IsHeld());
    QVERIFY(run.Signal(SIGKILL));
    QCOMPARE(run.Finish(), -1);
    ProgramRun next(QStringLiteral("flock"),
                    {instrument.Environment().value(QStringLiteral("VESMAR_SIMULATOR_DEVICE")),
                     QStringLiteral("sh"), QStringLiteral("-c"), QStringLiteral("echo locked; read line")});
    AWAIT(next.Output() == "locked\n");
    const int lines = instrument.Log().size();
    QVERIFY(guard.LetGoOn());
    QTest::qWait(1000);
    QCOMPARE(instrument.Log().size(), lines);
    next.CloseInput();
    AWAIT(instrument.Guards().isEmpty());
    QCOMPARE(instrument.State(), QByteArray("deselected"));
    QVERIFY(next.Finish() != -1);
}

void TestGuardProgram::ReturningInstrumentIsStopped()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument);
    AWAIT_EQUAL(instrument.State(), QByteArray("running"));
    instrument.Command("unplug");
    AWAIT(instrument.Log().last().endsWith(" -"));
    QVERIFY(run.Signal(SIGKILL));
    const int lines = instrument.Log().size();
    AWAIT(instrument.Log().size() > lines + 1);
    instrument.Command("plug");
    AWAIT(instrument.Guards().isEmpty());
    QCOMPARE(instrument.State(), QByteArray("deselected"));
    VERIFY_CONTAINS(instrument.SystemLog().value(0), "HVTest was stopped");
}

void TestGuardProgram::SecondProgramHasNoGuard()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument);
    AWAIT_EQUAL(instrument.State(), QByteArray("running"));
    GuardedRun second(instrument);
    QCOMPARE(second.Finish(), 2);
    VERIFY_CONTAINS(second.Errors(), "is held by vesmar (process ");
    QCOMPARE(instrument.Guards().size(), 1);
    QCOMPARE(instrument.State(), QByteArray("running"));
    QVERIFY(run.Signal(SIGKILL));
    AWAIT(instrument.Guards().isEmpty());
    QCOMPARE(instrument.State(), QByteArray("deselected"));
}

void TestGuardProgram::SignalsDoNotEndTheGuard()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    GuardedRun run(instrument);
    AWAIT_EQUAL(instrument.State(), QByteArray("running"));
    const pid_t guard = instrument.Guards().value(0);
    QVERIFY(guard > 0);
    QVERIFY(::getpgid(guard) != ::getpgrp() && ::getsid(guard) != ::getsid(0)); // others than the program's
    for (const int ending : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE}) {
        QCOMPARE(::kill(guard, ending), 0);
    }
    QVERIFY(run.Signal(SIGKILL));
    AWAIT(instrument.Guards().isEmpty());
    QCOMPARE(instrument.State(), QByteArray("deselected"));
}

void TestGuardProgram::MeasurementWithoutAGuardIsRefused()
{
    LastingInstrument instrument;
    AWAIT(instrument.IsThere());
    QProcessEnvironment environment = instrument.Environment();
    environment.insert(QStringLiteral("VESMAR_GUARD"), QStringLiteral("/nowhere/vesmar-guard"));
    ProgramRun run(QStringLiteral(VESMAR_PROGRAM), Words(QStringLiteral("measure hv --json")), environment);
    QCOMPARE(run.Finish(), 3);
    QCOMPARE(TextOf(ObjectOf(run.Lines().last()), "reason"), QByteArray("guard-missing"));
    VERIFY_CONTAINS(run.Errors(), "cannot be started: No such file or directory.");
    QVERIFY(instrument.States().isEmpty());
}

void TestGuardProgram::GuardIsNotStartedByHand()
{
    ProgramRun guard(QStringLiteral(GUARD_PROGRAM), {});
    QCOMPARE(guard.Finish(), 1);
    VERIFY_BEGINS(guard.Errors(), "vesmar-guard: an application that measures starts this program");
}

QTEST_GUILESS_MAIN(TestGuardProgram)
#include "tst_guardprogram.moc"
