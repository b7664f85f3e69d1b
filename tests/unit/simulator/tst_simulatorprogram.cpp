#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <memory>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include "lineclient.h"
#include "simulator/control/scenarios.h"
#include "simulator/line/ptyline.h"
#include "support/wire.h"

using namespace Wire;

namespace
{

/// A program may take this long on a busy machine, in milliseconds.
constexpr int Patience = 60000;

const QString SimulatorProgram = QStringLiteral(SIMULATOR_PROGRAM);

// Pieces of shell programs that know nothing but the path of the device and the bytes of the line.
const QString OpenDevice = QStringLiteral("exec 3<>/dev/ttycommunication; ");
const QString AskStatus = QStringLiteral("printf '\\163\\364\\116' >&3; head -c 3 <&3 | od -An -tx1; ");
const QString AskStop = QStringLiteral("printf '\\150\\256\\355' >&3; head -c 3 <&3 | od -An -tx1; ");
const QString AskVersion = QStringLiteral("printf '\\127\\022\\052' >&3; head -c 25 <&3 | od -An -v -tx1; ");
const QString AskState = QStringLiteral("printf '\\163\\364\\116' >&3; head -c 4 <&3 | od -An -tx1; ");
const QString AskPrepareHvTest = QStringLiteral(
    "printf '\\120\\011\\005\\002\\000\\377\\377\\377\\377\\006\\076' >&3; head -c 3 <&3 | od -An -tx1; ");
const QString AskInitialize = QStringLiteral("printf '\\126\\063\\072' >&3; head -c 4 <&3 | od -An -tx1; ");
const QString AskSectors =
    QStringLiteral("for s in one two; do cat $s >&3; head -c 3 <&3 | od -An -tx1; done; ");
const QString AskConfirm =
    QStringLiteral("printf '\\132\\026\\155\\321\\215' >&3; head -c 3 <&3 | od -An -tx1; ");
const QString AskStart = QStringLiteral("printf '\\123\\226\\152' >&3; head -c 3 <&3 | od -An -tx1; ");

/// Returns the words between the bars.
QStringList Words(const char* text)
{
    return QString::fromUtf8(text).split(QLatin1Char('|'));
}

/// Returns the arguments that run a shell program. The options stand between bars.
QStringList RunShell(const QString& script, const char* options = "")
{
    QStringList arguments = Words("run|--|sh|-c") << script;
    return *options == '\0' ? arguments : arguments.mid(0, 1) + Words(options) + arguments.mid(1);
}

/// A terminal in which the simulator runs a shell program.
class Terminal
{
public:
    enum class Shell { None, WithJobs };

    explicit Terminal(const char* script, Shell shell = Shell::None)
    {
        const QByteArray program = QFile::encodeName(SimulatorProgram);
        _process = ::forkpty(&_terminal, nullptr, nullptr, nullptr);
        if (_process == 0 && shell == Shell::WithJobs) {
            ::execlp("bash", "bash", "-m", "-c", "\"$0\" run -- sh -c \"$1\"; echo status=$?",
                     program.constData(), script, nullptr);
        } else if (_process == 0) {
            ::execl(program.constData(), program.constData(), "run", "--", "sh", "-c", script, nullptr);
        }
        if (_process == 0) {
            ::_exit(99);
        }
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { Close(); }

    bool Type(const QByteArray& keys) const
    {
        return ::write(_terminal, keys.constData(), static_cast<std::size_t>(keys.size())) == keys.size();
    }

    bool ReadUntil(const char* text)
    {
        pollfd descriptor{_terminal, POLLIN, 0};
        char buffer[256];
        while (!_output.contains(text) && ::poll(&descriptor, 1, Patience) > 0) {
            const ssize_t size = ::read(_terminal, buffer, sizeof(buffer));
            if (size <= 0) {
                break;
            }
            _output.append(buffer, static_cast<int>(size));
        }
        return _output.contains(text);
    }

    void Close()
    {
        if (_terminal >= 0) {
            ::close(_terminal);
            _terminal = -1;
        }
    }

    /// Waits for the end. Returns -1 when a signal brought it.
    int ExitStatus() const
    {
        int status = 0;
        ::waitpid(_process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    int _terminal = -1;
    pid_t _process = -1;
    QByteArray _output;
};

QByteArray Hex(const QByteArray& dump)
{
    return QByteArray(dump).replace(' ', "").replace('\n', "");
}

QByteArray FirstSector()
{
    return QByteArray(512, '\x11');
}

/// Returns all 256 bytes, twice.
QByteArray SecondSector()
{
    QByteArray sector;
    for (int i = 0; i < 512; ++i) {
        sector.append(static_cast<char>(i));
    }
    return sector;
}

} // namespace

class TestSimulatorProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _folder = std::make_unique<QTemporaryDir>();
        _process = std::make_unique<QProcess>();
        _process->setWorkingDirectory(_folder->path());
        _output.clear();
        _errors.clear();
    }

    void ExitStatusOfTheProgram_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("status");
        QTest::newRow("success") << "true" << 0;
        QTest::newRow("failure") << "false" << 1;
        QTest::newRow("own number") << "exit 42" << 42;
        QTest::newRow("killed") << "kill -9 $$" << 137;
        QTest::newRow("terminated") << "kill -TERM $$" << 143;
    }

