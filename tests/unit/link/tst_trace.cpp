#include <QDateTime>
#include <QRegularExpression>
#include <QtTest>

#include "link/trace.h"
#include "support/logcapture.h"

namespace Trace = Vesmar::Trace;

namespace
{

const QByteArray StatusRequest = QByteArray::fromHex("73F44E");
const QByteArray AcknowledgeFrame = QByteArray::fromHex("06C660");

using TraceFunction = void (*)(const QByteArray& request, const QByteArray& response);

/// Everything that was logged, a line each.
QString Lines(const LogCapture& log)
{
    return log.Texts().join(QLatin1Char('\n'));
}

/// A prepare request without its checksum, which the trace does not read.
QByteArray PrepareRequest(const char* payload)
{
    return '\x50' + QByteArray::fromHex(payload);
}

/// What stands between the pieces of a composed line is the Qt stream's own.
QRegularExpression InOrder(const QStringList& pieces)
{
    QStringList patterns;
    for (const QString& piece : pieces) {
        patterns.append(QRegularExpression::escape(piece));
    }
    return QRegularExpression(patterns.join(QStringLiteral("[\\s\"]*")));
}

} // namespace

Q_DECLARE_METATYPE(TraceFunction)

class TestTrace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void EveryLineIsAWarningAfterTheTimeInUTC();
    void NotesStandAsTheyAre();
    void ExchangesAreColouredDumps_data();
    void ExchangesAreColouredDumps();
    void AStatusWordHasItsColour_data();
    void AStatusWordHasItsColour();
    void DataHaveNoStatusWord();
    void ReadBuffersAreLabelled();
    void AnAcknowledgedStartIsPointedOut();
    void AnAcknowledgedPrepareIsDecoded_data();
    void AnAcknowledgedPrepareIsDecoded();
    void UnknownDetailsOfAPrepareSayNothingMore_data();
    void UnknownDetailsOfAPrepareSayNothingMore();
    void AShortPrepareRequestIsTracedAsFarAsItGoes();
    void APrepareThatIsNotAcknowledgedNamesItsFunction_data();
    void APrepareThatIsNotAcknowledgedNamesItsFunction();
    void AnUnansweredPrepareNamesNoFunction();
    void OtherRequestsNameNoFunction();
};

void TestTrace::initTestCase()
{
    // So that the local time and UTC differ wherever the test runs.
    qputenv("TZ", "XYZ-5:30");
}

void TestTrace::EveryLineIsAWarningAfterTheTimeInUTC()
{
    const LogCapture log;
    const QDateTime before = QDateTime::currentDateTimeUtc();
    Trace::Write(QStringLiteral("Transciever::Open"));
    Trace::Data(StatusRequest, AcknowledgeFrame);
    Trace::Acknowledged(StatusRequest, AcknowledgeFrame);
    Trace::ReadingBuffer(AcknowledgeFrame);
    const QDateTime after = QDateTime::currentDateTimeUtc();

    QCOMPARE(log.Messages().size(), 4);
    static const QRegularExpression timeFirst(QStringLiteral("^\"?(\\d{2}:\\d{2}:\\d{2}\\.\\d{3})\"?\\s"));
    for (const LogCapture::Message& message : log.Messages()) {
        QCOMPARE(message.type, QtWarningMsg);
        QCOMPARE(message.category, QByteArray("default"));
        const QRegularExpressionMatch match = timeFirst.match(message.text);
        QVERIFY2(match.hasMatch(), qPrintable(message.text));
        QDateTime written(before.date(), QTime::fromString(match.captured(1), QStringLiteral("hh:mm:ss.zzz")),
                          Qt::UTC);
        if (written < before) {
            written = written.addDays(1);
        }
        QVERIFY(written <= after);
    }
}

