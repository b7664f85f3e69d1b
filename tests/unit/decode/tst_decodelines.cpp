#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "decode/lines/logentry.h"
#include "decode/lines/logreader.h"
#include "unit/decode/logfiles.h"

using Decode::LogEntry;
using Decode::LogReader;
using Decode::ParseLogLine;

Q_DECLARE_METATYPE(LogEntry::Kind)

/// The reading of a log: its lines, and what stands in one.
class TestDecodeLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void GivesOutLines_data();
    void GivesOutLines();
    void FindsLinesThatCannotBeRead_data();
    void FindsLinesThatCannotBeRead();
    void GoesOnBehindALineThatIsTooLong();
    void ReadsLinesAcrossPieces();
    void GivesOutALineBeforeTheNextIsThere();
    void StopsInTheMiddleOfALine();
    void StopsInTheMiddleOfAFile();
    void SaysWhyItCannotRead();
    void FindsExchanges_data();
    void FindsExchanges();
    void FindsWhatIsSentUnasked();
    void FindsOtherLines_data();
    void FindsOtherLines();
    void FindsDamage_data();
    void FindsDamage();
    void FindsDamageInLongLines();
};

void TestDecodeLines::GivesOutLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArrayList>("lines");
    QTest::newRow("empty") << QByteArray() << QByteArrayList();
    QTest::newRow("one") << QByteArray("one\n") << QByteArrayList{"one"};
    QTest::newRow("carriage returns") << QByteArray("one\r\ntwo\r\n") << QByteArrayList{"one", "two"};
    QTest::newRow("empty lines") << QByteArray("\n\r\n\n") << QByteArrayList{"", "", ""};
}

void TestDecodeLines::GivesOutLines()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArrayList, lines);
    const LogText file(text);
    QVERIFY(file.IsThere());
    LogReader reader(file.Descriptor());
    qint64 number = 0;
    for (const QByteArray& line : lines) {
        const auto found = reader.Next();
        QVERIFY(found);
        QCOMPARE(found->number, ++number);
        QCOMPARE(found->text, line);
        QCOMPARE(found->damage, QString());
    }
    QVERIFY(!reader.Next());
    QCOMPARE(reader.LastError(), 0);
}

void TestDecodeLines::FindsLinesThatCannotBeRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("damage");
    QTest::newRow("no end") << QByteArray("cut") << "the line has no end";
    QTest::newRow("zero byte") << QByteArray("a\0b\n", 4) << "bytes that are no text";
    QTest::newRow("the longest") << QByteArray(65536, 'x') + '\n' << "";
    QTest::newRow("too long") << QByteArray(65537, 'x') + '\n' << "more than 65536 bytes";
    QTest::newRow("far too long, without an end") << QByteArray(500000, 'x') << "more than 65536 bytes";
}

void TestDecodeLines::FindsLinesThatCannotBeRead()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QString, damage);
    const LogText file(text);
    LogReader reader(file.Descriptor());
    const auto line = reader.Next();
    QVERIFY(line);
    QCOMPARE(line->damage.isEmpty(), damage.isEmpty());
    QVERIFY2(line->damage.contains(damage), qPrintable(line->damage));
    QVERIFY(line->text.size() <= LogReader::LongestLine + 1);
    QVERIFY(!reader.Next());
}

void TestDecodeLines::GoesOnBehindALineThatIsTooLong()
{
    const LogText file(QByteArray(200000, 'x') + "\nnext\n");
    LogReader reader(file.Descriptor());
    QVERIFY(!reader.Next()->damage.isEmpty());
    const auto line = reader.Next();
    QVERIFY(line);
    QCOMPARE(line->number, qint64(2));
    QCOMPARE(line->text, QByteArray("next"));
    QCOMPARE(line->damage, QString());
}

void TestDecodeLines::ReadsLinesAcrossPieces()
{
    const QByteArray line(1000, 'y');
    const LogText file((line + '\n').repeated(200));
    LogReader reader(file.Descriptor());
    for (int i = 0; i < 200; ++i) {
        const auto found = reader.Next();
        QVERIFY(found);
        QCOMPARE(found->text, line);
    }
    QVERIFY(!reader.Next());
}

void TestDecodeLines::GivesOutALineBeforeTheNextIsThere()
{
    std::array<int, 2> ends{};
    QCOMPARE(::pipe(ends.data()), 0);
    LogReader reader(ends[0]);
    QCOMPARE(::write(ends[1], "first\n", 6), ssize_t(6));
    QCOMPARE(reader.Next()->text, QByteArray("first"));
    ::close(ends[1]);
    QVERIFY(!reader.Next());
    ::close(ends[0]);
}

