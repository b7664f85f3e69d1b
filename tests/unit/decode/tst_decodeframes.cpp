#include <QtTest>

#include "decode/frames/answers.h"
#include "decode/frames/frame.h"
#include "decode/frames/requests.h"

using Decode::AnswerKind;
using Decode::FrameContext;
using Decode::FrameWords;
using Vesmar::Error;
using Vesmar::MeasurementType;

Q_DECLARE_METATYPE(Decode::AnswerKind)

namespace
{

QByteArray Hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

QStringList NamesOf(const FrameWords& words)
{
    QStringList names;
    for (const Decode::Field& field : words.fields) {
        names.append(QString::fromLatin1(field.name));
    }
    return names;
}

} // namespace

class TestDecodeFrames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AnAnswerHasAKind_data();
    void AnAnswerHasAKind();
    void ARequestInWords_data();
    void ARequestInWords();
    void AnAnswerInWords_data();
    void AnAnswerInWords();
    void TheStateDecidesOnTheErrorOfAStatus_data();
    void TheStateDecidesOnTheErrorOfAStatus();
    void AStatusHasFields();
    void ARequestHasFields();
    void AResultOfATestInWords_data();
    void AResultOfATestInWords();
};

void TestDecodeFrames::AnAnswerHasAKind_data()
{
    QTest::addColumn<AnswerKind>("kind");
    QTest::addColumn<bool>("isStatus");
    QTest::newRow("") << AnswerKind::None << false;
    QTest::newRow("00 F5 BA BF") << AnswerKind::Data << true;
    QTest::newRow("00 F0 00 C1 13") << AnswerKind::Data << false;
    QTest::newRow("06 C6 60") << AnswerKind::Acknowledge << false;
    QTest::newRow("06 C6 60 55") << AnswerKind::Acknowledge << false;
    QTest::newRow("21 43 34") << AnswerKind::Refusal << false;
    QTest::newRow("21 43 34 00") << AnswerKind::Refusal << false;
    for (const char* answer : {"00 F5 BA BE", "00 F5 BB BF", "00 F5 BF BA", "21 43", "06", "00 00"}) {
        QTest::newRow(answer) << AnswerKind::Damaged << false;
    }
}

void TestDecodeFrames::AnAnswerHasAKind()
{
    const QByteArray answer = Hex(QTest::currentDataTag());
    QTEST(Decode::KindOf(answer), "kind");
    QTEST(Decode::StatusIn(answer).has_value(), "isStatus");
}

