#include <QtTest>

#include "askedmodel.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::Scenario;

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
        AskedModel instrument;
        instrument.Converse({{0, prepare, Acknowledge},
                             {150, ReadStatus, prepared},
                             {200, StartMeasurement, Acknowledge},
                             {200, ReadStatus, running}});
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
        AskedModel instrument;
        instrument.Converse({{0, PrepareCleanUp, Acknowledge},
                             {150, ReadStatus, IecPrepared},
                             {200, StartMeasurement, Acknowledge},
                             {899, ReadStatus, IecRunning},
                             {899, PrepareIec, Refusal},
                             {900, ReadStatus, IecCompleted}});
        QCOMPARE(instrument.FramesUntil(60000), (QByteArrayList{IecRunning, IecRunning, IecRunning}));
        QCOMPARE(instrument.Ask(PrepareIec, 60000), Acknowledge);
    }

    void RefusesUnknownPayloads()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareUnknownMode, Refusal}, {0, StartMeasurement, Refusal}});
        QCOMPARE(instrument.model.Status().function, 0);
    }

    void PreparesInNormalModeOnly()
    {
        for (const int mode : {1, 2, 3}) {
            AskedModel instrument;
            instrument.model.SetMode(mode);
            QCOMPARE(instrument.Ask(PrepareUbRe, 0), Refusal);
        }
    }

    void Stop()
    {
        AskedModel instrument;
        instrument.Converse({
            {0, PrepareUbRe, Acknowledge},
            {200, StartMeasurement, Acknowledge},
            {400, StopMeasurement, Acknowledge} // The first frame is due at the same time.
        });
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
        QCOMPARE(instrument.model.Status().function, 0);
        QCOMPARE(instrument.Ask(StartMeasurement, 60000), Refusal);
    }

    void CheckObject()
    {
        AskedModel instrument(Scenario::RcdCheckOnce, 3);
        instrument.Converse({{0, PrepareUbRe, Acknowledge},
                             {149, ReadStatus, Preparing},
                             {150, ReadStatus, CheckPending},
                             {150, StartMeasurement, Refusal},
                             {200, ReadMeasurement, Check3},
                             {200, ReadStatus, CheckPending},
                             {200, StartMeasurement, Refusal},
                             {300, ReadMeasurement, CheckClean},
                             {300, ReadStatus, Checked},
                             {400, StartMeasurement, Acknowledge},
                             {400, ReadStatus, RcdRunningStatus}});
        QCOMPARE(instrument.FramesUntil(1300).size(), 5);
    }

    void CheckObjectGetsLost()
    {
        AskedModel instrument(Scenario::RcdCheckLost);
        instrument.Converse({{0, PrepareUbRe, Acknowledge},
                             {150, ReadStatus, CheckPending},
                             {150, ReadMeasurement, NoAnswer},
                             {150, ReadStatus, CheckPending}});
    }

    void ErrorOfTheTestOnly()
    {
        AskedModel instrument(Scenario::RcdError, 3);
        instrument.model.SetError(7);
        instrument.Converse({{0, ReadStatus, Sealed("007e")},
                             {0, PrepareUbRe, Acknowledge},
                             {150, ReadStatus, Bytes("0a341c99")}});
        instrument.model.SetScenario(Scenario::None, 1);
        QCOMPARE(instrument.Ask(ReadStatus, 150), RcdPreparedStatus);
    }

    void ReplacesAFunctionAtRest()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareHvTest, Acknowledge},
                             {200, PrepareUbRe, Acknowledge},
                             {200, ReadStatus, Preparing},
                             {400, StartMeasurement, Acknowledge},
                             {400, StopMeasurement, Acknowledge}});
        QCOMPARE(instrument.model.Status().function, 0); // The function before is gone as well.
    }

    void GivesWayToAFunction()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareUbRe, Acknowledge},
                             {200, PrepareHvTest, Acknowledge},
                             {200, ReadStatus, Sealed("09f1")},
                             {400, StartMeasurement, Acknowledge},
                             {1000, ReadStatus, Sealed("89f7")}});
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
    }

    void NotWhileAFunctionRuns()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareHvTest, Acknowledge},
                             {200, StartMeasurement, Acknowledge},
                             {200, PrepareUbRe, Refusal},
                             {1000, PrepareUbRe, Refusal},
                             {1000, ReadStatus, Sealed("89f7")}});
    }

    void NoFunctionWhileATestRuns()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareUbRe, Acknowledge},
                             {200, StartMeasurement, Acknowledge},
                             {300, PrepareHvTest, Refusal},
                             {300, ReadStatus, RcdRunningStatus},
                             {1100, PrepareHvTest, Acknowledge},
                             {1100, ReadStatus, Sealed("09f1")}});
    }

    void NoReadingsWhileATestIsSelected()
    {
        AskedModel instrument;
        instrument.Converse({{500, ReadStatus, Sealed("80fe")},
                             {500, PrepareUbRe, Acknowledge},
                             {1600, ReadStatus, RcdPreparedStatus},
                             {1600, StopMeasurement, Acknowledge},
                             {1600, ReadStatus, Sealed("00fe")},
                             {2200, ReadStatus, Sealed("80fe")}});
    }

    void EndsWithTheMode()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareUbRe, Acknowledge}, {200, StartMeasurement, Acknowledge}});
        instrument.model.SetMode(0);
        QCOMPARE(instrument.Ask(ReadStatus, 200), RcdRunningStatus);
        instrument.model.SetMode(1);
        QCOMPARE(instrument.Ask(ReadStatus, 200), Sealed("20fe"));
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
    }

    void EndsWithARestart()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareUbRe, Acknowledge},
                             {200, StartMeasurement, Acknowledge},
                             {300, ChangeToCalibrationMode, Acknowledge}});
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
        QVERIFY(instrument.model.CollectChanges().contains(QStringLiteral("function 10 ended by a restart")));
        QCOMPARE(instrument.Ask(ReadStatus, 60000), Sealed("20fe"));
    }

    void CommandsEndIt()
    {
        AskedModel instrument;
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        instrument.model.SetFunction(0);
        QCOMPARE(instrument.model.Status().function, 0);
        QCOMPARE(instrument.Ask(PrepareUbRe, 0), Acknowledge);
        instrument.model.SetFunction(11);
        QCOMPARE(instrument.Ask(ReadStatus, 0), IecRunning);
        QCOMPARE(instrument.FramesUntil(60000), QByteArrayList());
        instrument.Converse({{60000, PrepareUbRe, Refusal}, {60000, StopMeasurement, Acknowledge}});
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
        AskedModel instrument(Scenario::StartTest, result);
        QCOMPARE(instrument.Ask(ReadStatus, 0), status);
        instrument.model.SetScenario(Scenario::None, 1);
        QCOMPARE(instrument.Ask(ReadStatus, 0), Bytes("00fed10e"));
    }

    void ReportsWhatAndWhenItChanges()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareHvTest, Acknowledge}, {100, PrepareUbRe, Acknowledge}});
        QVERIFY(instrument.model.NextChangeAt() == AskedModel::At(250));
        QCOMPARE(instrument.Ask(StartMeasurement, 300), Acknowledge);
        QVERIFY(instrument.model.NextChangeAt() == AskedModel::At(500));
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