#include "cli/verbs/decodeverb.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <thread>

#include "unit/cli/decode/logfiles.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

const QByteArray Status = "20:51:40.316  \033[0;35m73f44e \033[0;33m00fed10e\033[0m[4b]\n";

QByteArray DataFile(const QByteArray& name)
{
    return QByteArray(DATA_FOLDER "/") + name;
}

QByteArray ContentOf(const QByteArray& path)
{
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

Outcome Decode(const QByteArray& log, std::vector<const char*> options = {})
{
    std::vector<const char*> arguments{"vesmar", "decode", log.constData()};
    arguments.insert(arguments.end(), options.cbegin(), options.cend());
    return RunVerb(arguments);
}

Outcome DecodeText(const QByteArray& text, const std::vector<const char*>& options = {})
{
    const LogText file(text);
    return Decode(file.Path(), options);
}

} // namespace

class TestCliDecodeVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TellsRealLogs_data();
    void TellsRealLogs();
    void NamesTheErrorOfAFailedMeasurement_data();
    void NamesTheErrorOfAFailedMeasurement();
    void TellsTheSameOfAJournal();
    void TellsEventsAsJson();
    void ReadsTheStandardInput();
    void ReadsANamedPipe();
    void RefusesDevices_data();
    void RefusesDevices();
    void EscapesWhatCouldCommandATerminal();
    void Complains_data();
    void Complains();
    void TellsWhatIsWholeOfADamagedLog();
    void NamesFilesAsTheyAre();
    void LimitsComplaints();
    void EndsJsonWithTheFailure();
    void Records();
    void RecordsAllLinks();
    void RecordsNothingOfADamagedLog();
    void RefusesToRecordOverTheLog();
    void BadUse_data();
    void BadUse();
    void OutputThatCannotBeWritten();
    void OutputThatNobodyReads();
};

void TestCliDecodeVerb::TellsRealLogs_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("a measurement") << QByteArray("measurement");
    QTest::newRow("a monitoring with trouble") << QByteArray("trouble");
}

void TestCliDecodeVerb::TellsRealLogs()
{
    QFETCH(const QByteArray, name);
    const Outcome outcome = Decode(DataFile(name + ".log"));
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output.split('\n'), ContentOf(DataFile(name + ".txt")).split('\n'));
    for (const QByteArray& line : outcome.output.split('\n')) {
        QVERIFY2(line.size() <= 120, line.constData());
        QVERIFY2(!line.endsWith(' '), line.constData());
    }
}

void TestCliDecodeVerb::NamesTheErrorOfAFailedMeasurement_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("summary");
    QTest::newRow("preparation")
        << QByteArray("preparation-fails")
        << QByteArray("  error              PrepareFailed (200), line 42\n"
                      "                     the instrument could not prepare the measurement\n"
                      "                     vesmar explain 200 tells what to do\n");
    QTest::newRow("start") << QByteArray("start-fails")
                           << QByteArray(
                                  "  error              StartFailed (201), line 60\n"
                                  "                     the instrument could not start the measurement\n"
                                  "                     vesmar explain 201 tells what to do\n");
    QTest::newRow("run") << QByteArray("no-result")
                         << QByteArray("  error              MeasurementFailed (202), line 69\n"
                                       "                     the measurement ended without a result\n"
                                       "                     vesmar explain 202 tells what to do\n");
}

void TestCliDecodeVerb::NamesTheErrorOfAFailedMeasurement()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QByteArray, summary);
    const Outcome outcome = Decode(DataFile(name + ".log"));
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.endsWith(summary + "The log is decoded.\n"), outcome.output.constData());
    QCOMPARE(outcome.output.count("  error  "), 1);
}

/// Without colours, with beginnings of lines and with other line ends.
void TestCliDecodeVerb::TellsTheSameOfAJournal()
{
    QByteArray journal;
    for (QByteArray line : ContentOf(DataFile("trouble.log")).trimmed().split('\n')) {
        for (const char* colour :
             {"\033[0;31m", "\033[0;32m", "\033[0;33m", "\033[0;34m", "\033[0;35m", "\033[0m"}) {
            line.replace(colour, "");
        }
        journal += "Nov 21 20:30:48 unit app[12]: " + line + "\r\n";
    }
    const Outcome outcome = DecodeText(journal);
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output.split('\n'), ContentOf(DataFile("trouble.txt")).split('\n'));
}