void TestDecodeFrames::ARequestInWords_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char* digits, const char* name, const char* text, const char* problem = "") {
        QTest::newRow(digits) << Hex(digits) << QString::fromLatin1(name) << QString::fromLatin1(text)
                              << QString::fromLatin1(problem);
    };
    row("73f44e", "read status", "");
    row("57122a", "read version", "");
    row("52b77a", "read current date", "");
    row("54711a", "read calibration date", "");
    row("65033c", "read measurement", "");
    row("53966a", "start measurement", "");
    row("68aeed", "stop measurement", "");
    row("56333a", "initialize update", "");
    row("7800f081", "change mode", "Normal (0)");
    row("7801d191", "change mode", "Calibration (1)");
    row("780393b1", "change mode", "Update (3)");
    row("72241231235958e37d", "set current date", "2024-12-31 23:59:58");
    row("74260229000000f47d", "set calibration date", "no valid date");
    row("5aabcd6a50", "finish update", "confirmation abcd");
    row("4601027ebc", "program flash sector", "2 bytes");
    row("5002050400ffffffff4865", "prepare measurement", "RPE (2): time set, method 1, current 2");
    row("5002ff0000ffffffff3fbf", "prepare measurement",
        "RPE (2): time none, method 0 with any current, or 1, current 0 or 1 with method 1");
    row("5002050100ffffffff4926", "prepare measurement", "RPE (2): time set, method 2, current 0 or 1");
    row("5002050e00ffffffff4ae3", "prepare measurement", "RPE (2): time set, method 3, current 3");
    row("5002050300ffffffff09ad", "prepare measurement", "RPE (2): time set, code 3");
    row("5001ff0200ffffffff0afc", "prepare measurement", "IEC (97)");
    row("5003050900ffffffffd86c", "prepare measurement", "RISO (3): time set, voltage 1, mode 2");
    row("5003050c00ffffffffd92f", "prepare measurement", "RISO (3): time set, voltage 0, mode of code 12");
    row("5004050500ffffffff23a0", "prepare measurement", "ISUB (4): time set");
    row("5006050100ffffffff2429", "prepare measurement", "IDELTA (6): time set, mode 2, configuration 1");
    row("5007050400fffffffff62d", "prepare measurement", "IT (7): time set, configuration 2");
    row("5008ff0000ffffffff432e", "prepare measurement", "POWER (8): time none, mode 1");
    row("5005050500fffffffff0e7", "prepare measurement", "IPE (5): time set, mode 2, configuration 2");
    row("5009050200ffffffff063e", "prepare measurement", "HVTest (9): time set, mode 1");
    row("500a000000ffffffff9404", "prepare measurement",
        "RCD (10): mode 0, phase 0, quantity 0, current 0, type 0");
    row("500a004064000060407f24", "prepare measurement",
        "RCD (10): mode 1, phase 2, quantity 1, current 0, type 1, Re 3.5");
    row("500b0080c000000000103d", "prepare measurement",
        "RCDIEC (11): mode 3, phase 0, quantity 0, current 0, type 0 or 2, L and N swapped, unless the type "
        "says it");
    row("500c050500fffffffff9be", "prepare measurement", "", "there is no function 12");
    row("515151a41e", "unknown request", "", "there is no such request");
    row("73f44f", "read status", "", "the request's checksum is wrong");
    row("73", "read status", "", "the request's checksum is wrong");
    row("789fff", "change mode", "", "the request's length is wrong");
}

void TestDecodeFrames::ARequestInWords()
{
    QFETCH(const QByteArray, request);
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    QFETCH(const QString, problem);
    const FrameWords words = Decode::WordsOfRequest(request);
    QCOMPARE(Decode::NameOfRequest(request), name);
    QCOMPARE(words.text, text);
    QCOMPARE(words.problem, problem);
}

