#include <array>
#include <memory>

#include <QtTest>

#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>

#include "context/replaceowned.h"
#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/crc16.h"
#include "support/logcapture.h"
#include "unit/states/celllog.h"

using Vesmar::Error;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::Notifible;
using Vesmar::ResponseParser;
using Vesmar::StateMachineContext;

namespace
{

constexpr float NoValue = 3.4028235e38F;
/// What no parser writes.
constexpr Error Untouched = Error(77);

QByteArray Hex(const char* hex)
{
    return QByteArray::fromHex(hex);
}

/// A line of the log on one line and with single blanks.
QString Line(const QString& text)
{
    return QString(text).remove(QLatin1Char('"')).simplified();
}

} // namespace

/// The answers of an instrument that runs a residual-current device test. The frames come without their
/// checksum where it does not matter: no parser looks at it.
class TestRCDResponses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void StatusFillsItsCells_data();
    void StatusFillsItsCells();
    void StatusNibblesBecomeErrors_data();
    void StatusNibblesBecomeErrors();
    void StatusStoresEveryFunctionState();
    void StatusWritesTheFunctionBeforeItsState();
    void StatusIsAnnouncedOnceAlone();
    void ShortStatusHasError520AndState0();
    void StatusWithTheErrorElsewhereLeavesErrorCodeAlone();
    void ShortStatusWithTheErrorElsewhereHasError520();
    void OtherStatusGoesToTheOrdinaryParser_data();
    void OtherStatusGoesToTheOrdinaryParser();
    void OtherStatusOfAWrongLengthIsRefused_data();
    void OtherStatusOfAWrongLengthIsRefused();
    void Function27IsAnRCDStatusForTheParserOfFourBitsAlone();
    void StatusMayBeLongerThanItsFrame();
    void StatusWritesOneLine();
    void ShortStatusWritesNibble0();
    void StatusWithTheErrorElsewhereWritesOneLine();
    void OtherStatusIsWarnedOfByTheFirstParserAlone();

    void UbReResultIsPublished();
    void UbReResultsAreReadAsTheyStand_data();
    void UbReResultsAreReadAsTheyStand();
    void ShortUbReResultCountsMissingBytesAsZero_data();
    void ShortUbReResultCountsMissingBytesAsZero();
    void UbReResultNeedsRCDSettings_data();
    void UbReResultNeedsRCDSettings();
    void UbReResultWritesOneLine();

    void IaTaReadingsAreFixedPointNumbers_data();
    void IaTaReadingsAreFixedPointNumbers();
    void IaTaResultIsThatOfTheFunction();
    void IaTaResultTakesReFromTheSettings();
    void IaTaResultOfAnotherFunctionPublishesNothing_data();
    void IaTaResultOfAnotherFunctionPublishesNothing();
    void IaTaResultOfForeignSettingsHasNoRe();
    void IaTaResultWritesOneLine();
    void IaTaResultWithoutReadingsWritesThatToo();

    void ResultsReplaceAndDeleteTheOnesBefore();
    void ResultsAreCompleteWhenTheyArePublished();

    void ObjectCheckHasAnErrorForEveryCode_data();
    void ObjectCheckHasAnErrorForEveryCode();
    void ObjectCheckLooksAtItsFirstByteAlone();
    void ObjectCheckWithoutBytesIsClean();
    void ObjectCheckIntoTheCellIsAlwaysFalse();
    void ObjectCheckWritesOneDebugLine_data();
    void ObjectCheckWritesOneDebugLine();

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
        Vesmar::ReplaceOwned(_context->TestSettings, settings, nullptr);
    }
    template <typename Results>
    const Results* Published() const
    {
        return dynamic_cast<const Results*>(_context->TestResults.Get());
    }

    Vesmar::CRC16 _crc16{nullptr};
    const ResponseParser _parser{&_crc16, nullptr};
    std::unique_ptr<StateMachineContext> _context;
    std::unique_ptr<CellLog> _cells;
};

