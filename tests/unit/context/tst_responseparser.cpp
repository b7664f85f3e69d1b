#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/ideltaresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iperesults.h>
#include <Vesmar/isubresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/risoresults.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rperesults.h>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/crc16.h"
#include "support/logcapture.h"
#include "support/scriptedpeer.h"

using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;
using Vesmar::Notifible;
using Vesmar::ResponseParser;
using Vesmar::StateMachineContext;

namespace
{

QByteArray Frame(const char* hex)
{
    return WithChecksum(QByteArray::fromHex(hex));
}

/// A version answer: 19 bytes of text, the 4 bytes of the build number, checksum.
QByteArray VersionFrame(const char* text, const char* buildNumberHex)
{
    return WithChecksum(QByteArray(text, 19) + QByteArray::fromHex(buildNumberHex));
}

constexpr char VersionText[] = "TTRA12987654105XYQ7";

/// 1, -2.5, 3, 0.25, 1000 and 55, in order, little-endian.
constexpr char SixValues[] = "00 00 80 3F 00 00 20 C0 00 00 40 40 00 00 80 3E 00 00 7A 44 00 00 5C 42";

/// The readings of the present results object, which must be of this class.
template <typename Results>
const Results* Published(StateMachineContext& context)
{
    return dynamic_cast<const Results*>(context.TestResults.Get());
}

} // namespace

class TestResponseParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void StatusFillsItsCells_data();
    void StatusFillsItsCells();
    void StatusWithAFunctionLeavesTheStartTestAlone();
    void StatusWithoutAFunctionLeavesTheFunctionStatusAlone();
    void StatusStoresUnnamedValues();
    void TheSameStatusTwiceAnnouncesNothing();
    void StatusWritesItsCellsInOrder();
    void StatusLeavesTheMeasurementStatusAlone();
    void StatusWritesOneLine();

    void VersionFillsANewRecord();
    void VersionTextsEndAtAZeroByte();
    void VersionTextsAreLatin1();
    void BuildNumberIsTextOrFourNumbers_data();
    void BuildNumberIsTextOrFourNumbers();
    void VersionReplacesAndDeletesTheRecord();
    void VersionWritesOneLine();

    void DatesAreDecodedFromPackedDecimals_data();
    void DatesAreDecodedFromPackedDecimals();
    void EachDateGoesToItsOwnCell();
    void DatesKeepTheTimeZoneOfTheCell();
    void TheSameDateTwiceAnnouncesNothing();
    void SenselessDatesAreStored_data();
    void SenselessDatesAreStored();
    void DatesWriteOneLineEach();

    void MonitoringResultsArePublished();
    void RLNResultsArePublished();
    void RPEResultsArePublished();
    void RISOResultsArePublished();
    void ISUBResultsArePublished();
    void IPEResultsArePublished();
    void IDELTAResultsArePublished();
    void ITResultsArePublished();
    void POWERResultsArePublished();
    void HVTestResultsArePublished();
    void IECResultsArePublished();
    void EveryTypeStoresAllSixValues_data();
    void EveryTypeStoresAllSixValues();
    void TypesWithoutResultsPublishNothing_data();
    void TypesWithoutResultsPublishNothing();
    void WithoutATypeTheLastStatusDecides();
    void ResultsReplaceAndDeleteTheOnesBefore();
    void ValuesThatAreNoNumbersAreStored();
    void ResultsWriteOneLine_data();
    void ResultsWriteOneLine();
    void ReadingsAreTracedWithSixSignificantFigures_data();
    void ReadingsAreTracedWithSixSignificantFigures();

    void WrongLengthsChangeNothing_data();
    void WrongLengthsChangeNothing();
    void TheChecksumIsNotTestedAgain();
    void RCDResponsesAreToldByLengthAndChecksum_data();
    void RCDResponsesAreToldByLengthAndChecksum();

private:
    bool Parse(const char* hex) { return _parser.ParseStatusFrame(Frame(hex), *_context); }
    bool ParseResults(MeasurementType type)
    {
        return _parser.ParseMeasurementResults(Frame(SixValues), *_context, type);
    }

    Vesmar::CRC16 _crc16{nullptr};
    const ResponseParser _parser{&_crc16, nullptr};
    std::unique_ptr<StateMachineContext> _context;
};

