#include <QtTest>

#include "simulator/model/instrumentmodel.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::FramePiece;
using Simulator::InstrumentModel;
using Simulator::ModelOptions;
using Simulator::Scenario;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const QByteArray NoAnswer;
const QByteArray PrepareUbRe = Bytes("500a000005ffffffffc327");
const QByteArray PrepareIec = Bytes("500b008085000000002f0f");
const QByteArray PrepareUnknownMode = Bytes("500b0000000000000088da");
const QByteArray Preparing = Bytes("0af1f510");
const QByteArray Completed = Bytes("0af29620");
const QByteArray IecPrepared = Bytes("0bf46173");
const QByteArray IecRunning = Bytes("0bf70243");
const QByteArray IecCompleted = Bytes("0bf2a713");
const QByteArray CheckPending = Bytes("8af32f2b");
const QByteArray Checked = Bytes("0af3b730");
const QByteArray CheckClean(26, '\0');
const QByteArray Check3 = '\x03' + QByteArray(23, '\0') + Bytes("0559");

const TimePoint Start;

/// An instrument and a program that asks it, so many milliseconds after the start.
class AskedInstrument
{
public:
    explicit AskedInstrument(Scenario scenario = Scenario::None, int number = 1) : model(Options(), Start)
    {
        model.SetScenario(scenario, number);
    }

    QByteArray Ask(const QByteArray& request, int time)
    {
        return model.Answer(request, Start + milliseconds(time));
    }

    /// What it has sent unasked since the last call.
    QByteArrayList FramesUntil(int time)
    {
        model.Advance(Start + milliseconds(time));
        QByteArrayList frames;
        for (const FramePiece& piece : model.CollectFrames()) {
            frames.append(piece.bytes);
        }
        return frames;
    }

    InstrumentModel model;

private:
    static ModelOptions Options()
    {
        ModelOptions options;
        options.date = QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC);
        return options;
    }
};

} // namespace