void TestRCDResponses::init()
{
    _context = std::make_unique<StateMachineContext>(&_crc16, nullptr, nullptr, nullptr, nullptr);
    _cells = std::make_unique<CellLog>(*_context);
}

void TestRCDResponses::cleanup()
{
    _context.reset();
    _cells.reset();
}

void TestRCDResponses::StatusFillsItsCells_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<bool>("newMeasurement");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("functionState");
    QTest::addColumn<int>("error");
    QTest::newRow("RCD, new") << Hex("8A F7 AB 6B") << true << 0 << 10 << 7 << 15;
    QTest::newRow("RCD, error") << Hex("8A 37 E7 B2") << true << 0 << 10 << 7 << 523;
    QTest::newRow("RCD, not new") << Hex("0A F4 50 40") << false << 0 << 10 << 4 << 15;
    QTest::newRow("RCD IEC") << Hex("0B F9 CC A2") << false << 0 << 11 << 9 << 15;
    QTest::newRow("RCD IEC, error") << Hex("0B 59 26 17") << false << 0 << 11 << 9 << 525;
    QTest::newRow("calibration mode") << Hex("2A F0") << false << 1 << 10 << 0 << 15;
    QTest::newRow("mode 2") << Hex("4B F0") << false << 2 << 11 << 0 << 15;
    QTest::newRow("update mode, new") << Hex("EA 0F") << true << 3 << 10 << 15 << 520;
}

void TestRCDResponses::StatusFillsItsCells()
{
    QFETCH(const QByteArray, data);
    QFETCH(const int, error);
    const auto compareCells = [this] {
        QTEST(_context->NewMeasurement.Get(), "newMeasurement");
        QTEST(static_cast<int>(_context->TesterMode.Get()), "mode");
        QTEST(static_cast<int>(_context->CurrentMeasurementType.Get()), "function");
        QTEST(static_cast<int>(_context->MeasurementFunctionStatus.Get()), "functionState");
        QCOMPARE(static_cast<int>(_context->StartTestStatus.Get()), -1);
    };
    QVERIFY(Parse(data));
    compareCells();
    QCOMPARE(static_cast<int>(_context->ErrorCode.Get()), error);

    cleanup();
    init();
    Error elsewhere = Untouched;
    QVERIFY(Parse(data, &elsewhere));
    compareCells();
    QCOMPARE(static_cast<int>(elsewhere), error);
    QCOMPARE(_context->ErrorCode.Get(), Error::NoErrors);
}

void TestRCDResponses::StatusNibblesBecomeErrors_data()
{
    QTest::addColumn<int>("nibble");
    QTest::addColumn<int>("error");
    for (int nibble = 0; nibble < 15; ++nibble) {
        QTest::addRow("%d", nibble) << nibble << 520 + nibble;
    }
    QTest::newRow("15") << 15 << 15;
}

void TestRCDResponses::StatusNibblesBecomeErrors()
{
    QFETCH(const int, nibble);
    QFETCH(const int, error);
    const QByteArray data = QByteArray(1, '\x0A') + static_cast<char>(nibble << 4 | 2);
    _context->ErrorCode.Set(Untouched);
    QVERIFY(Parse(data));
    QCOMPARE(static_cast<int>(_context->ErrorCode.Get()), error);
    Error elsewhere = Untouched;
    QVERIFY(Parse(data, &elsewhere));
    QCOMPARE(static_cast<int>(elsewhere), error);
}

void TestRCDResponses::StatusStoresEveryFunctionState()
{
    for (int state = 0; state < 16; ++state) {
        QVERIFY(Parse(QByteArray(1, '\x0A') + static_cast<char>(0xF0 | state)));
        QCOMPARE(static_cast<int>(_context->MeasurementFunctionStatus.Get()), state);
    }
}

