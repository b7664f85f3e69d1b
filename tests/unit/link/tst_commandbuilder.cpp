#include <memory>

#include <QtTest>

#include <Vesmar/rcdsettings.h>
#include <Vesmar/rpesettings.h>

#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "support/logcapture.h"
#include "support/wire.h"

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
        return new QByteArray(Wire::Bytes("00 FF 00 12"));
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
    void FixedFramesAreThreeBytesEach_data()
    {
        QTest::addColumn<Getter>("getter");
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("status") << &CommandBuilder::GetStatusFrame << Wire::ReadStatus;
        QTest::newRow("version") << &CommandBuilder::GetVersionFrame << Wire::ReadVersion;
        QTest::newRow("start") << &CommandBuilder::GetStartMeasurementFrame << Wire::StartMeasurement;
        QTest::newRow("stop") << &CommandBuilder::GetStopMeasurementFrame << Wire::StopMeasurement;
        QTest::newRow("measurement") << &CommandBuilder::GetReadMeasurementFrame << Wire::ReadMeasurement;
        QTest::newRow("current date") << &CommandBuilder::GetReadCurrentDateFrame << Wire::ReadCurrentDate;
        QTest::newRow("calibration date")
            << &CommandBuilder::GetReadCalibrationDateFrame << Wire::ReadCalibrationDate;
        QTest::newRow("update") << &CommandBuilder::GetInitializeUpdateFrame << Wire::InitializeUpdate;
    }

    void FixedFramesAreThreeBytesEach()
    {
        QFETCH(const Getter, getter);
        QFETCH(const QByteArray, frame);
        QCOMPARE(*(_builder.*getter)(), frame);
        QCOMPARE((_builder.*getter)(), (_builder.*getter)());
    }

    void ChangesTheTesterMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("normal") << 0 << Wire::ChangeToNormalMode;
        QTest::newRow("calibration") << 1 << Wire::ChangeToCalibrationMode;
        QTest::newRow("mode 2") << 2 << Wire::Bytes("78 02 B2 A1");
        QTest::newRow("update") << 3 << Wire::ChangeToUpdateMode;
        QTest::newRow("unnamed, low 8 bits") << 0x1FE << WithChecksum(Wire::Bytes("78 FE"));
    }

    void ChangesTheTesterMode()
    {
        QFETCH(const int, mode);
        QFETCH(const QByteArray, frame);
        QCOMPARE(Owned(_builder.CreateChangeTesterModeFrame(static_cast<OperationMode>(mode))), frame);
    }

    void ProgramsASectorUnchanged_data()
    {
        QTest::addColumn<QByteArray>("sector");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("zeros") << QByteArray(512, '\0');
        QTest::newRow("looks like a refusal") << Wire::Bytes("21 43 34");
        QTest::newRow("a whole sector") << QByteArray(511, '\xA5') + '\x01';
    }

    void ProgramsASectorUnchanged()
    {
        QFETCH(const QByteArray, sector);
        QCOMPARE(Owned(_builder.CreateProgramFlashSectorFrame(sector)), WithChecksum('\x46' + sector));
    }

    void FinishesAnUpdateWithTheLastTwoBytes_data()
    {
        QTest::addColumn<QByteArray>("confirmation");
        QTest::addColumn<QByteArray>("frame");
        const QByteArray frame = WithChecksum(Wire::Bytes("5A AB CD"));
        QTest::newRow("two bytes") << Wire::Bytes("AB CD") << frame;
        QTest::newRow("an image") << QByteArray(1024, '\x11') + Wire::Bytes("AB CD") << frame;
        QTest::newRow("zeros count") << Wire::Bytes("11 00 00") << WithChecksum(Wire::Bytes("5A 00 00"));
    }

    void FinishesAnUpdateWithTheLastTwoBytes()
    {
        QFETCH(const QByteArray, confirmation);
        QFETCH(const QByteArray, frame);
        QCOMPARE(Owned(_builder.CreateFinishUpdateFrame(confirmation)), frame);
    }

    void PreparesWithThePayloadOfTheSettings()
    {
        Vesmar::RPESettings rpe;
        QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(rpe)),
                 WithChecksum(Wire::Bytes("50 02 05 00 00 FF FF FF FF")));
        Vesmar::RCDSettings rcd;
        QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(rcd)),
                 WithChecksum(Wire::Bytes("50 0A 00 00 00 00 00 00 00")));
    }

    void AsksForThePayloadOnce()
    {
        CountingSettings settings;
        QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(settings)),
                 WithChecksum(Wire::Bytes("50 00 FF 00 12")));
        QCOMPARE(settings.Calls(), 1);
    }

    void PreparesWithoutDataForBareSettings()
    {
        Vesmar::MeasurementSettings settings(Vesmar::MeasurementType::RPE, nullptr);
        QCOMPARE(Owned(_builder.CreatePrepareMeasurementFrame(settings)), WithChecksum(Wire::Bytes("50")));
    }

    void SetsTheCurrentDateOfAnyTimeZoneAsItStands()
    {
        const QByteArray frame = WithChecksum(Wire::Bytes("72 24 03 07 23 05 09"));
        const QDate date(2024, 3, 7);
        const QTime time(23, 5, 9);
        for (const QDateTime& dateTime : {QDateTime(date, time), QDateTime(date, time, Qt::UTC),
                                          QDateTime(date, time, Qt::OffsetFromUTC, 5 * 3600),
                                          QDateTime(date, time, Qt::OffsetFromUTC, -5 * 3600)}) {
            QCOMPARE(Owned(_builder.CreateSetCurrentDateTimeFrame(dateTime)), frame);
        }
    }

    void SetsTheCalibrationDateWithoutATime()
    {
        const QByteArray frame = WithChecksum(Wire::Bytes("74 24 03 07 00 00 00"));
        for (const QTime time : {QTime(0, 0, 0), QTime(14, 5, 9), QTime(23, 59, 59)}) {
            QCOMPARE(Owned(_builder.CreateSetCalibrationDateTimeFrame(QDateTime(QDate(2024, 3, 7), time))),
                     frame);
        }
    }

    void LogsTheDatesThatItSets()
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

    void LogsNothingElse()
    {
        Vesmar::RPESettings settings;
        const LogCapture log;
        Owned(_builder.CreatePrepareMeasurementFrame(settings));
        Owned(_builder.CreateChangeTesterModeFrame(OperationMode::Normal));
        Owned(_builder.CreateProgramFlashSectorFrame("sector"));
        Owned(_builder.CreateFinishUpdateFrame("image"));
        QCOMPARE(log.Texts(), QStringList());
    }

    void EveryCreatedFrameIsANewOne()
    {
        const std::unique_ptr<QByteArray> first(_builder.CreateChangeTesterModeFrame(OperationMode::Normal));
        const std::unique_ptr<QByteArray> second(_builder.CreateChangeTesterModeFrame(OperationMode::Normal));
        QVERIFY(first.get() != second.get());
        QCOMPARE(*first, *second);
    }

private:
    Vesmar::CRC16 _crc16{nullptr};
    const CommandBuilder _builder{&_crc16, nullptr};
};

QTEST_APPLESS_MAIN(TestCommandBuilder)
#include "tst_commandbuilder.moc"