class TestInstrumentModelRcd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TestFromTheBeginning_data()
    {
        QTest::addColumn<QByteArray>("prepare");
        QTest::addColumn<QByteArray>("prepared");
        QTest::addColumn<QByteArray>("running");
        QTest::addColumn<QByteArray>("completed");
        QTest::newRow("Ub/Re") << PrepareUbRe << RcdPreparedStatus << RcdRunningStatus << Completed;
        QTest::newRow("Ia/Ta") << PrepareIaTa << RcdPreparedStatus << RcdRunningStatus << Completed;
        QTest::newRow("IEC") << PrepareIec << IecPrepared << IecRunning << IecCompleted;
    }

    void TestFromTheBeginning()
    {
        QFETCH(QByteArray, prepare);
        QFETCH(QByteArray, prepared);
        QFETCH(QByteArray, running);
        QFETCH(QByteArray, completed);
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(prepare, 0), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 150), prepared);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 200), running);
        QCOMPARE(instrument.FramesUntil(1099), (QByteArrayList{running, running, running, running}));
        const QByteArrayList last = instrument.FramesUntil(1100);
        QCOMPARE(last.size(), 1);
        QCOMPARE(last.first().size(), 26);
        QCOMPARE(instrument.Ask(ReadStatus, 1100), completed);
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
        QCOMPARE(instrument.Ask(ReadStatus, 60000), completed);
    }

    void CleanUp()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareCleanUp, 0), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 150), IecPrepared);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 899), IecRunning);
        QCOMPARE(instrument.Ask(PrepareIec, 899), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus, 900), IecCompleted);
        QCOMPARE(instrument.FramesUntil(60000), (QByteArrayList{IecRunning, IecRunning, IecRunning}));
        QCOMPARE(instrument.Ask(PrepareIec, 60000), Acknowledge);
    }

    void RefusesUnknownPayloads()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareUnknownMode, 0), Refusal);
        QCOMPARE(instrument.Ask(StartMeasurement, 0), Refusal);
        QCOMPARE(instrument.model.Status().function, 0);
    }

    void PreparesInNormalModeOnly()
    {
        for (const int mode : {1, 2, 3}) {
            AskedInstrument instrument;
            instrument.model.SetMode(mode);
            QCOMPARE(instrument.Ask(PrepareUbRe, 0), Refusal);
        }
    }

    void Stop()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Acknowledge);
        QCOMPARE(instrument.Ask(StopMeasurement, 400), Acknowledge); // together with the first frame
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
        QCOMPARE(instrument.model.Status().function, 0);
        QCOMPARE(instrument.Ask(StartMeasurement, 60000), Refusal);
    }

    void CheckObject()
    {
        AskedInstrument instrument(Scenario::RcdCheckOnce, 3);
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 149), Preparing);
        QCOMPARE(instrument.Ask(ReadStatus, 150), CheckPending);
        QCOMPARE(instrument.Ask(StartMeasurement, 150), Refusal);
        QCOMPARE(instrument.Ask(ReadMeasurement, 200), Check3);
        QCOMPARE(instrument.Ask(ReadStatus, 200), CheckPending);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Refusal);
        QCOMPARE(instrument.Ask(ReadMeasurement, 300), CheckClean);
        QCOMPARE(instrument.Ask(ReadStatus, 300), Checked);
        QCOMPARE(instrument.Ask(StartMeasurement, 400), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 400), RcdRunningStatus);
        QCOMPARE(instrument.FramesUntil(1300).size(), 5);
    }

    void CheckObjectGetsLost()
    {
        AskedInstrument instrument(Scenario::RcdCheckLost);
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 150), CheckPending);
        QCOMPARE(instrument.Ask(ReadMeasurement, 150), NoAnswer);
        QCOMPARE(instrument.Ask(ReadStatus, 150), CheckPending);
    }

    void ErrorOfTheTestOnly()
    {
        AskedInstrument instrument(Scenario::RcdError, 3);
        instrument.model.SetError(7);
        QCOMPARE(instrument.Ask(ReadStatus, 0).left(2).toHex(), QByteArray("007e"));
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 150), Bytes("0a341c99"));
        instrument.model.SetScenario(Scenario::None, 1);
        QCOMPARE(instrument.Ask(ReadStatus, 150), RcdPreparedStatus);
    }

    void TakesThePlaceOfAFunctionAtRest()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareHvTest, 0), Acknowledge);
        QCOMPARE(instrument.Ask(PrepareUbRe, 200), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 200), Preparing);
        QCOMPARE(instrument.Ask(StartMeasurement, 400), Acknowledge);
        QCOMPARE(instrument.Ask(StopMeasurement, 400), Acknowledge);
        QCOMPARE(instrument.model.Status().function, 0); // not even the one before
    }

    void GivesWayToAFunction()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(PrepareHvTest, 200), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 200).left(2).toHex(), QByteArray("09f1"));
        QCOMPARE(instrument.Ask(StartMeasurement, 400), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 1000).left(2).toHex(), QByteArray("89f7"));
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
    }

    void NotWhileAFunctionRuns()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareHvTest, 0), Acknowledge);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Acknowledge);
        QCOMPARE(instrument.Ask(PrepareUbRe, 200), Refusal);
        QCOMPARE(instrument.Ask(PrepareUbRe, 1000), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus, 1000).left(2).toHex(), QByteArray("89f7"));
    }

    void NoFunctionWhileATestRuns()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Acknowledge);
        QCOMPARE(instrument.Ask(PrepareHvTest, 300), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus, 300), RcdRunningStatus);
        QCOMPARE(instrument.Ask(PrepareHvTest, 1100), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 1100).left(2).toHex(), QByteArray("09f1"));
    }

    void NoReadingsWhileATestIsSelected()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(ReadStatus, 500).left(2).toHex(), QByteArray("80fe"));
        QCOMPARE(instrument.Ask(PrepareUbRe, 500), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 1600), RcdPreparedStatus);
        QCOMPARE(instrument.Ask(StopMeasurement, 1600), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 1600).left(2).toHex(), QByteArray("00fe"));
        QCOMPARE(instrument.Ask(ReadStatus, 2200).left(2).toHex(), QByteArray("80fe"));
    }

    void EndsWithTheMode()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Acknowledge);
        instrument.model.SetMode(0);
        QCOMPARE(instrument.Ask(ReadStatus, 200), RcdRunningStatus);
        instrument.model.SetMode(1);
        QCOMPARE(instrument.Ask(ReadStatus, 200).left(2).toHex(), QByteArray("20fe"));
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
    }

    void EndsWithARestart()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        QCOMPARE(instrument.Ask(StartMeasurement, 200), Acknowledge);
        QCOMPARE(instrument.Ask(ChangeToCalibrationMode, 300), Acknowledge);
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
        QVERIFY(instrument.model.CollectChanges().contains(QStringLiteral("function 10 ended by a restart")));
        QCOMPARE(instrument.Ask(ReadStatus, 60000).left(2).toHex(), QByteArray("20fe"));
    }

    void CommandsEndIt()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        instrument.model.SetFunction(0);
        QCOMPARE(instrument.model.Status().function, 0);
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        instrument.model.SetFunction(11);
        QCOMPARE(instrument.Ask(ReadStatus, 0), IecRunning);
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
        QCOMPARE(instrument.Ask(PrepareUbRe, 60000), Refusal);
        QCOMPARE(instrument.Ask(StopMeasurement, 60000), Acknowledge);
        QCOMPARE(instrument.model.Status().function, 0);
    }

    void StartTest_data()
    {
        QTest::addColumn<int>("result");
        QTest::addColumn<QByteArray>("status");
        QTest::newRow("0") << 0 << Bytes("00f01fef");
        QTest::newRow("5") << 5 << Bytes("00f5babf");
        QTest::newRow("15") << 15 << Bytes("00fff01e");
    }

    void StartTest()
    {
        QFETCH(int, result);
        QFETCH(QByteArray, status);
        AskedInstrument instrument(Scenario::StartTest, result);
        QCOMPARE(instrument.Ask(ReadStatus, 0), status);
        instrument.model.SetScenario(Scenario::None, 1);
        QCOMPARE(instrument.Ask(ReadStatus, 0), Bytes("00fed10e"));
    }

    void TellsWhatAndWhenItChanges()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(PrepareHvTest, 0), Acknowledge);
        QCOMPARE(instrument.Ask(PrepareUbRe, 100), Acknowledge);
        QVERIFY(instrument.model.NextChangeAt() == Start + milliseconds(250));
        QCOMPARE(instrument.Ask(StartMeasurement, 300), Acknowledge);
        QVERIFY(instrument.model.NextChangeAt() == Start + milliseconds(500));
        instrument.FramesUntil(1200);
        QVERIFY(!instrument.model.NextChangeAt().has_value());
        QCOMPARE(
            instrument.model.CollectChanges(),
            (QStringList{QStringLiteral("function 9 preparing"), QStringLiteral("function 9 deselected"),
                         QStringLiteral("function 10 preparing"), QStringLiteral("function 10 prepared"),
                         QStringLiteral("function 10 running"), QStringLiteral("function 10 completed")}));
    }
};

QTEST_APPLESS_MAIN(TestInstrumentModelRcd)
#include "tst_instrumentmodelrcd.moc"
