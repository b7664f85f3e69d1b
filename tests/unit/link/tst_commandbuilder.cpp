#include <memory>

#include <QtTest>

#include <Vesmar/rcdsettings.h>
#include <Vesmar/rpesettings.h>

#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "support/logcapture.h"
#include "support/scriptedpeer.h"

using Vesmar::CommandBuilder;
using Vesmar::OperationMode;

namespace
{

using Getter = QByteArray* (CommandBuilder::*)() const;

/// Counts how often it is asked for its payload.
class CountingSettings : public Vesmar::MeasurementSettings
{
public:
    CountingSettings() : MeasurementSettings(Vesmar::MeasurementType::RPE, nullptr) {}

    QByteArray* CreateMeasurementFrame() override
    {
        ++_calls;
        return new QByteArray(QByteArray::fromHex("00 FF 00 12"));
    }

    int Calls() const { return _calls; }

private:
    int _calls = 0;
};

/// The bytes of a frame that a caller owns.
QByteArray Owned(QByteArray* frame)
{
    const std::unique_ptr<QByteArray> owner(frame);
    return *owner;
}

} // namespace

Q_DECLARE_METATYPE(Getter)

class TestCommandBuilder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FixedFramesAreThreeBytesEach_data();
    void FixedFramesAreThreeBytesEach();
    void ChangesTheTesterMode_data();
    void ChangesTheTesterMode();
    void ProgramsASectorUnchanged_data();
    void ProgramsASectorUnchanged();
    void FinishesAnUpdateWithTheLastTwoBytes_data();
    void FinishesAnUpdateWithTheLastTwoBytes();
    void PreparesWithThePayloadOfTheSettings();
    void AsksForThePayloadOnce();
    void PreparesWithoutDataForBareSettings();
    void SetsTheCurrentDateInPackedDecimals_data();
    void SetsTheCurrentDateInPackedDecimals();
    void SetsTheCalibrationDateWithoutATime_data();
    void SetsTheCalibrationDateWithoutATime();
    void SendsADateOfAnyTimeZoneAsItStands();
    void LogsTheDatesThatItSets();
    void LogsNothingElse();
    void EveryCreatedFrameIsANewOne();

private:
    Vesmar::CRC16 _crc16{nullptr};
    const CommandBuilder _builder{&_crc16, nullptr};
};

void TestCommandBuilder::FixedFramesAreThreeBytesEach_data()
{
    QTest::addColumn<Getter>("getter");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("status") << &CommandBuilder::GetStatusFrame << QByteArray::fromHex("73 F4 4E");
    QTest::newRow("version") << &CommandBuilder::GetVersionFrame << QByteArray::fromHex("57 12 2A");
    QTest::newRow("start") << &CommandBuilder::GetStartMeasurementFrame << QByteArray::fromHex("53 96 6A");
    QTest::newRow("stop") << &CommandBuilder::GetStopMeasurementFrame << QByteArray::fromHex("68 AE ED");
    QTest::newRow("read measurement")
        << &CommandBuilder::GetReadMeasurementFrame << QByteArray::fromHex("65 03 3C");
    QTest::newRow("read current date")
        << &CommandBuilder::GetReadCurrentDateFrame << QByteArray::fromHex("52 B7 7A");
    QTest::newRow("read calibration date")
        << &CommandBuilder::GetReadCalibrationDateFrame << QByteArray::fromHex("54 71 1A");
    QTest::newRow("initialize update")
        << &CommandBuilder::GetInitializeUpdateFrame << QByteArray::fromHex("56 33 3A");
}

void TestCommandBuilder::FixedFramesAreThreeBytesEach()
{
    QFETCH(const Getter, getter);
    QFETCH(const QByteArray, frame);
    QCOMPARE(*(_builder.*getter)(), frame);
    QCOMPARE((_builder.*getter)(), (_builder.*getter)());
}

void TestCommandBuilder::ChangesTheTesterMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("normal") << 0 << QByteArray::fromHex("78 00 F0 81");
    QTest::newRow("calibration") << 1 << QByteArray::fromHex("78 01 D1 91");
    QTest::newRow("mode 2") << 2 << QByteArray::fromHex("78 02 B2 A1");
    QTest::newRow("update") << 3 << QByteArray::fromHex("78 03 93 B1");
    QTest::newRow("unnamed, low 8 bits") << 0x1FE << WithChecksum(QByteArray::fromHex("78 FE"));
}