void TestDecodeFrames::AnAnswerInWords_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("function");
    QTest::addColumn<QByteArray>("prepared");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char* name, const char* request, const char* answer, int function,
                        const char* text, const char* problem = "", const QByteArray& prepared = {}) {
        QTest::newRow(name) << Hex(request) << Hex(answer) << function << prepared
                            << QString::fromLatin1(text) << QString::fromLatin1(problem);
    };
    constexpr int None = -1;
    const char* const status = "73f44e";
    const char* const measurement = "65033c";
    row("idle", status, "00f5babf", None, "Normal (0), Monitoring (0), start test 5, no error");
    row("measuring", status, "a3529a32", None,
        "Calibration (1), RISO (3), Completed (2), DeviceError5 (5): the instrument reports its error 5, new "
        "reading");
    row("no error of an RCD test", status, "2af03206", None, "Calibration (1), RCD (10), Idle (0), no error");
    row("error of a function that tests, elsewhere or in a test", status, "0a47e8d7", None,
        "Normal (0), RCD (10), Running (7), DeviceError4 (4): the instrument reports its error 4; or, in an "
        "RCD test, RCDDeviceError4 (524)");
    row("status too long", status, "00f1f2adef", None, "",
        "a status has 4 bytes, and not 5: the library does not take it");
    row("status acknowledged", status, "06c660", None, "acknowledged",
        "data is due: the library does not take an acknowledge");
    row("start acknowledged", "53966a", "06c660", None, "acknowledged");
    row("start answered with data", "53966a", "00f5babf", None, "4 bytes of data",
        "an acknowledge is due: the library does not take data");
    row("date", "52b77a", "2412312359586199", None, "2024-12-31 23:59:58");
    row("no date", "54711a", "2499312359584e57", None, "no valid date");
    row("date too short", "52b77a", "00f5babf", None, "",
        "a date has 8 bytes, and not 4: the library does not take it");
    row("version", "57122a", "5041543431303230343831353130353033303232303136f923", None,
        "device name PAT, device code 410, serial number 204815, version 1.05, version code 03, revision "
        "code 02, "
        "build number 2016");
    row("version too short", "57122a", "00f5babf", None, "",
        "a version has 25 bytes, and not 4: the library does not take it");
    row("update", "56333a", "00024220", None, "ready for the image");
    const char* const values = "00002041000020410000c0400000c0400000c0400000c0403a27"; // 10, 10, 6, 6, 6, 6
    row("mains", measurement, values, 0, "Monitoring (0): ULN 10, UNPE 10, frequency 6");
    row("RLN", measurement, values, 1,
        "RLN (1): resistance 10, voltage 10, current 6, ISUB voltage 6, ISUB current 6", "",
        Hex("01FF0100FFFFFFFF"));
    row("IEC", measurement, "00007a4400007a4400007a4400007a4400007a4400007a447733", 1,
        "IEC (97): result 1000, voltage 1000, ULN 1000, step 1000, delay 1", "", Hex("01FF0200FFFFFFFF"));
    row("function unknown", measurement, values, None, "values of an unknown function: 10, 10, 6, 6, 6, 6");
    row("measurement too short", measurement, "00f5babf", 2, "",
        "a measurement has 26 bytes, and not 4: the library does not take it");
    row("object all right", measurement, "00024220", 10, "check of the object under test: no error");
    row("object not all right", measurement, "0300000000000000000000000000000000000000000000000559", 11,
        "check of the object under test: RCDCheckObject3 (502): the check of the RCD failed with the "
        "instrument's "
        "code 3");
    row("unknown request", "515151a41e", "00f5babf", None, "4 bytes of data");
}

void TestDecodeFrames::AnAnswerInWords()
{
    QFETCH(const QByteArray, request);
    QFETCH(const QByteArray, answer);
    QFETCH(const int, function);
    QFETCH(const QByteArray, prepared);
    QFETCH(const QString, text);
    QFETCH(const QString, problem);
    FrameContext context;
    context.prepared = Vesmar::DecodePayload(prepared);
    if (function >= 0) {
        context.function = static_cast<MeasurementType>(function);
    }
    const FrameWords words = Decode::WordsOfAnswer(request, answer, context);
    QCOMPARE(words.text, text);
    QCOMPARE(words.problem, problem);
}

void TestDecodeFrames::TheStateDecidesOnTheErrorOfAStatus_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("isOfTest");
    QTest::addColumn<int>("error");
    constexpr int Unknown = -1;
    constexpr int NotAccepted = -1;
    const auto row = [](const char* name, const char* answer, int isOfTest, int error) {
        QTest::newRow(name) << Hex(answer) << isOfTest << error;
    };
    row("in a test", "0a47e8d7", 1, 524);
    row("in no test", "0a47e8d7", 0, 4);
    row("state unknown", "0a47e8d7", Unknown, NotAccepted);
    row("state unknown, no error", "2af03206", Unknown, 15);
    row("in a test, no error", "2af03206", 1, 15);
    row("in a test, other function", "a3529a32", 1, 5);
    row("too long, in a test", "0a4755ca59", 1, 524);
    row("too long, in no test", "0a4755ca59", 0, NotAccepted);
    row("too long, other function in a test", "00f1f2adef", 1, NotAccepted);
    row("too short, in a test", "0a4aa1", 1, 524); // The checksum's first byte stands for the second one.
    row("too short, state unknown", "0a4aa1", Unknown, NotAccepted);
}

