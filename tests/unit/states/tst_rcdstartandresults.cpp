#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>

#include "unit/states/rcdruns.h"

using namespace RCDRuns;

namespace
{

const QByteArray Error525 = Wire::Bytes("0b592617");
constexpr qint64 SilenceMs = 1000 + 2; // And the end of the frame before it.
const QString AllOver = QStringLiteral("TestResults StartMeasurementRequested=0 MeasurementStatus=7");

/// Ub/Re tells that it runs when it begins to wait for results; the others have told it before.
QString AndIsRunning(int kind, const QString& outcome)
{
    return (kind == UbRe ? QStringLiteral("IsMeasurementRunning=1 ") : QString()) + outcome;
}

} // namespace

/// What the four runs do once the function is prepared.
class TestRCDStartAndResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void StartsTheTest_data()
    {
        StepRows::AddColumns();
        for (const int kind : {UbRe, IaTa, IECIaTa, CleanUp}) {
            const StepRows rows(kind, Starting, Wire::StartMeasurement);
            rows.Add(QStringLiteral("acknowledged"), Wire::Acknowledge, QStringLiteral("MeasurementStatus=4"),
                     NoPause);
            rows.Add(QStringLiteral("data"), Wire::StartTest0Status, NoChange, NoPause);
            rows.AddFailures();
        }
    }

    void StartsTheTest() { StepWithOneRequest(); }
    void StartingGivesUpAfterThreeRequests_data() { AddRuns({UbRe, IaTa, IECIaTa, CleanUp}); }
    void StartingGivesUpAfterThreeRequests()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.peer.AnswerInTurn(
            {Wire::StartTest0Status, Wire::Refusal, Wire::DamagedStatus, Wire::Acknowledge});
        run.SetPhase(Starting);
        QVERIFY(run.StepsInVain(3, "S"));
        QCOMPARE(run.Step(), Text(Ended201));
        QCOMPARE(run.Commands(), QByteArray());
        QCOMPARE(run.Pauses(), NoPause);
    }

    void AbortDoesNotHoldTheStart_data() { AddRuns({IaTa, IECIaTa, CleanUp}); }
    /// An abort ends these runs by their guards alone.
    void AbortDoesNotHoldTheStart()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.context.AbortMeasurementRequested.Set(true);
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.StepIn(Starting), QStringLiteral("MeasurementStatus=4"));
        QCOMPARE(run.Commands(), QByteArray("S"));
    }

    void AbortHoldsTheStartOfUbRe()
    {
        Run run(UbRe);
        run.peer.AnswerAlways(Wire::Acknowledge);
        run.context.AbortMeasurementRequested.Set(true);
        run.SetPhase(Starting);
        QVERIFY(run.StepsInVain(5, ""));
        run.context.AbortMeasurementRequested.Set(false);
        QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=4"));
    }

    void AbortDoesNotRestoreTheStartsOfUbRe()
    {
        Run run(UbRe);
        run.peer.AnswerAlways(Wire::StartTest0Status);
        run.SetPhase(Starting);
        QVERIFY(run.StepsInVain(3, "S"));
        run.context.AbortMeasurementRequested.Set(true);
        QCOMPARE(run.Step(), Text(Ended201));
    }

    void ResultsEndTheTest_data() { AddPhases({UbRe, IaTa, IECIaTa}, {Running, Measuring}); }
    void ResultsEndTheTest()
    {
        QFETCH(const int, kind);
        QFETCH(const int, phase);
        Run run(kind);
        QCOMPARE(run.StepWithBytes(phase, RCDWire::Result), AndIsRunning(kind, AllOver));
        QCOMPARE(run.Commands(), QByteArray());
        Vesmar::MeasurementResults* results = run.context.TestResults.Get();
        if (kind == IECIaTa) {
            const auto* ofIEC = dynamic_cast<Vesmar::RCDIECResults*>(results);
            QVERIFY(ofIEC != nullptr);
            QCOMPARE(ofIEC->_ia, 1.0F);
            QCOMPARE(ofIEC->_ta, 2.5F);
            return;
        }
        const auto* ofRCD = dynamic_cast<Vesmar::RCDResults*>(results);
        QVERIFY(ofRCD != nullptr);
        QCOMPARE(ofRCD->_re, kind == UbRe ? 0.5F : 100.0F);
        QVERIFY(ofRCD->_ia == (kind == UbRe ? 3.4028235e38F : 1.0F));
        QVERIFY(ofRCD->_ta == (kind == UbRe ? 3.4028235e38F : 2.5F));
    }

    void AbortDoesNotHoldTheResults_data() { AddRuns({IaTa, IECIaTa}); }
    void AbortDoesNotHoldTheResults()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.context.AbortMeasurementRequested.Set(true);
        QCOMPARE(run.StepWithBytes(Running, RCDWire::Result), AllOver);
    }

    void AbortHoldsTheResultsOfUbRe()
    {
        for (const int phase : {Running, Measuring}) {
            Run run(UbRe);
            run.context.AbortMeasurementRequested.Set(true);
            QCOMPARE(run.StepWithBytes(phase, RCDWire::Result), NoChange);
            run.context.AbortMeasurementRequested.Set(false);
            QVERIFY(run.Step().contains(QStringLiteral("TestResults"))); // They were left on the line.
        }
    }

    void TerminationEndsTheTestWith521_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("phase");
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("outcome");
        const QString end = QStringLiteral("StartMeasurementRequested=0 ErrorCode=521 MeasurementStatus=7");
        const auto row = [](int kind, int phase, int error, const QString& outcome) {
            QTest::addRow("%s, phase %d, error %d", Of(kind).name, phase, error)
                << kind << phase << error << AndIsRunning(kind, outcome);
        };
        for (const int phase : {Running, Measuring}) {
            for (const int kind : {UbRe, IaTa, IECIaTa}) {
                row(kind, phase, Wire::NoError, end);
                row(kind, phase, 3, QStringLiteral("ErrorCode=523 ") + end);
            }
            row(UbRe, phase, 5, QStringLiteral("ErrorCode=525 ") + end);
            row(IaTa, phase, 5, QStringLiteral("ErrorCode=525 ") + end);
        }
    }

    void TerminationEndsTheTestWith521()
    {
        QFETCH(const int, kind);
        QFETCH(const int, phase);
        QFETCH(const int, error);
        QFETCH(const QString, outcome);
        Run run(kind);
        QCOMPARE(run.StepWithBytes(phase, run.Status(9, false, error)), outcome);
    }

    void Error525BeginsIECIaTaAnew_data() { AddPhases({IECIaTa}, {Running, Measuring}); }
    void Error525BeginsIECIaTaAnew()
    {
        QFETCH(const int, kind);
        QFETCH(const int, phase);
        Run run(kind);
        QCOMPARE(run.StepWithBytes(phase, Error525),
                 QStringLiteral("ErrorCode=525 ErrorCode=15 MeasurementStatus=0"));
        QVERIFY(run.context.StartMeasurementRequested.Get());
    }

    void TestBegunAnewHasTheRestOfItsBudgets()
    {
        Run run(IECIaTa);
        for (int round = 0; round < 3; ++round) {
            run.peer.AnswerInTurn({Wire::IdleStatus, Wire::ReadyStatus, Wire::Acknowledge, run.Status(2),
                                   run.Status(4), Wire::Acknowledge});
            for (int step = 0; step < 6; ++step) {
                run.Step();
            }
            QCOMPARE(run.StepWithBytes(Running, Error525),
                     QStringLiteral("ErrorCode=525 ErrorCode=15 MeasurementStatus=0"));
        }
        run.peer.AnswerAlways(Wire::IdleStatus);
        QVERIFY(run.StepsInVain(3, "s")); // Six of nine have been asked.
        QCOMPARE(run.Step(), Text(Ended400));
        run.SetError(Wire::NoError);
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.StepIn(Preparing), Text(Ended200));
        QCOMPARE(run.StepIn(Starting), Text(Ended201));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void SilenceEndsUbReWith520_data() { AddPhases({UbRe}, {Running, Measuring}); }
    void SilenceEndsUbReWith520()
    {
        QFETCH(const int, kind);
        QFETCH(const int, phase);
        Run run(kind);
        QElapsedTimer time;
        time.start();
        QCOMPARE(run.StepWithBytes(phase, run.Status(7)),
                 QStringLiteral("IsMeasurementRunning=1 ErrorCode=520 MeasurementStatus=7"));
        QCOMPARE(time.elapsed(), SilenceMs);
        QVERIFY(run.context.StartMeasurementRequested.Get());
    }

    void SilentUbReIsNotStartedAgain()
    {
        Run run(UbRe);
        run.peer.AnswerAlways(Wire::Acknowledge);
        run.StepIn(Running);
        QCOMPARE(run.StepIn(Starting), Text(Ended201));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void SilentTestIsStartedAgain_data() { AddPhases({IaTa, IECIaTa}, {Running, Measuring}); }
    void SilentTestIsStartedAgain()
    {
        QFETCH(const int, kind);
        QFETCH(const int, phase);
        Run run(kind);
        QElapsedTimer time;
        time.start();
        QCOMPARE(run.StepWithBytes(phase, run.Status(7)), QStringLiteral("MeasurementStatus=3"));
        QCOMPARE(time.elapsed(), SilenceMs);
        QVERIFY(run.context.StartMeasurementRequested.Get());
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=4"));
        QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::StartMeasurement});
    }

    void SilentTestIsStartedThreeTimesInAll_data() { AddRuns({IaTa, IECIaTa}); }
    void SilentTestIsStartedThreeTimesInAll()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.peer.AnswerAlways(Wire::Acknowledge);
        run.SetPhase(Starting);
        for (int start = 0; start < 3; ++start) {
            QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=4"));
            QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=3"));
        }
        QCOMPARE(run.Step(), Text(Ended201));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void EndedPhasesClearIsMeasurementRunning_data()
    {
        AddPhases({UbRe, IaTa, IECIaTa, CleanUp}, {Stopping, Stopped});
    }
    void EndedPhasesClearIsMeasurementRunning()
    {
        QFETCH(const int, kind);
        QFETCH(const int, phase);
        Run run(kind);
        run.context.IsMeasurementRunning.Set(true);
        QCOMPARE(run.StepIn(phase), QStringLiteral("IsMeasurementRunning=0"));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void CleanUpEndsAtOnceWithoutResults()
    {
        Run run(CleanUp);
        QCOMPARE(run.StepWithBytes(Running, RCDWire::Result), QStringLiteral("MeasurementStatus=7"));
        QCOMPARE(run.Commands(), QByteArray());
        QVERIFY(!run.log.Contains(QStringLiteral("ReadingBuffer: ")));
        QVERIFY(run.context.StartMeasurementRequested.Get());
    }

    void CleanUpReadsNothingInItsLaterPhases_data() { AddPhases({CleanUp}, {Measuring, Stopping, Stopped}); }
    void CleanUpReadsNothingInItsLaterPhases()
    {
        QFETCH(const int, kind);
        QFETCH(const int, phase);
        Run run(kind);
        run.peer.AnswerAlways(Wire::Acknowledge);
        run.StepIn(phase);
        QCOMPARE(run.Commands(), QByteArray());
        QVERIFY(!run.log.Contains(QStringLiteral("ReadingBuffer: ")));
    }
};

QTEST_GUILESS_MAIN(TestRCDStartAndResults)
#include "tst_rcdstartandresults.moc"
