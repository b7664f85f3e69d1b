#include "cli/frames/frame.h"

#include <QtTest>

using Cli::AnswerKind;
using Cli::InstrumentStatus;
using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::StartTestResult;

Q_DECLARE_METATYPE(Cli::AnswerKind)

class TestCliFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TellsKinds_data();
    void TellsKinds();
    void TellsStatus_data();
    void TellsStatus();
    void StatusWithoutAFunction();
    void StatusWithAFunction();
    void ErrorsAreTheInstrumentsOwn_data();
    void ErrorsAreTheInstrumentsOwn();
    void ErrorsInATest();
    void ValuesWithoutANameArePassedOn();
};

void TestCliFrame::TellsKinds_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<AnswerKind>("kind");
    QTest::newRow("none") << QByteArray() << AnswerKind::None;
    QTest::newRow("data") << QByteArray::fromHex("00f5babf") << AnswerKind::Data;
    QTest::newRow("acknowledge") << QByteArray::fromHex("06c660") << AnswerKind::Acknowledge;
    QTest::newRow("acknowledge and more") << QByteArray::fromHex("06c66055") << AnswerKind::Acknowledge;
    QTest::newRow("refusal") << QByteArray::fromHex("214334") << AnswerKind::Refusal;
    QTest::newRow("damaged") << QByteArray::fromHex("00f5babe") << AnswerKind::Damaged;
    QTest::newRow("one byte") << QByteArray::fromHex("06") << AnswerKind::Damaged;
    QTest::newRow("two bytes") << QByteArray::fromHex("0000") << AnswerKind::Damaged;
}

void TestCliFrame::TellsKinds()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const AnswerKind, kind);
    QCOMPARE(Cli::KindOf(answer), kind);
}

void TestCliFrame::TellsStatus_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("isStatus");
    QTest::newRow("status") << QByteArray::fromHex("00f5babf") << true;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("00f5babe") << false;
    QTest::newRow("one byte too many") << QByteArray::fromHex("00F000C113") << false;
    QTest::newRow("acknowledge and more") << QByteArray::fromHex("06c66055") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestCliFrame::TellsStatus()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const bool, isStatus);
    QCOMPARE(Cli::IsStatus(answer), isStatus);
}

void TestCliFrame::StatusWithoutAFunction()
{
    const InstrumentStatus status = Cli::StatusIn(QByteArray::fromHex("00F5BABF"));
    QVERIFY(status.mode == OperationMode::Normal);
    QVERIFY(status.function == MeasurementType::Monitoring);
    QVERIFY(status.error == Error::NoErrors);
    QVERIFY(status.startTestResult == StartTestResult::Status5);
    QVERIFY(!status.functionState.has_value());
    QVERIFY(!status.hasNewMeasurement);
}

void TestCliFrame::StatusWithAFunction()
{
    const InstrumentStatus status = Cli::StatusIn(QByteArray::fromHex("A3529A32"));
    QVERIFY(status.mode == OperationMode::Calibration);
    QVERIFY(status.function == MeasurementType::RISO);
    QVERIFY(status.error == Error::DeviceError5);
    QVERIFY(status.functionState == FunctionState::Completed);
    QVERIFY(!status.startTestResult.has_value());
    QVERIFY(status.hasNewMeasurement);
}

void TestCliFrame::ErrorsAreTheInstrumentsOwn_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("error");
    QTest::newRow("first") << QByteArray::fromHex("09070000") << 0;
    QTest::newRow("last") << QByteArray::fromHex("03E70000") << 14;
    QTest::newRow("none") << QByteArray::fromHex("0AF70000") << 15;
    QTest::newRow("function that tests residual-current devices") << QByteArray::fromHex("0A470000") << 4;
    QTest::newRow("the other such function") << QByteArray::fromHex("0BE70000") << 14;
    QTest::newRow("a byte is missing") << QByteArray::fromHex("0A") << 0;
}

void TestCliFrame::ErrorsAreTheInstrumentsOwn()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, error);
    QCOMPARE(static_cast<int>(Cli::StatusIn(answer).error), error);
}

void TestCliFrame::ErrorsInATest()
{
    QCOMPARE(Cli::InTest(Error::DeviceError0), Error::RCDDeviceError0);
    QCOMPARE(static_cast<int>(Cli::InTest(Error::DeviceError14)), 534);
    QCOMPARE(Cli::InTest(Error::NoErrors), Error::NoErrors);
}

void TestCliFrame::ValuesWithoutANameArePassedOn()
{
    const InstrumentStatus status = Cli::StatusIn(QByteArray::fromHex("FFFF0000"));
    QVERIFY(status.mode == OperationMode::Update);
    QCOMPARE(static_cast<int>(status.function), 31);
    QCOMPARE(static_cast<int>(*status.functionState), 15);
}

QTEST_GUILESS_MAIN(TestCliFrame)
#include "tst_cliframe.moc"