void TestTrace::NotesStandAsTheyAre()
{
    const LogCapture log;
    Trace::Write(QStringLiteral("Transciever::Open: Serial port already opened."));
    QCOMPARE(log.Messages().size(), 1);
    QVERIFY(log.Messages().first().text.endsWith(
        QStringLiteral(" Transciever::Open: Serial port already opened.")));
}

void TestTrace::ExchangesAreColouredDumps_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("response");
    QTest::addColumn<QString>("text");
    QTest::newRow("status") << StatusRequest << QByteArray::fromHex("A3529A32")
                            << QStringLiteral(" \033[0;35m73f44e \033[0;33ma3529a32\033[0m[4b]");
    QTest::newRow("nothing") << StatusRequest << QByteArray()
                             << QStringLiteral(" \033[0;35m73f44e \033[0;33m\033[0m[0b]");
    QTest::newRow("leading zeros") << QByteArray::fromHex("000F") << QByteArray(12, '\0')
                                   << QStringLiteral(
                                          " \033[0;35m000f \033[0;33m000000000000000000000000\033[0m[12b]");
}

void TestTrace::ExchangesAreColouredDumps()
{
    QFETCH(const QByteArray, request);
    QFETCH(const QByteArray, response);
    QFETCH(const QString, text);
    const LogCapture log;
    Trace::Data(request, response);
    QCOMPARE(log.Messages().size(), 1);
    QVERIFY2(log.Contains(text), qPrintable(Lines(log)));
}

void TestTrace::AStatusWordHasItsColour_data()
{
    QTest::addColumn<TraceFunction>("trace");
    QTest::addColumn<QString>("word");
    QTest::newRow("acknowledged") << &Trace::Acknowledged << QStringLiteral("\033[0;32m ACK\033[0m");
    QTest::newRow("refused") << &Trace::Refused << QStringLiteral("\033[0;31m NACK\033[0m");
    QTest::newRow("bad checksum") << &Trace::BadChecksum << QStringLiteral("\033[0;31m CRC Invalid\033[0m");
    QTest::newRow("no response") << &Trace::NoResponse << QStringLiteral("\033[0;31m No response\033[0m");
}

void TestTrace::AStatusWordHasItsColour()
{
    QFETCH(const TraceFunction, trace);
    QFETCH(const QString, word);
    const LogCapture log;
    trace(StatusRequest, AcknowledgeFrame);
    QCOMPARE(log.Messages().size(), 1);
    const QString exchange = QStringLiteral(" \033[0;35m73f44e \033[0;33m06c660\033[0m[3b]");
    QVERIFY2(log.Contains(exchange + word), qPrintable(Lines(log)));
}

void TestTrace::DataHaveNoStatusWord()
{
    const LogCapture log;
    Trace::Data(StatusRequest, AcknowledgeFrame);
    QVERIFY(log.Texts().first().endsWith(QStringLiteral("[3b]")));
}

void TestTrace::ReadBuffersAreLabelled()
{
    const LogCapture log;
    Trace::ReadingBuffer(QByteArray::fromHex("A3529A32"));
    QCOMPARE(log.Messages().size(), 1);
    QVERIFY2(log.Contains(QStringLiteral("ReadingBuffer: ")), qPrintable(Lines(log)));
    QVERIFY2(log.Contains(QStringLiteral("a3529a32")), qPrintable(Lines(log)));
}

void TestTrace::AnAcknowledgedStartIsPointedOut()
{
    const LogCapture log;
    Trace::Acknowledged(QByteArray::fromHex("53966A"), AcknowledgeFrame);
    QVERIFY2(log.Contains(QStringLiteral("\033[0;32mFunction run.\033[0m")), qPrintable(Lines(log)));
    QVERIFY(!Lines(log).contains(QStringLiteral("Function prepare")));
}