void TestRCDResponses::StatusWritesTheFunctionBeforeItsState()
{
    QVERIFY(Parse(Hex("AB 37")));
    QCOMPARE(_cells->Changes().join(QLatin1Char(' ')),
             QStringLiteral("NewMeasurement=1 TesterMode=1 CurrentMeasurementType=11 "
                            "MeasurementFunctionStatus=7 ErrorCode=523"));
}

void TestRCDResponses::StatusIsAnnouncedOnceAlone()
{
    Error error = Untouched;
    QVERIFY(Parse(Hex("8A 37")));
    _cells->Clear();
    QVERIFY(Parse(Hex("8A 37")));
    QVERIFY(Parse(Hex("8A 47"), &error));
    QCOMPARE(_cells->Changes(), QStringList());
    QVERIFY(Parse(Hex("8A 47")));
    QCOMPARE(_cells->Changes(), QStringList(QStringLiteral("ErrorCode=524")));
}

void TestRCDResponses::ShortStatusHasError520AndState0()
{
    QVERIFY(Parse(Hex("0A F7")));
    QVERIFY(Parse(Hex("0A")));
    QCOMPARE(_context->ErrorCode.Get(), Error::RCDDeviceError0);
    QCOMPARE(static_cast<int>(_context->MeasurementFunctionStatus.Get()), 0);
    QCOMPARE(_context->CurrentMeasurementType.Get(), MeasurementType::RCD);
}

void TestRCDResponses::StatusWithTheErrorElsewhereLeavesErrorCodeAlone()
{
    _context->ErrorCode.Set(Error::StartFailed);
    _cells->Clear();
    Error error = Untouched;
    QVERIFY(Parse(Hex("8A 37"), &error));
    QCOMPARE(error, Error::RCDDeviceError3);
    QVERIFY(Parse(Hex("8A F7"), &error));
    QCOMPARE(error, Error::NoErrors);
    QCOMPARE(_cells->Changes().filter(QStringLiteral("ErrorCode")), QStringList());
}

void TestRCDResponses::ShortStatusWithTheErrorElsewhereHasError520()
{
    Error error = Untouched;
    QVERIFY(Parse(Hex("0B F7"), &error));
    QVERIFY(Parse(Hex("0B"), &error));
    QCOMPARE(error, Error::RCDDeviceError0);
    QCOMPARE(static_cast<int>(_context->MeasurementFunctionStatus.Get()), 0);
    QCOMPARE(_context->ErrorCode.Get(), Error::NoErrors);
}

void TestRCDResponses::OtherStatusGoesToTheOrdinaryParser_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("changes");
    const auto row = [](const char* name, const char* hex, const char* changes) {
        QTest::newRow(name) << Hex(hex) << QString::fromLatin1(changes);
    };
    row("no function", "80 3E 09 1A",
        "NewMeasurement=1 CurrentMeasurementType=0 ErrorCode=3 StartTestStatus=14");
    row("function 9", "09 57 C9 D4", "CurrentMeasurementType=9 ErrorCode=5 MeasurementFunctionStatus=7");
    row("function 12", "0C 57 3C 2B", "CurrentMeasurementType=12 ErrorCode=5 MeasurementFunctionStatus=7");
    row("function 2, mode 1", "22 F4 00 00",
        "TesterMode=1 CurrentMeasurementType=2 MeasurementFunctionStatus=4");
}

void TestRCDResponses::OtherStatusGoesToTheOrdinaryParser()
{
    QFETCH(const QByteArray, data);
    QFETCH(const QString, changes);
    QVERIFY(Parse(data));
    QCOMPARE(_cells->Changes().join(QLatin1Char(' ')), changes);

    cleanup();
    init();
    Error error = Untouched;
    QVERIFY(Parse(data, &error));
    QCOMPARE(_cells->Changes().join(QLatin1Char(' ')), changes);
    QCOMPARE(error, Untouched);
}

