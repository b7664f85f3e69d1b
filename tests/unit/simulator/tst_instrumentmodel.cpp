#include <QtTest>

#include "simulator/model/instrumentmodel.h"

using Simulator::InstrumentModel;
using Simulator::ModelOptions;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const QByteArray Acknowledge = QByteArray::fromHex("06c660");
const QByteArray Refusal = QByteArray::fromHex("214334");
const QByteArray ReadStatus = QByteArray::fromHex("73f44e");
const QByteArray ReadMeasurement = QByteArray::fromHex("65033c");
const QByteArray ReadCurrentDate = QByteArray::fromHex("52b77a");
const QByteArray ReadCalibrationDate = QByteArray::fromHex("54711a");
const QByteArray StopMeasurement = QByteArray::fromHex("68aeed");
const QByteArray StartMeasurement = QByteArray::fromHex("53966a");
const QByteArray PrepareRln = QByteArray::fromHex("5001ff0100ffffffffea32");
const QByteArray PrepareHvTest = QByteArray::fromHex("5009050200ffffffff063e");
const QByteArray ModeNormal = QByteArray::fromHex("7800f081");
const QByteArray ModeCalibration = QByteArray::fromHex("7801d191");
const QByteArray ModeUpdate = QByteArray::fromHex("780393b1");
const QByteArray IdleStatus = QByteArray::fromHex("00fed10e");
const QByteArray NewMeasurementStatus = QByteArray::fromHex("80fe4915");

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
    void ReportsItsStatus();
    void ReportsItsVersion();
    void ClockRuns();
    void ClockCanBeSet();
    void CalibrationDateCanBeSetInCalibrationModeOnly();
    void RefusesDatesThatDoNotExist();
    void NewReadingsComeAndAreTaken();
    void NoReadingsWhileAFunctionIsActive();
    void StopEndsAFunction();
    void ModeChangeRestarts();
    void RestartEndsAFunction();
    void SameModeRestartsToo();
    void ErrorIsReported();
    void PreparesEveryFunction_data();
    void PreparesEveryFunction();
    void SingleMeasurement();
    void ContinuousMeasurement();
    void PreparesInNormalModeOnly();
    void ReadingWithoutAResult();
    void MonitoringGoesOnAfterAMeasurement();
    void StopThatComesTooLate();
    void RestartEndsAMeasurement();
    void Scenario();
    void TellsWhatAndWhenItChanges();
    void Refuses_data();
    void Refuses();
};

void TestInstrumentModel::ReportsItsStatus()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(ReadStatus, Start), IdleStatus);
}

void TestInstrumentModel::ReportsItsVersion()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(QByteArray::fromHex("57122a"), Start).toHex(),
             QByteArray("5041543431303230343831353130353033303232303136f923"));
}

void TestInstrumentModel::ClockRuns()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(ReadCurrentDate, Start).left(6).toHex(), QByteArray("241231235958"));
    QCOMPARE(model.Answer(ReadCurrentDate, Start + milliseconds(3000)).left(6).toHex(),
             QByteArray("250101000001"));
}

void TestInstrumentModel::ClockCanBeSet()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(QByteArray::fromHex("72240307140509ab99"), Start), Acknowledge);
    QCOMPARE(model.Answer(ReadCurrentDate, Start + milliseconds(1000)).left(6).toHex(),
             QByteArray("240307140510"));
    QCOMPARE(model.Date(Start), QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9), Qt::UTC));
}

void TestInstrumentModel::CalibrationDateCanBeSetInCalibrationModeOnly()
{
    const QByteArray setDate = QByteArray::fromHex("74240229000000b4f6");
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

void TestInstrumentModel::RefusesDatesThatDoNotExist()
{
    InstrumentModel model(Options(), Start);
    model.SetMode(1);
    QCOMPARE(model.Answer(QByteArray::fromHex("72340230140509ba54"), Start), Refusal); // 30 February
    QCOMPARE(model.Answer(QByteArray::fromHex("72a402281405097a04"), Start), Refusal); // a digit above 9
    QCOMPARE(model.Answer(ReadCurrentDate, Start).left(6).toHex(), QByteArray("241231235958"));
}

void TestInstrumentModel::NewReadingsComeAndAreTaken()
{
    InstrumentModel model(Options(), Start);
    const QByteArray first = model.Answer(ReadMeasurement, Start);
    QCOMPARE(first.toHex(), QByteArray("00006643cdcccc3e00004842000000000000000000000000527e"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(499)), IdleStatus);

    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(500)), NewMeasurementStatus);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(501)), NewMeasurementStatus);
    const QByteArray second = model.Answer(ReadMeasurement, Start + milliseconds(502));
    QCOMPARE(second.size(), 26);
    QVERIFY(second != first);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(503)), IdleStatus);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(1000)), NewMeasurementStatus);
}

void TestInstrumentModel::NoReadingsWhileAFunctionIsActive()
{
    InstrumentModel model(Options(), Start);
    model.SetFunction(5);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(600)).left(2).toHex(), QByteArray("05f7"));
}