void TestTrace::AnAcknowledgedPrepareIsDecoded_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QStringList>("pieces");
    const auto row = [](const char* name, const char* payload, const QStringList& pieces) {
        QTest::newRow(name) << PrepareRequest(payload) << pieces;
    };
    row("RLN", "01 FF 01 00 FF FF FF FF",
        {QStringLiteral("1"), QStringLiteral("Function name: RLN"),
         QStringLiteral("Function variant: RLN\033[0m")});
    row("IEC", "01 FF 02 00 FF FF FF FF",
        {QStringLiteral("1"), QStringLiteral("Function name: RLN"),
         QStringLiteral("Function variant: IEC\033[0m")});
    row("RPE", "02 05 04 00 FF FF FF FF", {QStringLiteral("2"), QStringLiteral("Function name: Rpe\033[0m")});
    row("RISO", "03 05 04 00 FF FF FF FF",
        {QStringLiteral("3"), QStringLiteral("Function name: Riso\033[0m")});
    row("ISUB", "04 05 00 00 FF FF FF FF",
        {QStringLiteral("4"), QStringLiteral("Function name: Isub\033[0m")});
    row("IPE, with the name of RPE", "05 05 00 00 FF FF FF FF",
        {QStringLiteral("5"), QStringLiteral("Function name: Rpe\033[0m")});
    row("IDELTA", "06 05 00 00 FF FF FF FF",
        {QStringLiteral("6"), QStringLiteral("Function name: Idelta\033[0m")});
    row("IT", "07 05 00 00 FF FF FF FF", {QStringLiteral("7"), QStringLiteral("Function name: It\033[0m")});
    row("POWER", "08 05 00 00 FF FF FF FF", {QStringLiteral("8"), QStringLiteral("Function name: S\033[0m")});
    row("HVTest", "09 05 02 00 FF FF FF FF",
        {QStringLiteral("9"), QStringLiteral("Function name: HV\033[0m")});
    row("RCD", "0A 00 40 4B 00 00 C8 42",
        {QStringLiteral("10"), QStringLiteral("Function name: RCD\033[0m")});
    row("RCD IEC type 0", "0B 00 40 3F 00 00 00 00",
        {QStringLiteral("11"), QStringLiteral("Function name: RCD_IEC (type="), QStringLiteral("0"),
         QStringLiteral(")"), QStringLiteral("Function type: Ub,Re\033[0m")});
    row("RCD IEC type 1", "0B 00 80 40 00 00 00 00",
        {QStringLiteral("11"), QStringLiteral("Function name: RCD_IEC (type="), QStringLiteral("1"),
         QStringLiteral(")"), QStringLiteral("Function type: ta\033[0m")});
    row("RCD IEC type 2", "0B 00 00 BF 00 00 00 00",
        {QStringLiteral("11"), QStringLiteral("Function name: RCD_IEC (type="), QStringLiteral("2"),
         QStringLiteral(")"), QStringLiteral("Function type: Ia, tai\033[0m")});
    row("RCD IEC type 3", "0B 00 00 C0 00 00 00 00",
        {QStringLiteral("11"), QStringLiteral("Function name: RCD_IEC (type="), QStringLiteral("3"),
         QStringLiteral(")"), QStringLiteral("Function type: CLEAN UP\033[0m")});
}

void TestTrace::AnAcknowledgedPrepareIsDecoded()
{
    QFETCH(const QByteArray, request);
    QFETCH(const QStringList, pieces);
    const LogCapture log;
    Trace::Acknowledged(request, AcknowledgeFrame);
    const QString lines = Lines(log);
    QVERIFY2(lines.contains(QStringLiteral("\033[0;32m ACK\033[0m")), qPrintable(lines));
    const QStringList prepare{QStringLiteral("\033[0;32mFunction prepare: ")};
    QVERIFY2(lines.contains(InOrder(prepare + pieces)), qPrintable(lines));
}