void TestRCDResponses::OtherStatusOfAWrongLengthIsRefused_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a byte") << Hex("01");
    QTest::newRow("three bytes") << Hex("01 F7 00");
    QTest::newRow("five bytes") << Hex("01 F7 00 00 00");
}

void TestRCDResponses::OtherStatusOfAWrongLengthIsRefused()
{
    QFETCH(const QByteArray, data);
    Error error = Untouched;
    QVERIFY(!Parse(data));
    QVERIFY(!Parse(data, &error));
    QCOMPARE(error, Untouched);
    QCOMPARE(_cells->Changes(), QStringList());
}

void TestRCDResponses::Function27IsAnRCDStatusForTheParserOfFourBitsAlone()
{
    QVERIFY(Parse(Hex("1B 37 00 00")));
    QCOMPARE(static_cast<int>(_context->CurrentMeasurementType.Get()), 27);
    QCOMPARE(static_cast<int>(_context->ErrorCode.Get()), 3);

    Error error = Untouched;
    QVERIFY(Parse(Hex("1B 37 00 00"), &error));
    QCOMPARE(_context->CurrentMeasurementType.Get(), MeasurementType::RCDIEC);
    QCOMPARE(error, Error::RCDDeviceError3);
    QVERIFY(Parse(Hex("1A F4"), &error)); // Too short for an ordinary status.
    QCOMPARE(_context->CurrentMeasurementType.Get(), MeasurementType::RCD);
    QVERIFY(!Parse(Hex("1A F4")));
}

void TestRCDResponses::StatusMayBeLongerThanItsFrame()
{
    QVERIFY(Parse(Hex("8A 37") + QByteArray(24, '\x11')));
    QCOMPARE(_context->ErrorCode.Get(), Error::RCDDeviceError3);
}

void TestRCDResponses::StatusWritesOneLine()
{
    const LogCapture log;
    QVERIFY(Parse(Hex("AA 37")));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    QCOMPARE(log.Texts().first(),
             QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context)\nDeviceMode: 1 "
                            "MeasurementType: 10 Error: 3 MeasurementFunctionStatus: 7 NewMeasurement: 1"));
}

void TestRCDResponses::ShortStatusWritesNibble0()
{
    Error error = Untouched;
    const LogCapture log;
    QVERIFY(Parse(Hex("0A")));
    QVERIFY(Parse(Hex("0A"), &error));
    QCOMPARE(log.Texts().first(),
             QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context)\nDeviceMode: 0 "
                            "MeasurementType: 10 Error: 0 MeasurementFunctionStatus: 0 NewMeasurement: 0"));
    QCOMPARE(log.Texts().last(),
             QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context, error): DeviceMode: 0 "
                            "MeasurementType: 10 Error: 0 ProcessStatus: 0 NewMeasurement: 0"));
}

void TestRCDResponses::StatusWithTheErrorElsewhereWritesOneLine()
{
    Error error = Untouched;
    const LogCapture log;
    QVERIFY(Parse(Hex("8B F4"), &error));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(log.Texts().first(),
             QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context, error): DeviceMode: 0 "
                            "MeasurementType: 11 Error: 15 ProcessStatus: 4 NewMeasurement: 1"));
}

void TestRCDResponses::OtherStatusIsWarnedOfByTheFirstParserAlone()
{
    const QString warning =
        QStringLiteral("ResponseParser::ParseRCDStatusResponse(data, context) !RCD !RCDIEC");
    LogCapture log;
    QVERIFY(Parse(Hex("01 F7 00 00")));
    QCOMPARE(Line(log.Texts().value(0)), warning);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QVERIFY(log.Texts().value(1).startsWith(QStringLiteral("DeviceMode:")));
    QCOMPARE(log.Texts().size(), 2);

    log.Clear();
    QVERIFY(!Parse({}));
    QCOMPARE(log.Texts().size(), 1);
    QCOMPARE(Line(log.Texts().first()), warning);

    log.Clear();
    Error error = Untouched;
    QVERIFY(Parse(Hex("01 F7 00 00"), &error));
    QVERIFY(!Parse({}, &error));
    QCOMPARE(log.Texts().size(), 1);
    QVERIFY(log.Texts().first().startsWith(QStringLiteral("DeviceMode:")));
}