void TestResponseParser::init()
{
    _context = std::make_unique<StateMachineContext>(&_crc16, nullptr, nullptr, nullptr, nullptr);
}

void TestResponseParser::cleanup()
{
    _context.reset();
}

void TestResponseParser::StatusFillsItsCells_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("newMeasurement");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("functionStatus");
    QTest::addColumn<int>("startTest");
    const auto bytes = [](const char* hex) { return QByteArray::fromHex(hex); };
    QTest::newRow("no function, no error") << bytes("00 F5 BA BF") << false << 0 << 0 << 15 << -1 << 5;
    QTest::newRow("function 3 with a result") << bytes("A3 52 9A 32") << true << 1 << 3 << 5 << 2 << -1;
    QTest::newRow("update mode, RLN") << Frame("61 F7") << false << 3 << 1 << 15 << 7 << -1;
    QTest::newRow("mode 2") << Frame("40 00") << false << 2 << 0 << 0 << -1 << 0;
    QTest::newRow("function 31") << Frame("1F E9") << false << 0 << 31 << 14 << 9 << -1;
    QTest::newRow("new measurement alone") << Frame("80 FE") << true << 0 << 0 << 15 << -1 << 14;
    QTest::newRow("every bit set") << Frame("FF FF") << true << 3 << 31 << 15 << 15 << -1;
    QTest::newRow("no bit set") << Frame("00 00") << false << 0 << 0 << 0 << -1 << 0;
    QTest::newRow("RCD IEC") << Frame("0B FC") << false << 0 << 11 << 15 << 12 << -1;
}

void TestResponseParser::StatusFillsItsCells()
{
    QFETCH(const QByteArray, frame);
    QVERIFY(_parser.ParseStatusFrame(frame, *_context));
    QTEST(_context->NewMeasurement.Get(), "newMeasurement");
    QTEST(static_cast<int>(_context->TesterMode.Get()), "mode");
    QTEST(static_cast<int>(_context->CurrentMeasurementType.Get()), "type");
    QTEST(static_cast<int>(_context->ErrorCode.Get()), "error");
    QTEST(static_cast<int>(_context->MeasurementFunctionStatus.Get()), "functionStatus");
    QTEST(static_cast<int>(_context->StartTestStatus.Get()), "startTest");
}

void TestResponseParser::StatusWithAFunctionLeavesTheStartTestAlone()
{
    QVERIFY(Parse("00 F5"));
    QSignalSpy changes(&_context->StartTestStatus, &Notifible::ValueChanged);
    QVERIFY(Parse("61 F7"));
    QCOMPARE(static_cast<int>(_context->StartTestStatus.Get()), 5);
    QCOMPARE(changes.count(), 0);
}

void TestResponseParser::StatusWithoutAFunctionLeavesTheFunctionStatusAlone()
{
    QVERIFY(Parse("01 F7"));
    QSignalSpy changes(&_context->MeasurementFunctionStatus, &Notifible::ValueChanged);
    QVERIFY(Parse("00 F5"));
    QCOMPARE(static_cast<int>(_context->MeasurementFunctionStatus.Get()), 7);
    QCOMPARE(changes.count(), 0);
}

void TestResponseParser::StatusStoresUnnamedValues()
{
    QSignalSpy typeChanges(&_context->CurrentMeasurementType, &Notifible::ValueChanged);
    QSignalSpy stateChanges(&_context->MeasurementFunctionStatus, &Notifible::ValueChanged);
    QVERIFY(Parse("5E FC"));
    QCOMPARE(static_cast<int>(_context->TesterMode.Get()), 2);
    QCOMPARE(static_cast<int>(_context->CurrentMeasurementType.Get()), 30);
    QCOMPARE(static_cast<int>(_context->MeasurementFunctionStatus.Get()), 12);
    QCOMPARE(typeChanges.count(), 1);
    QCOMPARE(stateChanges.count(), 1);
}

void TestResponseParser::TheSameStatusTwiceAnnouncesNothing()
{
    QVERIFY(Parse("A3 52"));
    const std::vector<Notifible*> cells = {
        &_context->NewMeasurement, &_context->TesterMode,      &_context->CurrentMeasurementType,
        &_context->ErrorCode,      &_context->StartTestStatus, &_context->MeasurementFunctionStatus};
    int announced = 0;
    for (const Notifible* cell : cells) {
        connect(cell, &Notifible::ValueChanged, this, [&announced] { ++announced; });
    }
    QVERIFY(Parse("A3 52"));
    QCOMPARE(announced, 0);
    QVERIFY(Parse("A3 53"));
    QCOMPARE(announced, 1);
}