void TestTrace::UnknownDetailsOfAPrepareSayNothingMore_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("absent");
    QTest::newRow("function 0") << PrepareRequest("00 05 00 00 FF FF FF FF") << QStringLiteral("0")
                                << QStringLiteral("Function name");
    QTest::newRow("function 12") << PrepareRequest("0C 05 00 00 FF FF FF FF") << QStringLiteral("12")
                                 << QStringLiteral("Function name");
    QTest::newRow("function 255") << PrepareRequest("FF 05 00 00 FF FF FF FF") << QStringLiteral("255")
                                  << QStringLiteral("Function name");
    QTest::newRow("RLN, variant 3") << PrepareRequest("01 FF 03 00 FF FF FF FF") << QStringLiteral("1")
                                    << QStringLiteral("Function variant");
    QTest::newRow("RLN, variant 257") << PrepareRequest("01 FF 01 01 FF FF FF FF") << QStringLiteral("1")
                                      << QStringLiteral("Function variant");
    QTest::newRow("RLN, variant 256") << PrepareRequest("01 FF 00 01 FF FF FF FF") << QStringLiteral("1")
                                      << QStringLiteral("Function variant");
}

void TestTrace::UnknownDetailsOfAPrepareSayNothingMore()
{
    QFETCH(const QByteArray, request);
    QFETCH(const QString, number);
    QFETCH(const QString, absent);
    const LogCapture log;
    Trace::Acknowledged(request, AcknowledgeFrame);
    const QString lines = Lines(log);
    QVERIFY2(lines.contains(InOrder({QStringLiteral("\033[0;32mFunction prepare: "), number})),
             qPrintable(lines));
    QVERIFY2(!lines.contains(absent), qPrintable(lines));
}

void TestTrace::AShortPrepareRequestIsTracedAsFarAsItGoes()
{
    for (const char* request : {"50", "50 01", "50 01 FF", "50 0B", "50 0B 00 40"}) {
        const LogCapture log;
        Trace::Acknowledged(QByteArray::fromHex(request), AcknowledgeFrame);
        const QString lines = Lines(log);
        QVERIFY2(lines.contains(QStringLiteral("\033[0;32m ACK\033[0m")), qPrintable(lines));
        QVERIFY2(!lines.contains(QStringLiteral("Function variant")), qPrintable(lines));
    }
}

void TestTrace::APrepareThatIsNotAcknowledgedNamesItsFunction_data()
{
    QTest::addColumn<TraceFunction>("trace");
    QTest::newRow("refused") << &Trace::Refused;
    QTest::newRow("bad checksum") << &Trace::BadChecksum;
    QTest::newRow("data") << &Trace::Data;
}

void TestTrace::APrepareThatIsNotAcknowledgedNamesItsFunction()
{
    QFETCH(const TraceFunction, trace);
    const LogCapture log;
    trace(PrepareRequest("03 05 04 00 FF FF FF FF"), QByteArray::fromHex("214334"));
    const QString lines = Lines(log);
    QVERIFY2(lines.contains(InOrder({QStringLiteral("Function prepare: "), QStringLiteral("3")})),
             qPrintable(lines));
    QVERIFY2(!lines.contains(QStringLiteral("Function name")), qPrintable(lines));
}

void TestTrace::AnUnansweredPrepareNamesNoFunction()
{
    const LogCapture log;
    Trace::NoResponse(PrepareRequest("03 05 04 00 FF FF FF FF"), {});
    QVERIFY2(!Lines(log).contains(QStringLiteral("Function prepare")), qPrintable(Lines(log)));
}

void TestTrace::OtherRequestsNameNoFunction()
{
    const LogCapture log;
    Trace::Data(StatusRequest, AcknowledgeFrame);
    Trace::Acknowledged(StatusRequest, AcknowledgeFrame);
    Trace::Refused(StatusRequest, AcknowledgeFrame);
    Trace::BadChecksum(StatusRequest, AcknowledgeFrame);
    QCOMPARE(log.Messages().size(), 4);
    QVERIFY2(!Lines(log).contains(QStringLiteral("Function")), qPrintable(Lines(log)));
}

QTEST_APPLESS_MAIN(TestTrace)
#include "tst_trace.moc"
