#include <functional>
#include <vector>

#include <QtTest>

#include <Vesmar/itresults.h>
#include <Vesmar/powerresults.h>

#include "support/logcapture.h"
#include "support/wire.h"
#include "unit/context/parsing.h"

using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;
using Vesmar::Notifible;

namespace
{

QByteArray Frame(const char* bytes)
{
    return WithChecksum(Wire::Bytes(bytes));
}

/// 1, -2.5, 3, 0.25, 1000 and 55, in order, little-endian.
const QByteArray SixValues = Frame("00 00 80 3F 00 00 20 C0 00 00 40 40 00 00 80 3E 00 00 7A 44 00 00 5C 42");
const QByteArray Version = WithChecksum("TTRA12987654105XYQ72016");

} // namespace

/// What becomes of the ordinary answers: the cells that change, the objects that are published, the log.
class TestResponseParser : public QObject, private Parsing
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Restart(); }

    void AStatusFillsItsCellsInOrder_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("no function") << Frame("00 F5")
                                     << Changes("CurrentMeasurementType=0 StartTestStatus=5");
        QTest::newRow("a function") << Frame("A3 52")
                                    << Changes("NewMeasurement=1 TesterMode=1 CurrentMeasurementType=3 "
                                               "ErrorCode=5 MeasurementFunctionStatus=2");
        QTest::newRow("an RCD test") << Frame("0B FC")
                                     << Changes("CurrentMeasurementType=11 MeasurementFunctionStatus=12");
        QTest::newRow("numbers without a name")
            << Frame("5E EC")
            << Changes("TesterMode=2 CurrentMeasurementType=30 ErrorCode=14 MeasurementFunctionStatus=12");
    }

    void AStatusFillsItsCellsInOrder()
    {
        QFETCH(const QByteArray, frame);
        QVERIFY(_parser.ParseStatusFrame(frame, *_context));
        QTEST(_cells->Changes(), "changes");
    }

    void TheSameStatusTwiceAnnouncesNothing()
    {
        QVERIFY(Parse("A3 52"));
        _cells->Clear();
        QVERIFY(Parse("A3 52"));
        QCOMPARE(_cells->Changes(), QStringList());
        QVERIFY(Parse("A3 53"));
        QCOMPARE(_cells->Changes(), Changes("MeasurementFunctionStatus=3"));
    }

    void AStatusWritesOneLine()
    {
        const LogCapture log;
        QVERIFY(Parse("A3 52"));
        QCOMPARE(
            OnlyLine(log),
            QStringLiteral("DeviceMode: 1 MeasurementType: 3 Error: 5 ProcessStatus: 2 NewMeasurement: 1"));
    }

    void AVersionReplacesAndDeletesTheRecord()
    {
        QStringList events;
        connect(_context->DeviceInformation.Get(), &QObject::destroyed, this,
                [&events] { events.append(QStringLiteral("destroyed")); });
        connect(&_context->DeviceInformation, &Notifible::ValueChanged, _context.get(),
                [this, &events] { events.append(_context->DeviceInformation.Get()->SerialNumber); });
        QVERIFY(_parser.ParseVersionFrame(Version, *_context));
        QCOMPARE(events, QStringList({QStringLiteral("987654"), QStringLiteral("destroyed")}));
        QVERIFY(_context->DeviceInformation.Get()->parent() == nullptr);

        QVERIFY(_parser.ParseVersionFrame(Version, *_context));
        QCOMPARE(events.last(), QStringLiteral("987654"));
        QCOMPARE(events.size(), 3);
    }

    void AVersionWritesOneLine()
    {
        const LogCapture log;
        QVERIFY(_parser.ParseVersionFrame(Version, *_context));
        QCOMPARE(OnlyLine(log), QStringLiteral("TTR A12 987654 1.05 XY Q7 2016"));
    }

    void TheFieldsOfAVersionAreWrittenAsLatin1()
    {
        const LogCapture log;
        QVERIFY(_parser.ParseVersionFrame(WithChecksum("\xC9\xFF\xA0\"%s\\\n\x1B\x7F\x80\x9F"
                                                       "105XYQ72016"),
                                          *_context));
        QCOMPARE(OnlyLine(log),
                 QString::fromLatin1("\xC9\xFF\xA0 \"%s \\\n\x1B\x7F\x80\x9F 1.05 XY Q7 2016"));
    }

    void EachDateGoesToItsOwnCell()
    {
        QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
        QCOMPARE(_cells->Changes(), QStringList(QStringLiteral("CurrentDateTime=2024-12-31 23:59:58")));
        _cells->Clear();
        QVERIFY(_parser.ParseCalibrationDateTimeFrame(Frame("23 06 15 08 30 00"), *_context));
        QCOMPARE(_cells->Changes(), QStringList(QStringLiteral("CalibrationDateTime=2023-06-15 08:30:00")));
    }

    void ADateKeepsTheTimeZoneOfItsCell()
    {
        _context->CurrentDateTime.Set(QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
        QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
        QCOMPARE(_context->CurrentDateTime.Get(), QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC));
        QCOMPARE(_context->CurrentDateTime.Get().timeSpec(), Qt::UTC);
        QVERIFY(_parser.ParseCalibrationDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
        QCOMPARE(_context->CalibrationDateTime.Get().timeSpec(), Qt::LocalTime);
    }

    void TheSameDateTwiceAnnouncesNothing()
    {
        QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
        _cells->Clear();
        QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
        QCOMPARE(_cells->Changes(), QStringList());
    }

    void ADateThatDoesNotExistIsStored()
    {
        QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 13 01 10 20 30"), *_context));
        QCOMPARE(_cells->Changes().size(), 1);
        QVERIFY(!_context->CurrentDateTime.Get().isValid());
        QVERIFY(!_context->CurrentDateTime.Get().date().isValid());
        QCOMPARE(_context->CurrentDateTime.Get().time(), QTime(10, 20, 30));
    }

    void EachDateWritesOneLine()
    {
        LogCapture log;
        QVERIFY(_parser.ParseCurrentDateTimeFrame(Frame("24 12 31 23 59 58"), *_context));
        QCOMPARE(OnlyLine(log), QStringLiteral("CurrentTime: 31/12/2024 23:59:58"));
        log.Clear();
        QVERIFY(_parser.ParseCalibrationDateTimeFrame(Frame("23 06 15 08 30 00"), *_context));
        QCOMPARE(OnlyLine(log), QStringLiteral("CalibrationTime: 15/06/2023 08:30:00"));
    }

    void ResultsArePublishedAndWriteOneLine_data()
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

    void ResultsArePublishedAndWriteOneLine()
    {
        QFETCH(const int, type);
        QFETCH(const QString, line);
        const LogCapture log;
        QVERIFY(ParseResults(static_cast<MeasurementType>(type)));
        QCOMPARE(OnlyLine(log), line);
        QCOMPARE(_cells->Changes(), Changes("TestResults"));
        const MeasurementResults* results = _context->TestResults.Get();
        QCOMPARE(static_cast<int>(results->GetMeasurementType()), type);
        QCOMPARE(results->_values, (std::array<float, 6>{1.0F, -2.5F, 3.0F, 0.25F, 1000.0F, 55.0F}));
        QVERIFY(results->parent() == nullptr);
    }

    void ReadingsAreWrittenWithSixSignificantFigures_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("figures");
        const auto row = [](const char* value, const char* figures) {
            QTest::newRow(figures) << Wire::Bytes(value) << QString::fromLatin1(figures);
        };
        row("38 B4 96 49", "1.23457e+06");
        row("AB AA AA 3E", "0.333333");
        row("00 00 00 00", "0");
        row("00 24 74 49", "1e+06");
        row("FF FF 7F 7F", "3.40282e+38");
        row("00 00 C0 7F", "nan");
        row("00 00 80 FF", "-inf");
    }

    void ReadingsAreWrittenWithSixSignificantFigures()
    {
        QFETCH(const QByteArray, value);
        QFETCH(const QString, figures);
        const LogCapture log;
        QVERIFY(_parser.ParseMeasurementResults(WithChecksum(value + QByteArray(20, '\0')), *_context,
                                                MeasurementType::IT));
        QCOMPARE(OnlyLine(log), QStringLiteral("Current: ") + figures);
    }

    void TypesWithoutResultsPublishNothing()
    {
        const LogCapture log;
        for (const int type : {-1, 10, 11, 12, 31, 96, 98}) {
            QVERIFY(ParseResults(static_cast<MeasurementType>(type)));
        }
        QCOMPARE(_cells->Changes(), QStringList());
        QCOMPARE(log.Texts(), QStringList());
    }

    void WithoutATypeTheLastStatusDecides()
    {
        _context->CurrentMeasurementType.Set(MeasurementType::IT);
        QVERIFY(_parser.ParseMeasurementResults(SixValues, *_context));
        QVERIFY(Published<Vesmar::ITResults>() != nullptr);

        QVERIFY(Parse("08 F7"));
        QVERIFY(_parser.ParseMeasurementResults(SixValues, *_context));
        QVERIFY(Published<Vesmar::POWERResults>() != nullptr);

        QVERIFY(!_parser.ParseMeasurementResults(Frame("00"), *_context));
    }

    void ResultsReplaceAndDeleteTheOnesBefore()
    {
        QVERIFY(ParseResults(MeasurementType::IT));
        QStringList events;
        connect(_context->TestResults.Get(), &QObject::destroyed, this,
                [&events] { events.append(QStringLiteral("destroyed")); });
        connect(&_context->TestResults, &Notifible::ValueChanged, _context.get(), [this, &events] {
            events.append(QString::number(static_cast<double>(_context->TestResults.Get()->_values[5])));
        });
        QVERIFY(ParseResults(MeasurementType::IT));
        QCOMPARE(events, QStringList({QStringLiteral("55"), QStringLiteral("destroyed")}));
    }

    void WrongLengthsChangeNothing_data()
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

    void WrongLengthsChangeNothing()
    {
        QFETCH(const int, parser);
        QFETCH(const int, length);
        const QByteArray frame(length, '\x11');
        const LogCapture log;
        const std::vector<std::function<bool()>> parsers = {
            [&] { return _parser.ParseStatusFrame(frame, *_context); },
            [&] { return _parser.ParseVersionFrame(frame, *_context); },
            [&] { return _parser.ParseCurrentDateTimeFrame(frame, *_context); },
            [&] { return _parser.ParseCalibrationDateTimeFrame(frame, *_context); },
            [&] { return _parser.ParseMeasurementResults(frame, *_context, MeasurementType::IT); },
        };
        QVERIFY(!parsers.at(static_cast<std::size_t>(parser))());
        QCOMPARE(_cells->Changes(), QStringList());
        QCOMPARE(log.Texts(), QStringList());
    }

    void TheChecksumIsNotTestedAgain()
    {
        QVERIFY(_parser.ParseStatusFrame(Wire::Bytes("A3 52 00 00"), *_context));
        QCOMPARE(static_cast<int>(_context->ErrorCode.Get()), 5);
        QVERIFY(
            _parser.ParseMeasurementResults(QByteArray(25, '\0') + '\x01', *_context, MeasurementType::IT));
        QVERIFY(Published<Vesmar::ITResults>() != nullptr);
    }

    void RCDResponsesAreToldByLengthAndChecksum_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<bool>("isResult");
        QTest::addColumn<bool>("isStatus");
        QTest::newRow("nothing") << QByteArray() << false << false;
        QTest::newRow("status") << Wire::Bytes("A3 52 9A 32") << false << true;
        QTest::newRow("damaged status") << Wire::Bytes("A3 52 9A 33") << false << false;
        QTest::newRow("short status") << Frame("A3") << false << false;
        QTest::newRow("long status") << Frame("A3 52 00") << false << false;
        QTest::newRow("result") << SixValues << true << false;
        QTest::newRow("result of zeros") << QByteArray(26, '\0') << true << false;
        QTest::newRow("damaged result") << QByteArray(25, '\0') + '\x01' << false << false;
        QTest::newRow("short result") << WithChecksum(QByteArray(23, '\x22')) << false << false;
        QTest::newRow("long result") << WithChecksum(QByteArray(25, '\x22')) << false << false;
    }

    void RCDResponsesAreToldByLengthAndChecksum()
    {
        QFETCH(const QByteArray, frame);
        QTEST(_parser.IsRCDMeasurementResultResponse(frame), "isResult");
        QTEST(_parser.IsRCDMeasurementStatusResponse(frame), "isStatus");
    }

private:
    bool Parse(const char* status) { return _parser.ParseStatusFrame(Frame(status), *_context); }
    bool ParseResults(MeasurementType type)
    {
        return _parser.ParseMeasurementResults(SixValues, *_context, type);
    }
    /// The text of the only message, which is a warning.
    static QString OnlyLine(const LogCapture& log)
    {
        const QList<LogCapture::Message> messages = log.Messages();
        const bool isOneWarning = messages.size() == 1 && messages.first().type == QtWarningMsg &&
                                  messages.first().category == "default";
        return isOneWarning ? messages.first().text : QStringLiteral("not one warning");
    }
};

QTEST_GUILESS_MAIN(TestResponseParser)
#include "tst_responseparser.moc"