void TestResponseParser::StatusWritesItsCellsInOrder()
{
    QStringList order;
    const auto record = [this, &order](const Notifible& cell, const char* name) {
        connect(&cell, &Notifible::ValueChanged, _context.get(),
                [&order, name] { order.append(QLatin1String(name)); });
    };
    record(_context->MeasurementFunctionStatus, "MeasurementFunctionStatus");
    record(_context->ErrorCode, "ErrorCode");
    record(_context->CurrentMeasurementType, "CurrentMeasurementType");
    record(_context->TesterMode, "TesterMode");
    record(_context->NewMeasurement, "NewMeasurement");
    QVERIFY(Parse("A3 52"));
    QCOMPARE(order.join(QLatin1Char(' ')),
             QStringLiteral(
                 "NewMeasurement TesterMode CurrentMeasurementType ErrorCode MeasurementFunctionStatus"));
}

void TestResponseParser::StatusLeavesTheMeasurementStatusAlone()
{
    QSignalSpy changes(&_context->MeasurementStatus, &Notifible::ValueChanged);
    QVERIFY(Parse("E1 F7"));
    QVERIFY(Parse("00 F5"));
    QCOMPARE(changes.count(), 0);
}

void TestResponseParser::StatusWritesOneLine()
{
    const LogCapture log;
    QVERIFY(Parse("A3 52"));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    static const QRegularExpression line(
        QStringLiteral("^DeviceMode:\\s+1\\s+MeasurementType:\\s+3\\s+Error:\\s+5\\s+ProcessStatus:\\s+2\\s+"
                       "NewMeasurement:\\s+1\\s*$"));
    const QString text = log.Messages().first().text;
    QVERIFY2(text.contains(line), qPrintable(text));
}

void TestResponseParser::VersionFillsANewRecord()
{
    QVERIFY(_parser.ParseVersionFrame(VersionFrame(VersionText, "32 30 31 36"), *_context));
    const Vesmar::TesterInformation* information = _context->DeviceInformation.Get();
    QCOMPARE(information->DeviceName, QStringLiteral("TTR"));
    QCOMPARE(information->DeviceCode, QStringLiteral("A12"));
    QCOMPARE(information->SerialNumber, QStringLiteral("987654"));
    QCOMPARE(information->Version, QStringLiteral("1.05"));
    QCOMPARE(information->VersionCode, QStringLiteral("XY"));
    QCOMPARE(information->RevisionCode, QStringLiteral("Q7"));
    QCOMPARE(information->BuildNumber, QStringLiteral("2016"));
    QVERIFY(information->parent() == nullptr);
}

void TestResponseParser::VersionTextsEndAtAZeroByte()
{
    const QByteArray frame = WithChecksum(
        QByteArray::fromHex("54 00 52 00 00 00 39 38 37 00 35 34 00 30 00 58 00 00 59 00 00 00 00"));
    QVERIFY(_parser.ParseVersionFrame(frame, *_context));
    const Vesmar::TesterInformation* information = _context->DeviceInformation.Get();
    QCOMPARE(information->DeviceName, QStringLiteral("T"));
    QCOMPARE(information->DeviceCode, QString());
    QCOMPARE(information->SerialNumber, QStringLiteral("987"));
    QCOMPARE(information->Version, QStringLiteral(".0"));
    QCOMPARE(information->VersionCode, QStringLiteral("X"));
    QCOMPARE(information->RevisionCode, QString());
    QCOMPARE(information->BuildNumber, QStringLiteral("0"));
}

void TestResponseParser::VersionTextsAreLatin1()
{
    const QByteArray frame = WithChecksum(
        QByteArray::fromHex("E9 0A FF 30 30 30 30 30 30 30 30 30 31 B0 35 30 30 30 30 31 31 31 31"));
    QVERIFY(_parser.ParseVersionFrame(frame, *_context));
    const Vesmar::TesterInformation* information = _context->DeviceInformation.Get();
    QCOMPARE(information->DeviceName, QString::fromLatin1("\xE9\n\xFF"));
    QCOMPARE(information->Version, QString::fromLatin1("1.\xB0"
                                                       "5"));
}