    void ExitStatusOfTheProgram()
    {
        QFETCH(QString, script);
        QFETCH(int, status);
        QCOMPARE(Run(RunShell(script)), status);
        QCOMPARE(_errors, QByteArray());
    }

    void ProgramThatCannotBeStarted()
    {
        QCOMPARE(Run("run|--|/no/such/program"), 127);
        QCOMPARE(_errors,
                 QByteArray("vesmar-simulator: cannot run /no/such/program: No such file or directory\n"));
    }

    void ArgumentsArriveAsTheyAre()
    {
        QCOMPARE(Run("run|--|printf|<%s>|[a,b]||--|--help|a b"), 0);
        QCOMPARE(_output, QByteArray("<[a,b]><><--><--help><a b>"));
    }

    void ProgramTalksToTheInstrument()
    {
        QCOMPARE(Run(RunShell(OpenDevice + AskVersion)), 0);
        QCOMPARE(Hex(_output), Version.toHex());
    }

    void ProgramMayLookBeforeItOpens()
    {
        const QString device = QStringLiteral("/dev/ttycommunication");
        QCOMPARE(Run(RunShell(
                     QStringLiteral("test -c %1 && test -r %1 && test -w %1 && ! test -L %1 && ! test -e %1x")
                         .arg(device))),
                 0);
        QCOMPARE(Run({QStringLiteral("run"), QStringLiteral("--"), QStringLiteral("stat"),
                      QStringLiteral("-c"), QStringLiteral("%F"), device}),
                 0);
        QCOMPARE(_output, QByteArray("character special file\n"));
    }

    void OtherFilesAreLeftAlone()
    {
        const QString path = _folder->filePath(QStringLiteral("file"));
        QCOMPARE(Run(RunShell(QStringLiteral("umask 027; echo text > %1; cat %1").arg(path))), 0);
        QCOMPARE(_output, QByteArray("text\n"));
        struct stat state = {};
        QCOMPARE(::stat(QFile::encodeName(path).constData(), &state), 0);
        QCOMPARE(state.st_mode & 07777U, 0640U);
    }

    void LineSettingsAreLogged()
    {
        const Simulator::PtyLine otherLine;
        qputenv("VESMAR_SIMULATOR_LINE_LOG", "settings");
        const int status =
            Run(RunShell(QStringLiteral("stty -F %1 parodd; stty -F /dev/ttycommunication parenb; "
                                        "stty -F /dev/ttycommunication min 0 time 3")
                             .arg(otherLine.DevicePath())));
        qunsetenv("VESMAR_SIMULATOR_LINE_LOG");
        // The pseudo-terminal has dropped the parity by the time of the second line.
        QCOMPARE(Content("settings"), QByteArray("iflag=0 oflag=0 cflag=19b2 lflag=0 vmin=1 vtime=0\n"
                                                 "iflag=0 oflag=0 cflag=18b2 lflag=0 vmin=0 vtime=3\n"));
        QCOMPARE(status, 0);
    }