void TestDecodeFrames::TheStateDecidesOnTheErrorOfAStatus()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const int, isOfTest);
    QVERIFY(Decode::IsIntact(answer));
    FrameContext context;
    if (isOfTest >= 0) {
        context.isOfTest = isOfTest != 0;
    }
    const FrameWords words = Decode::WordsOfAnswer(Hex("73f44e"), answer, context);
    QTEST(words.error ? static_cast<int>(*words.error) : -1, "error");
}

void TestDecodeFrames::AStatusHasFields()
{
    const FrameWords words = Decode::WordsOfStatus(Hex("a3529a32"), false);
    QCOMPARE(words.error.value_or(Error::NoErrors), Error::DeviceError5);
    QCOMPARE(NamesOf(words),
             (QStringList{QStringLiteral("TesterMode"), QStringLiteral("CurrentMeasurementType"),
                          QStringLiteral("MeasurementFunctionStatus"), QStringLiteral("ErrorCode"),
                          QStringLiteral("NewMeasurement")}));
    QCOMPARE(std::get<bool>(words.fields.last().value), true);
    QCOMPARE(std::get<MeasurementType>(words.fields.at(1).value), MeasurementType::RISO);
    QVERIFY(
        NamesOf(Decode::WordsOfStatus(Hex("00f5babf"), false)).contains(QStringLiteral("StartTestStatus")));
}

void TestDecodeFrames::ARequestHasFields()
{
    const auto prepare = Decode::WordsOfRequest(Hex("5003050900ffffffffd86c")).fields;
    QCOMPARE(std::get<MeasurementType>(prepare.first().value), MeasurementType::RISO);
    const auto settings = std::get<Decode::Settings>(prepare.last().value);
    QCOMPARE(settings.last().first, "mode");
    QCOMPARE(settings.last().second, QStringLiteral("2"));
    QCOMPARE(std::get<int>(Decode::WordsOfRequest(Hex("4601027ebc")).fields.first().value), 2);
    QCOMPARE(std::get<QString>(Decode::WordsOfRequest(Hex("5aabcd6a50")).fields.first().value),
             QStringLiteral("abcd"));
}

void TestDecodeFrames::AResultOfATestInWords_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("prepared");
    QTest::addColumn<QString>("text");
    const QByteArray re = Hex("050247410000000000000000000000000000000000000000ea2b");
    const QByteArray readings = Hex("00000000d600f30000000000000000000000000000000000bd1a");
    const QByteArray nothing = Hex("00000000eeeeeeee000000000000000000000000000000009c0f");
    const QByteArray iec = Hex("0B00004000000000");
    QTest::newRow("Ub/Re") << re << Hex("0A000000FFFFFFFF") << "RCD (10): Re 12.437993, Ia -, Ta -";
    QTest::newRow("Ia/Ta, with an Re of 3.5")
        << readings << Hex("0A00004000006040") << "RCD (10): Re 3.5, Ia 0.0214, Ta 0.0243";
    QTest::newRow("IEC") << readings << iec << "RCDIEC (11): Ia 0.0214, Ta 0.0243";
    QTest::newRow("no readings") << nothing << iec << "RCDIEC (11): Ia -, Ta -";
    QTest::newRow("not prepared in the log")
        << readings << QByteArray()
        << "result of an RCD test that was prepared before the log: Re 0, or Ia 0.0214 and Ta 0.0243";
}

void TestDecodeFrames::AResultOfATestInWords()
{
    QFETCH(const QByteArray, frame);
    QFETCH(const QByteArray, prepared);
    QTEST(Decode::WordsOfTestResult(frame, {{}, Vesmar::DecodePayload(prepared), {}}).text, "text");
}

QTEST_APPLESS_MAIN(TestDecodeFrames)
#include "tst_decodeframes.moc"