void TestResponseParser::BuildNumberIsTextOrFourNumbers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("buildNumber");
    const auto row = [](const char* name, const char* hex, const char* text) {
        QTest::newRow(name) << QByteArray(hex) << QString::fromLatin1(text);
    };
    row("digits", "31 32 33 34", "1234");
    row("digits keep leading zeros", "30 30 31 36", "0016");
    row("numbers", "01 02 03 04", "1234");
    row("numbers, the year 2024", "02 00 02 04", "2024");
    row("numbers, the year 2016", "02 00 01 06", "2016");
    row("digits and numbers mixed", "31 32 03 04", "54034");
    row("one byte is no digit", "30 31 0A 33", "53051");
    row("the byte before the digits", "2F 30 30 30", "52328");
    row("the byte after the digits", "30 30 30 3A", "53338");
    row("numbers of zero lose leading zeros", "00 00 01 06", "16");
    row("bytes count as unsigned", "FF FF FF FF", "283305");
}

void TestResponseParser::BuildNumberIsTextOrFourNumbers()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, buildNumber);
    QVERIFY(_parser.ParseVersionFrame(VersionFrame(VersionText, bytes.constData()), *_context));
    QCOMPARE(_context->DeviceInformation.Get()->BuildNumber, buildNumber);
}

void TestResponseParser::VersionReplacesAndDeletesTheRecord()
{
    QStringList events;
    connect(_context->DeviceInformation.Get(), &QObject::destroyed, this,
            [&events] { events.append(QStringLiteral("destroyed")); });
    connect(&_context->DeviceInformation, &Notifible::ValueChanged, _context.get(),
            [this, &events] { events.append(_context->DeviceInformation.Get()->SerialNumber); });
    QVERIFY(_parser.ParseVersionFrame(VersionFrame(VersionText, "32 30 31 36"), *_context));
    QTRY_COMPARE(events, QStringList({QStringLiteral("987654"), QStringLiteral("destroyed")}));

    QVERIFY(_parser.ParseVersionFrame(VersionFrame(VersionText, "32 30 31 36"), *_context));
    QCOMPARE(events.last(), QStringLiteral("987654"));
    QCOMPARE(events.size(), 3);
}

void TestResponseParser::VersionWritesOneLine()
{
    const LogCapture log;
    QVERIFY(_parser.ParseVersionFrame(VersionFrame(VersionText, "32 30 31 36"), *_context));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    const QString text = log.Messages().first().text.simplified().remove(QLatin1Char('"'));
    QCOMPARE(text, QStringLiteral("TTR A12 987654 1.05 XY Q7 2016"));
}

void TestResponseParser::DatesAreDecodedFromPackedDecimals_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("time");
    QTest::newRow("end of a year") << Frame("24 12 31 23 59 58") << QDate(2024, 12, 31) << QTime(23, 59, 58);
    QTest::newRow("every field different")
        << Frame("16 03 07 14 05 09") << QDate(2016, 3, 7) << QTime(14, 5, 9);
    QTest::newRow("2000") << Frame("00 01 01 00 00 00") << QDate(2000, 1, 1) << QTime(0, 0, 0);
    QTest::newRow("2099") << Frame("99 10 20 10 20 30") << QDate(2099, 10, 20) << QTime(10, 20, 30);
    QTest::newRow("tens of 10") << Frame("A0 01 01 00 00 00") << QDate(2100, 1, 1) << QTime(0, 0, 0);
    QTest::newRow("units above 9") << Frame("0F 0A 0B 0C 0D 0E") << QDate(2015, 10, 11) << QTime(12, 13, 14);
}

void TestResponseParser::DatesAreDecodedFromPackedDecimals()
{
    QFETCH(const QByteArray, frame);
    QVERIFY(_parser.ParseCurrentDateTimeFrame(frame, *_context));
    QTEST(_context->CurrentDateTime.Get().date(), "date");
    QTEST(_context->CurrentDateTime.Get().time(), "time");
    QVERIFY(_parser.ParseCalibrationDateTimeFrame(frame, *_context));
    QTEST(_context->CalibrationDateTime.Get().date(), "date");
    QTEST(_context->CalibrationDateTime.Get().time(), "time");
}