    void OtherPreloadedLibrariesAreKept()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral("libdl.so.2"));
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
        _process->setProcessEnvironment(environment);
        QCOMPARE(Run(RunShell(QStringLiteral("echo $LD_PRELOAD"))), 0);
        QCOMPARE(_output, QByteArray(PRELOAD_LIBRARY ":libdl.so.2\n"));
    }

    void TwoSideBySide()
    {
        const QString script = OpenDevice + QStringLiteral("echo open; read go; ") + AskStatus;
        QProcess other;
        other.start(SimulatorProgram, RunShell(script, "--scenario|refuse"));
        _process->start(SimulatorProgram, RunShell(script));
        QTRY_VERIFY_WITH_TIMEOUT(_process->canReadLine(), Patience);
        QTRY_VERIFY_WITH_TIMEOUT(other.canReadLine(), Patience);
        _process->write("go\n");
        other.write("go\n");
        QCOMPARE(Finish(), 0);
        QVERIFY(other.waitForFinished(Patience));
        QByteArray status = QByteArray::fromHex(Hex(_output.mid(5)).left(4));
        constexpr char AllButNewReading = 0x7f; // There is a new reading after a while.
        status[0] = static_cast<char>(status.at(0) & AllButNewReading);
        QCOMPARE(status.toHex(), QByteArray("00fe"));
        QCOMPARE(Hex(other.readAllStandardOutput().mid(5)), QByteArray("214334"));
    }

    void SignalsAreForwarded_data()
    {
        QTest::addColumn<int>("signalNumber");
        QTest::addColumn<QString>("name");
        QTest::newRow("SIGINT") << SIGINT << "INT";
        QTest::newRow("SIGTERM") << SIGTERM << "TERM";
        QTest::newRow("SIGHUP") << SIGHUP << "HUP";
    }

    void SignalsAreForwarded()
    {
        QFETCH(int, signalNumber);
        QFETCH(QString, name);
        _process->start(
            SimulatorProgram,
            RunShell(QStringLiteral("trap 'echo got; exit 7' %1; echo ready; while :; do sleep 0.05; done")
                         .arg(name)));
        QTRY_VERIFY_WITH_TIMEOUT(_process->canReadLine(), Patience);
        QCOMPARE(::kill(static_cast<pid_t>(_process->processId()), signalNumber), 0);
        QCOMPARE(Finish(), 7);
        QCOMPARE(_output, QByteArray("ready\ngot\n"));
    }

    void ControlCReachesTheProgramOnce()
    {
        Terminal terminal("trap 'n=$((n+1))' INT; n=0; echo ready; while [ $n = 0 ]; do sleep 0.05; done; "
                          "sleep 0.3; echo count=$n; exit 5");
        QVERIFY(terminal.ReadUntil("ready"));
        QVERIFY(terminal.Type("\x03"));
        QVERIFY(terminal.ReadUntil("count=1"));
        QCOMPARE(terminal.ExitStatus(), 5);
    }

    /// The shell would tell 148 if the simulator had stopped.
    void ControlZStopsNothing()
    {
        Terminal terminal("exec 3<>/dev/ttycommunication; echo ready; read key; "
                          "printf '\\163\\364\\116' >&3; head -c 2 <&3 | od -An -tx1; exit 5",
                          Terminal::Shell::WithJobs);
        QVERIFY(terminal.ReadUntil("ready"));
        QVERIFY(terminal.Type("\x1A"));
        QVERIFY(terminal.ReadUntil("^Z"));
        QVERIFY(terminal.Type("\n"));
        QVERIFY(terminal.ReadUntil("00 fe"));
        QVERIFY(terminal.ReadUntil("status=5"));
    }

    void ClosedTerminalReachesTheProgram()
    {
        Terminal terminal("trap 'exit 6' HUP; echo ready; while :; do sleep 0.05; done");
        QVERIFY(terminal.ReadUntil("ready"));
        terminal.Close();
        QCOMPARE(terminal.ExitStatus(), 6);
    }

    void NothingIsLeftBehind()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), _folder->path());
        _process->setProcessEnvironment(environment);
        QCOMPARE(Run(RunShell(QStringLiteral("ls $TMPDIR/*"))), 0);
        QCOMPARE(_output, QByteArray("line\n"));
        QCOMPARE(QDir(_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    }

    void PreloadedLibraryMissing()
    {
        const QString copy = _folder->filePath(QStringLiteral("vesmar-simulator"));
        QVERIFY(QFile::copy(SimulatorProgram, copy));
        _process->start(copy, Words("run|--|true"));
        QCOMPARE(Finish(), 1);
        QVERIFY2(_errors.contains("vesmar-simulator-preload.so") && _errors.count('\n') == 1,
                 _errors.constData());
    }

    void CommandsAtTheirTime()
    {
        const QString script =
            OpenDevice +
            QStringLiteral("while :; do case $(%1) in *21*43*34*) exit 3;; esac; done").arg(AskStop);
        QCOMPARE(Run(RunShell(script, "--at|0.2:error 4|--at|0.4:fault refuse")), 3);
    }

    void LogOfTheExchanges()
    {
        QCOMPARE(Run(RunShell(OpenDevice + AskVersion, "--log|log")), 0);
        const QByteArrayList words = Content("log").trimmed().split(' ');
        QCOMPARE(words.size(), 3);
        QCOMPARE(words.at(1), QByteArray("57122a"));
        QCOMPARE(words.at(2), Version.toHex());
    }

    void MeasurementInTheLog()
    {
        const QString awaitState = QStringLiteral("until { %1 } | grep -q '[08]9 %2'; do sleep 0.02; done; ");
        const QString script = OpenDevice + AskPrepareHvTest +
                               awaitState.arg(AskState, QStringLiteral("f4")) + AskStart +
                               awaitState.arg(AskState, QStringLiteral("f7")) + AskStop +
                               awaitState.arg(AskState, QStringLiteral("f9"));
        QCOMPARE(Run(RunShell(script, "--log|log|--start-delay|400")), 0);
        QDateTime preparedAt;
        QDateTime startingAt;
        QByteArrayList changes;
        for (const QByteArray& line : Content("log").split('\n')) {
            const QDateTime time =
                QDateTime::fromString(QString::fromLatin1(line.left(24)), Qt::ISODateWithMs);
            const QByteArray text = line.mid(25);
            if (text == "function 9 prepared") {
                preparedAt = time;
            } else if (text == "function 9 starting") {
                startingAt = time;
            }
            if (text.startsWith("function")) {
                changes.append(text);
            }
        }
        QCOMPARE(changes.join(','),
                 QByteArray("function 9 preparing,function 9 prepared,function 9 starting,function 9 running,"
                            "function 9 stopping,function 9 stopped by request"));
        // The start comes after the first. Its own line may be late by what a busy machine takes to write it.
        QVERIFY(preparedAt.msecsTo(startingAt) >= 399); // both times are rounded down
    }

    void UpdateInTheLog()
    {
        WriteSectors();
        const QString script = OpenDevice + AskInitialize + AskSectors + AskConfirm +
                               QStringLiteral("until grep -q 'restarted into' log; do sleep 0.02; done; ") +
                               AskVersion;
        QCOMPARE(Run(RunShell(script, "--at|0:mode 3|--log|log|--save-firmware|firmware|--new-version|2.17"
                                      "|--install-time|30|--restart-time|30")),
                 0);
        QCOMPARE(Hex(_output),
                 QByteArray("0002422006c66006c66006c660504154343130323034383135323137303330323230313621f2"));
        QCOMPARE(Content("firmware"), FirstSector() + SecondSector());

        QByteArrayList remarks;
        for (const QByteArray& line : Content("log").split('\n')) {
            if (line.contains("update") || line.contains("firmware") || line.contains("restarted")) {
                remarks.append(line.mid(25));
            }
        }
        QCOMPARE(remarks.join(','), QByteArray("update initialized,"
                                               "firmware of 1024 bytes confirmed: version 1.05 -> 2.17,"
                                               "restarted into mode 0"));
    }

    void ModeAtTheStart()
    {
        QCOMPARE(Run(RunShell(OpenDevice + AskState, "--at|0:mode 3")), 0);
        QCOMPARE(Hex(_output), QByteArray("60fefb05"));
    }

    void UpdateScenario()
    {
        WriteSectors();
        const QString script = OpenDevice + AskInitialize + AskSectors;
        QCOMPARE(Run(RunShell(script, "--at|0:mode 3|--scenario|refuses-sector 2")), 0);
        QCOMPARE(Hex(_output), QByteArray("0002422006c660214334"));
    }

    void ConfirmationAsTold()
    {
        WriteSectors();
        const QString script = OpenDevice + AskInitialize + AskSectors + AskConfirm + AskInitialize +
                               AskSectors +
                               QStringLiteral("printf '\\132\\253\\315\\152\\120' >&3; "
                                              "head -c 3 <&3 | od -An -tx1");
        QCOMPARE(Run(RunShell(script, "--at|0:mode 3|--confirmation|abCD")), 0);
        QCOMPARE(Hex(_output), QByteArray("0002422006c66006c6602143340002422006c66006c66006c660"));
    }

    /// At 1200 bits per second 3 bytes take 27.5 ms, and 25 take 229.1 ms.
    void BytesTakeTheirTime()
    {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(Run(RunShell(OpenDevice + AskVersion, "--baud|1200")), 0);
        QVERIFY(timer.elapsed() >= 256);
        QCOMPARE(Hex(_output), Version.toHex());
    }

    void FirmwareFileThatCannotBeWritten()
    {
        QCOMPARE(Run(RunShell(QStringLiteral("echo ran"), "--save-firmware|/no/such/folder/firmware")), 1);
        QCOMPARE(_errors,
                 QByteArray("vesmar-simulator: cannot save the firmware to /no/such/folder/firmware: "
                            "No such file or directory\n"));
        QCOMPARE(_output, QByteArray());
    }

    void ConfirmationOfAnImage()
    {
        QVERIFY(Write("image", FirstSector() + SecondSector()));
        QCOMPARE(Run("confirmation|image"), 0);
        QCOMPARE(_output.toHex(), QByteArray("166d"));
        QCOMPARE(_errors, QByteArray());
    }

    void ConfirmationOfNoImage_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QByteArray>("mentioned");
        QTest::newRow("missing") << -1 << QByteArray("cannot read the image ");
        QTest::newRow("empty") << 0 << QByteArray(" has 0 bytes; ");
        QTest::newRow("not a multiple of a sector") << 1000 << QByteArray(" has 1000 bytes; ");
    }

    void ConfirmationOfNoImage()
    {
        QFETCH(int, size);
        QFETCH(QByteArray, mentioned);
        if (size >= 0) {
            QVERIFY(Write("image", QByteArray(size, 'x')));
        }
        QCOMPARE(Run("confirmation|image"), 1);
        QVERIFY2(_errors.startsWith("vesmar-simulator: ") && _errors.contains(mentioned),
                 _errors.constData());
        QCOMPARE(_errors.count('\n'), 1);
        QCOMPARE(_output, QByteArray());
    }

    void ConfirmationOfWhatMayBeEndless_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("device") << "/dev/zero" << QByteArray("it is no file; name a file");
        QTest::newRow("folder") << "." << QByteArray("it is no file; name a file");
        QTest::newRow("pipe that nobody writes to") << "pipe" << QByteArray("it is no file; name a file");
        QTest::newRow("enormous") << "enormous" << QByteArray("it has more than 67108864 bytes");
    }

    void ConfirmationOfWhatMayBeEndless()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, reason);
        QCOMPARE(::mkfifo(QFile::encodeName(_folder->filePath(QStringLiteral("pipe"))).constData(), 0600), 0);
        QFile enormous(_folder->filePath(QStringLiteral("enormous")));
        QVERIFY(enormous.open(QIODevice::WriteOnly) && enormous.resize(64 * 1024 * 1024 + 512));
        QCOMPARE(Run({QStringLiteral("confirmation"), path}), 1);
        QCOMPARE(_errors,
                 "vesmar-simulator: cannot read the image " + path.toLocal8Bit() + ": " + reason + '\n');
        QCOMPARE(_output, QByteArray());
    }

    void ConfirmationThatCannotBeWritten()
    {
        QVERIFY(Write("image", FirstSector()));
        _process->setStandardOutputFile(QStringLiteral("/dev/full"));
        QCOMPARE(Run("confirmation|image"), 1);
        QCOMPARE(_errors,
                 QByteArray("vesmar-simulator: cannot write the confirmation to the standard output\n"));
    }

    void FaultsOfAFile()
    {
        QVERIFY(Write("faults",
                      R"({"faults": [{"fault": "refuse", "when": {"request": "s", "from": 2}, "count": 1},)"
                      R"({"command": "error 4", "when": {"request": "s", "from": 3}}]})"));
        const QString script =
            OpenDevice + AskStatus + QStringLiteral("head -c 1 <&3 >/dev/null; ") + AskStatus + AskState;
        QCOMPARE(Run(RunShell(script, "--faults|faults")), 0);
        const QByteArray lines = Hex(_output);
        QVERIFY2(lines.mid(2, 2) == "fe", lines.constData());
        QCOMPARE(lines.mid(6, 6), QByteArray("214334"));
        QCOMPARE(lines.mid(14, 2), QByteArray("4e"));
        QCOMPARE(_errors, QByteArray());
    }

    void FilesThatAreWrong_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("error");
        QTest::newRow("--faults") << QByteArray("{\"faults\": [\n{\"fault\": \"slow\",\n\"delay\": -1}]}")
                                  << QByteArray("\"delay\": must be a whole number from 0 to 600000\n");
        QTest::newRow("--playback")
            << QByteArray("{\"exchanges\": [\n{\"request\": \"73\",\n\"answer\": \"0\"}]}")
            << QByteArray("\"answer\": must be 1 to 2048 bytes of two hexadecimal digits each\n");
    }

    /// Nothing is answered or run, and no log is begun.
    void FilesThatAreWrong()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, error);
        QVERIFY(Write("wrong", content));
        const QByteArray options = QByteArray(QTest::currentDataTag()) + "|wrong|--log|log";
        QCOMPARE(Run(RunShell(QStringLiteral("echo run"), options.constData())), 1);
        QCOMPARE(_errors, "vesmar-simulator: wrong, line 3: " + error);
        QCOMPARE(_output, QByteArray());
        QVERIFY(!Exists("log"));
    }

    void FoldersAreNoFiles_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::newRow("--faults") << QByteArray("the faults");
        QTest::newRow("--playback") << QByteArray("the recording");
    }

    void FoldersAreNoFiles()
    {
        QFETCH(QByteArray, kind);
        QCOMPARE(Run(("--link|line|" + QByteArray(QTest::currentDataTag()) + "|.").constData()), 1);
        QCOMPARE(_errors, "vesmar-simulator: cannot read " + kind + " .: it is no file; name a file\n");
        QVERIFY(!QFileInfo(LinkPath()).isSymLink());
    }

    /// A change of mode that carries something else is answered as the recorded one was.
    void PlaybackOfAnInitialization()
    {
        WriteRecording();
        StartLink("--playback|recording|--log|log");
        LineClient client(LinkPath());
        QCOMPARE(client.Ask(ReadStatus, 4), Bytes("02fe0b6a"));
        QCOMPARE(client.Ask(ReadVersion, 25).left(6), QByteArray("PAT410"));
        QCOMPARE(client.Ask(Bytes("7801829a"), 3), Acknowledge);
        QVERIFY(client.Write(ReadStatus));
        QTRY_VERIFY_WITH_TIMEOUT(Content("log").endsWith(" 73f44e -\n"), Patience);
        QCOMPARE(client.Ask(ReadStatus, 4), IdleStatus);
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
        QCOMPARE(client.Ask(ReadCurrentDate, 8), Bytes("2611212055255354"));
        QCOMPARE(client.Ask(ReadCalibrationDate, 8), CalibrationDate);
        QCOMPARE(client.Ask(ReadStatus, 4), Bytes("01fee93f"));
        QCOMPARE(client.Ask(ReadStatus, 4), Bytes("01fee93f"));
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
        QCOMPARE(Quit(), 0);
        QCOMPARE(_errors, QByteArray());
    }

    void PlaybackWithFaults()
    {
        WriteRecording();
        QVERIFY(Write("faults", R"({"faults": [{"fault": "flip", "count": 1}]})"));
        QCOMPARE(Run(RunShell(OpenDevice + AskState + AskStatus,
                              "--playback|recording|--faults|faults|--scenario|bad-crc")),
                 0);
        QCOMPARE(Hex(_output), QByteArray("fdfe0b9502fe0b"));
        QCOMPARE(_errors, QByteArray());
    }

    void PlaybackHasNoScenario_data()
    {
        QTest::addColumn<QString>("scenario");
        for (const char* scenario : {"falls-back", "refuses-sector 3", "none"}) {
            QTest::newRow(scenario) << QString::fromLatin1(scenario);
        }
    }

    void PlaybackHasNoScenario()
    {
        QFETCH(QString, scenario);
        WriteRecording();
        const QByteArray options = "--playback|recording|--scenario|" + scenario.toLatin1();
        QCOMPARE(Run(RunShell(QStringLiteral("echo run"), options.constData())), 1);
        QVERIFY2(
            _errors.startsWith("vesmar-simulator: --scenario: with --playback it takes a fault only; leave "
                               "one of them out\nUsage: "),
            _errors.constData());
        QCOMPARE(_output, QByteArray());
    }

    void PlaybackAcceptsNoCommandOfAFile()
    {
        WriteRecording();
        QVERIFY(Write("faults", R"({"faults": [{"command": "unplug"}, {"command": "restart 2"}]})"));
        QCOMPARE(Run(RunShell(QStringLiteral("echo run"), "--playback|recording|--faults|faults")), 1);
        QCOMPARE(_errors, QByteArray("vesmar-simulator: while a recording is played only faults can be "
                                     "commanded; leave other commands out\n"));
        QCOMPARE(_output, QByteArray());
    }

    void PlaybackAcceptsFaultsAsCommandsOnly()
    {
        WriteRecording();
        StartLink("--playback|recording|--at|0:mode 1");
        LineClient client(LinkPath());
        _process->write("mode 1\nerror 4\nfunction 3\nrestart 2\nscenario falls-back\n"
                        "inject {\"command\": \"mode 1\"}\nfault refuse\n");
        QTRY_COMPARE_WITH_TIMEOUT((_errors += _process->readAllStandardError()).count('\n'), 7, Patience);
        QCOMPARE(_errors.count("vesmar-simulator: while a recording is played only faults can be commanded; "
                               "leave other commands out\n"),
                 6);
        QCOMPARE(_errors.count("vesmar-simulator: inject, while a recording is played"), 1);
        _process->write("fault none\ninject {\"fault\": \"flip\", \"count\": 1}\njump\n");
        QTRY_COMPARE_WITH_TIMEOUT((_errors += _process->readAllStandardError()).count('\n'), 8, Patience);
        QCOMPARE(client.Ask(ReadStatus, 4).toHex(), QByteArray("fdfe0b6a"));
        QCOMPARE(client.Ask(ReadStatus, 4).toHex(), QByteArray("02fe0b6a"));
        QCOMPARE(Quit(), 0);
    }

    void ProgramWithoutTheDivider()
    {
        QCOMPARE(Run("run|vesmar|info"), 1);
        QVERIFY2(_errors.startsWith("vesmar-simulator: The following arguments were not expected: "),
                 _errors.constData());
        QVERIFY2(_errors.contains("; put \"--\" in front of the program to run\nUsage: "),
                 _errors.constData());
    }

    void BadUse_data()
    {
        QTest::addColumn<QStringList>("arguments");
        const auto row = [](const char* name, const char* arguments) {
            QTest::newRow(name) << QString::fromLatin1(arguments).split(QLatin1Char('|'));
        };
        row("nothing to do", "--seed|1");
        row("unknown option", "--loud|--link|x");
        row("unknown word", "walk");
        row("run without a program", "run");
        row("run without a program behind the divider", "run|--");
        row("run without a divider", "run|true");
        row("link and run", "run|--link|x|--|true");
        row("program without run", "--link|x|--|true");
        row("link without a path", "--link");
        row("no such scenario", "run|--scenario|loud|--|true");
        row("faults without a file", "run|--faults|--|true");
        row("faults without a name", "run|--faults||--|true");
        row("playback without a file", "run|--playback|--|true");
        row("playback without a name", "run|--playback||--|true");
        row("seed that is no number", "run|--seed|many|--|true");
        row("negative restart time", "run|--restart-time|-1|--|true");
        row("restart time that is no number", "run|--restart-time|long|--|true");
        row("negative start delay", "run|--start-delay|-1|--|true");
        row("scenario without its sector", "run|--scenario|refuses-sector|--|true");
        row("negative install time", "run|--install-time|-1|--|true");
        row("confirmation too short", "run|--confirmation|abc|--|true");
        row("confirmation too long", "run|--confirmation|abcde|--|true");
        row("confirmation that is not hexadecimal", "run|--confirmation|0x12|--|true");
        row("confirmation and a line end", "run|--confirmation|abcd\n|--|true");
        row("version without a point", "run|--new-version|106|--|true");
        row("version too long", "run|--new-version|1.006|--|true");
        row("version and a line end", "run|--new-version|1.06\n|--|true");
        row("line too slow", "run|--baud|49|--|true");
        row("line speed that is no number", "run|--baud|fast|--|true");
        row("confirmation of nothing", "confirmation");
        row("confirmation and link", "--link|x|confirmation|x");
        row("confirmation and run", "run|confirmation|x|--|true");
        row("confirmation and a program", "confirmation|x|--|true");
        row("confirmation of two", "confirmation|x|y");
        row("answer too late", "run|--answer-after|600001|--|true");
        row("time missing", "run|--at|unplug|--|true");
        row("time negative", "run|--at|-1:unplug|--|true");
        row("time not a number", "run|--at|nan:unplug|--|true");
        row("command missing", "run|--at|1:|--|true");
        row("no such command", "run|--at|1:jump|--|true");
        row("command out of range", "run|--at|1:mode 4|--|true");
    }

    void BadUse()
    {
        QFETCH(QStringList, arguments);
        QCOMPARE(Run(arguments), 1);
        const QByteArrayList lines = _errors.split('\n');
        QVERIFY2(lines.at(0).startsWith("vesmar-simulator: "), _errors.constData());
        QVERIFY2(lines.value(1).startsWith("Usage: vesmar-simulator "), _errors.constData());
        QCOMPARE(_output, QByteArray());
    }

    void HelpAndVersion()
    {
        QCOMPARE(Run({QStringLiteral("--version")}), 0);
        QCOMPARE(_output, QByteArray("vesmar-simulator " PROJECT_VERSION "\n"));
        QCOMPARE(Run({QStringLiteral("--help")}), 0);
        for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
            QVERIFY2(_output.contains(scenario.meaning), scenario.name);
        }
        for (const Simulator::NamedFault& fault : Simulator::Faults) {
            QVERIFY2(_output.contains(fault.meaning), fault.name);
        }
        _output.clear();
        QCOMPARE(Run(Words("run|--help")), 0);
        QVERIFY(_output.contains("\n  --scenario NAME ") && !_output.contains("  --link "));
        QCOMPARE(_errors, QByteArray());
    }

    void DocumentTellsWhatHelpTells()
    {
        QFile file(QStringLiteral(SIMULATOR_DOCUMENT));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString document = QString::fromUtf8(file.readAll());
        QStringList rows;
        for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
            if (scenario.scenario != Simulator::Scenario::None) {
                rows.append(Simulator::Synopsis(scenario));
            }
        }
        for (const Simulator::NamedFault& fault : Simulator::Faults) {
            rows.append(Simulator::Synopsis(fault));
        }
        QCOMPARE(Run({QStringLiteral("--help")}), 0);
        static const QRegularExpression option(QStringLiteral("^  (--[a-z-]+ [A-Z:]+)"),
                                               QRegularExpression::MultilineOption);
        QRegularExpressionMatchIterator options = option.globalMatch(QString::fromUtf8(_output));
        QVERIFY(options.hasNext());
        while (options.hasNext()) {
            rows.append(options.next().captured(1));
        }
        for (const QString& row : rows) {
            QVERIFY2(document.contains(QStringLiteral("\n| `%1` |").arg(row)), qPrintable(row));
        }
    }

    void LinkIsThereUntilASignal_data()
    {
        QTest::addColumn<int>("signalNumber");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void LinkIsThereUntilASignal()
    {
        QFETCH(int, signalNumber);
        _process->setStandardInputFile(QProcess::nullDevice());
        StartLink();
        {
            LineClient client(LinkPath());
            QCOMPARE(client.Ask(ReadVersion, 25), Version);
        }
        QCOMPARE(::kill(static_cast<pid_t>(_process->processId()), signalNumber), 0);
        QCOMPARE(Finish(), 0);
        QVERIFY(!QFileInfo(LinkPath()).isSymLink());
    }

    void LinkAcceptsCommands()
    {
        StartLink();
        LineClient client(LinkPath());
        _process->write("jump\n\nmode 2\nerror 4\n");
        QTRY_COMPARE_WITH_TIMEOUT(client.Ask(ReadStatus, 4).left(2).toHex(), QByteArray("404e"), Patience);
        _process->closeWriteChannel();
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
        QTRY_COMPARE_WITH_TIMEOUT((_errors += _process->readAllStandardError()).count("no command \"jump\""),
                                  1, Patience);
        QCOMPARE(_process->state(), QProcess::Running);
        _process->terminate();
        QCOMPARE(Finish(), 0);
    }

    void LinkAcceptsFaults()
    {
        StartLink();
        LineClient client(LinkPath());
        _process->write("inject {\"fault\": \"refuse\", \"when\": {\"request\": \"W\"}}\nerror 4\n");
        QTRY_COMPARE_WITH_TIMEOUT(client.Ask(ReadStatus, 4).mid(1, 1).toHex(), QByteArray("4e"), Patience);
        QCOMPARE(client.Ask(ReadVersion, 3).toHex(), QByteArray("214334"));
        _process->write("faults clear\nerror 5\n");
        QTRY_COMPARE_WITH_TIMEOUT(client.Ask(ReadStatus, 4).mid(1, 1).toHex(), QByteArray("5e"), Patience);
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
        QCOMPARE(Quit(), 0);
        QCOMPARE(_errors, QByteArray());
    }

    void LinkRefusesFaultsThatAreWrong()
    {
        StartLink();
        _process->write("inject {\"fault\": \"slow\", \"delay\": -1}\ninject\ninject {\ninject []\nfaults\n");
        for (int i = 0; i < 1001; ++i) {
            _process->write("inject {\"fault\": \"drop\"}\n");
        }
        QCOMPARE(Quit(), 0);
        const QByteArrayList errors = _errors.split('\n');
        QCOMPARE(errors.size(), 7);
        QCOMPARE(errors.at(0),
                 QByteArray(
                     "vesmar-simulator: inject, line 1: \"delay\": must be a whole number from 0 to 600000"));
        QVERIFY2(errors.at(1).startsWith("vesmar-simulator: inject, line 1: "), errors.at(1).constData());
        QVERIFY2(errors.at(2).startsWith("vesmar-simulator: inject, line 1: this is not valid JSON: "),
                 errors.at(2).constData());
        QCOMPARE(errors.at(3), QByteArray("vesmar-simulator: inject, line 1: must be an object in braces"));
        QVERIFY2(errors.at(4).startsWith("vesmar-simulator: no command \"faults\""),
                 errors.at(4).constData());
        QCOMPARE(errors.at(5),
                 QByteArray(
                     "vesmar-simulator: inject, there are 1000 faults already; \"faults clear\" makes room"));
    }

    void LinkSurvivesAnEndlessLine()
    {
        StartLink();
        _process->write("inject " + QByteArray(3000000, '[') + "\nquit\n");
        QCOMPARE(Finish(), 0);
        QCOMPARE(
            _errors,
            QByteArray("vesmar-simulator: inject, line 1: there may be up to 1048576 bytes; this is more\n"));
    }

    void LinkPointsToALineThatReturnsByItself()
    {
        StartLink();
        {
            LineClient client(LinkPath());
            _process->write("inject {\"fault\": \"hang-up\", \"line-back-in\": 100, \"when\": {\"request\": "
                            "\"W\"}}\nerror 4\n");
            QTRY_COMPARE_WITH_TIMEOUT(client.Ask(ReadStatus, 4).mid(1, 1).toHex(), QByteArray("4e"),
                                      Patience);
            QVERIFY(client.Write(ReadVersion));
            QCOMPARE(client.Read(1), QByteArray());
        }
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(LinkPath()), Patience);
        LineClient client(LinkPath());
        QCOMPARE(client.Ask(ReadStatus, 4).mid(1, 1).toHex(), QByteArray("4e"));
        QCOMPARE(Quit(), 0);
        QVERIFY(!QFileInfo(LinkPath()).isSymLink());
    }

    void LinkPointsToANewLine()
    {
        StartLink();
        _process->write("fault hang-up\n");
        QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(LinkPath()), Patience);
        _process->write("plug\n");
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(LinkPath()), Patience);
        LineClient client(LinkPath());
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
        QCOMPARE(Quit(), 0);
        QVERIFY(!QFileInfo(LinkPath()).isSymLink());
    }

    void LinkRefusesAPathThatIsTaken()
    {
        StartLink();
        QProcess second;
        second.start(SimulatorProgram, {QStringLiteral("--link"), LinkPath()});
        QVERIFY(second.waitForFinished(Patience));
        QCOMPARE(second.exitCode(), 1);
        const QByteArray errors = second.readAllStandardError();
        QVERIFY2(errors.contains("it exists") && errors.count('\n') == 1, errors.constData());
        LineClient client(LinkPath());
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
        QCOMPARE(Quit(), 0);
    }