void TestCommandBuilder::ChangesTheTesterMode()
{
    QFETCH(const int, mode);
    QFETCH(const QByteArray, frame);
    QCOMPARE(Owned(_builder.CreateChangeTesterModeFrame(static_cast<OperationMode>(mode))), frame);
}

void TestCommandBuilder::ProgramsASectorUnchanged_data()
{
    QTest::addColumn<QByteArray>("sector");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("zeros") << QByteArray(512, '\0');
    QTest::newRow("looks like a refusal") << QByteArray::fromHex("21 43 34");
    QTest::newRow("a whole sector") << QByteArray(511, '\xA5') + '\x01';
}

void TestCommandBuilder::ProgramsASectorUnchanged()
{
    QFETCH(const QByteArray, sector);
    QCOMPARE(Owned(_builder.CreateProgramFlashSectorFrame(sector)), WithChecksum('\x46' + sector));
}

void TestCommandBuilder::FinishesAnUpdateWithTheLastTwoBytes_data()
{
    QTest::addColumn<QByteArray>("confirmation");
    QTest::addColumn<QByteArray>("frame");
    const QByteArray frame = WithChecksum(QByteArray::fromHex("5A AB CD"));
    QTest::newRow("two bytes") << QByteArray::fromHex("AB CD") << frame;
    QTest::newRow("an image") << QByteArray(1024, '\x11') + QByteArray::fromHex("AB CD") << frame;
    QTest::newRow("zeros count") << QByteArray::fromHex("11 00 00")
                                 << WithChecksum(QByteArray::fromHex("5A 00 00"));
}

void TestCommandBuilder::FinishesAnUpdateWithTheLastTwoBytes()
{
    QFETCH(const QByteArray, confirmation);
    QFETCH(const QByteArray, frame);
    QCOMPARE(Owned(_builder.CreateFinishUpdateFrame(confirmation)), frame);
}

void TestCommandBuilder::PreparesWithThePayloadOfTheSettings()
{
    Vesmar::RPESettings rpe;
    QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(rpe)),
             WithChecksum(QByteArray::fromHex("50 02 05 00 00 FF FF FF FF")));
    Vesmar::RCDSettings rcd;
    QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(rcd)),
             WithChecksum(QByteArray::fromHex("50 0A 00 00 00 00 00 00 00")));
}

void TestCommandBuilder::AsksForThePayloadOnce()
{
    CountingSettings settings;
    QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(settings)),
             WithChecksum(QByteArray::fromHex("50 00 FF 00 12")));
    QCOMPARE(settings.Calls(), 1);
}

void TestCommandBuilder::PreparesWithoutDataForBareSettings()
{
    Vesmar::MeasurementSettings settings(Vesmar::MeasurementType::RPE, nullptr);
    QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(settings)),
             WithChecksum(QByteArray::fromHex("50")));
}

void TestCommandBuilder::SetsTheCurrentDateInPackedDecimals_data()
{
    QTest::addColumn<QDateTime>("date");
    QTest::addColumn<QByteArray>("frame");
    const auto row = [](const char* name, QDate date, QTime time, const char* bytes) {
        QTest::newRow(name) << QDateTime(date, time) << WithChecksum(QByteArray::fromHex(bytes));
    };
    row("every field different", {2024, 3, 7}, {14, 5, 9}, "72 24 03 07 14 05 09");
    row("largest fields", {2099, 12, 31}, {23, 59, 59}, "72 99 12 31 23 59 59");
    row("midnight", {2009, 10, 20}, {0, 0, 0}, "72 09 10 20 00 00 00");
    row("2001", {2001, 1, 1}, {1, 1, 1}, "72 01 01 01 01 01 01");
    row("2000", {2000, 1, 1}, {1, 1, 1}, "72 00 01 01 01 01 01");
    row("before 2000", {1999, 12, 31}, {1, 1, 1}, "72 00 12 31 01 01 01");
    row("tens of 10 in 2100", {2100, 1, 1}, {1, 1, 1}, "72 A0 01 01 01 01 01");
    row("tens of 15 in 2155", {2155, 1, 1}, {1, 1, 1}, "72 F5 01 01 01 01 01");
    row("tens of 16 in 2161", {2161, 1, 1}, {1, 1, 1}, "72 01 01 01 01 01 01");
}