void TestCliDecodeVerb::TellsEventsAsJson()
{
    const Outcome outcome = DecodeText(
        "20:51:40.212 Transciever::Open\n" + Status +
            "20:51:40.336  73f44e 00fed10f[4b] CRC Invalid\n20:51:47.266 ReadingBuffer: 0af73370\n",
        {"--json"});
    QCOMPARE(outcome.status, 0);
    const QList<QJsonObject> objects = outcome.Objects();
    QCOMPARE(objects.size(), 5);
    const auto keys = [&objects](int i) { return objects.at(i).keys().join(QLatin1Char(' ')); };
    const auto text = [&objects](int i, const char* key) {
        return objects.at(i).value(QLatin1String(key)).toString();
    };

    QCOMPARE(keys(0), QStringLiteral("at event line text time"));
    QCOMPARE(text(0, "event"), QStringLiteral("note"));
    QCOMPARE(text(0, "at"), QStringLiteral("20:51:40.212"));
    QCOMPARE(text(0, "text"), QStringLiteral("Transciever::Open"));

    QCOMPARE(keys(1), QStringLiteral("answer at attempt event line problem request time within"));
    QCOMPARE(text(1, "event"), QStringLiteral("exchange"));
    QCOMPARE(objects.at(1).value(QLatin1String("line")), QJsonValue(2));
    QCOMPARE(objects.at(1).value(QLatin1String("within")), QJsonValue(105));
    QCOMPARE(objects.at(1).value(QLatin1String("attempt")), QJsonValue(1));
    QCOMPARE(objects.at(1).value(QLatin1String("problem")), QJsonValue());
    const QJsonObject request{{QStringLiteral("name"), QStringLiteral("read status")},
                              {QStringLiteral("bytes"), QStringLiteral("73f44e")}};
    QCOMPARE(objects.at(1).value(QLatin1String("request")).toObject(), request);
    const QJsonObject answer = objects.at(1).value(QLatin1String("answer")).toObject();
    QCOMPARE(answer.value(QLatin1String("kind")), QJsonValue(QStringLiteral("data")));
    QCOMPARE(answer.value(QLatin1String("bytes")), QJsonValue(QStringLiteral("00fed10e")));
    QCOMPARE(answer.value(QLatin1String("TesterMode")).toObject().value(QLatin1String("name")),
             QJsonValue(QStringLiteral("Normal")));

    const QJsonObject damaged{{QStringLiteral("kind"), QStringLiteral("damaged")},
                              {QStringLiteral("bytes"), QStringLiteral("00fed10f")}};
    QCOMPARE(objects.at(2).value(QLatin1String("answer")).toObject(), damaged);

    QCOMPARE(keys(3), QStringLiteral("at bytes event frames line problem time"));
    QCOMPARE(text(3, "event"), QStringLiteral("unasked"));
    QCOMPARE(objects.at(3).value(QLatin1String("frames")).toArray().size(), 1);

    QCOMPARE(text(4, "event"), QStringLiteral("result"));
    QCOMPARE(text(4, "outcome"), QStringLiteral("done"));
    QCOMPARE(objects.at(4).value(QLatin1String("exchanges")), QJsonValue(2));
    QCOMPARE(objects.at(4).value(QLatin1String("damaged")), QJsonValue(1));
    QCOMPARE(objects.at(4).value(QLatin1String("unasked")), QJsonValue(1));
    QCOMPARE(objects.at(4).value(QLatin1String("damagedLines")), QJsonValue(0));
    QCOMPARE(objects.at(4).value(QLatin1String("status")), QJsonValue(0));
}

void TestCliDecodeVerb::ReadsTheStandardInput()
{
    std::array<int, 2> ends{};
    QCOMPARE(::pipe(ends.data()), 0);
    QCOMPARE(::write(ends[1], Status.constData(), static_cast<size_t>(Status.size())),
             ssize_t(Status.size()));
    ::close(ends[1]);
    const int ownInput = ::dup(STDIN_FILENO);
    ::dup2(ends[0], STDIN_FILENO);
    ::close(ends[0]);
    const Outcome outcome = Decode("-");
    ::dup2(ownInput, STDIN_FILENO);
    ::close(ownInput);
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.contains("read status            Normal (0)"), outcome.output.constData());
}

void TestCliDecodeVerb::ReadsANamedPipe()
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("pipe")).toLocal8Bit();
    QCOMPARE(::mkfifo(path.constData(), 0600), 0);
    std::thread writer([&path] {
        QFile pipe(QFile::decodeName(path));
        if (pipe.open(QIODevice::WriteOnly)) {
            pipe.write(Status);
        }
    });
    const Outcome outcome = Decode(path);
    writer.join();
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.contains("  exchanges          1\n"), outcome.output.constData());
}

void TestCliDecodeVerb::RefusesDevices_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("no end") << QByteArray("/dev/zero");
    QTest::newRow("no content") << QByteArray("/dev/null");
}