void TestInstrumentModel::StopEndsAFunction()
{
    InstrumentModel model(Options(), Start);
    model.SetFunction(5);
    QCOMPARE(model.Answer(ReadStatus, Start).left(2).toHex(), QByteArray("05f7"));
    QCOMPARE(model.Answer(StopMeasurement, Start), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start), IdleStatus);
    QCOMPARE(model.Answer(StopMeasurement, Start), Acknowledge);
}

void TestInstrumentModel::ModeChangeRestarts()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(ModeCalibration, Start), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(499)), QByteArray());
    QCOMPARE(model.Answer(ModeNormal, Start + milliseconds(499)), QByteArray());
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(500)).left(2).toHex(), QByteArray("20fe"));

    QCOMPARE(model.Answer(ModeUpdate, Start + milliseconds(600)), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(1100)).left(2).toHex(), QByteArray("60fe"));
    QCOMPARE(model.Answer(QByteArray::fromHex("780474c1"), Start + milliseconds(1100)), Refusal);
}

void TestInstrumentModel::RestartEndsAFunction()
{
    InstrumentModel model(Options(), Start);
    model.SetFunction(9);
    QCOMPARE(model.Answer(ModeNormal, Start), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(500)), IdleStatus);
}

void TestInstrumentModel::SameModeRestartsToo()
{
    ModelOptions options = Options();
    options.restartTime = milliseconds(20);
    InstrumentModel model(options, Start);
    QCOMPARE(model.Answer(ModeNormal, Start), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(19)), QByteArray());
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(20)), IdleStatus);
}

void TestInstrumentModel::ErrorIsReported()
{
    InstrumentModel model(Options(), Start);
    model.SetError(3);
    QCOMPARE(model.Answer(ReadStatus, Start).left(2).toHex(), QByteArray("003e"));
}

void TestInstrumentModel::PreparesEveryFunction_data()
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

void TestInstrumentModel::PreparesEveryFunction()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, preparing);
    InstrumentModel model(Options(), Start);
    QCOMPARE(StatusAt(&model, 600), QByteArray("80fe")); // readings that the preparation makes void
    QCOMPARE(model.Answer(request, Start + milliseconds(600)), Acknowledge);
    QCOMPARE(StatusAt(&model, 600), preparing);
    QCOMPARE(StatusAt(&model, 750), preparing.left(3) + '4');
    QCOMPARE(model.Answer(StartMeasurement, Start + milliseconds(800)), Acknowledge);
    QCOMPARE(StatusAt(&model, 850), preparing.left(3) + '5');
    QCOMPARE(StatusAt(&model, 1000), preparing.left(3) + '7');
}

void TestInstrumentModel::SingleMeasurement()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start), QByteArray::fromHex("01f10fcc"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(150)), QByteArray::fromHex("01f4aa9c"));
    QCOMPARE(model.Answer(StartMeasurement, Start + milliseconds(200)), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(400)), QByteArray::fromHex("01f7c9ac"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(1399)), QByteArray::fromHex("01f7c9ac"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(1400)), QByteArray::fromHex("81f2f4e7"));
    const QByteArray result = model.Answer(ReadMeasurement, Start + milliseconds(1410));
    QCOMPARE(result.size(), 26);
    QVERIFY(result != QByteArray(26, '\0'));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(1500)), QByteArray::fromHex("01f26cfc"));
    QCOMPARE(model.Answer(StopMeasurement, Start + milliseconds(1600)), Acknowledge);
    QCOMPARE(StatusAt(&model, 1600), QByteArray("00fe"));
}

void TestInstrumentModel::ContinuousMeasurement()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(PrepareHvTest, Start), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start), QByteArray::fromHex("09f1a645"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(150)), QByteArray::fromHex("09f40315"));
    QCOMPARE(model.Answer(StartMeasurement, Start + milliseconds(200)), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(249)), QByteArray::fromHex("09f40315"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(250)), QByteArray::fromHex("09f52205"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(400)), QByteArray::fromHex("09f76025"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(500)), QByteArray::fromHex("89f7f83e"));
    QCOMPARE(model.Answer(ReadMeasurement, Start + milliseconds(510)).size(), 26);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(520)), QByteArray::fromHex("09f76025"));
    QCOMPARE(model.Answer(StopMeasurement, Start + milliseconds(530)), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(540)), QByteArray::fromHex("09f88fd4"));
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(680)), QByteArray::fromHex("09f9aec4"));
    QCOMPARE(model.Answer(StopMeasurement, Start + milliseconds(700)), Acknowledge);
    QCOMPARE(StatusAt(&model, 700), QByteArray("00fe"));
}

void TestInstrumentModel::PreparesInNormalModeOnly()
{
    InstrumentModel model(Options(), Start);
    for (const int mode : {1, 2, 3}) {
        model.SetMode(mode);
        QCOMPARE(model.Answer(PrepareRln, Start), Refusal);
    }
    model.SetMode(0);
    QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
}

void TestInstrumentModel::ReadingWithoutAResult()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
    QCOMPARE(model.Answer(ReadMeasurement, Start), QByteArray(26, '\0'));
}