void TestRCDResponses::UbReResultIsPublished()
{
    SetSettings(new Vesmar::RCDSettings);
    QVERIFY(ParseUbRe(Hex("00 00 20 C0 10 27 A8 61") + QByteArray(18, '\x33')));
    const auto* results = Published<Vesmar::RCDResults>();
    QVERIFY(results != nullptr);
    QCOMPARE(results->GetMeasurementType(), MeasurementType::RCD);
    QCOMPARE(results->_re, -2.5F);
    QVERIFY(results->_ia == NoValue);
    QVERIFY(results->_ta == NoValue);
    QCOMPARE(results->_values, (std::array<float, 6>{-2.5F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F}));
    QVERIFY(results->parent() == nullptr);
}

void TestRCDResponses::UbReResultsAreReadAsTheyStand_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<float>("re");
    QTest::newRow("one half") << Hex("00 00 00 3F") << 0.5F;
    QTest::newRow("100") << Hex("00 00 C8 42") << 100.0F;
    QTest::newRow("zero") << Hex("00 00 00 00") << 0.0F;
    QTest::newRow("no value") << Hex("FF FF 7F 7F") << NoValue;
    QTest::newRow("the marker of Ia and Ta means nothing here") << Hex("EE EE EE 3E") << 0.466666639F;
}

void TestRCDResponses::UbReResultsAreReadAsTheyStand()
{
    QFETCH(const QByteArray, data);
    QFETCH(const float, re);
    SetSettings(new Vesmar::RCDSettings);
    QVERIFY(ParseUbRe(data + QByteArray(22, '\0')));
    QVERIFY(Published<Vesmar::RCDResults>()->_re == re);
}

void TestRCDResponses::ShortUbReResultCountsMissingBytesAsZero_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<float>("re");
    QTest::newRow("nothing") << QByteArray() << 0.0F;
    QTest::newRow("two bytes") << Hex("00 00") << 0.0F;
    QTest::newRow("three bytes") << Hex("01 00 80") << 1.17549449e-38F;
    QTest::newRow("four bytes") << Hex("00 00 80 3F") << 1.0F;
}

void TestRCDResponses::ShortUbReResultCountsMissingBytesAsZero()
{
    QFETCH(const QByteArray, data);
    QFETCH(const float, re);
    SetSettings(new Vesmar::RCDSettings);
    QVERIFY(ParseUbRe(data));
    QVERIFY(Published<Vesmar::RCDResults>()->_re == re);
}

void TestRCDResponses::UbReResultNeedsRCDSettings_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {-1, 0, 1, 9, 11, 97}) {
        QTest::addRow("type %d", type) << type;
    }
}

void TestRCDResponses::UbReResultNeedsRCDSettings()
{
    QFETCH(const int, type);
    SetSettings(new MeasurementSettings(static_cast<MeasurementType>(type), nullptr));
    _context->CurrentMeasurementType.Set(MeasurementType::RCD); // The settings decide, not the status.
    _cells->Clear();
    const MeasurementResults* before = _context->TestResults.Get();
    QVERIFY(!ParseUbRe(QByteArray(26, '\0')));
    QCOMPARE(_cells->Changes(), QStringList());
    QCOMPARE(_context->TestResults.Get(), before);
}

void TestRCDResponses::UbReResultWritesOneLine()
{
    SetSettings(new Vesmar::RCDSettings);
    const LogCapture log;
    QVERIFY(ParseUbRe(Hex("AB AA AA 3E")));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    QCOMPARE(Line(log.Texts().first()), QStringLiteral("Re: 0.333333"));
}