void TestCliDecodeVerb::RefusesDevices()
{
    QFETCH(const QByteArray, path);
    const Outcome outcome = Decode(path, {"--json"});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.errors, "vesmar: " + path + " is a device; name a file, or - for the standard input\n");
    QCOMPARE(outcome.Objects().last().value(QLatin1String("reason")).toString(),
             QStringLiteral("unreadable"));
}

void TestCliDecodeVerb::EscapesWhatCouldCommandATerminal()
{
    const Outcome outcome =
        DecodeText(Status + "PREPARE MEASUREMENT : \033]0;title\007 2\n" +
                   "20:51:40.330  57122a 1b5d303431303230343831353130353033303232303136d560[25b]\n");
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.contains("PREPARE MEASUREMENT : \\x1b]0;title\\x07 2"),
             outcome.output.constData());
    QVERIFY2(outcome.output.contains("device name \\x1b]0, device code 410"), outcome.output.constData());
    QVERIFY(!outcome.output.contains('\033'));
}

void TestCliDecodeVerb::Complains_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("empty") << QByteArray() << QByteArray(" is empty; check that it is the right file");
    QTest::newRow("no exchange") << QByteArray("hello\n20:51:40.212 Transciever::Open\n")
                                 << QByteArray(" has no exchange with an instrument; check that it is a log");
    QTest::newRow("binary") << QByteArray("\0\1\2\n", 4)
                            << QByteArray(", line 1: there are bytes that are no text");
    QTest::newRow("long line") << Status + QByteArray(70000, 'x') + '\n'
                               << QByteArray(", line 2: the line has more than 65536 bytes");
    QTest::newRow("no last end") << Status.chopped(1) << QByteArray(", line 1: the line has no end");
    QTest::newRow("wrong count")
        << QByteArray("20:51:40.316  73f44e 00fed10e[5b]\n")
        << QByteArray(", line 1: the exchange is damaged: the answer has 4 bytes, and [5b]");
    QTest::newRow("odd digits") << Status + "20:51:40.316  73f44e 00fed10[4b]\n"
                                << QByteArray(", line 2: the exchange is damaged: a hexadecimal digit");
    QTest::newRow("cut off") << Status + "\n20:51:40.316  73f44e 00fe\n"
                             << QByteArray(", line 3: the exchange is damaged: its end is missing");
}

void TestCliDecodeVerb::Complains()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, complaint);
    const LogText file(text);
    const Outcome outcome = Decode(file.Path());
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains(file.Path() + complaint), outcome.errors.constData());
}

void TestCliDecodeVerb::TellsWhatIsWholeOfADamagedLog()
{
    const Outcome outcome =
        DecodeText(Status + "20:51:40.416  73f44e 00fe[4b]\n20:51:40.516  53966a 06c660[3b] ACK\n");
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.output.contains("read status"), outcome.output.constData());
    QVERIFY2(outcome.output.contains("start measurement      acknowledged"), outcome.output.constData());
    QVERIFY2(outcome.output.contains("  exchanges          2\n"), outcome.output.constData());
    QVERIFY(!outcome.output.contains("The log is decoded"));
}

void TestCliDecodeVerb::NamesFilesAsTheyAre()
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("a%1b%2c\n")).toLocal8Bit();
    QFile file(QFile::decodeName(path));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(Status + "cut") > 0);
    file.close();
    const Outcome outcome = Decode(path);
    QVERIFY2(outcome.errors.contains("/a%1b%2c\\x0a, line 2: the line has no end"),
             outcome.errors.constData());
    QVERIFY2(outcome.errors.contains("/a%1b%2c\\x0a: lines that are not decoded because they are damaged: 1"),
             outcome.errors.constData());
}

void TestCliDecodeVerb::LimitsComplaints()
{
    const Outcome outcome = DecodeText(QByteArray("\0\n", 2).repeated(1000));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.errors.count('\n'), 22);
    QVERIFY2(outcome.errors.contains(": 980 more lines are damaged\n"), outcome.errors.constData());
}

void TestCliDecodeVerb::EndsJsonWithTheFailure()
{
    const auto reasonOf = [](const Outcome& outcome) {
        const QJsonObject result = outcome.Objects().last();
        const bool isFailure = outcome.status == 1 && result.value(QLatin1String("status")).toInt() == 1 &&
                               result.value(QLatin1String("outcome")).toString() == QLatin1String("failed");
        return isFailure ? result.value(QLatin1String("reason")).toString() : QString();
    };
    const std::vector<const char*> json{"--json"};
    QCOMPARE(reasonOf(Decode("/nowhere/at/all", json)), QStringLiteral("unreadable"));
    QCOMPARE(reasonOf(Decode("/", json)), QStringLiteral("unreadable"));
    QCOMPARE(reasonOf(DecodeText("", json)), QStringLiteral("empty"));
    QCOMPARE(reasonOf(DecodeText("x\n", json)), QStringLiteral("no-exchange"));
    QCOMPARE(reasonOf(DecodeText(Status + "x", json)), QStringLiteral("damaged-log"));
    QCOMPARE(reasonOf(DecodeText(Status, {"--json", "--scenario", "/nowhere/at/all"})),
             QStringLiteral("cannot-record"));
}