void TestResponseParser::EachDateGoesToItsOwnCell()
{
    QSignalSpy current(&_context->CurrentDateTime, &Notifible::ValueChanged);
    QSignalSpy calibration(&_context->CalibrationDateTime, &Notifible::ValueChanged);
    QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
    QCOMPARE(current.count(), 1);
    QCOMPARE(calibration.count(), 0);
    QVERIFY(_parser.ParseCalibrationDateTimeFrame(Frame("23 06 15 08 30 00"), *_context));
    QCOMPARE(current.count(), 1);
    QCOMPARE(calibration.count(), 1);
    QCOMPARE(_context->CurrentDateTime.Get().date(), QDate(2024, 12, 31));
    QCOMPARE(_context->CalibrationDateTime.Get().date(), QDate(2023, 6, 15));
}

void TestResponseParser::DatesKeepTheTimeZoneOfTheCell()
{
    _context->CurrentDateTime.Set(QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
    QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
    QCOMPARE(_context->CurrentDateTime.Get(), QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC));
    QCOMPARE(_context->CurrentDateTime.Get().timeSpec(), Qt::UTC);
    QVERIFY(_parser.ParseCalibrationDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
    QCOMPARE(_context->CalibrationDateTime.Get().timeSpec(), Qt::LocalTime);
}

void TestResponseParser::TheSameDateTwiceAnnouncesNothing()
{
    QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
    QSignalSpy changes(&_context->CurrentDateTime, &Notifible::ValueChanged);
    QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
    QCOMPARE(changes.count(), 0);
}

void TestResponseParser::SenselessDatesAreStored_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("time");
    QTest::newRow("month 13") << Frame("24 13 01 10 20 30") << QDate(2024, 13, 1) << QTime(10, 20, 30);
    QTest::newRow("31 February") << Frame("24 02 31 10 20 30") << QDate(2024, 2, 31) << QTime(10, 20, 30);
    QTest::newRow("25 o'clock") << Frame("24 12 31 25 00 00") << QDate(2024, 12, 31) << QTime(25, 0, 0);
    QTest::newRow("all ones") << Frame("FF FF FF FF FF FF") << QDate(2165, 165, 165) << QTime(165, 165, 165);
    QTest::newRow("all zeros") << Frame("00 00 00 00 00 00") << QDate(2000, 0, 0) << QTime(0, 0, 0);
}

void TestResponseParser::SenselessDatesAreStored()
{
    QFETCH(const QByteArray, frame);
    QFETCH(const QDate, date);
    QFETCH(const QTime, time);
    QDateTime expected = _context->CurrentDateTime.Get();
    expected.setDate(date);
    expected.setTime(time);
    QSignalSpy changes(&_context->CurrentDateTime, &Notifible::ValueChanged);
    QVERIFY(_parser.ParseCurrentDateTimeFrame(frame, *_context));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(_context->CurrentDateTime.Get().isValid(), expected.isValid());
    QCOMPARE(_context->CurrentDateTime.Get().date(), expected.date());
    QCOMPARE(_context->CurrentDateTime.Get().time(), expected.time());
}

void TestResponseParser::DatesWriteOneLineEach()
{
    const LogCapture log;
    QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
    QVERIFY(_parser.ParseCalibrationDateTimeFrame(Frame("23 06 15 08 30 00"), *_context));
    const QList<LogCapture::Message> messages = log.Messages();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.at(0).type, QtWarningMsg);
    QCOMPARE(messages.at(0).category, QByteArray("default"));
    QCOMPARE(messages.at(0).text, QStringLiteral("CurrentTime: 31/12/2024 23:59:58"));
    QCOMPARE(messages.at(1).text, QStringLiteral("CalibrationTime: 15/06/2023 08:30:00"));
}

void TestResponseParser::MonitoringResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::Monitoring));
    const auto* results = Published<Vesmar::MonitoringResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_uln, 1.0F);
    QCOMPARE(results->_unpe, -2.5F);
    QCOMPARE(results->_frequency, 3.0F);
}

void TestResponseParser::RLNResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::RLN));
    const auto* results = Published<Vesmar::RLNResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_resistance, 1.0F);
    QCOMPARE(results->_voltage, -2.5F);
    QCOMPARE(results->_current, 3.0F);
    QCOMPARE(results->_isubVoltage, 0.25F);
    QCOMPARE(results->_isubCurrent, 1000.0F);
}