void TestDecodeLines::StopsInTheMiddleOfALine()
{
    std::array<int, 2> ends{};
    std::array<int, 2> stop{};
    QCOMPARE(::pipe(ends.data()), 0);
    QCOMPARE(::pipe(stop.data()), 0);
    LogReader reader(ends[0], stop[0]);
    QCOMPARE(::write(ends[1], "first\nsec", 9), ssize_t(9));
    QCOMPARE(reader.Next()->text, QByteArray("first"));
    QVERIFY(!reader.IsStopped());
    QCOMPARE(::write(stop[1], "!", 1), ssize_t(1));
    QVERIFY(!reader.Next());
    QVERIFY(reader.IsStopped());
    QCOMPARE(reader.LastError(), 0);
    for (const int descriptor : {ends[0], ends[1], stop[0], stop[1]}) {
        ::close(descriptor);
    }
}

/// Lines that were read already are given out.
void TestDecodeLines::StopsInTheMiddleOfAFile()
{
    const QByteArray line(1000, 'z');
    const LogText file((line + '\n').repeated(200));
    std::array<int, 2> stop{};
    QCOMPARE(::pipe(stop.data()), 0);
    LogReader reader(file.Descriptor(), stop[0]);
    int lines = 0;
    while (const auto found = reader.Next()) {
        QCOMPARE(found->text, line);
        QCOMPARE(::write(stop[1], "!", 1), ssize_t(1));
        ++lines;
    }
    QVERIFY(reader.IsStopped());
    QVERIFY2(lines > 1 && lines < 200, QByteArray::number(lines).constData());
    ::close(stop[0]);
    ::close(stop[1]);
}

void TestDecodeLines::SaysWhyItCannotRead()
{
    const int folder = ::open("/", O_RDONLY);
    QVERIFY(folder >= 0);
    LogReader reader(folder);
    QVERIFY(!reader.Next());
    QCOMPARE(reader.LastError(), EISDIR);
    ::close(folder);
}

void TestDecodeLines::FindsExchanges_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("word");
    const auto row = [](const char* name, const QByteArray& line, const char* answer, const char* word = "") {
        QTest::newRow(name) << line << QByteArray(answer) << QString::fromLatin1(word);
    };
    const QByteArray begin = "20:51:40.316  \033[0;35m73f44e \033[0;33m";
    const QByteArray status = begin + "00fed10e\033[0m[4b]";
    row("data", status, "00fed10e");
    row("without colours", "20:51:40.316  73f44e 00fed10e[4b]", "00fed10e");
    row("behind a journal's beginning", "Nov 21 20:30:48 unit app[12]: " + status, "00fed10e");
    row("behind another time", "[20:30:48.123 warning] " + status, "00fed10e");
    row("colours written out", "20:51:40.316  #033[0;35m73f44e #033[0;33m00fed10e#033[0m[4b]", "00fed10e");
    row("acknowledged", begin + "06c660\033[0m[3b]\033[0;32m ACK\033[0m", "06c660", "ACK");
    row("refused", begin + "214334\033[0m[3b]\033[0;31m NACK\033[0m", "214334", "NACK");
    row("refused prepare", begin + "214334\033[0m[3b]\033[0;31m NACK\033[0m Function prepare: 2", "214334",
        "NACK");
    row("damaged", begin + "00fe\033[0m[2b]\033[0;31m CRC Invalid\033[0m", "00fe", "CRC Invalid");
    row("no answer", begin + "\033[0m[0b]\033[0;31m No response\033[0m", "", "No response");
}

void TestDecodeLines::FindsExchanges()
{
    QFETCH(const QByteArray, line);
    const LogEntry entry = ParseLogLine(line);
    QCOMPARE(entry.damage, QString());
    QCOMPARE(entry.kind, LogEntry::Kind::Exchange);
    QCOMPARE(entry.at, QTime(20, 51, 40, 316));
    QCOMPARE(entry.request.toHex(), QByteArray("73f44e"));
    QTEST(entry.answer.toHex(), "answer");
    QTEST(entry.word, "word");
}

void TestDecodeLines::FindsWhatIsSentUnasked()
{
    const LogEntry unasked = ParseLogLine("app: 20:51:47.266 ReadingBuffer: 0af73370");
    QCOMPARE(unasked.kind, LogEntry::Kind::Unasked);
    QCOMPARE(unasked.at, QTime(20, 51, 47, 266));
    QCOMPARE(unasked.answer.toHex(), QByteArray("0af73370"));
    const LogEntry nothing = ParseLogLine("20:51:47.266 ReadingBuffer:");
    QCOMPARE(nothing.kind, LogEntry::Kind::Unasked);
    QCOMPARE(nothing.answer, QByteArray());
    QCOMPARE(nothing.damage, QString());
}

