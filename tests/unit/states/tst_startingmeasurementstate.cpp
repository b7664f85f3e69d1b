#include <QTest>

#include "states/measurement/startingmeasurementstate.h"
#include "unit/states/measurementengine.h"

using Vesmar::StartingMeasurementState;

namespace
{

const char* const NotStarted = "ErrorCode=201 AbortMeasurementRequested=1";
const char* const Dropped = "ErrorCode=202 AbortMeasurementRequested=1";
const char* const Runs = "MeasurementStatus=4 IsMeasurementRunning=1";
const char* const HasRun = "MeasurementStatus=4";

/// A state that has been entered, with nothing noted yet.
struct Starting : MeasurementEngine {
    StartingMeasurementState state{&context, nullptr};

    Starting()
    {
        state.OnEntry();
        Restart();
    }

    /// One step while the instrument reports this; what it makes of the cells.
    QString Step(int functionState, bool isNewMeasurement = false)
    {
        Report(functionState, isNewMeasurement);
        Restart();
        state.OnRunning();
        return Outcome();
    }
};

} // namespace

class TestStartingMeasurementState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryStepIsFramedOnTheLog()
    {
        Starting starting;
        starting.Step(4);
        starting.state.OnRunning();
        const QStringList texts = starting.log.Texts();
        const QString in = QStringLiteral("StartingMeasurementState::OnRunning() IN");
        const QString out = QStringLiteral("StartingMeasurementState::OnRunning() OUT");
        QCOMPARE(texts.filter(QStringLiteral("StartingMeasurementState")), (QStringList{in, out, in, out}));
        QCOMPARE(texts.constFirst(), in);
        QCOMPARE(texts.constLast(), out);
        QCOMPARE(starting.log.Messages().constFirst().type, QtWarningMsg);
    }

    void FunctionStateDecides_data()
    {
        QTest::addColumn<int>("functionState");
        QTest::addColumn<bool>("isStarted");
        QTest::addColumn<bool>("isNewMeasurement");
        QTest::addColumn<QString>("outcome");
        const QMap<int, const char*> always{
            {3, NotStarted}, {6, NotStarted}, {7, Runs}, {8, Runs}, {9, Runs}};
        for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
            for (const bool isStarted : {false, true}) {
                for (const bool isNew : {false, true}) {
                    const bool hasRun = isStarted && isNew && (state == 0 || state == 2);
                    const bool isDropped = isStarted && state == 4;
                    const char* outcome = hasRun ? HasRun : isDropped ? Dropped : always.value(state);
                    QTest::addRow("function state %d%s%s", state, isStarted ? ", started" : "",
                                  isNew ? ", new measurement" : "")
                        << state << isStarted << isNew << QString(QLatin1String(outcome));
                }
            }
        }
    }

    void FunctionStateDecides()
    {
        QFETCH(const int, functionState);
        QFETCH(const bool, isStarted);
        QFETCH(const bool, isNewMeasurement);
        QFETCH(const QString, outcome);
        Starting starting;
        if (isStarted) {
            QCOMPARE(starting.Step(5), QString());
        }
        QCOMPARE(starting.Step(functionState, isNewMeasurement), outcome);
        QCOMPARE(starting.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    }

    void StartIsForgottenOnceItRan_data()
    {
        QTest::addColumn<int>("functionState");
        for (const int state : {0, 2, 7, 8, 9}) {
            QTest::addRow("function state %d", state) << state;
        }
    }

    void StartIsForgottenOnceItRan()
    {
        QFETCH(const int, functionState);
        Starting starting;
        starting.Step(5);
        QVERIFY(starting.Step(functionState, true).startsWith(QLatin1String("MeasurementStatus=4")));
        QCOMPARE(starting.Step(4), QString());
    }

    void StartIsForgottenOnEntryAndExit()
    {
        Starting starting;
        starting.Step(5);
        starting.state.OnExit();
        QCOMPARE(starting.Step(4), QString());
        starting.Step(5);
        starting.state.OnEntry();
        QCOMPARE(starting.Step(4), QString());
    }

    void StartIsKeptWhileNothingComesOfIt()
    {
        Starting starting;
        starting.Step(5);
        for (const int state : {0, 1, 2, 12}) {
            QCOMPARE(starting.Step(state), QString());
        }
        QCOMPARE(starting.Step(4), QString(QLatin1String(Dropped)));
    }

    void FailureLeavesAnEarlierError_data()
    {
        QTest::addColumn<int>("functionState");
        for (const int state : {3, 4, 6}) {
            QTest::addRow("function state %d", state) << state;
        }
    }

    void FailureLeavesAnEarlierError()
    {
        QFETCH(const int, functionState);
        Starting starting;
        starting.Step(5);
        starting.Report(functionState, false, 6);
        starting.Restart();
        starting.state.OnRunning();
        QCOMPARE(starting.Outcome(), QStringLiteral("ErrorCode=6 AbortMeasurementRequested=1"));
    }

    void StartsOnceForEachRequest()
    {
        Starting starting;
        for (int request = 0; request < 2; ++request) {
            starting.context.StartMeasurementRequested.Set(true);
            QCOMPARE(starting.Step(4), QStringLiteral("StartMeasurementRequested=0"));
            QCOMPARE(starting.peer.RequestBytes(),
                     (QList<QByteArray>{Wire::ReadStatus, Wire::StartMeasurement}));
            QCOMPARE(starting.Step(4), QString());
            QCOMPARE(starting.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
        }
    }

    void DoesNotStartWhileAnAbortIsPending()
    {
        Starting starting;
        starting.context.StartMeasurementRequested.Set(true);
        starting.context.AbortMeasurementRequested.Set(true);
        QCOMPARE(starting.Step(4), QString());
        QCOMPARE(starting.Commands(), QByteArray("s"));
        QVERIFY(starting.context.StartMeasurementRequested.Get());
    }

    void DoesNotStartUnasked()
    {
        Starting starting;
        starting.Step(4);
        starting.context.PrepareMeasurementRequested.Set(true);
        QCOMPARE(starting.Step(4), QString());
        QCOMPARE(starting.Commands(), QByteArray("s"));
    }

    void FailedStartIsNotTriedAgain()
    {
        Starting starting;
        starting.RefuseWhileReporting('S', 4);
        starting.context.StartMeasurementRequested.Set(true);
        starting.Restart();
        starting.state.OnRunning();
        QCOMPARE(starting.Outcome(), QStringLiteral("CommunicationError=1 StartMeasurementRequested=0"));
        starting.state.OnRunning();
        QCOMPARE(starting.Commands(), QByteArray("sSs"));
    }

    void StartIsNotSentAgainOnceAnAbortIsPending_data()
    {
        QTest::addColumn<int>("abortedStart");
        QTest::addColumn<QByteArray>("commands");
        QTest::newRow("never aborted") << 0 << QByteArray("sSSS");
        QTest::newRow("aborted while the first start is answered") << 1 << QByteArray("sS");
        QTest::newRow("aborted while the second start is answered") << 2 << QByteArray("sSS");
    }

    void StartIsNotSentAgainOnceAnAbortIsPending()
    {
        QFETCH(const int, abortedStart);
        QFETCH(const QByteArray, commands);
        Starting starting;
        starting.transciever.SetMaxRetransmissions(2);
        starting.context.StartMeasurementRequested.Set(true);
        int starts = 0;
        starting.peer.Answer([&](const QByteArray& request) {
            if (request == Wire::ReadStatus) {
                return Wire::Status(2, 4);
            }
            if (++starts == abortedStart) {
                starting.context.AbortMeasurementRequested.Set(true);
            }
            return Wire::Refusal;
        });
        starting.state.OnRunning();
        QCOMPARE(starting.Commands(), commands);
        QVERIFY(starting.context.CommunicationError.Get());
        QVERIFY(!starting.context.StartMeasurementRequested.Get());
    }

    void SendsNoStartOnceThePortIsAboutToClose()
    {
        Starting starting;
        starting.context.StartMeasurementRequested.Set(true);
        starting.peer.Answer([&starting](const QByteArray&) {
            starting.transciever.PrepareToClose();
            return Wire::Status(2, 4);
        });
        starting.state.OnRunning();
        starting.transciever.Close();
        QVERIFY(starting.transciever.Open());
        starting.Report(4);
        QVERIFY(starting.state.RequestStatus());
        QCOMPARE(starting.Commands(), QByteArray("ss"));
    }

    void FailedStatusDoesNotEndTheStep()
    {
        Starting starting;
        starting.RefuseWhileReporting('s', 4);
        starting.context.MeasurementFunctionStatus.Set(Vesmar::FunctionState::Running);
        starting.context.StartMeasurementRequested.Set(true);
        starting.Restart();
        starting.state.OnRunning();
        QCOMPARE(starting.Outcome(), QStringLiteral("CommunicationError=1 StartMeasurementRequested=0 "
                                                    "MeasurementStatus=4 IsMeasurementRunning=1"));
        QCOMPARE(starting.Commands(), QByteArray("sS"));
    }
};

QTEST_GUILESS_MAIN(TestStartingMeasurementState)
#include "tst_startingmeasurementstate.moc"
