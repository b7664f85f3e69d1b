#include <QtTest>

#include "simulator/model/deviceclock.h"
#include "simulator/model/instrumentmodel.h"
#include "support/wire.h"

using namespace Wire;
using namespace std::chrono_literals;
using Simulator::InstrumentModel;
using Simulator::ModelOptions;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const TimePoint Start;

ModelOptions Options()
{
    ModelOptions options;
    options.date = QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC);
    return options;
}

/// The status data so many milliseconds after the start, in hexadecimal.
QByteArray StatusAt(InstrumentModel* model, int time)
{
    return model->Answer(ReadStatus, Start + milliseconds(time)).left(2).toHex();
}

} // namespace

class TestInstrumentModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ReportsItsStatus()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(ReadStatus, Start), IdleStatus);
    }

    void ReportsItsVersion()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(Bytes("57122a"), Start).toHex(),
                 QByteArray("5041543431303230343831353130353033303232303136f923"));
    }

    void ClockRuns()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(ReadCurrentDate, Start).left(6).toHex(), QByteArray("241231235958"));
        QCOMPARE(model.Answer(ReadCurrentDate, Start + 3000ms).left(6).toHex(), QByteArray("250101000001"));
    }

    void ClockCanBeSet()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(Bytes("72240307140509ab99"), Start), Acknowledge);
        QCOMPARE(model.Answer(ReadCurrentDate, Start + 1000ms).left(6).toHex(), QByteArray("240307140510"));
        QCOMPARE(model.Date(Start), QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9), Qt::UTC));
    }

    void CalibrationDateCanBeSetInCalibrationModeOnly()
    {
        const QByteArray setDate = Bytes("74240229000000b4f6");
        InstrumentModel model(Options(), Start);
        const QByteArray before = model.Answer(ReadCalibrationDate, Start);
        QCOMPARE(before.toHex(), QByteArray("240215000000c8d0"));
        QCOMPARE(model.Answer(setDate, Start), Refusal);
        QCOMPARE(model.Answer(ReadCalibrationDate, Start), before);

        model.SetMode(1);
        QCOMPARE(model.Answer(setDate, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadCalibrationDate, Start).left(6).toHex(), QByteArray("240229000000"));
        QCOMPARE(model.CalibrationDate().date(), QDate(2024, 2, 29));
    }

    void RefusesDatesThatDoNotExist()
    {
        InstrumentModel model(Options(), Start);
        model.SetMode(1);
        QCOMPARE(model.Answer(Bytes("72340230140509ba54"), Start), Refusal); // 30 February
        QCOMPARE(model.Answer(Bytes("72a402281405097a04"), Start), Refusal); // a digit above 9
        QCOMPARE(model.Answer(ReadCurrentDate, Start).left(6).toHex(), QByteArray("241231235958"));
    }

    void NewReadingsComeAndAreTaken()
    {
        InstrumentModel model(Options(), Start);
        const QByteArray first = model.Answer(ReadMeasurement, Start);
        QCOMPARE(first.toHex(), QByteArray("00006643cdcccc3e00004842000000000000000000000000527e"));
        QCOMPARE(model.Answer(ReadStatus, Start + 499ms), IdleStatus);

        QCOMPARE(model.Answer(ReadStatus, Start + 500ms), ReadyStatus);
        QCOMPARE(model.Answer(ReadStatus, Start + 501ms), ReadyStatus);
        const QByteArray second = model.Answer(ReadMeasurement, Start + 502ms);
        QCOMPARE(second.size(), 26);
        QVERIFY(second != first);
        QCOMPARE(model.Answer(ReadStatus, Start + 503ms), IdleStatus);
        QCOMPARE(model.Answer(ReadStatus, Start + 1000ms), ReadyStatus);
    }

    void NoReadingsWhileAFunctionIsActive()
    {
        InstrumentModel model(Options(), Start);
        model.SetFunction(5);
        QCOMPARE(model.Answer(ReadStatus, Start + 600ms).left(2).toHex(), QByteArray("05f7"));
    }

    void StopEndsAFunction()
    {
        InstrumentModel model(Options(), Start);
        model.SetFunction(5);
        QCOMPARE(model.Answer(ReadStatus, Start).left(2).toHex(), QByteArray("05f7"));
        QCOMPARE(model.Answer(StopMeasurement, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start), IdleStatus);
        QCOMPARE(model.Answer(StopMeasurement, Start), Acknowledge);
    }

    void ModeChangeRestarts()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(ChangeToCalibrationMode, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start + 499ms), QByteArray());
        QCOMPARE(model.Answer(ChangeToNormalMode, Start + 499ms), QByteArray());
        QCOMPARE(model.Answer(ReadStatus, Start + 500ms).left(2).toHex(), QByteArray("20fe"));

        QCOMPARE(model.Answer(ChangeToUpdateMode, Start + 600ms), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start + 1100ms).left(2).toHex(), QByteArray("60fe"));
        QCOMPARE(model.Answer(Bytes("780474c1"), Start + 1100ms), Refusal);
    }

    void RestartEndsAFunction()
    {
        InstrumentModel model(Options(), Start);
        model.SetFunction(9);
        QCOMPARE(model.Answer(ChangeToNormalMode, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start + 500ms), IdleStatus);
    }

    void SameModeRestartsToo()
    {
        ModelOptions options = Options();
        options.restartTime = 20ms;
        InstrumentModel model(options, Start);
        QCOMPARE(model.Answer(ChangeToNormalMode, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start + 19ms), QByteArray());
        QCOMPARE(model.Answer(ReadStatus, Start + 20ms), IdleStatus);
    }

    void ErrorIsReported()
    {
        InstrumentModel model(Options(), Start);
        model.SetError(3);
        QCOMPARE(model.Answer(ReadStatus, Start).left(2).toHex(), QByteArray("003e"));
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
        InstrumentModel model(Options(), Start);
        QCOMPARE(StatusAt(&model, 600), QByteArray("80fe")); // readings that the preparation makes void
        QCOMPARE(model.Answer(request, Start + 600ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 600), preparing);
        QCOMPARE(StatusAt(&model, 750), preparing.left(3) + '4');
        QCOMPARE(model.Answer(StartMeasurement, Start + 800ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 850), preparing.left(3) + '5');
        QCOMPARE(StatusAt(&model, 1000), preparing.left(3) + '7');
    }

    void SingleMeasurement()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start), Bytes("01f10fcc"));
        QCOMPARE(model.Answer(ReadStatus, Start + 150ms), Bytes("01f4aa9c"));
        QCOMPARE(model.Answer(StartMeasurement, Start + 200ms), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start + 400ms), Bytes("01f7c9ac"));
        QCOMPARE(model.Answer(ReadStatus, Start + 1399ms), Bytes("01f7c9ac"));
        QCOMPARE(model.Answer(ReadStatus, Start + 1400ms), Bytes("81f2f4e7"));
        const QByteArray result = model.Answer(ReadMeasurement, Start + 1410ms);
        QCOMPARE(result.size(), 26);
        QVERIFY(result != QByteArray(26, '\0'));
        QCOMPARE(model.Answer(ReadStatus, Start + 1500ms), Bytes("01f26cfc"));
        QCOMPARE(model.Answer(StopMeasurement, Start + 1600ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 1600), QByteArray("00fe"));
    }

    void ContinuousMeasurement()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(PrepareHvTest, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start), Bytes("09f1a645"));
        QCOMPARE(model.Answer(ReadStatus, Start + 150ms), Bytes("09f40315"));
        QCOMPARE(model.Answer(StartMeasurement, Start + 200ms), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start + 249ms), Bytes("09f40315"));
        QCOMPARE(model.Answer(ReadStatus, Start + 250ms), Bytes("09f52205"));
        QCOMPARE(model.Answer(ReadStatus, Start + 400ms), Bytes("09f76025"));
        QCOMPARE(model.Answer(ReadStatus, Start + 500ms), Bytes("89f7f83e"));
        QCOMPARE(model.Answer(ReadMeasurement, Start + 510ms).size(), 26);
        QCOMPARE(model.Answer(ReadStatus, Start + 520ms), Bytes("09f76025"));
        QCOMPARE(model.Answer(StopMeasurement, Start + 530ms), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, Start + 540ms), Bytes("09f88fd4"));
        QCOMPARE(model.Answer(ReadStatus, Start + 680ms), Bytes("09f9aec4"));
        QCOMPARE(model.Answer(StopMeasurement, Start + 700ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 700), QByteArray("00fe"));
    }

    void PreparesInNormalModeOnly()
    {
        InstrumentModel model(Options(), Start);
        for (const int mode : {1, 2, 3}) {
            model.SetMode(mode);
            QCOMPARE(model.Answer(PrepareRln, Start), Refusal);
        }
        model.SetMode(0);
        QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
    }

    void ReadingWithoutAResult()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
        QCOMPARE(model.Answer(ReadMeasurement, Start), QByteArray(26, '\0'));
    }

    void MonitoringGoesOnAfterAMeasurement()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
        QCOMPARE(StatusAt(&model, 600), QByteArray("01f4"));
        QCOMPARE(model.Answer(StopMeasurement, Start + 610ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 620), QByteArray("00fe"));
        QCOMPARE(StatusAt(&model, 1100), QByteArray("80fe"));
        const QByteArray readings = model.Answer(ReadMeasurement, Start + 1100ms);
        QCOMPARE(readings.mid(12, 12), QByteArray(12, '\0'));
        QVERIFY(readings.left(12) != QByteArray(12, '\0'));
        QCOMPARE(StatusAt(&model, 1110), QByteArray("00fe"));
    }

    void StopThatComesTooLate()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
        QCOMPARE(model.Answer(StartMeasurement, Start + 200ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 1399), QByteArray("01f7"));
        QCOMPARE(model.Answer(StopMeasurement, Start + 1400ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 1410), QByteArray("81f2"));
        QCOMPARE(model.Answer(StopMeasurement, Start + 1420ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 1430), QByteArray("00fe"));
    }

    void RestartEndsAMeasurement()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(PrepareHvTest, Start), Acknowledge);
        QCOMPARE(model.Answer(StartMeasurement, Start + 200ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 600), QByteArray("89f7"));
        QCOMPARE(model.Answer(ChangeToNormalMode, Start + 600ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 1100), QByteArray("00fe"));
        const QStringList changes = model.CollectChanges();
        QCOMPARE(changes.mid(changes.size() - 2),
                 (QStringList{QStringLiteral("function 9 ended by a restart"),
                              QStringLiteral("restarted into mode 0")}));
    }

    void Scenario()
    {
        InstrumentModel model(Options(), Start);
        model.SetScenario(Simulator::Scenario::RefusesPrepare, 1);
        QCOMPARE(model.Answer(PrepareRln, Start), Refusal);
        model.SetScenario(Simulator::Scenario::PrepareError, 1);
        QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
        QCOMPARE(StatusAt(&model, 150), QByteArray("01f3"));

        model.SetScenario(Simulator::Scenario::FallsBack, 1);
        QCOMPARE(model.Answer(PrepareRln, Start + 200ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 350), QByteArray("01f4"));
        QCOMPARE(model.Answer(StartMeasurement, Start + 400ms), Acknowledge);
        QCOMPARE(StatusAt(&model, 5000), QByteArray("01f5")); // that the status told of it is what ends it
        QCOMPARE(StatusAt(&model, 5001), QByteArray("01f4"));
    }

    void TellsWhatAndWhenItChanges()
    {
        InstrumentModel model(Options(), Start);
        QVERIFY(!model.NextChangeAt().has_value());
        QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
        QVERIFY(model.NextChangeAt() == Start + 150ms);
        model.Advance(Start + 150ms);
        QCOMPARE(model.Status().functionState, 4);
        QCOMPARE(model.CollectChanges(), (QStringList{QStringLiteral("function 1 preparing"),
                                                      QStringLiteral("function 1 prepared")}));
        QCOMPARE(model.CollectChanges(), QStringList());
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
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(request, Start), Refusal);
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
