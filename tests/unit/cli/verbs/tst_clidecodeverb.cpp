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

#include "unit/cli/verbs/verbtest.h"
#include "unit/decode/logfiles.h"

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

Outcome RunDecode(const QByteArray& log, const std::vector<const char*>& options = {})
{
    std::vector<const char*> arguments{"vesmar", "decode", log.constData()};
    arguments.insert(arguments.end(), options.cbegin(), options.cend());
    return RunVerb(arguments);
}

Outcome DecodeText(const QByteArray& text, const std::vector<const char*>& options = {})
{
    const LogText file(text);
    return RunDecode(file.Path(), options);
}

/// A folder for a recording.
class Folder
{
public:
    QByteArray Path() const { return _folder.filePath(QStringLiteral("recording")).toLocal8Bit(); }
    QStringList Files() const { return QDir(_folder.path()).entryList(QDir::Files); }

private:
    QTemporaryDir _folder;
};

} // namespace

class TestCliDecodeVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DecodesRealLogs_data();
    void DecodesRealLogs();
    void NamesTheErrorOfAFailedMeasurement_data();
    void NamesTheErrorOfAFailedMeasurement();
    void DecodesAJournalLikeALog();
    void PrintsEventsAsJson();
    void ReadsTheStandardInput();
    void ReadsANamedPipe();
    void EscapesWhatCouldCommandATerminal();
    void Complains_data();
    void Complains();
    void DecodesWhatIsWholeInADamagedLog();
    void NamesFilesAsTheyAre();
    void LimitsComplaints();
    void Records();
    void RecordsAllLinks();
    void RecordsNothingOfADamagedLog();
    void RefusesToRecordOverTheLog();
    void RefusesBadUse_data();
    void RefusesBadUse();
    void SaysThatTheOutputCannotBeWritten();
    void IsSilentWhenNobodyReadsTheOutput();
};

void TestCliDecodeVerb::DecodesRealLogs_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("a measurement") << QByteArray("measurement");
    QTest::newRow("a monitoring with trouble") << QByteArray("trouble");
}

void TestCliDecodeVerb::DecodesRealLogs()
{
    QFETCH(const QByteArray, name);
    const Outcome outcome = RunDecode(DataFile(name + ".log"));
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
    QTest::addColumn<QByteArray>("summary");
    QTest::newRow("preparation-fails")
        << QByteArray("  error              PrepareFailed (200), line 42\n"
                      "                     the instrument could not prepare the measurement\n"
                      "                     vesmar explain 200 tells what to do\n");
    QTest::newRow("start-fails") << QByteArray(
        "  error              StartFailed (201), line 60\n"
        "                     the instrument could not start the measurement\n"
        "                     vesmar explain 201 tells what to do\n");
    QTest::newRow("no-result") << QByteArray("  error              MeasurementFailed (202), line 69\n"
                                             "                     the measurement ended without a result\n"
                                             "                     vesmar explain 202 tells what to do\n");
}

void TestCliDecodeVerb::NamesTheErrorOfAFailedMeasurement()
{
    QFETCH(const QByteArray, summary);
    const Outcome outcome = RunDecode(DataFile(QByteArray(QTest::currentDataTag()) + ".log"));
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.endsWith(summary + "The log is decoded.\n"), outcome.output.constData());
    QCOMPARE(outcome.output.count("  error  "), 1);
}

/// A journal has no colours, and has beginnings of lines and other line ends.
void TestCliDecodeVerb::DecodesAJournalLikeALog()
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

