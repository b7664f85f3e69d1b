#include "cli/decode/logentry.h"

#include <QtTest>

using Cli::LogEntry;
using Cli::ParseLogLine;

Q_DECLARE_METATYPE(LogEntry::Kind)

class TestCliLogEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FindsExchanges_data();
    void FindsExchanges();
    void TakesThemApart();
    void FindsOtherLines_data();
    void FindsOtherLines();
    void FindsDamage_data();
    void FindsDamage();
};

void TestCliLogEntry::FindsExchanges_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("word");
    const QByteArray status = "20:51:40.316  \033[0;35m73f44e \033[0;33m00fed10e\033[0m[4b]";
    QTest::newRow("data") << status << QByteArray("00fed10e") << "";
    QTest::newRow("without colours") << QByteArray("20:51:40.316  73f44e 00fed10e[4b]")
                                     << QByteArray("00fed10e") << "";
    QTest::newRow("behind a journal's beginning")
        << "Nov 21 20:30:48 unit app[12]: " + status << QByteArray("00fed10e") << "";
    QTest::newRow("behind another time")
        << "[20:30:48.123 warning] " + status << QByteArray("00fed10e") << "";
    QTest::newRow("colours written out")
        << QByteArray("20:51:40.316  #033[0;35m73f44e #033[0;33m00fed10e#033[0m[4b]")
        << QByteArray("00fed10e") << "";
    QTest::newRow("acknowledged")
        << QByteArray("20:51:40.316  \033[0;35m73f44e \033[0;33m06c660\033[0m[3b]\033[0;32m ACK\033[0m")
        << QByteArray("06c660") << "ACK";
    QTest::newRow("refused")
        << QByteArray("20:51:40.316  \033[0;35m73f44e \033[0;33m214334\033[0m[3b]\033[0;31m NACK\033[0m")
        << QByteArray("214334") << "NACK";
    QTest::newRow("refused prepare") << QByteArray(
                                            "20:51:40.316  \033[0;35m73f44e \033[0;33m214334\033[0m[3b]"
                                            "\033[0;31m NACK\033[0m Function prepare: 2")
                                     << QByteArray("214334") << "NACK";
    QTest::newRow("damaged")
        << QByteArray("20:51:40.316  \033[0;35m73f44e \033[0;33m00fe\033[0m[2b]\033[0;31m CRC Invalid\033[0m")
        << QByteArray("00fe") << "CRC Invalid";
    QTest::newRow("no answer")
        << QByteArray("20:51:40.316  \033[0;35m73f44e \033[0;33m\033[0m[0b]\033[0;31m No response\033[0m")
        << QByteArray() << "No response";
}

void TestCliLogEntry::FindsExchanges()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, word);
    const LogEntry entry = ParseLogLine(line);
    QCOMPARE(entry.damage, QString());
    QCOMPARE(entry.kind, LogEntry::Kind::Exchange);
    QCOMPARE(entry.at, QTime(20, 51, 40, 316));
    QCOMPARE(entry.request.toHex(), QByteArray("73f44e"));
    QCOMPARE(entry.answer.toHex(), answer);
    QCOMPARE(entry.word, word);
}

void TestCliLogEntry::TakesThemApart()
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