void TestCommandBuilder::SetsTheCurrentDateInPackedDecimals()
{
    QFETCH(const QDateTime, date);
    QFETCH(const QByteArray, frame);
    QCOMPARE(Owned(_builder.CreateSetCurrentDateTimeFrame(date)), frame);
}

void TestCommandBuilder::SetsTheCalibrationDateWithoutATime_data()
{
    QTest::addColumn<QDateTime>("date");
    QTest::addColumn<QByteArray>("frame");
    const auto row = [](const char* name, QDate date, QTime time, const char* bytes) {
        QTest::newRow(name) << QDateTime(date, time) << WithChecksum(QByteArray::fromHex(bytes));
    };
    row("a time of day", {2024, 3, 7}, {14, 5, 9}, "74 24 03 07 00 00 00");
    row("midnight", {2024, 3, 7}, {0, 0, 0}, "74 24 03 07 00 00 00");
    row("the last second", {2099, 12, 31}, {23, 59, 59}, "74 99 12 31 00 00 00");
    row("2009", {2009, 1, 2}, {1, 1, 1}, "74 09 01 02 00 00 00");
    row("2000", {2000, 1, 2}, {1, 1, 1}, "74 00 01 02 00 00 00");
}

void TestCommandBuilder::SetsTheCalibrationDateWithoutATime()
{
    QFETCH(const QDateTime, date);
    QFETCH(const QByteArray, frame);
    const QByteArray built = Owned(_builder.CreateSetCalibrationDateTimeFrame(date));
    QCOMPARE(built.size(), 9);
    QCOMPARE(built, frame);
}

void TestCommandBuilder::SendsADateOfAnyTimeZoneAsItStands()
{
    const QByteArray frame = WithChecksum(QByteArray::fromHex("72 24 03 07 23 05 09"));
    const QDate date(2024, 3, 7);
    const QTime time(23, 5, 9);
    QCOMPARE(Owned(_builder.CreateSetCurrentDateTimeFrame(QDateTime(date, time, Qt::UTC))), frame);
    QCOMPARE(
        Owned(_builder.CreateSetCurrentDateTimeFrame(QDateTime(date, time, Qt::OffsetFromUTC, 5 * 3600))),
        frame);
    QCOMPARE(
        Owned(_builder.CreateSetCurrentDateTimeFrame(QDateTime(date, time, Qt::OffsetFromUTC, -5 * 3600))),
        frame);
}

void TestCommandBuilder::LogsTheDatesThatItSets()
{
    const QDateTime date(QDate(2024, 3, 7), QTime(14, 5, 9));
    const LogCapture log;
    Owned(_builder.CreateSetCurrentDateTimeFrame(date));
    Owned(_builder.CreateSetCalibrationDateTimeFrame(date));
    const QList<LogCapture::Message> messages = log.Messages();
    QCOMPARE(messages.size(), 2);
    for (const LogCapture::Message& message : messages) {
        QCOMPARE(message.type, QtWarningMsg);
        QCOMPARE(message.category, QByteArray("default"));
    }
    QCOMPARE(messages.at(0).text, QStringLiteral("Setting current date to: 07/03/2024 14:05:09"));
    QCOMPARE(messages.at(1).text, QStringLiteral("Setting calibration date to: 07/03/2024 14:05:09"));
}

void TestCommandBuilder::LogsNothingElse()
{
    Vesmar::RPESettings settings;
    const LogCapture log;
    Owned(_builder.CreatePrepareMeasurementFrame(settings));
    Owned(_builder.CreateChangeTesterModeFrame(OperationMode::Normal));
    Owned(_builder.CreateProgramFlashSectorFrame("sector"));
    Owned(_builder.CreateFinishUpdateFrame("image"));
    QCOMPARE(log.Texts(), QStringList());
}

void TestCommandBuilder::EveryCreatedFrameIsANewOne()
{
    const std::unique_ptr<QByteArray> first(_builder.CreateChangeTesterModeFrame(OperationMode::Normal));
    const std::unique_ptr<QByteArray> second(_builder.CreateChangeTesterModeFrame(OperationMode::Normal));
    QVERIFY(first.get() != second.get());
    QCOMPARE(*first, *second);
}

QTEST_APPLESS_MAIN(TestCommandBuilder)
#include "tst_commandbuilder.moc"
