#include <QtTest>

#include "askedmodel.h"
#include "simulator/model/deviceclock.h"
#include "support/wire.h"

using namespace Wire;
using namespace std::chrono_literals;
using Simulator::ModelOptions;

class TestInstrumentModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ReportsItsStatus()
    {
        AskedModel instrument;
        QCOMPARE(instrument.Ask(ReadStatus, 0), IdleStatus);
    }

    void ReportsItsVersion()
    {
        AskedModel instrument;
        QCOMPARE(instrument.Ask(Bytes("57122a"), 0),
                 Bytes("5041543431303230343831353130353033303232303136f923"));
    }

    void ClockRuns()
    {
        AskedModel instrument;
        instrument.Converse(
            {{0, ReadCurrentDate, Sealed("241231235958")}, {3000, ReadCurrentDate, Sealed("250101000001")}});
    }

    void ClockCanBeSet()
    {
        AskedModel instrument;
        instrument.Converse(
            {{0, Bytes("72240307140509ab99"), Acknowledge}, {1000, ReadCurrentDate, Sealed("240307140510")}});
        QCOMPARE(instrument.model.Date(AskedModel::At(0)),
                 QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9), Qt::UTC));
    }

    void CalibrationDateCanBeSetInCalibrationModeOnly()
    {
        const QByteArray setDate = Bytes("74240229000000b4f6");
        AskedModel instrument;
        const QByteArray before = instrument.Ask(ReadCalibrationDate);
        QCOMPARE(before.toHex(), QByteArray("240215000000c8d0"));
        instrument.Converse({{0, setDate, Refusal}, {0, ReadCalibrationDate, before}});

        instrument.model.SetMode(1);
        instrument.Converse({{0, setDate, Acknowledge}, {0, ReadCalibrationDate, Sealed("240229000000")}});
        QCOMPARE(instrument.model.CalibrationDate().date(), QDate(2024, 2, 29));
    }

    void RefusesDatesThatDoNotExist()
    {
        AskedModel instrument;
        instrument.model.SetMode(1);
        instrument.Converse({{0, Bytes("72340230140509ba54"), Refusal}, // 30 February
                             {0, Bytes("72a402281405097a04"), Refusal}, // a digit above 9
                             {0, ReadCurrentDate, Sealed("241231235958")}});
    }

    void NewReadingsComeAndAreRead()
    {
        AskedModel instrument;
        const QByteArray first = instrument.Ask(ReadMeasurement);
        QCOMPARE(first.toHex(), QByteArray("00006643cdcccc3e00004842000000000000000000000000527e"));
        QCOMPARE(instrument.Ask(ReadStatus, 499), IdleStatus);

        instrument.Converse({{500, ReadStatus, ReadyStatus}, {501, ReadStatus, ReadyStatus}});
        const QByteArray second = instrument.Ask(ReadMeasurement, 502);
        QCOMPARE(second.size(), 26);
        QVERIFY(second != first);
        instrument.Converse({{503, ReadStatus, IdleStatus}, {1000, ReadStatus, ReadyStatus}});
    }

    void NoReadingsWhileAFunctionIsActive()
    {
        AskedModel instrument;
        instrument.model.SetFunction(5);
        QCOMPARE(instrument.Ask(ReadStatus, 600), Sealed("05f7"));
    }

    void StopEndsAFunction()
    {
        AskedModel instrument;
        instrument.model.SetFunction(5);
        instrument.Converse({{0, ReadStatus, Sealed("05f7")},
                             {0, StopMeasurement, Acknowledge},
                             {0, ReadStatus, IdleStatus},
                             {0, StopMeasurement, Acknowledge}});
    }

    void ModeChangeRestarts()
    {
        AskedModel instrument;
        instrument.Converse({{0, ChangeToCalibrationMode, Acknowledge},
                             {499, ReadStatus, QByteArray()},
                             {499, ChangeToNormalMode, QByteArray()},
                             {500, ReadStatus, Sealed("20fe")}});

        instrument.Converse({{600, ChangeToUpdateMode, Acknowledge},
                             {1100, ReadStatus, Sealed("60fe")},
                             {1100, Bytes("780474c1"), Refusal}});
    }

    void RestartEndsAFunction()
    {
        AskedModel instrument;
        instrument.model.SetFunction(9);
        instrument.Converse({{0, ChangeToNormalMode, Acknowledge}, {500, ReadStatus, IdleStatus}});
    }

    void SameModeRestartsToo()
    {
        ModelOptions options = AskedModel::Options();
        options.restartTime = 20ms;
        AskedModel instrument(options);
        instrument.Converse({{0, ChangeToNormalMode, Acknowledge},
                             {19, ReadStatus, QByteArray()},
                             {20, ReadStatus, IdleStatus}});
    }

    void ErrorIsReported()
    {
        AskedModel instrument;
        instrument.model.SetError(3);
        QCOMPARE(instrument.Ask(ReadStatus, 0), Sealed("003e"));
    }

    void PreparesEveryFunction_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("preparing");
        const auto row = [](const char* name, const char* request, const char* preparing) {
            QTest::newRow(name) << QByteArray::fromHex(request) << QByteArray(preparing);
        };
        row("RLN", "5001ff0100ffffffffea32", "01f1");
        row("IEC", "5001ff0200ffffffff0afc", "01f1");
        row("RPE", "5002050000ffffffffe963", "02f1");
        row("RISO", "5003ff0900ffffffff0eb0", "03f1");
        row("ISUB", "5004050000ffffffff22e3", "04f1");
        row("IPE", "5005050100ffffffff51e1", "05f1");
        row("IDELTA", "5006050400ffffffff256a", "06f1");
        row("IT", "5007050400fffffffff62d", "07f1");
        row("POWER", "5008050000ffffffff95f2", "08f1");
        row("HVTest", "5009050200ffffffff063e", "09f1");
    }

    void PreparesEveryFunction()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, preparing);
        AskedModel instrument;
        instrument.Converse({{600, ReadStatus, Sealed("80fe")}, // The preparation discards these readings.
                             {600, request, Acknowledge}});
        QCOMPARE(instrument.Ask(ReadStatus, 600).left(2).toHex(), preparing);
        QCOMPARE(instrument.Ask(ReadStatus, 750).left(2).toHex(), preparing.left(3) + '4');
        QCOMPARE(instrument.Ask(StartMeasurement, 800), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 850).left(2).toHex(), preparing.left(3) + '5');
        QCOMPARE(instrument.Ask(ReadStatus, 1000).left(2).toHex(), preparing.left(3) + '7');
    }

    void SingleMeasurement()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareRln, Acknowledge},
                             {0, ReadStatus, Bytes("01f10fcc")},
                             {150, ReadStatus, Bytes("01f4aa9c")},
                             {200, StartMeasurement, Acknowledge},
                             {400, ReadStatus, Bytes("01f7c9ac")},
                             {1399, ReadStatus, Bytes("01f7c9ac")},
                             {1400, ReadStatus, Bytes("81f2f4e7")}});
        const QByteArray result = instrument.Ask(ReadMeasurement, 1410);
        QCOMPARE(result.size(), 26);
        QVERIFY(result != QByteArray(26, '\0'));
        instrument.Converse({{1500, ReadStatus, Bytes("01f26cfc")},
                             {1600, StopMeasurement, Acknowledge},
                             {1600, ReadStatus, Sealed("00fe")}});
    }

    void ContinuousMeasurement()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareHvTest, Acknowledge},
                             {0, ReadStatus, Bytes("09f1a645")},
                             {150, ReadStatus, Bytes("09f40315")},
                             {200, StartMeasurement, Acknowledge},
                             {249, ReadStatus, Bytes("09f40315")},
                             {250, ReadStatus, Bytes("09f52205")},
                             {400, ReadStatus, Bytes("09f76025")},
                             {500, ReadStatus, Bytes("89f7f83e")}});
        QCOMPARE(instrument.Ask(ReadMeasurement, 510).size(), 26);
        instrument.Converse({{520, ReadStatus, Bytes("09f76025")},
                             {530, StopMeasurement, Acknowledge},
                             {540, ReadStatus, Bytes("09f88fd4")},
                             {680, ReadStatus, Bytes("09f9aec4")},
                             {700, StopMeasurement, Acknowledge},
                             {700, ReadStatus, Sealed("00fe")}});
    }

    void PreparesInNormalModeOnly()
    {
        AskedModel instrument;
        for (const int mode : {1, 2, 3}) {
            instrument.model.SetMode(mode);
            QCOMPARE(instrument.Ask(PrepareRln, 0), Refusal);
        }
        instrument.model.SetMode(0);
        QCOMPARE(instrument.Ask(PrepareRln, 0), Acknowledge);
    }

    void ReadingWithoutAResult()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareRln, Acknowledge}, {0, ReadMeasurement, QByteArray(26, '\0')}});
    }

    void MonitoringGoesOnAfterAMeasurement()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareRln, Acknowledge},
                             {600, ReadStatus, Sealed("01f4")},
                             {610, StopMeasurement, Acknowledge},
                             {620, ReadStatus, Sealed("00fe")},
                             {1100, ReadStatus, Sealed("80fe")}});
        const QByteArray readings = instrument.Ask(ReadMeasurement, 1100);
        QCOMPARE(readings.mid(12, 12), QByteArray(12, '\0'));
        QVERIFY(readings.left(12) != QByteArray(12, '\0'));
        QCOMPARE(instrument.Ask(ReadStatus, 1110), Sealed("00fe"));
    }

    void RestartEndsAMeasurement()
    {
        AskedModel instrument;
        instrument.Converse({{0, PrepareHvTest, Acknowledge},
                             {200, StartMeasurement, Acknowledge},
                             {600, ReadStatus, Sealed("89f7")},
                             {600, ChangeToNormalMode, Acknowledge},
                             {1100, ReadStatus, Sealed("00fe")}});
        const QStringList changes = instrument.model.CollectChanges();
        QCOMPARE(changes.mid(changes.size() - 2),
                 (QStringList{QStringLiteral("function 9 ended by a restart"),
                              QStringLiteral("restarted into mode 0")}));
    }

    void ReportsWhatAndWhenItChanges()
    {
        AskedModel instrument;
        QVERIFY(!instrument.model.NextChangeAt().has_value());
        QCOMPARE(instrument.Ask(PrepareRln, 0), Acknowledge);
        QVERIFY(instrument.model.NextChangeAt() == AskedModel::At(150));
        instrument.model.Advance(AskedModel::At(150));
        QCOMPARE(instrument.model.Status().functionState, 4);
        QCOMPARE(instrument.model.CollectChanges(), (QStringList{QStringLiteral("function 1 preparing"),
                                                                 QStringLiteral("function 1 prepared")}));
        QCOMPARE(instrument.model.CollectChanges(), QStringList());
    }

    void Refuses_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::newRow("unknown code") << Bytes("64222c");
        QTest::newRow("bad checksum") << Bytes("73f44f");
        QTest::newRow("data too many") << Bytes("6803e0b2");
        QTest::newRow("data missing") << Bytes("50f55a");
        QTest::newRow("no frame") << Bytes("73");
        QTest::newRow("prepare function 10") << Bytes("500a000000000000005b9d");
        QTest::newRow("prepare function 11") << Bytes("500b00800000000000a80e");
        QTest::newRow("start of nothing") << Bytes("53966a");
        QTest::newRow("initialize update") << Bytes("56333a");
        QTest::newRow("sector") << Bytes("46") + QByteArray(512, '\0') + Bytes("8906");
        QTest::newRow("finish update") << Bytes("5aabcd6a50");
    }

    void Refuses()
    {
        QFETCH(QByteArray, request);
        AskedModel instrument;
        QCOMPARE(instrument.Ask(request, 0), Refusal);
    }

    void ClockRunsWithTheTime()
    {
        const Simulator::TimePoint start;
        const Simulator::DeviceClock clock(QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC), start);
        QCOMPARE(clock.Date(start + std::chrono::seconds(3)),
                 QDateTime(QDate(2025, 1, 1), QTime(0, 0, 1), Qt::UTC));
    }

    void ClockRunsOnFromWhereItIsSet()
    {
        const Simulator::TimePoint start;
        Simulator::DeviceClock clock(QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC), start);
        clock.Set(QDateTime(QDate(2030, 6, 5), QTime(12, 0), Qt::UTC), start + std::chrono::hours(1));
        QCOMPARE(clock.Date(start + std::chrono::minutes(61)),
                 QDateTime(QDate(2030, 6, 5), QTime(12, 1), Qt::UTC));
    }
};

QTEST_APPLESS_MAIN(TestInstrumentModel)
#include "tst_instrumentmodel.moc"