void TestCliDecodeVerb::PrintsEventsAsJson()
{
    const Outcome outcome = DecodeText(
        "20:51:40.212 Transciever::Open\n" + Status +
            "20:51:40.336  73f44e 00fed10f[4b] CRC Invalid\n20:51:47.266 ReadingBuffer: 0af73370\n",
        {"--json"});
    QCOMPARE(outcome.status, 0);
    static const QRegularExpression time(QStringLiteral("\"time\":\"[^\"]*\""));
    const QByteArray noError =
        R"({"causes":[],"meaning":"no error","name":"NoErrors","nextStep":"Nothing is to be done.","number":15})";
    const QByteArrayList events{
        R"({"at":"20:51:40.212","event":"note","line":1,"text":"Transciever::Open",TIME})",
        R"({"answer":{"CurrentMeasurementType":{"name":"Monitoring","number":0},"ErrorCode":)" + noError +
            R"(,"NewMeasurement":false,"StartTestStatus":{"name":"Status14","number":14},)"
            R"("TesterMode":{"name":"Normal","number":0},"bytes":"00fed10e","kind":"data"},)"
            R"("at":"20:51:40.316","attempt":1,"event":"exchange","line":2,"problem":null,)"
            R"("request":{"bytes":"73f44e","name":"read status"},TIME,"within":105})",
        R"({"answer":{"bytes":"00fed10f","kind":"damaged"},"at":"20:51:40.336","attempt":1,)"
        R"("event":"exchange","line":3,"problem":null,)"
        R"("request":{"bytes":"73f44e","name":"read status"},TIME,"within":11})",
        R"({"at":"20:51:47.266","bytes":"0af73370","event":"unasked","frames":[{)"
        R"("CurrentMeasurementType":{"name":"RCD","number":10},"ErrorCode":)" +
            noError +
            R"(,"MeasurementFunctionStatus":{"name":"Running","number":7},"NewMeasurement":false,)"
            R"("TesterMode":{"name":"Normal","number":0}}],"line":4,"problem":null,TIME})",
        R"({"cut":0,"damaged":1,"damagedLines":0,"error":null,"errors":[],"event":"result","exchanges":2,)"
        R"("links":1,"longest":105,"longestLine":2,"message":"The log is decoded.","outcome":"done",)"
        R"("reason":null,"refused":0,"status":0,TIME,"unanswered":0,"unasked":1})"};
    const QString found = QString::fromUtf8(outcome.output).replace(time, QStringLiteral("TIME"));
    QCOMPARE(found.toUtf8().trimmed().split('\n'), events);
}

void TestCliDecodeVerb::ReadsTheStandardInput()
{
    std::array<int, 2> ends{};
    QCOMPARE(::pipe(ends.data()), 0);
    QCOMPARE(::write(ends[1], Status.constData(), static_cast<size_t>(Status.size())),
             ssize_t(Status.size()));
    ::close(ends[1]);
    const Redirection input(STDIN_FILENO, ends[0]);
    ::close(ends[0]);
    const Outcome outcome = RunDecode("-");
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.contains("read status            Normal (0)"), outcome.output.constData());
}

void TestCliDecodeVerb::ReadsANamedPipe()
{
    const Folder folder;
    const QByteArray path = folder.Path();
    QCOMPARE(::mkfifo(path.constData(), 0600), 0);
    std::thread writer([&path] {
        QFile pipe(QFile::decodeName(path));
        if (pipe.open(QIODevice::WriteOnly)) {
            pipe.write(Status);
        }
    });
    const Outcome outcome = RunDecode(path);
    writer.join();
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.contains("  exchanges          1\n"), outcome.output.constData());
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

/// A row is a path, or else the text of a log.
void TestCliDecodeVerb::Complains_data()
{
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QByteArray>("complaint");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const QByteArray& log, const char* complaint, const char* reason) {
        QTest::newRow(name) << log << QByteArray(complaint) << QString::fromLatin1(reason);
    };
    row("no file", "/nowhere/at/all", ": No such file or directory", "unreadable");
    row("folder", "/", ": Is a directory", "unreadable");
    const char* const device = " is a device; name a file, or - for the standard input\n";
    row("device without an end", "/dev/zero", device, "unreadable");
    row("device without a content", "/dev/null", device, "unreadable");
    row("empty", "", " is empty; check that it is the right file", "empty");
    row("no exchange", "hello\n20:51:40.212 Transciever::Open\n",
        " has no exchange with an instrument; check that it is a log", "no-exchange");
    row("binary", QByteArray("\0\1\2\n", 4), ", line 1: there are bytes that are no text", "damaged-log");
    row("long line", Status + QByteArray(70000, 'x') + '\n', ", line 2: the line has more than 65536 bytes",
        "damaged-log");
    row("no last end", Status.chopped(1), ", line 1: the line has no end", "damaged-log");
    row("wrong count", "20:51:40.316  73f44e 00fed10e[5b]\n",
        ", line 1: the exchange is damaged: the answer has 4 bytes, and [5b]", "damaged-log");
    row("odd digits", Status + "20:51:40.316  73f44e 00fed10[4b]\n",
        ", line 2: the exchange is damaged: a hexadecimal digit", "damaged-log");
    row("cut off", Status + "\n20:51:40.316  73f44e 00fe\n",
        ", line 3: the exchange is damaged: its end is missing", "damaged-log");
}