void TestCliLogEntry::FindsOtherLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<LogEntry::Kind>("kind");
    QTest::addColumn<QString>("text");
    using Kind = LogEntry::Kind;
    QTest::newRow("open") << QByteArray("20:51:40.212 Transciever::Open") << Kind::Note
                          << "Transciever::Open";
    QTest::newRow("failed to open") << QByteArray(
                                           "20:51:40.212 Transciever::Open: Serial port failed to open.")
                                    << Kind::Note << "Transciever::Open: Serial port failed to open.";
    QTest::newRow("close") << QByteArray("x 20:51:40.212 Transciever::Close") << Kind::Note
                           << "Transciever::Close";
    QTest::newRow("state")
        << QByteArray("\033[0;34m<<<                              ENTERING MONITORING STATE \033[0m")
        << Kind::State << "ENTERING MONITORING STATE";
    QTest::newRow("state left")
        << QByteArray("\033[0;34m<<<                              LEAVING MONITORING STATE \033[0m")
        << Kind::Other << "";
    QTest::newRow("prepare") << QByteArray("unit: \033[0;31mPREPARE MEASUREMENT : 2\033[0m") << Kind::Note
                             << "PREPARE MEASUREMENT : 2";
    QTest::newRow("quick start") << QByteArray(
                                        "\033[0;31mQUICK START MEASUREMENT - PREPARE AND START RLN\033[0m")
                                 << Kind::Note << "QUICK START MEASUREMENT - PREPARE AND START RLN";
    QTest::newRow("abort") << QByteArray("\033[0;31mABORT MEASUREMENT\033[0m") << Kind::Note
                           << "ABORT MEASUREMENT";
    QTest::newRow("update error") << QByteArray("\033[0;31mUPDATE ERROR - Confirmation error.\033[0m")
                                  << Kind::Note << "UPDATE ERROR - Confirmation error.";
    QTest::newRow("progress") << QByteArray("Update progress: 25") << Kind::Note << "Update progress: 25";
    QTest::newRow("start in words") << QByteArray("20:51:41.418 \033[0;32mFunction run.\033[0m") << Kind::Echo
                                    << "";
    QTest::newRow("prepare in words")
        << QByteArray("20:51:40.990 \033[0;32mFunction prepare: 2 Function name: Rpe\033[0m") << Kind::Echo
        << "";
    QTest::newRow("status in words")
        << QByteArray("DeviceMode: 0 MeasurementType: 0 Error: 15 ProcessStatus: 14 NewMeasurement: 0")
        << Kind::Other << "";
    QTest::newRow("another's") << QByteArray("20:51:40.316 42 apples were sold") << Kind::Other << "";
    QTest::newRow("another's number") << QByteArray("20:51:40.316  42 apples were sold") << Kind::Other << "";
    QTest::newRow("another's number that is a letter")
        << QByteArray("20:51:40.316  50 apples were sold") << Kind::Other << "";
    QTest::newRow("another's last number") << QByteArray("20:51:40.316  42") << Kind::Other << "";
    QTest::newRow("another's bytes") << QByteArray("\xff\xfe\x1b[2J") << Kind::Other << "";
    QTest::newRow("nothing") << QByteArray() << Kind::Other << "";
}

void TestCliLogEntry::FindsOtherLines()
{
    QFETCH(const QByteArray, line);
    QFETCH(const LogEntry::Kind, kind);
    QFETCH(const QString, text);
    const LogEntry entry = ParseLogLine(line);
    QCOMPARE(entry.damage, QString());
    QCOMPARE(entry.kind, kind);
    QCOMPARE(entry.text, text);
}

void TestCliLogEntry::FindsDamage_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("damage");
    QTest::newRow("odd request") << QByteArray("20:51:40.316  73f44 00fed10e[4b]") << "hexadecimal digit";
    QTest::newRow("odd answer") << QByteArray("20:51:40.316  73f44e 00fed10[4b]") << "hexadecimal digit";
    QTest::newRow("too few bytes") << QByteArray("20:51:40.316  73f44e 00fed1[4b]")
                                   << "has 3 bytes, and [4b]";
    QTest::newRow("too many bytes") << QByteArray("20:51:40.316  73f44e 00fed10e00[4b]")
                                    << "has 5 bytes, and [4b]";
    QTest::newRow("enormous count") << QByteArray("20:51:40.316  73f44e 00fed10e[99999999999b]")
                                    << "[99999999999b]";
    QTest::newRow("word cut off") << QByteArray("20:51:40.316  73f44e 214334[3b] NAC")
                                  << "\"NAC\" stands behind it";
    QTest::newRow("two lines in one")
        << QByteArray("20:51:40.316  73f44e 00fed10e[4b]20:51:40.416") << "stands behind it";
    QTest::newRow("no time of day") << QByteArray("25:51:40.316  73f44e 00fed10e[4b]") << "time of day";
    QTest::newRow("cut in the count")
        << QByteArray("20:51:40.316  73f44e 00fed10e[4") << "its end is missing";
    QTest::newRow("cut in the answer") << QByteArray("20:51:40.316  73f44e 00fe") << "its end is missing";
    QTest::newRow("cut in the request") << QByteArray("20:51:40.316  73f4") << "its end is missing";
    QTest::newRow("cut behind the request") << QByteArray("20:51:40.316  73f44e ") << "its end is missing";
    QTest::newRow("cut behind the colour") << QByteArray("20:51:40.316  \033[0;35m") << "its end is missing";
    QTest::newRow("no digits") << QByteArray("20:51:40.316  \033[0;35m7?f44e \033[0;33m00\033[0m[1b]")
                               << "its end is missing";
    QTest::newRow("odd bytes unasked") << QByteArray("20:51:47.266 ReadingBuffer: 0af") << "no whole bytes";
    QTest::newRow("no bytes unasked") << QByteArray("20:51:47.266 ReadingBuffer: 0a f7") << "no whole bytes";
}

void TestCliLogEntry::FindsDamage()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QString, damage);
    const QString found = ParseLogLine(line).damage;
    QVERIFY2(found.contains(damage), qPrintable(found));
}

QTEST_APPLESS_MAIN(TestCliLogEntry)
#include "tst_clilogentry.moc"