void TestRCDResponses::IaTaReadingsAreFixedPointNumbers_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<float>("ia");
    QTest::addColumn<float>("ta");
    const auto row = [](const char* name, const char* hex, float ia, float ta) {
        QTest::newRow(name) << Hex(hex) << ia << ta;
    };
    row("both", "00 00 00 00 10 27 A8 61", 1.0F, 2.5F);
    row("low bytes alone", "00 00 00 00 64 00 01 00", 0.01F, 0.0001F);
    row("bytes are unsigned", "00 00 00 00 FF FF 80 80", 6.5535F, 3.2896F);
    row("zero", "00 00 00 00 00 00 00 00", 0.0F, 0.0F);
    row("no Ta", "00 00 00 00 10 27 EE EE", 1.0F, NoValue);
    row("no Ia", "00 00 00 00 EE EE 10 27", NoValue, 1.0F);
    row("neither", "00 00 00 00 EE EE EE EE", NoValue, NoValue);
    row("low byte of a marker", "00 00 00 00 EE 00 EE 00", 0.0238F, 0.0238F);
    row("high byte of a marker", "00 00 00 00 00 EE 00 EE", 6.0928F, 6.0928F);
    row("marker across the readings", "00 00 00 00 00 EE EE 00", 6.0928F, 0.0238F);
    row("nothing", "", 0.0F, 0.0F);
    row("four bytes", "00 00 00 00", 0.0F, 0.0F);
    row("five bytes", "00 00 00 00 10", 0.0016F, 0.0F);
    row("five bytes, half a marker", "00 00 00 00 EE", 0.0238F, 0.0F);
    row("six bytes", "00 00 00 00 10 27", 1.0F, 0.0F);
    row("six bytes, a marker", "00 00 00 00 EE EE", NoValue, 0.0F);
    row("seven bytes", "00 00 00 00 10 27 A8", 1.0F, 0.0168F);
    row("seven bytes, half a marker", "00 00 00 00 10 27 EE", 1.0F, 0.0238F);
}

void TestRCDResponses::IaTaReadingsAreFixedPointNumbers()
{
    QFETCH(const QByteArray, data);
    QFETCH(const float, ia);
    QFETCH(const float, ta);
    _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC);
    QVERIFY(ParseIaTa(data));
    const auto* results = Published<Vesmar::RCDIECResults>();
    QVERIFY(results != nullptr);
    QCOMPARE(results->_ia, ia);
    QCOMPARE(results->_ta, ta);
    QCOMPARE(results->_values, (std::array<float, 6>{ia, ta, 0.0F, 0.0F, 0.0F, 0.0F}));
}

void TestRCDResponses::IaTaResultIsThatOfTheFunction()
{
    SetSettings(new Vesmar::RCDSettings);
    _context->CurrentMeasurementType.Set(MeasurementType::RCD);
    QVERIFY(ParseIaTa(QByteArray(26, '\0')));
    QVERIFY(Published<Vesmar::RCDResults>() != nullptr);
    QCOMPARE(_context->TestResults.Get()->GetMeasurementType(), MeasurementType::RCD);

    _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC); // The status decides, not the settings.
    QVERIFY(ParseIaTa(QByteArray(26, '\0')));
    QVERIFY(Published<Vesmar::RCDIECResults>() != nullptr);
    QCOMPARE(_context->TestResults.Get()->GetMeasurementType(), MeasurementType::RCDIEC);
    QVERIFY(_context->TestResults.Get()->parent() == nullptr);
}

void TestRCDResponses::IaTaResultTakesReFromTheSettings()
{
    auto* settings = new Vesmar::RCDSettings;
    settings->SetRe(12.5F);
    SetSettings(settings);
    _context->CurrentMeasurementType.Set(MeasurementType::RCD);
    QVERIFY(ParseIaTa(Hex("00 00 00 3F 10 27 A8 61")));
    const auto* results = Published<Vesmar::RCDResults>();
    QVERIFY(results != nullptr);
    QCOMPARE(results->_re, 12.5F);
    QCOMPARE(results->_ia, 1.0F);
    QCOMPARE(results->_ta, 2.5F);
    QCOMPARE(results->_values, (std::array<float, 6>{1.0F, 2.5F, 0.0F, 0.0F, 0.0F, 0.0F}));
}