void TestResponseParser::RPEResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::RPE));
    const auto* results = Published<Vesmar::RPEResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_resistance, 1.0F);
    QCOMPARE(results->_voltage, -2.5F);
    QCOMPARE(results->_current, 3.0F);
}

void TestResponseParser::RISOResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::RISO));
    const auto* results = Published<Vesmar::RISOResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_resistance, 1.0F);
    QCOMPARE(results->_voltage, -2.5F);
    QCOMPARE(results->_current, 3.0F);
}

void TestResponseParser::ISUBResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::ISUB));
    const auto* results = Published<Vesmar::ISUBResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_current, 1.0F);
    QCOMPARE(results->_voltage, -2.5F);
}

void TestResponseParser::IPEResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::IPE));
    const auto* results = Published<Vesmar::IPEResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_current, 1.0F);
    QCOMPARE(results->_voltage, -2.5F);
}

void TestResponseParser::IDELTAResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::IDELTA));
    const auto* results = Published<Vesmar::IDELTAResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_current, 1.0F);
    QCOMPARE(results->_voltage, -2.5F);
}

void TestResponseParser::ITResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::IT));
    const auto* results = Published<Vesmar::ITResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_current, 1.0F);
}

void TestResponseParser::POWERResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::POWER));
    const auto* results = Published<Vesmar::POWERResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_energy, 1.0F);
    QCOMPARE(results->_power, -2.5F);
    QCOMPARE(results->_current, 3.0F);
    QCOMPARE(results->_voltage, 0.25F);
    QCOMPARE(results->_powerFactor, 1000.0F);
    QCOMPARE(results->_apparentPower, 55.0F);
}

void TestResponseParser::HVTestResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::HVTest));
    const auto* results = Published<Vesmar::HVTestResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_maxVoltage, 1.0F);
    QCOMPARE(results->_voltage, -2.5F);
    QCOMPARE(results->_current, 3.0F);
    QCOMPARE(results->_uln, 0.25F);
    QCOMPARE(results->_upri, 1000.0F);
    QCOMPARE(results->_pwm, 0.55F);
}

void TestResponseParser::IECResultsArePublished()
{
    QVERIFY(ParseResults(MeasurementType::IEC));
    const auto* results = Published<Vesmar::IECResults>(*_context);
    QVERIFY(results != nullptr);
    QCOMPARE(results->_result, 1);
    QCOMPARE(results->_voltage, -2.5F);
    QCOMPARE(results->_uln, 3.0F);
    QCOMPARE(results->_step, 0.25F);
    QCOMPARE(results->_delay, 1.0F);
}

void TestResponseParser::EveryTypeStoresAllSixValues_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 97}) {
        QTest::addRow("type %d", type) << type;
    }
}

void TestResponseParser::EveryTypeStoresAllSixValues()
{
    QFETCH(const int, type);
    QVERIFY(ParseResults(static_cast<MeasurementType>(type)));
    const MeasurementResults* results = _context->TestResults.Get();
    QCOMPARE(static_cast<int>(results->GetMeasurementType()), type);
    QVERIFY((results->_values == std::array<float, 6>{1.0F, -2.5F, 3.0F, 0.25F, 1000.0F, 55.0F}));
    QVERIFY(results->parent() == nullptr);
}

void TestResponseParser::TypesWithoutResultsPublishNothing_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {-1, 10, 11, 12, 31, 96, 98}) {
        QTest::addRow("type %d", type) << type;
    }
}

void TestResponseParser::TypesWithoutResultsPublishNothing()
{
    QFETCH(const int, type);
    const MeasurementResults* before = _context->TestResults.Get();
    QSignalSpy changes(&_context->TestResults, &Notifible::ValueChanged);
    QVERIFY(ParseResults(static_cast<MeasurementType>(type)));
    QCOMPARE(changes.count(), 0);
    QCOMPARE(_context->TestResults.Get(), before);
    QCOMPARE(static_cast<int>(before->GetMeasurementType()), -1);
}

void TestResponseParser::WithoutATypeTheLastStatusDecides()
{
    _context->CurrentMeasurementType.Set(MeasurementType::IT);
    QVERIFY(_parser.ParseMeasurementResults(Frame(SixValues), *_context));
    QVERIFY(Published<Vesmar::ITResults>(*_context) != nullptr);

    QVERIFY(Parse("08 F7"));
    QVERIFY(_parser.ParseMeasurementResults(Frame(SixValues), *_context));
    QVERIFY(Published<Vesmar::POWERResults>(*_context) != nullptr);

    QVERIFY(!_parser.ParseMeasurementResults(Frame("00"), *_context));
}