void TestInstrumentModel::MonitoringGoesOnAfterAMeasurement()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
    QCOMPARE(StatusAt(&model, 600), QByteArray("01f4"));
    QCOMPARE(model.Answer(StopMeasurement, Start + milliseconds(610)), Acknowledge);
    QCOMPARE(StatusAt(&model, 620), QByteArray("00fe"));
    QCOMPARE(StatusAt(&model, 1100), QByteArray("80fe"));
    const QByteArray readings = model.Answer(ReadMeasurement, Start + milliseconds(1100));
    QCOMPARE(readings.mid(12, 12), QByteArray(12, '\0'));
    QVERIFY(readings.left(12) != QByteArray(12, '\0'));
    QCOMPARE(StatusAt(&model, 1110), QByteArray("00fe"));
}

void TestInstrumentModel::StopThatComesTooLate()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
    QCOMPARE(model.Answer(StartMeasurement, Start + milliseconds(200)), Acknowledge);
    QCOMPARE(StatusAt(&model, 1399), QByteArray("01f7"));
    QCOMPARE(model.Answer(StopMeasurement, Start + milliseconds(1400)), Acknowledge);
    QCOMPARE(StatusAt(&model, 1410), QByteArray("81f2"));
    QCOMPARE(model.Answer(StopMeasurement, Start + milliseconds(1420)), Acknowledge);
    QCOMPARE(StatusAt(&model, 1430), QByteArray("00fe"));
}

void TestInstrumentModel::RestartEndsAMeasurement()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(PrepareHvTest, Start), Acknowledge);
    QCOMPARE(model.Answer(StartMeasurement, Start + milliseconds(200)), Acknowledge);
    QCOMPARE(StatusAt(&model, 600), QByteArray("89f7"));
    QCOMPARE(model.Answer(ModeNormal, Start + milliseconds(600)), Acknowledge);
    QCOMPARE(StatusAt(&model, 1100), QByteArray("00fe"));
    const QStringList changes = model.TakeChanges();
    QCOMPARE(changes.mid(changes.size() - 2), (QStringList{QStringLiteral("function 9 ended by a restart"),
                                                           QStringLiteral("restarted into mode 0")}));
}

void TestInstrumentModel::Scenario()
{
    InstrumentModel model(Options(), Start);
    model.SetScenario(Simulator::Scenario::RefusesPrepare, 1);
    QCOMPARE(model.Answer(PrepareRln, Start), Refusal);
    model.SetScenario(Simulator::Scenario::PrepareError, 1);
    QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
    QCOMPARE(StatusAt(&model, 150), QByteArray("01f3"));

    model.SetScenario(Simulator::Scenario::FallsBack, 1);
    QCOMPARE(model.Answer(PrepareRln, Start + milliseconds(200)), Acknowledge);
    QCOMPARE(StatusAt(&model, 350), QByteArray("01f4"));
    QCOMPARE(model.Answer(StartMeasurement, Start + milliseconds(400)), Acknowledge);
    QCOMPARE(StatusAt(&model, 5000), QByteArray("01f5")); // that the status told of it is what ends it
    QCOMPARE(StatusAt(&model, 5001), QByteArray("01f4"));
}

void TestInstrumentModel::TellsWhatAndWhenItChanges()
{
    InstrumentModel model(Options(), Start);
    QVERIFY(!model.NextChangeAt().has_value());
    QCOMPARE(model.Answer(PrepareRln, Start), Acknowledge);
    QVERIFY(model.NextChangeAt() == Start + milliseconds(150));
    model.Advance(Start + milliseconds(150));
    QCOMPARE(model.Status().functionState, 4);
    QCOMPARE(model.TakeChanges(),
             (QStringList{QStringLiteral("function 1 preparing"), QStringLiteral("function 1 prepared")}));
    QCOMPARE(model.TakeChanges(), QStringList());
}

void TestInstrumentModel::Refuses_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("unknown code") << QByteArray::fromHex("64222c");
    QTest::newRow("bad checksum") << QByteArray::fromHex("73f44f");
    QTest::newRow("data too many") << QByteArray::fromHex("6803e0b2");
    QTest::newRow("data missing") << QByteArray::fromHex("50f55a");
    QTest::newRow("no frame") << QByteArray::fromHex("73");
    QTest::newRow("prepare function 10") << QByteArray::fromHex("500a000000000000005b9d");
    QTest::newRow("prepare function 11") << QByteArray::fromHex("500b00800000000000a80e");
    QTest::newRow("start of nothing") << QByteArray::fromHex("53966a");
    QTest::newRow("initialize update") << QByteArray::fromHex("56333a");
    QTest::newRow("sector") << QByteArray::fromHex("46") + QByteArray(512, '\0') +
                                   QByteArray::fromHex("8906");
    QTest::newRow("finish update") << QByteArray::fromHex("5aabcd6a50");
}

void TestInstrumentModel::Refuses()
{
    QFETCH(QByteArray, request);
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(request, Start), Refusal);
}

QTEST_APPLESS_MAIN(TestInstrumentModel)
#include "tst_instrumentmodel.moc"