void TestDecodeLines::FindsOtherLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<LogEntry::Kind>("kind");
    QTest::addColumn<QString>("text");
    using Kind = LogEntry::Kind;
    const auto row = [](const char* name, const QByteArray& line, Kind kind, const char* text = "") {
        QTest::newRow(name) << line << kind << QString::fromLatin1(text);
    };
    row("open", "20:51:40.212 Transciever::Open", Kind::Note, "Transciever::Open");
    row("failed to open", "20:51:40.212 Transciever::Open: Serial port failed to open.", Kind::Note,
        "Transciever::Open: Serial port failed to open.");
    row("close", "x 20:51:40.212 Transciever::Close", Kind::Note, "Transciever::Close");
    row("state", "\033[0;34m<<<                              ENTERING MONITORING STATE \033[0m", Kind::State,
        "ENTERING MONITORING STATE");
    row("state left", "\033[0;34m<<<                              LEAVING MONITORING STATE \033[0m",
        Kind::Other);
    row("prepare", "unit: \033[0;31mPREPARE MEASUREMENT : 2\033[0m", Kind::Note, "PREPARE MEASUREMENT : 2");
    row("quick start", "\033[0;31mQUICK START MEASUREMENT - PREPARE AND START RLN\033[0m", Kind::Note,
        "QUICK START MEASUREMENT - PREPARE AND START RLN");
    row("abort", "\033[0;31mABORT MEASUREMENT\033[0m", Kind::Note, "ABORT MEASUREMENT");
    row("update error", "\033[0;31mUPDATE ERROR - Confirmation error.\033[0m", Kind::Note,
        "UPDATE ERROR - Confirmation error.");
    row("progress", "Update progress: 25", Kind::Note, "Update progress: 25");
    row("start in words", "20:51:41.418 \033[0;32mFunction run.\033[0m", Kind::Echo);
    row("prepare in words", "20:51:40.990 \033[0;32mFunction prepare: 2 Function name: Rpe\033[0m",
        Kind::Echo);
    row("status in words", "DeviceMode: 0 MeasurementType: 0 Error: 15 ProcessStatus: 14 NewMeasurement: 0",
        Kind::Other);
    row("another's", "20:51:40.316 42 apples were sold", Kind::Other);
    row("another's number", "20:51:40.316  42 apples were sold", Kind::Other);
    row("another's number that is a letter", "20:51:40.316  50 apples were sold", Kind::Other);
    row("another's last number", "20:51:40.316  42", Kind::Other);
    row("another's bytes", "\xff\xfe\x1b[2J", Kind::Other);
    row("nothing", "", Kind::Other);
}

void TestDecodeLines::FindsOtherLines()
{
    QFETCH(const QByteArray, line);
    const LogEntry entry = ParseLogLine(line);
    QCOMPARE(entry.damage, QString());
    QTEST(entry.kind, "kind");
    QTEST(entry.text, "text");
}

void TestDecodeLines::FindsDamage_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("damage");
    const auto row = [](const char* name, const char* line, const char* damage) {
        QTest::newRow(name) << QByteArray(line) << QString::fromLatin1(damage);
    };
    row("odd request", "20:51:40.316  73f44 00fed10e[4b]", "hexadecimal digit");
    row("odd answer", "20:51:40.316  73f44e 00fed10[4b]", "hexadecimal digit");
    row("too few bytes", "20:51:40.316  73f44e 00fed1[4b]", "has 3 bytes, and [4b]");
    row("too many bytes", "20:51:40.316  73f44e 00fed10e00[4b]", "has 5 bytes, and [4b]");
    row("enormous count", "20:51:40.316  73f44e 00fed10e[99999999999b]", "[99999999999b]");
    row("word cut off", "20:51:40.316  73f44e 214334[3b] NAC", "\"NAC\" stands behind it");
    row("two lines in one", "20:51:40.316  73f44e 00fed10e[4b]20:51:40.416", "stands behind it");
    row("no time of day", "25:51:40.316  73f44e 00fed10e[4b]", "time of day");
    row("cut in the count", "20:51:40.316  73f44e 00fed10e[4", "its end is missing");
    row("cut in the answer", "20:51:40.316  73f44e 00fe", "its end is missing");
    row("cut in the request", "20:51:40.316  73f4", "its end is missing");
    row("cut behind the request", "20:51:40.316  73f44e ", "its end is missing");
    row("cut behind the colour", "20:51:40.316  \033[0;35m", "its end is missing");
    row("no digits", "20:51:40.316  \033[0;35m7?f44e \033[0;33m00\033[0m[1b]", "its end is missing");
    row("odd bytes unasked", "20:51:47.266 ReadingBuffer: 0af", "no whole bytes");
    row("no bytes unasked", "20:51:47.266 ReadingBuffer: 0a f7", "no whole bytes");
}

void TestDecodeLines::FindsDamage()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QString, damage);
    const QString found = ParseLogLine(line).damage;
    QVERIFY2(found.contains(damage), qPrintable(found));
}

void TestDecodeLines::FindsDamageInLongLines()
{
    for (const QByteArray& filling :
         {QByteArray("0"), QByteArray("12:00:00.000  "), QByteArray("12:00:00.000  73f44e "),
          QByteArray("\033[0;35m"), QByteArray("<<<          "), QByteArray("\xC3"), QByteArray("[4b]"),
          QByteArray("UPDATE ERROR - ")}) {
        const int most = LogReader::LongestLine / filling.size();
        const LogEntry entry = ParseLogLine("12:00:00.000  73f44e " + filling.repeated(most));
        QVERIFY2(entry.kind != LogEntry::Kind::Exchange || !entry.damage.isEmpty(), filling.constData());
    }
}

QTEST_APPLESS_MAIN(TestDecodeLines)
#include "tst_decodelines.moc"
