#include "simulator/instrumentmodel.h"

#include <QtTest>

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
    QCOMPARE(model.Answer(ReadCurrentDate, Start + milliseconds(3000)).left(6).toHex(),
             QByteArray("250101000001"));
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

void TestInstrumentModel::Refuses_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("unknown code") << QByteArray::fromHex("64222c");
    QTest::newRow("bad checksum") << QByteArray::fromHex("73f44f");
    QTest::newRow("data too many") << QByteArray::fromHex("6803e0b2");
    QTest::newRow("data missing") << QByteArray::fromHex("50f55a");
    QTest::newRow("no frame") << QByteArray::fromHex("73");
    QTest::newRow("prepare") << QByteArray::fromHex("5001ff0100ffffffffea32");
    QTest::newRow("start") << QByteArray::fromHex("53966a");
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
