#include <QDateTime>
#include <QLoggingCategory>
#include <QtTest>

#include "link/trace.h"
#include "support/logcapture.h"
#include "support/wire.h"
#include "virtualtime/virtualtime.h"

namespace Trace = Vesmar::Trace;

using namespace std::chrono_literals;

namespace
{

using TraceFunction = void (*)(const QByteArray& request, const QByteArray& response);

/// A prepare request without its checksum, which the trace does not read.
QByteArray PrepareRequest(const char* payload)
{
    return '\x50' + Wire::Bytes(payload);
}

/// What was logged behind the time and a blank, a text for each line.
QStringList LinesWithoutTime(const LogCapture& log)
{
    constexpr int TimeSize = 13;
    QStringList lines;
    for (const QString& text : log.Texts()) {
        lines.append(text.mid(TimeSize));
    }
    return lines;
}

} // namespace

Q_DECLARE_METATYPE(TraceFunction)

class TestTrace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // So that the local time and UTC differ wherever the test runs.
        qputenv("TZ", "XYZ-5:30");
    }

    void EveryLineIsAWarningAfterTheTime()
    {
        const LogCapture log;
        Trace::Write("Transciever::Open");
        Trace::Data(Wire::ReadStatus, Wire::IdleStatus);
        Trace::Acknowledged(Wire::StartMeasurement, Wire::Acknowledge);
        Trace::ReadingBuffer(Wire::Acknowledge);
        QCOMPARE(log.Messages().size(), 5);
        for (const LogCapture::Message& message : log.Messages()) {
            QCOMPARE(message.type, QtWarningMsg);
            QCOMPARE(message.category, QByteArray("default"));
            QCOMPARE(message.text.at(12), QLatin1Char(' '));
        }
    }

    void TheTimeIsInUTCAtEveryHour()
    {
        for (int count = 0; count < 100; ++count) {
            VirtualTime::Sleep(67min + 8s + 91ms);
            const LogCapture log;
            Trace::Write("text");
            QCOMPARE(log.Texts(), QStringList(QDateTime::currentDateTimeUtc().toString(
                                      QStringLiteral("hh:mm:ss.zzz 'text'"))));
        }
    }

    void ALineThatBeginsWhileWarningsAreOffIsNotComposed()
    {
        const LogCapture log;
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
        Trace::Data(Wire::ReadStatus, Wire::IdleStatus);
        {
            Trace::Line line;
            QLoggingCategory::setFilterRules({});
            line.Now() << "text" << QStringLiteral("text") << 1 << 1.0F << QDateTime() << Trace::Colour::Red
                       << Trace::Hex{Wire::ReadStatus};
        }
        QCOMPARE(log.Texts(), QStringList());
        Trace::Write("text");
        QCOMPARE(LinesWithoutTime(log), QStringList(QStringLiteral("text")));
    }

    void TextsAndBuffersAreWrittenAsTheyStand()
    {
        const LogCapture log;
        Trace::Write("Transciever::Open: Serial port already opened.");
        Trace::ReadingBuffer(Wire::RcdRunningStatus);
        QCOMPARE(LinesWithoutTime(log),
                 (QStringList{QStringLiteral("Transciever::Open: Serial port already opened."),
                              QStringLiteral("ReadingBuffer: 0af73370")}));
    }

    void ATextInColourHasNoTime()
    {
        const LogCapture log;
        Trace::WriteIn(Trace::Colour::Black, "black ");
        Trace::WriteIn(Trace::Colour::Blue, "100% blue");
        QCOMPARE(log.Texts(), (QStringList{QStringLiteral("\033[0;30mblack \033[0m"),
                                           QStringLiteral("\033[0;34m100% blue\033[0m")}));
        QCOMPARE(log.Messages().first().type, QtWarningMsg);
        QCOMPARE(log.Messages().first().category, QByteArray("default"));
    }

    void AnExchangeIsOneLine_data()
    {
        QTest::addColumn<TraceFunction>("trace");
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("response");
        QTest::addColumn<QString>("line");
        const QByteArray prepare = PrepareRequest("03 05 04 00 FF FF FF FF");
        const auto row = [](const char* name, TraceFunction trace, const QByteArray& request,
                            const QByteArray& response, const QByteArray& line) {
            QTest::newRow(name) << trace << request << response << QString::fromLatin1(line);
        };
        row("data", &Trace::Data, Wire::ReadStatus, Wire::IdleStatus,
            " \033[0;35m73f44e \033[0;33m00fed10e\033[0m[4b]");
        row("nothing", &Trace::Data, Wire::ReadStatus, {}, " \033[0;35m73f44e \033[0;33m\033[0m[0b]");
        row("leading zeros", &Trace::Data, Wire::Bytes("000F"), QByteArray(12, '\0'),
            " \033[0;35m000f \033[0;33m000000000000000000000000\033[0m[12b]");
        row("the longest", &Trace::Data, QByteArray(515, '\xA5'), QByteArray(4096, '\x5A'),
            QByteArray(" \033[0;35m" + QByteArray("a5").repeated(515) + " \033[0;33m" +
                       QByteArray("5a").repeated(4096) + "\033[0m[4096b]"));
        row("acknowledged", &Trace::Acknowledged, Wire::StopMeasurement, Wire::Acknowledge,
            " \033[0;35m68aeed \033[0;33m06c660\033[0m[3b]\033[0;32m ACK\033[0m");
        row("refused", &Trace::Refused, Wire::ReadStatus, Wire::Refusal,
            " \033[0;35m73f44e \033[0;33m214334\033[0m[3b]\033[0;31m NACK\033[0m");
        row("bad checksum", &Trace::BadChecksum, Wire::ReadStatus, Wire::DamagedStatus,
            " \033[0;35m73f44e \033[0;33m00f50000\033[0m[4b]\033[0;31m CRC Invalid\033[0m");
        row("no response", &Trace::NoResponse, Wire::ReadStatus, {},
            " \033[0;35m73f44e \033[0;33m\033[0m[0b]\033[0;31m No response\033[0m");
        row("data to a prepare", &Trace::Data, prepare, Wire::IdleStatus,
            " \033[0;35m5003050400ffffffff \033[0;33m00fed10e\033[0m[4b] Function prepare: 3");
        row("a refused prepare", &Trace::Refused, prepare, Wire::Refusal,
            " \033[0;35m5003050400ffffffff \033[0;33m214334\033[0m[3b]\033[0;31m NACK\033[0m Function "
            "prepare: "
            "3");
        row("a damaged answer to a prepare", &Trace::BadChecksum, prepare, Wire::DamagedStatus,
            " \033[0;35m5003050400ffffffff \033[0;33m00f50000\033[0m[4b]\033[0;31m CRC Invalid\033[0m "
            "Function "
            "prepare: 3");
        row("an unanswered prepare", &Trace::NoResponse, prepare, {},
            " \033[0;35m5003050400ffffffff \033[0;33m\033[0m[0b]\033[0;31m No response\033[0m");
    }

    void AnExchangeIsOneLine()
    {
        QFETCH(const TraceFunction, trace);
        QFETCH(const QByteArray, request);
        QFETCH(const QByteArray, response);
        QFETCH(const QString, line);
        const LogCapture log;
        trace(request, response);
        QCOMPARE(LinesWithoutTime(log), QStringList(line));
    }

    void AnAcknowledgedCommandHasALineMore_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QString>("line");
        QTest::newRow("start") << Wire::StartMeasurement << QStringLiteral("\033[0;32mFunction run.\033[0m");
        const auto row = [](const char* name, const char* payload, const char* words) {
            QTest::newRow(name) << PrepareRequest(payload)
                                << QStringLiteral("\033[0;32mFunction prepare: ") +
                                       QString::fromLatin1(words);
        };
        row("RLN", "01 FF 01 00 FF FF FF FF", "1 Function name: RLN Function variant: RLN\033[0m");
        row("IEC", "01 FF 02 00 FF FF FF FF", "1 Function name: RLN Function variant: IEC\033[0m");
        row("RPE", "02 05 04 00 FF FF FF FF", "2 Function name: Rpe\033[0m");
        row("RISO", "03 05 04 00 FF FF FF FF", "3 Function name: Riso\033[0m");
        row("ISUB", "04 05 00 00 FF FF FF FF", "4 Function name: Isub\033[0m");
        row("IPE, with the name of RPE", "05 05 00 00 FF FF FF FF", "5 Function name: Rpe\033[0m");
        row("IDELTA", "06 05 00 00 FF FF FF FF", "6 Function name: Idelta\033[0m");
        row("IT", "07 05 00 00 FF FF FF FF", "7 Function name: It\033[0m");
        row("POWER", "08 05 00 00 FF FF FF FF", "8 Function name: S\033[0m");
        row("HVTest", "09 05 02 00 FF FF FF FF", "9 Function name: HV\033[0m");
        row("RCD", "0A 00 40 4B 00 00 C8 42", "10 Function name: RCD\033[0m");
        row("RCD IEC type 0", "0B 00 40 3F 00 00 00 00",
            "11 Function name: RCD_IEC (type=0) Function type: Ub,Re\033[0m");
        row("RCD IEC type 1", "0B 00 80 40 00 00 00 00",
            "11 Function name: RCD_IEC (type=1) Function type: ta\033[0m");
        row("RCD IEC type 2", "0B 00 00 BF 00 00 00 00",
            "11 Function name: RCD_IEC (type=2) Function type: Ia, tai\033[0m");
        row("RCD IEC type 3", "0B 00 00 C0 00 00 00 00",
            "11 Function name: RCD_IEC (type=3) Function type: CLEAN UP\033[0m");
        // Of what is unknown, nothing more is said: the colour stays open.
        row("function 0", "00 05 00 00 FF FF FF FF", "0 ");
        row("function 12", "0C 05 00 00 FF FF FF FF", "12 ");
        row("function 255", "FF 05 00 00 FF FF FF FF", "255 ");
        row("RLN, variant 3", "01 FF 03 00 FF FF FF FF", "1 Function name: RLN ");
        row("RLN, variant 257", "01 FF 01 01 FF FF FF FF", "1 Function name: RLN ");
        row("RLN, variant 256", "01 FF 00 01 FF FF FF FF", "1 Function name: RLN ");
    }

    void AnAcknowledgedCommandHasALineMore()
    {
        QFETCH(const QByteArray, request);
        QFETCH(const QString, line);
        const LogCapture log;
        Trace::Acknowledged(request, Wire::Acknowledge);
        const QStringList lines = LinesWithoutTime(log);
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines.first().endsWith(QStringLiteral("\033[0;32m ACK\033[0m")));
        QCOMPARE(lines.last(), line);
    }

    void AShortPrepareRequestIsTracedAsFarAsItGoes()
    {
        for (const char* request : {"50", "50 01", "50 01 FF", "50 0B", "50 0B 00 40"}) {
            const LogCapture log;
            Trace::Acknowledged(Wire::Bytes(request), Wire::Acknowledge);
            QCOMPARE(log.Messages().size(), 2);
            QVERIFY(!log.Contains(QStringLiteral("Function variant")));
        }
    }
};

QTEST_APPLESS_MAIN(TestTrace)
#include "tst_trace.moc"