void TestRCDResponses::IaTaResultOfAnotherFunctionPublishesNothing_data()
{
    QTest::addColumn<int>("function");
    for (const int function : {-1, 0, 1, 9, 12, 26, 27, 97}) {
        QTest::addRow("function %d", function) << function;
    }
}

void TestRCDResponses::IaTaResultOfAnotherFunctionPublishesNothing()
{
    QFETCH(const int, function);
    SetSettings(new Vesmar::RCDSettings);
    _context->CurrentMeasurementType.Set(static_cast<MeasurementType>(function));
    _cells->Clear();
    const MeasurementResults* before = _context->TestResults.Get();
    QVERIFY(!ParseIaTa(QByteArray(26, '\0')));
    QCOMPARE(_cells->Changes(), QStringList());
    QCOMPARE(_context->TestResults.Get(), before);
}

/// A status may name a test that the settings do not.
void TestRCDResponses::IaTaResultOfForeignSettingsHasNoRe()
{
    SetSettings(new Vesmar::RCDIECSettings);
    _context->CurrentMeasurementType.Set(MeasurementType::RCD);
    QVERIFY(ParseIaTa(Hex("00 00 00 3F 10 27 A8 61")));
    const auto* results = Published<Vesmar::RCDResults>();
    QVERIFY(results != nullptr);
    QVERIFY(results->_re == NoValue);
    QCOMPARE(results->_ia, 1.0F);
}

void TestRCDResponses::IaTaResultWritesOneLine()
{
    _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC);
    const LogCapture log;
    QVERIFY(ParseIaTa(Hex("00 00 00 00 10 27 A8 61")));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    QCOMPARE(Line(log.Texts().first()), QStringLiteral("Ia: 1 Ta: 2.5"));
}

void TestRCDResponses::IaTaResultWithoutReadingsWritesThatToo()
{
    _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC);
    const LogCapture log;
    QVERIFY(ParseIaTa(Hex("00 00 00 00 EE EE EE EE")));
    QCOMPARE(Line(log.Texts().first()), QStringLiteral("Ia: 3.40282e+38 Ta: 3.40282e+38"));
}

void TestRCDResponses::ResultsReplaceAndDeleteTheOnesBefore()
{
    SetSettings(new Vesmar::RCDSettings);
    _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC);
    QStringList events;
    connect(&_context->TestResults, &Notifible::ValueChanged, _context.get(),
            [&events] { events.append(QStringLiteral("published")); });
    const auto watch = [this, &events] {
        connect(_context->TestResults.Get(), &QObject::destroyed, this,
                [&events] { events.append(QStringLiteral("destroyed")); });
    };
    watch();
    QVERIFY(ParseUbRe(Hex("00 00 00 3F")));
    watch();
    QVERIFY(ParseIaTa(Hex("00 00 00 00 10 27 A8 61")));
    QCOMPARE(events, (QStringList{QStringLiteral("published"), QStringLiteral("destroyed"),
                                  QStringLiteral("published"), QStringLiteral("destroyed")}));
}

void TestRCDResponses::ResultsAreCompleteWhenTheyArePublished()
{
    SetSettings(new Vesmar::RCDSettings);
    _context->CurrentMeasurementType.Set(MeasurementType::RCDIEC);
    std::array<float, 6> seen{};
    connect(&_context->TestResults, &Notifible::ValueChanged, _context.get(),
            [this, &seen] { seen = _context->TestResults.Get()->_values; });
    QVERIFY(ParseUbRe(Hex("00 00 00 3F")));
    QCOMPARE(seen[0], 0.5F);
    QVERIFY(ParseIaTa(Hex("00 00 00 00 10 27 A8 61")));
    QCOMPARE(seen[0], 1.0F);
    QCOMPARE(seen[1], 2.5F);
}