void TestResponseParser::ResultsReplaceAndDeleteTheOnesBefore()
{
    QVERIFY(ParseResults(MeasurementType::IT));
    QStringList events;
    connect(_context->TestResults.Get(), &QObject::destroyed, this,
            [&events] { events.append(QStringLiteral("destroyed")); });
    connect(&_context->TestResults, &Notifible::ValueChanged, _context.get(), [this, &events] {
        events.append(QString::number(static_cast<double>(_context->TestResults.Get()->_values[5])));
    });
    QVERIFY(ParseResults(MeasurementType::IT));
    QTRY_COMPARE(events, QStringList({QStringLiteral("55"), QStringLiteral("destroyed")}));
}

void TestResponseParser::ValuesThatAreNoNumbersAreStored()
{
    constexpr char Values[] = "00 00 C0 7F 00 00 80 7F 00 00 80 FF FF FF 7F 7F 01 00 00 00 00 00 00 80";
    for (const MeasurementType type : {MeasurementType::POWER, MeasurementType::IEC}) {
        QVERIFY(_parser.ParseMeasurementResults(Frame(Values), *_context, type));
        const auto& values = _context->TestResults.Get()->_values;
        QVERIFY(std::isnan(values[0]));
        QVERIFY(std::isinf(values[1]) && values[1] > 0.0F);
        QVERIFY(std::isinf(values[2]) && values[2] < 0.0F);
        QVERIFY(values[3] == std::numeric_limits<float>::max());
        QVERIFY(values[4] == std::numeric_limits<float>::denorm_min());
        QVERIFY(values[5] == 0.0F && std::signbit(values[5]));
    }
    QVERIFY(std::isinf(Published<Vesmar::IECResults>(*_context)->_voltage));
}

void TestResponseParser::ResultsWriteOneLine_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("line");
    const auto row = [](int type, const char* line) {
        QTest::addRow("type %d", type) << type << QString::fromLatin1(line);
    };
    row(0, "ULN: 1 UNPE: -2.5 f: 3");
    row(1, "Resistance: 1 Voltage: -2.5 Current: 3 IsubVoltage: 0.25 IsubCurrent: 1000");
    row(2, "Resistance: 1 Voltage: -2.5 Current: 3");
    row(3, "Resistance: 1 Voltage: -2.5 Current: 3");
    row(4, "Current: 1 Voltage: -2.5");
    row(5, "Current: 1 Voltage: -2.5");
    row(6, "Current: 1 Voltage: -2.5");
    row(7, "Current: 1");
    row(8, "Energy: 1 Power: -2.5 Current: 3 Voltage: 0.25 PF: 1000 S: 55");
    row(9, "MaxVoltage: 1 Voltage: -2.5 Current: 3 ULN: 0.25 UPRI: 1000 PWM: 55");
    row(97, "Result: 1 Voltage: -2.5 ULN: 3 Step: 0.25 Delay: 1000");
}

void TestResponseParser::ResultsWriteOneLine()
{
    QFETCH(const int, type);
    QFETCH(const QString, line);
    const LogCapture log;
    QVERIFY(ParseResults(static_cast<MeasurementType>(type)));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    QCOMPARE(log.Messages().first().text.remove(QLatin1Char('"')).simplified(), line);
}

void TestResponseParser::ReadingsAreTracedWithSixSignificantFigures_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("figures");
    const auto row = [](const char* hex, const char* figures) {
        QTest::newRow(figures) << QByteArray::fromHex(hex) << QString::fromLatin1(figures);
    };
    row("38 B4 96 49", "1.23457e+06");
    row("AB AA AA 3E", "0.333333");
    row("00 00 00 00", "0");
    row("00 24 74 49", "1e+06");
    row("FF FF 7F 7F", "3.40282e+38");
    row("00 00 C0 7F", "nan");
    row("00 00 80 FF", "-inf");
}

void TestResponseParser::ReadingsAreTracedWithSixSignificantFigures()
{
    QFETCH(const QByteArray, value);
    QFETCH(const QString, figures);
    const LogCapture log;
    QVERIFY(_parser.ParseMeasurementResults(WithChecksum(value + QByteArray(20, '\0')), *_context,
                                            MeasurementType::IT));
    const QString text = log.Texts().value(0).remove(QLatin1Char('"')).simplified();
    QCOMPARE(text, QStringLiteral("Current: ") + figures);
}