void TestCliDecodeVerb::Complains()
{
    QFETCH(const QByteArray, log);
    QFETCH(const QByteArray, complaint);
    const LogText file(log);
    const QByteArray path = log.startsWith('/') ? log : file.Path();
    const Outcome outcome = RunDecode(path, {"--json"});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains(path + complaint), outcome.errors.constData());
    QCOMPARE(outcome.Result("status"), QJsonValue(1));
    QCOMPARE(outcome.Result("outcome"), QJsonValue(QStringLiteral("failed")));
    QTEST(outcome.Result("reason").toString(), "reason");
}

void TestCliDecodeVerb::DecodesWhatIsWholeInADamagedLog()
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
    const QByteArray errors = RunDecode(path).errors;
    QVERIFY2(errors.contains("/a%1b%2c\\x0a, line 2: the line has no end"), errors.constData());
    QVERIFY2(errors.contains("/a%1b%2c\\x0a: lines that are not decoded because they are damaged: 1"),
             errors.constData());
}

void TestCliDecodeVerb::LimitsComplaints()
{
    const Outcome outcome = DecodeText(QByteArray("\0\n", 2).repeated(1000));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.errors.count('\n'), 22);
    QVERIFY2(outcome.errors.contains(": 980 more lines are damaged\n"), outcome.errors.constData());
}

void TestCliDecodeVerb::Records()
{
    const Folder folder;
    const QByteArray path = folder.Path();
    const Outcome outcome = RunDecode(DataFile("measurement.log"), {"--scenario", path.constData()});
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
    const Folder folder;
    const QByteArray path = folder.Path();
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
    const Folder folder;
    const QByteArray path = folder.Path();
    const Outcome outcome =
        DecodeText(Status + "20:51:40.416  73f44e 00fe[4b]\n", {"--scenario", path.constData()});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains("no recording is written"), outcome.errors.constData());
    QCOMPARE(folder.Files(), QStringList());
}

void TestCliDecodeVerb::RefusesToRecordOverTheLog()
{
    const LogText file(Status);
    const QByteArray path = file.Path();
    const Folder folder;
    const QByteArray link = folder.Path();
    QCOMPARE(::symlink(path.constData(), link.constData()), 0);
    for (const QByteArray& recording : {path, link}) {
        const Outcome outcome = RunDecode(path, {"--scenario", recording.constData()});
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.errors.contains("is the log itself"), outcome.errors.constData());
        QCOMPARE(ContentOf(path), Status);
    }
    QCOMPARE(DecodeText(Status, {"--json", "--scenario", "/nowhere/at/all"}).Result("reason"),
             QJsonValue(QStringLiteral("cannot-record")));
}

void TestCliDecodeVerb::RefusesBadUse_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("no name") << QByteArray("--scenario") << QByteArray() << QByteArray("a file needs a name");
    QTest::newRow("option of the link")
        << QByteArray("--json") << QByteArray("--trace") << QByteArray("--trace");
    QTest::newRow("second log") << QByteArray("--json") << QByteArray("another") << QByteArray("another");
}

void TestCliDecodeVerb::RefusesBadUse()
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

void TestCliDecodeVerb::SaysThatTheOutputCannotBeWritten()
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

void TestCliDecodeVerb::IsSilentWhenNobodyReadsTheOutput()
{
    std::signal(SIGPIPE, SIG_IGN); // as the program does
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