void TestRCDResponses::ObjectCheckHasAnErrorForEveryCode_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("error");
    const QMap<int, int> named = {{0, 15},  {2, 501}, {3, 502}, {4, 503},
                                  {7, 504}, {8, 505}, {9, 506}, {10, 507}};
    for (int code = 0; code < 256; ++code) {
        QTest::addRow("%d", code) << code << named.value(code, 500);
    }
}

void TestRCDResponses::ObjectCheckHasAnErrorForEveryCode()
{
    QFETCH(const int, code);
    QFETCH(const int, error);
    const QByteArray data(1, static_cast<char>(code));
    Error found = Untouched;
    QVERIFY(_parser.ParseRCDCheckObjectResponseError(data, &found));
    QCOMPARE(static_cast<int>(found), error);
    QCOMPARE(_cells->Changes(), QStringList());

    _context->ErrorCode.Set(Untouched);
    QVERIFY(!_parser.ParseRCDCheckObjectResponse(data, *_context));
    QCOMPARE(static_cast<int>(_context->ErrorCode.Get()), error);
}

void TestRCDResponses::ObjectCheckLooksAtItsFirstByteAlone()
{
    Error found = Untouched;
    QVERIFY(_parser.ParseRCDCheckObjectResponseError(Hex("00") + QByteArray(25, '\x03'), &found));
    QCOMPARE(found, Error::NoErrors);
    QVERIFY(_parser.ParseRCDCheckObjectResponseError(Hex("03") + QByteArray(25, '\0'), &found));
    QCOMPARE(found, Error::RCDCheckObject3);
}

void TestRCDResponses::ObjectCheckWithoutBytesIsClean()
{
    Error found = Untouched;
    QVERIFY(_parser.ParseRCDCheckObjectResponseError({}, &found));
    QCOMPARE(found, Error::NoErrors);
    _context->ErrorCode.Set(Error::RCDCheckObject3);
    QVERIFY(!_parser.ParseRCDCheckObjectResponse({}, *_context));
    QCOMPARE(_context->ErrorCode.Get(), Error::NoErrors);
}

void TestRCDResponses::ObjectCheckIntoTheCellIsAlwaysFalse()
{
    QVERIFY(!_parser.ParseRCDCheckObjectResponse(Hex("00"), *_context));
    QCOMPARE(_cells->Changes(), QStringList());
    QVERIFY(!_parser.ParseRCDCheckObjectResponse(Hex("0A"), *_context));
    QCOMPARE(_cells->Changes(), QStringList(QStringLiteral("ErrorCode=507")));
}

void TestRCDResponses::ObjectCheckWritesOneDebugLine_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("line");
    const QString text =
        QStringLiteral("ResponseParser::ParseRCDCheckObjectResponseError(data. errpr): SavedChkObjErr=");
    QTest::newRow("10") << Hex("0A") << text + QStringLiteral("10");
    QTest::newRow("255") << Hex("FF") << text + QStringLiteral("255");
    QTest::newRow("nothing") << QByteArray() << text + QStringLiteral("0");
}

void TestRCDResponses::ObjectCheckWritesOneDebugLine()
{
    QFETCH(const QByteArray, data);
    QFETCH(const QString, line);
    Error found = Untouched;
    const LogCapture log;
    QVERIFY(_parser.ParseRCDCheckObjectResponseError(data, &found));
    QCOMPARE(log.Messages().size(), 1);
    QCOMPARE(log.Messages().first().type, QtDebugMsg);
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    QCOMPARE(log.Texts().first().remove(QLatin1Char(' ')), QString(line).remove(QLatin1Char(' ')));
}

QTEST_GUILESS_MAIN(TestRCDResponses)
#include "tst_rcdresponses.moc"