void TestResponseParser::WrongLengthsChangeNothing_data()
{
    QTest::addColumn<int>("parser");
    QTest::addColumn<int>("length");
    struct {
        const char* name;
        int length;
    } const parsers[] = {
        {"status", 4}, {"version", 25}, {"current date", 8}, {"calibration date", 8}, {"results", 26}};
    int parser = 0;
    for (const auto& each : parsers) {
        for (const int length : {0, 1, each.length - 1, each.length + 1, 128}) {
            QTest::addRow("%s, %d bytes", each.name, length) << parser << length;
        }
        ++parser;
    }
}

void TestResponseParser::WrongLengthsChangeNothing()
{
    QFETCH(const int, parser);
    QFETCH(const int, length);
    const QByteArray frame(length, '\x11');
    int announced = 0;
    for (const Notifible* cell : std::vector<const Notifible*>{
             &_context->NewMeasurement, &_context->TesterMode, &_context->CurrentMeasurementType,
             &_context->ErrorCode, &_context->StartTestStatus, &_context->MeasurementFunctionStatus,
             &_context->DeviceInformation, &_context->CurrentDateTime, &_context->CalibrationDateTime,
             &_context->TestResults}) {
        connect(cell, &Notifible::ValueChanged, this, [&announced] { ++announced; });
    }
    const LogCapture log;
    const std::vector<std::function<bool()>> parsers = {
        [&] { return _parser.ParseStatusFrame(frame, *_context); },
        [&] { return _parser.ParseVersionFrame(frame, *_context); },
        [&] { return _parser.ParseCurrentDateTimeFrame(frame, *_context); },
        [&] { return _parser.ParseCalibrationDateTimeFrame(frame, *_context); },
        [&] { return _parser.ParseMeasurementResults(frame, *_context, MeasurementType::IT); },
    };
    QVERIFY(!parsers.at(static_cast<std::size_t>(parser))());
    QCOMPARE(announced, 0);
    QCOMPARE(log.Texts(), QStringList());
    QCOMPARE(_context->DeviceInformation.Get()->DeviceName, QStringLiteral("PAT"));
}

void TestResponseParser::TheChecksumIsNotTestedAgain()
{
    QVERIFY(_parser.ParseStatusFrame(QByteArray::fromHex("A3 52 00 00"), *_context));
    QCOMPARE(static_cast<int>(_context->ErrorCode.Get()), 5);
    QVERIFY(_parser.ParseMeasurementResults(QByteArray::fromHex(SixValues) + QByteArray(2, '\0'), *_context,
                                            MeasurementType::IT));
    QVERIFY(Published<Vesmar::ITResults>(*_context) != nullptr);
}

void TestResponseParser::RCDResponsesAreToldByLengthAndChecksum_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("isResult");
    QTest::addColumn<bool>("isStatus");
    QTest::newRow("nothing") << QByteArray() << false << false;
    QTest::newRow("status") << QByteArray::fromHex("A3 52 9A 32") << false << true;
    QTest::newRow("damaged status") << QByteArray::fromHex("A3 52 9A 33") << false << false;
    QTest::newRow("short status") << Frame("A3") << false << false;
    QTest::newRow("long status") << Frame("A3 52 00") << false << false;
    QTest::newRow("result") << Frame(SixValues) << true << false;
    QTest::newRow("result of zeros") << QByteArray(26, '\0') << true << false;
    QTest::newRow("damaged result") << QByteArray(25, '\0') + '\x01' << false << false;
    QTest::newRow("short result") << WithChecksum(QByteArray(23, '\x22')) << false << false;
    QTest::newRow("long result") << WithChecksum(QByteArray(25, '\x22')) << false << false;
}

void TestResponseParser::RCDResponsesAreToldByLengthAndChecksum()
{
    QFETCH(const QByteArray, frame);
    QTEST(_parser.IsRCDMeasurementResultResponse(frame), "isResult");
    QTEST(_parser.IsRCDMeasurementStatusResponse(frame), "isStatus");
}

QTEST_GUILESS_MAIN(TestResponseParser)
#include "tst_responseparser.moc"
