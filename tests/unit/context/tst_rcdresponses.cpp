#include <array>

#include <QtTest>

#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>

#include "context/replaceowned.h"
#include "support/logcapture.h"
#include "support/wire.h"
#include "unit/context/parsing.h"

using Vesmar::Error;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::Notifible;

namespace
{

constexpr float NoValue = 3.4028235e38F;
/// What no parser writes.
constexpr Error Untouched = Error(77);

/// The result of an Ia/Ta test: 0.5 where Re would be, Ia 1, Ta 2.5.
const QByteArray IaTaResult = Wire::Bytes("00 00 00 3F 10 27 A8 61");

} // namespace

/// What becomes of the answers of an instrument that runs a residual-current device test. The frames come
/// without their checksum: no parser looks at it.
class TestRCDResponses : public QObject, private Parsing
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Restart(); }

    void AStatusFillsItsCellsInOrder_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QStringList>("changes");
        QTest::addColumn<int>("error");
        const auto row = [](const char* name, const char* data, const char* changes, int error) {
            QTest::newRow(name) << Wire::Bytes(data) << Changes(changes) << error;
        };
        row("RCD with a reading", "8A F7 AB 6B",
            "NewMeasurement=1 CurrentMeasurementType=10 MeasurementFunctionStatus=7", 15);
        row("RCD IEC in mode 1, with an error", "AB 37",
            "NewMeasurement=1 TesterMode=1 CurrentMeasurementType=11 MeasurementFunctionStatus=7", 523);
        row("a byte alone", "0A", "CurrentMeasurementType=10 MeasurementFunctionStatus=0", 520);
        row("more bytes than a status has", "0B E9 00 00 00 00",
            "CurrentMeasurementType=11 MeasurementFunctionStatus=9", 534);
    }

    void AStatusFillsItsCellsInOrder()
    {
        QFETCH(const QByteArray, data);
        QFETCH(QStringList, changes);
        QFETCH(const int, error);
        Error elsewhere = Untouched;
        QVERIFY(Parse(data, &elsewhere));
        QCOMPARE(_cells->Changes(), changes);
        QCOMPARE(static_cast<int>(elsewhere), error);

        Restart();
        _context->ErrorCode.Set(Untouched);
        _cells->Clear();
        QVERIFY(Parse(data));
        QCOMPARE(_cells->Changes(), changes << QStringLiteral("ErrorCode=%1").arg(error));
    }

    void TheSameStatusTwiceAnnouncesNothing()
    {
        Error error = Untouched;
        QVERIFY(Parse(Wire::Bytes("8A 37")));
        _cells->Clear();
        QVERIFY(Parse(Wire::Bytes("8A 37")));
        QVERIFY(Parse(Wire::Bytes("8A 47"), &error));
        QCOMPARE(_cells->Changes(), QStringList());
        QVERIFY(Parse(Wire::Bytes("8A 47")));
        QCOMPARE(_cells->Changes(), Changes("ErrorCode=524"));
    }

    void AStatusWithTheErrorElsewhereLeavesErrorCodeAlone()
    {
        _context->ErrorCode.Set(Error::StartFailed);
        Error error = Untouched;
        QVERIFY(Parse(Wire::Bytes("8A 37"), &error));
        QCOMPARE(error, Error::RCDDeviceError3);
        QVERIFY(Parse(Wire::Bytes("8A F7"), &error));
        QCOMPARE(error, Error::NoErrors);
        QCOMPARE(_context->ErrorCode.Get(), Error::StartFailed);
    }

    void AnotherStatusGoesToTheOrdinaryParser_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QStringList>("changes");
        const auto row = [](const char* name, const char* data, const char* changes) {
            QTest::newRow(name) << Wire::Bytes(data) << Changes(changes);
        };
        row("no function", "80 3E 09 1A",
            "NewMeasurement=1 CurrentMeasurementType=0 ErrorCode=3 StartTestStatus=14");
        row("function 9", "09 57 C9 D4", "CurrentMeasurementType=9 ErrorCode=5 MeasurementFunctionStatus=7");
        row("function 12", "0C 57 3C 2B",
            "CurrentMeasurementType=12 ErrorCode=5 MeasurementFunctionStatus=7");
    }

    void AnotherStatusGoesToTheOrdinaryParser()
    {
        QFETCH(const QByteArray, data);
        QFETCH(const QStringList, changes);
        QVERIFY(Parse(data));
        QCOMPARE(_cells->Changes(), changes);

        Restart();
        Error error = Untouched;
        QVERIFY(Parse(data, &error));
        QCOMPARE(_cells->Changes(), changes);
        QCOMPARE(error, Untouched);
    }

    void AnotherStatusOfAWrongLengthIsRefused_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a byte") << Wire::Bytes("01");
        QTest::newRow("three bytes") << Wire::Bytes("01 F7 00");
        QTest::newRow("five bytes") << Wire::Bytes("01 F7 00 00 00");
    }

    void AnotherStatusOfAWrongLengthIsRefused()
    {
        QFETCH(const QByteArray, data);
        Error error = Untouched;
        QVERIFY(!Parse(data));
        QVERIFY(!Parse(data, &error));
        QCOMPARE(error, Untouched);
        QCOMPARE(_cells->Changes(), QStringList());
    }

    void Function27IsAnRCDStatusForTheParserOfFourBitsAlone()
    {
        QVERIFY(Parse(Wire::Bytes("1B 37 00 00")));
        QCOMPARE(static_cast<int>(_context->CurrentMeasurementType.Get()), 27);
        QCOMPARE(static_cast<int>(_context->ErrorCode.Get()), 3);

        Error error = Untouched;
        QVERIFY(Parse(Wire::Bytes("1B 37 00 00"), &error));
        QCOMPARE(_context->CurrentMeasurementType.Get(), MeasurementType::RCDIEC);
        QCOMPARE(error, Error::RCDDeviceError3);
        QVERIFY(Parse(Wire::Bytes("1A F4"), &error)); // Too short for an ordinary status.
        QCOMPARE(_context->CurrentMeasurementType.Get(), MeasurementType::RCD);
        QVERIFY(!Parse(Wire::Bytes("1A F4")));
    }

    void AStatusWritesOneLine_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("values");
        QTest::newRow("a status") << Wire::Bytes("AB 37")
                                  << QStringLiteral("DeviceMode: 1 MeasurementType: 11 Error: 3 "
                                                    "%1Status: 7 NewMeasurement: 1");
        QTest::newRow("no error") << Wire::Bytes("0A F4")
                                  << QStringLiteral("DeviceMode: 0 MeasurementType: 10 Error: 15 "
                                                    "%1Status: 4 NewMeasurement: 0");
        QTest::newRow("a byte alone") << Wire::Bytes("0A")
                                      << QStringLiteral("DeviceMode: 0 MeasurementType: 10 Error: 0 "
                                                        "%1Status: 0 NewMeasurement: 0");
    }

    void AStatusWritesOneLine()
    {
        QFETCH(const QByteArray, data);
        QFETCH(const QString, values);
        Error error = Untouched;
        const LogCapture log;
        QVERIFY(Parse(data));
        QVERIFY(Parse(data, &error));
        QCOMPARE(
            log.Texts(),
            (QStringList{QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context)\n") +
                             values.arg(QStringLiteral("MeasurementFunction")),
                         QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context, error): ") +
                             values.arg(QStringLiteral("Process"))}));
        for (const LogCapture::Message& message : log.Messages()) {
            QCOMPARE(message.type, QtWarningMsg);
            QCOMPARE(message.category, QByteArray("default"));
        }
    }

    void TheFirstParserAloneWarnsOfAnotherStatus()
    {
        const QString warning =
            QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context) !RCD !RCDIEC");
        const QString line =
            QStringLiteral("DeviceMode: 0 MeasurementType: 1 Error: 15 ProcessStatus: 7 NewMeasurement: 0");
        LogCapture log;
        QVERIFY(Parse(Wire::Bytes("01 F7 00 00")));
        QVERIFY(!Parse({}));
        QCOMPARE(log.Texts(), (QStringList{warning, line, warning}));
        QCOMPARE(log.Messages().first().type, QtWarningMsg);

        log.Clear();
        Error error = Untouched;
        QVERIFY(Parse(Wire::Bytes("01 F7 00 00"), &error));
        QVERIFY(!Parse({}, &error));
        QCOMPARE(log.Texts(), QStringList(line));
    }

    void AUbReResultIsPublished()
    {
        SetSettings(new Vesmar::RCDSettings);
        QVERIFY(ParseUbRe(Wire::Bytes("00 00 20 C0 10 27 A8 61") + QByteArray(18, '\x33')));
        const auto* results = Published<Vesmar::RCDResults>();
        QVERIFY(results != nullptr);
        QCOMPARE(results->GetMeasurementType(), MeasurementType::RCD);
        QCOMPARE(results->_re, -2.5F);
        QVERIFY(results->_ia == NoValue);
        QVERIFY(results->_ta == NoValue);
        QCOMPARE(results->_values, (std::array<float, 6>{-2.5F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F}));
        QVERIFY(results->parent() == nullptr);
    }

    void AUbReResultNeedsRCDSettings()
    {
        _context->CurrentMeasurementType.Set(MeasurementType::RCD); // The settings decide, not the status.
        for (const int type : {-1, 0, 1, 9, 11, 97}) {
            SetSettings(new MeasurementSettings(static_cast<MeasurementType>(type), nullptr));
            _cells->Clear();
            QVERIFY(!ParseUbRe(QByteArray(26, '\0')));
            QCOMPARE(_cells->Changes(), QStringList());
        }
    }

    void AnIaTaResultIsThatOfTheFunction()
    {
        SetSettings(new Vesmar::RCDSettings);
        _context->CurrentMeasurementType.Set(
            MeasurementType::RCDIEC); // The status decides, not the settings.
        QVERIFY(ParseIaTa(IaTaResult));
        const auto* results = Published<Vesmar::RCDIECResults>();
        QVERIFY(results != nullptr);
        QCOMPARE(results->GetMeasurementType(), MeasurementType::RCDIEC);
        QCOMPARE(results->_ia, 1.0F);
        QCOMPARE(results->_ta, 2.5F);
        QCOMPARE(results->_values, (std::array<float, 6>{1.0F, 2.5F, 0.0F, 0.0F, 0.0F, 0.0F}));
        QVERIFY(results->parent() == nullptr);
    }

    /// A status may name a test that the settings do not, or there are none; then there is no Re.
    void AnIaTaResultHasReFromTheSettings()
    {
        auto* settings = new Vesmar::RCDSettings;
        settings->SetRe(12.5F);
        SetSettings(settings);
        _context->CurrentMeasurementType.Set(MeasurementType::RCD);
        QVERIFY(ParseIaTa(IaTaResult));
        const auto* results = Published<Vesmar::RCDResults>();
        QVERIFY(results != nullptr);
        QCOMPARE(results->_re, 12.5F);
        QCOMPARE(results->_ia, 1.0F);
        QCOMPARE(results->_ta, 2.5F);
        QCOMPARE(results->_values, (std::array<float, 6>{1.0F, 2.5F, 0.0F, 0.0F, 0.0F, 0.0F}));

        for (MeasurementSettings* others : {static_cast<MeasurementSettings*>(new Vesmar::RCDIECSettings),
                                            static_cast<MeasurementSettings*>(nullptr)}) {
            SetSettings(others);
            QVERIFY(ParseIaTa(IaTaResult));
            QVERIFY(Published<Vesmar::RCDResults>()->_re == NoValue);
        }
    }

    void AnIaTaResultOfAnotherFunctionPublishesNothing()
    {
        SetSettings(new Vesmar::RCDSettings);
        for (const int function : {-1, 0, 1, 9, 12, 26, 27, 97}) {
            _context->CurrentMeasurementType.Set(static_cast<MeasurementType>(function));
            _cells->Clear();
            QVERIFY(!ParseIaTa(IaTaResult));
            QCOMPARE(_cells->Changes(), QStringList());
        }
    }

    /// They are complete when they are published.
    void ResultsReplaceAndDeleteTheOnesBefore()
    {
        SetSettings(new Vesmar::RCDSettings);
        _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC);
        QStringList events;
        connect(&_context->TestResults, &Notifible::ValueChanged, _context.get(), [this, &events] {
            const std::array<float, 6> values = _context->TestResults.Get()->_values;
            events.append(QStringLiteral("published %1 %2").arg(values[0]).arg(values[1]));
        });
        const auto watch = [this, &events] {
            connect(_context->TestResults.Get(), &QObject::destroyed, this,
                    [&events] { events.append(QStringLiteral("destroyed")); });
        };
        watch();
        QVERIFY(ParseUbRe(IaTaResult));
        watch();
        QVERIFY(ParseIaTa(IaTaResult));
        QCOMPARE(events, (QStringList{QStringLiteral("published 0.5 0"), QStringLiteral("destroyed"),
                                      QStringLiteral("published 1 2.5"), QStringLiteral("destroyed")}));
    }

    void ResultsWriteOneLine()
    {
        SetSettings(new Vesmar::RCDSettings);
        _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC);
        const LogCapture log;
        QVERIFY(ParseUbRe(Wire::Bytes("AB AA AA 3E")));
        QVERIFY(ParseIaTa(IaTaResult));
        QVERIFY(ParseIaTa(Wire::Bytes("00 00 00 00 EE EE EE EE")));
        QCOMPARE(log.Texts(), (QStringList{QStringLiteral("Re: 0.333333"), QStringLiteral("Ia: 1 Ta: 2.5"),
                                           QStringLiteral("Ia: 3.40282e+38 Ta: 3.40282e+38")}));
        for (const LogCapture::Message& message : log.Messages()) {
            QCOMPARE(message.type, QtWarningMsg);
            QCOMPARE(message.category, QByteArray("default"));
        }
    }

    void AnObjectCheckGoesWhereItIsAskedTo_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("error");
        QTest::newRow("clean") << Wire::Bytes("00") << 0 << 15;
        QTest::newRow("code 10") << Wire::Bytes("0A") + QByteArray(25, '\0') << 10 << 507;
        QTest::newRow("code 255") << Wire::Bytes("FF") << 255 << 500;
        QTest::newRow("nothing") << QByteArray() << 0 << 15;
    }

    /// The one operation is always true, the other always false.
    void AnObjectCheckGoesWhereItIsAskedTo()
    {
        QFETCH(const QByteArray, data);
        QFETCH(const int, code);
        QFETCH(const int, error);
        _context->ErrorCode.Set(Untouched);
        _cells->Clear();
        Error elsewhere = Untouched;
        const LogCapture log;
        QVERIFY(_parser.ParseRCDCheckObjectResponseError(data, &elsewhere));
        QCOMPARE(static_cast<int>(elsewhere), error);
        QCOMPARE(_cells->Changes(), QStringList());
        QCOMPARE(log.Messages().size(), 1);
        QCOMPARE(log.Messages().first().type, QtDebugMsg);
        QCOMPARE(log.Messages().first().category, QByteArray("default"));
        QCOMPARE(
            log.Texts().first(),
            QStringLiteral("ResponseParser::ParseRCDCheckObjectResponseError(data. errpr): SavedChkObjErr=%1")
                .arg(code));

        QVERIFY(!_parser.ParseRCDCheckObjectResponse(data, *_context));
        QCOMPARE(_cells->Changes(), QStringList(QStringLiteral("ErrorCode=%1").arg(error)));
    }

private:
    bool Parse(const QByteArray& data) { return _parser.ParseRCDStatusResponse(data, *_context); }
    bool Parse(const QByteArray& data, Error* error)
    {
        return _parser.ParseRCDStatusResponse(data, *_context, error);
    }
    bool ParseUbRe(const QByteArray& data) { return _parser.ParseUbReMeasurementResponse(data, *_context); }
    bool ParseIaTa(const QByteArray& data) { return _parser.ParseIaTaMeasurementResponse(data, *_context); }
    void SetSettings(MeasurementSettings* settings)
    {
        Vesmar::ReplaceOwned(_context->TestSettings, settings);
    }
};

QTEST_GUILESS_MAIN(TestRCDResponses)
#include "tst_rcdresponses.moc"