void TestCliDecodeVerb::Records()
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("recording")).toLocal8Bit();
    const Outcome outcome = Decode(DataFile("measurement.log"), {"--scenario", path.constData()});
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.status, 0);
    const QJsonObject recording = QJsonDocument::fromJson(ContentOf(path)).object();
    QCOMPARE(recording.value(QLatin1String("comment")).toString(),
             QStringLiteral("Recorded by vesmar decode from measurement.log"));
    const QJsonArray exchanges = recording.value(QLatin1String("exchanges")).toArray();
    const QByteArray count = QByteArray::number(exchanges.size());
    QVERIFY2(outcome.output.endsWith("The log is decoded, and " + count + " entries are recorded.\n"),
             outcome.output.constData());
    const QJsonObject first{{QStringLiteral("request"), QStringLiteral("73f44e")},
                            {QStringLiteral("answer"), QStringLiteral("00fed10e")}};
    QCOMPARE(exchanges.first().toObject(), first);
}

void TestCliDecodeVerb::RecordsAllLinks()
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("recording")).toLocal8Bit();
    const Outcome outcome =
        DecodeText(Status + "20:51:40.316 Transciever::Close\n20:51:41.000 Transciever::Open\n" +
                       "20:51:42.000  73f44e 00fed10e[4b]\n",
                   {"--scenario", path.constData()});
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.endsWith("and 2 entries are recorded, of all 2 links.\n"),
             outcome.output.constData());
}

void TestCliDecodeVerb::RecordsNothingOfADamagedLog()
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("recording")).toLocal8Bit();
    const Outcome outcome =
        DecodeText(Status + "20:51:40.416  73f44e 00fe[4b]\n", {"--scenario", path.constData()});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains("no recording is written"), outcome.errors.constData());
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

void TestCliDecodeVerb::RefusesToRecordOverTheLog()
{
    const LogText file(Status);
    const QByteArray path = file.Path();
    const Outcome outcome = Decode(path, {"--scenario", path.constData()});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains("is the log itself"), outcome.errors.constData());
    QCOMPARE(ContentOf(path), Status);

    const QTemporaryDir folder;
    const QByteArray link = folder.filePath(QStringLiteral("link")).toLocal8Bit();
    QCOMPARE(::symlink(path.constData(), link.constData()), 0);
    QCOMPARE(Decode(path, {"--scenario", link.constData()}).status, 1);
    QCOMPARE(ContentOf(path), Status);
}

void TestCliDecodeVerb::BadUse_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("no name") << QByteArray("--scenario") << QByteArray() << QByteArray("a file needs a name");
    QTest::newRow("option of the link")
        << QByteArray("--json") << QByteArray("--trace") << QByteArray("--trace");
    QTest::newRow("second log") << QByteArray("--json") << QByteArray("another") << QByteArray("another");
}

void TestCliDecodeVerb::BadUse()
{
    QFETCH(const QByteArray, argument);
    QFETCH(const QByteArray, value);
    QFETCH(const QByteArray, complaint);
    const Outcome outcome = DecodeText(Status, {argument.constData(), value.constData()});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.contains(complaint), outcome.errors.constData());
    QVERIFY(outcome.errors.contains("Usage: vesmar decode FILE"));
}

void TestCliDecodeVerb::OutputThatCannotBeWritten()
{
    const int full = ::open("/dev/full", O_WRONLY);
    QVERIFY(full >= 0);
    const LogText file(Status);
    const QByteArray path = file.Path();
    const Outcome outcome = RunVerb({"vesmar", "decode", path.constData()}, full);
    ::close(full);
    QCOMPARE(outcome.status, 3);
    QVERIFY2(outcome.errors.contains("cannot write the output"), outcome.errors.constData());
}

void TestCliDecodeVerb::OutputThatNobodyReads()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::array<int, 2> ends{};
    QCOMPARE(::pipe(ends.data()), 0);
    ::close(ends[0]);
    const LogText file(Status);
    const QByteArray path = file.Path();
    const Outcome outcome = RunVerb({"vesmar", "decode", path.constData()}, ends[1]);
    ::close(ends[1]);
    QCOMPARE(outcome.status, 128 + SIGPIPE);
    QCOMPARE(outcome.errors, QByteArray());
}

QTEST_GUILESS_MAIN(TestCliDecodeVerb)
#include "tst_clidecodeverb.moc"