private:
    /// Returns the exit status of the program, or -1 when it was killed or did not end.
    int Finish()
    {
        const bool hasEnded = _process->waitForFinished(Patience);
        _output += _process->readAllStandardOutput();
        _errors += _process->readAllStandardError();
        return hasEnded && _process->exitStatus() == QProcess::NormalExit ? _process->exitCode() : -1;
    }

    int Run(const QStringList& arguments)
    {
        _process->start(SimulatorProgram, arguments);
        return Finish();
    }

    int Run(const char* arguments) { return Run(Words(arguments)); }

    QString LinkPath() const { return _folder->filePath(QStringLiteral("line")); }

    void StartLink(const char* options = "")
    {
        const QStringList more = *options == '\0' ? QStringList() : Words(options);
        _process->start(SimulatorProgram, QStringList{QStringLiteral("--link"), LinkPath()} + more);
        QTRY_VERIFY_WITH_TIMEOUT(_process->canReadLine(), Patience);
        QVERIFY(_process->readLine().contains(QFile::encodeName(LinkPath())));
    }

    int Quit()
    {
        _process->write("quit\n");
        return Finish();
    }

    bool Write(const char* name, const QByteArray& content)
    {
        QFile file(_folder->filePath(QLatin1String(name)));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    QByteArray Content(const char* name)
    {
        QFile file(_folder->filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    bool Exists(const char* name) { return QFileInfo::exists(_folder->filePath(QLatin1String(name))); }

    /// Writes an initialization whose second status was lost, and what followed.
    void WriteRecording()
    {
        QVERIFY(Write("recording", "{\"exchanges\": [\n"
                                   "{\"request\": \"73f44e\", \"answer\": \"02fe0b6a\"},\n"
                                   "{\"request\": \"7800a3ba\", \"answer\": \"06c660\"},\n"
                                   "{\"request\": \"73f44e\"},\n"
                                   "{\"request\": \"73f44e\", \"answer\": \"00fed10e\"},\n"
                                   "{\"request\": \"57122a\", "
                                   "\"answer\": \"5041543431303230343831353130353033303232303136f923\"},\n"
                                   "{\"request\": \"52b77a\", \"answer\": \"2611212055255354\"},\n"
                                   "{\"request\": \"54711a\", \"answer\": \"240215000000c8d0\"},\n"
                                   "{\"request\": \"73f44e\", \"answer\": \"01fee93f\"}]}"));
    }

    /// Writes the requests that carry the two sectors, each into a file.
    void WriteSectors()
    {
        QVERIFY(Write("one", 'F' + FirstSector() + Bytes("093e")));
        QVERIFY(Write("two", 'F' + SecondSector() + Bytes("5346")));
    }

    std::unique_ptr<QTemporaryDir> _folder;
    std::unique_ptr<QProcess> _process;
    QByteArray _output;
    QByteArray _errors;
};

QTEST_GUILESS_MAIN(TestSimulatorProgram)
#include "tst_simulatorprogram.moc"
