#include <fcntl.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <future>
#include <memory>
#include <optional>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QtTest>

#include "link/crc16.h"
#include "link/transciever.h"
#include "support/logcapture.h"
#include "support/scriptedpeer.h"
#include "support/serialdevice.h"
#include "support/wire.h"

using Vesmar::Transciever;

namespace
{

/// Longer than any answer takes.
constexpr int GenerousMs = 20000;

/// A wait of this length must end by something else.
constexpr int EndlessMs = 3600 * 1000;

const QByteArray Data = Wire::Bytes("A3529A32");

struct Outcome {
    int result = -1;
    std::unique_ptr<QByteArray> response; ///< Null when it was left untouched.
    int elapsed = 0;                      ///< How many milliseconds the query took.

    QByteArray Bytes() const { return response ? *response : QByteArray("untouched"); }
};

QByteArray Owned(QByteArray* bytes)
{
    const std::unique_ptr<QByteArray> owner(bytes);
    return *owner;
}

/// How many descriptors of this process lead to the file.
int DescriptorsOf(const QByteArray& path)
{
    int count = 0;
    const QDir directory(QStringLiteral("/proc/self/fd"));
    for (const QString& entry : directory.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        const QString target = QFileInfo(directory.filePath(entry)).symLinkTarget();
        count += target == QString::fromLocal8Bit(path) ? 1 : 0;
    }
    return count;
}

/// Puts another descriptor, or none, in the place of descriptor 0 for as long as it lives.
class StandardInputReplacement
{
public:
    explicit StandardInputReplacement(int descriptor) : _saved(fcntl(0, F_DUPFD_CLOEXEC, 3))
    {
        close(0);
        if (descriptor >= 0) {
            dup2(descriptor, 0);
        }
    }
    ~StandardInputReplacement()
    {
        dup2(_saved, 0);
        close(_saved);
    }
    StandardInputReplacement(const StandardInputReplacement&) = delete;
    StandardInputReplacement& operator=(const StandardInputReplacement&) = delete;

private:
    int _saved;
};

/// Stops the output of a line at its near end for as long as it lives: nothing fits into it.
class StoppedOutput
{
public:
    explicit StoppedOutput(const ScriptedPeer& peer)
        : _line(open(peer.DevicePath().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        tcflow(_line, TCOOFF);
    }
    ~StoppedOutput()
    {
        tcflow(_line, TCOON);
        close(_line);
    }
    StoppedOutput(const StoppedOutput&) = delete;
    StoppedOutput& operator=(const StoppedOutput&) = delete;

private:
    int _line;
};

/// The near end of a line, closed.
struct Port {
    Vesmar::CRC16 crc16{nullptr};
    Transciever transciever{&crc16, nullptr};

    Outcome Query(const QByteArray& request, int timeoutMs, int maxRetransmissions)
    {
        QByteArray* response = nullptr;
        Outcome outcome;
        QElapsedTimer timer;
        timer.start();
        outcome.result = transciever.RunQuery(request, timeoutMs, maxRetransmissions, &response);
        outcome.elapsed = static_cast<int>(timer.elapsed());
        outcome.response.reset(response);
        return outcome;
    }

    Outcome Query(int timeoutMs = GenerousMs, int maxRetransmissions = 0)
    {
        return Query(Wire::ReadStatus, timeoutMs, maxRetransmissions);
    }

    /// The same on a thread of its own.
    std::future<Outcome> BeginQuery(int timeoutMs, int maxRetransmissions)
    {
        return std::async(std::launch::async, [this, timeoutMs, maxRetransmissions] {
            return Query(timeoutMs, maxRetransmissions);
        });
    }
};

struct FarEnd {
    ScriptedPeer peer;
};

/// The two ends of a line, the near one open.
struct Line : FarEnd, Port {
    Line() { transciever.Open(); }
};

enum class Trouble { Silence, Refusal, Babble, StoppedOutput, HeldOutput };

/// A line on which a query has to wait.
struct TroubledLine : Line {
    explicit TroubledLine(Trouble trouble)
    {
        if (trouble == Trouble::Refusal) {
            peer.AnswerAlways(Wire::Refusal);
        } else if (trouble == Trouble::Babble) {
            LetSerialDeviceBabble();
        } else if (trouble == Trouble::StoppedOutput) {
            stopped.emplace(peer);
        }
        HoldSerialDeviceOutput(trouble == Trouble::HeldOutput);
    }

    std::optional<StoppedOutput> stopped;
};

} // namespace

Q_DECLARE_METATYPE(Trouble)

class TestTransciever : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void OpensForReadingAndWritingWithoutAControllingTerminal()
    {
        const ScriptedPeer peer;
        Port port;
        QVERIFY(port.transciever.Open());
        QCOMPARE(RecordedSerialDevice().opens, 1);
        QCOMPARE(RecordedSerialDevice().openFlags, O_RDWR | O_NOCTTY);
    }

    void ConfiguresTheLine()
    {
        const Line line;
        const SerialDeviceRecord record = RecordedSerialDevice();
        QCOMPARE(record.configurations, 1);
        QCOMPARE(record.configurationAction, TCSANOW);
        QCOMPARE(record.configuration.c_cflag, tcflag_t(0x19B2));
        QCOMPARE(record.configuration.c_cflag, tcflag_t(B115200 | CS8 | CREAD | PARENB | CLOCAL));
        QCOMPARE(record.configuration.c_iflag, tcflag_t(0));
        QCOMPARE(record.configuration.c_oflag, tcflag_t(0));
        QCOMPARE(record.configuration.c_lflag, tcflag_t(0));
        QCOMPARE(record.configuration.c_cc[VMIN], cc_t(0));
        QCOMPARE(record.configuration.c_cc[VTIME], cc_t(0));
    }

    void OpenTracesItsSteps()
    {
        const ScriptedPeer peer;
        Port port;
        const LogCapture log;
        QVERIFY(port.transciever.Open());
        QCOMPARE(log.Texts().size(), 2);
        QVERIFY(log.Texts().at(0).endsWith(QStringLiteral(" Transciever::Open")));
        QVERIFY(log.Texts().at(1).endsWith(
            QStringLiteral(" Transciever::Open: Serial port opened successfully.")));
    }

    void OpenDiscardsWhatWasWaiting()
    {
        ScriptedPeer peer;
        peer.Send("stale");
        QVERIFY(peer.WaitUntilReadable(5));
        Port port;
        QVERIFY(port.transciever.Open());
        QCOMPARE(Owned(port.transciever.ReadBuffer()), QByteArray());
    }

    void OpenOfAnOpenPortDoesNotReconfigureIt()
    {
        Line line;
        const LogCapture log;
        QVERIFY(line.transciever.Open());
        QCOMPARE(RecordedSerialDevice().opens, 1);
        QCOMPARE(RecordedSerialDevice().configurations, 1);
        QCOMPARE(log.Texts().size(), 2);
        QVERIFY(log.Texts().at(0).endsWith(QStringLiteral(" Transciever::Open")));
        QVERIFY(
            log.Texts().at(1).endsWith(QStringLiteral(" Transciever::Open: Serial port already opened.")));

        line.peer.AnswerAlways(Data);
        QCOMPARE(line.Query().result, 0);
    }

    void OpenFailsWithTheDevice_data()
    {
        QTest::addColumn<int>("error");
        QTest::newRow("missing") << ENOENT;
        QTest::newRow("no permission") << EACCES;
        QTest::newRow("no such device") << ENXIO;
        QTest::newRow("input or output error") << EIO;
        QTest::newRow("too many files") << EMFILE;
    }

    void OpenFailsWithTheDevice()
    {
        QFETCH(const int, error);
        const ScriptedPeer peer;
        FailSerialDeviceOpen(error);
        Port port;
        const LogCapture log;
        QVERIFY(!port.transciever.Open());
        QCOMPARE(log.Texts().size(), 2);
        QVERIFY(
            log.Texts().at(1).endsWith(QStringLiteral(" Transciever::Open: Serial port failed to open.")));
        QCOMPARE(RecordedSerialDevice().opens, 1);
        QCOMPARE(RecordedSerialDevice().configurations, 0);
    }

    void AMissingDeviceIsTriedAgainByTheNextOpen()
    {
        Port port;
        RedirectSerialDevice({});
        QVERIFY(!port.transciever.Open());
        QVERIFY(!port.transciever.Open());
        QCOMPARE(RecordedSerialDevice().opens, 2);

        ScriptedPeer peer;
        peer.AnswerAlways(Data);
        QVERIFY(port.transciever.Open());
        QCOMPARE(port.Query().result, 0);
    }

    void WithAMissingDeviceNothingIsExchanged()
    {
        Port port;
        RedirectSerialDevice({});
        QVERIFY(!port.transciever.Open());

        const Outcome outcome = port.Query(20, 0);
        QCOMPARE(outcome.result, 3);
        QVERIFY(outcome.response != nullptr);
        QCOMPARE(outcome.Bytes(), QByteArray());
        QCOMPARE(port.transciever.StartQuery(Wire::ReadStatus), 1);
        QCOMPARE(Owned(port.transciever.ReadBuffer()), QByteArray());
        QCOMPARE(Owned(port.transciever.ReadBuffer(20)), QByteArray());
    }

    void ANegativeHandleOutlivesClose()
    {
        Port port;
        RedirectSerialDevice({});
        QVERIFY(!port.transciever.Open());
        port.transciever.Close();
        const Outcome outcome = port.Query(20, 0);
        QCOMPARE(outcome.result, 3);
        QVERIFY2(outcome.response != nullptr, "the port counts as closed, not as failed");
    }

    void DescriptorZeroIsMovedHigher()
    {
        ScriptedPeer peer;
        peer.AnswerAlways(Data);
        Port port;
        bool opened = false;
        bool zeroIsFree = false;
        Outcome outcome;
        {
            const StandardInputReplacement nothing(-1);
            opened = port.transciever.Open();
            zeroIsFree = fcntl(0, F_GETFD) == -1;
            outcome = port.Query();
        }
        QVERIFY(opened);
        QVERIFY(zeroIsFree);
        QCOMPARE(outcome.result, 0);
        QCOMPARE(outcome.Bytes(), Data);
        QCOMPARE(port.Query().result, 0);
        port.transciever.Close();
        QCOMPARE(DescriptorsOf(peer.DevicePath()), 1);
    }

    void CloseReleasesThePort()
    {
        Line line;
        QCOMPARE(DescriptorsOf(line.peer.DevicePath()), 2); // The peer keeps one.
        line.transciever.Close();
        QCOMPARE(DescriptorsOf(line.peer.DevicePath()), 1);
        line.transciever.Close();
        QCOMPARE(DescriptorsOf(line.peer.DevicePath()), 1);
    }

    void CloseTracesItself()
    {
        Line line;
        const LogCapture log;
        line.transciever.Close();
        QCOMPARE(log.Texts().size(), 1);
        QVERIFY(log.Texts().first().endsWith(QStringLiteral(" Transciever::Close")));
    }

    void TheDestructorReleasesThePort()
    {
        const ScriptedPeer peer;
        {
            Port port;
            QVERIFY(port.transciever.Open());
            QCOMPARE(DescriptorsOf(peer.DevicePath()), 2);
        }
        QCOMPARE(DescriptorsOf(peer.DevicePath()), 1);
    }

    void CanBeOpenedAgainAfterClose()
    {
        Line line;
        line.peer.AnswerAlways(Data);
        line.transciever.Close();
        QVERIFY(line.transciever.Open());
        QCOMPARE(RecordedSerialDevice().opens, 2);
        QCOMPARE(RecordedSerialDevice().configurations, 2);
        QCOMPARE(line.Query().result, 0);
    }

    void AClosedPortAnswersWithoutTouchingTheResponse()
    {
        ScriptedPeer peer;
        peer.AnswerAlways(Data);
        Port port;
        QByteArray present("present");
        QByteArray* response = &present;
        QCOMPARE(port.transciever.RunQuery(Wire::ReadStatus, EndlessMs, 2, &response), 3);
        QCOMPARE(response, &present);
        QCOMPARE(port.transciever.RunQuery(Wire::ReadStatus, EndlessMs, -1, &response), 3);
        QCOMPARE(port.transciever.RunQuery(Wire::ReadStatus, EndlessMs, &response), 3);
        QCOMPARE(port.transciever.RunQuery(Wire::ReadStatus, &response), 3);

        QVERIFY(port.transciever.Open());
        port.transciever.Close();
        QCOMPARE(port.transciever.RunQuery(Wire::ReadStatus, &response), 3);
        QCOMPARE(response, &present);
        QCOMPARE(present, QByteArray("present"));
    }

    void AClosedPortTouchesNoDescriptor()
    {
        std::array<int, 2> ends{};
        QCOMPARE(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()), 0);
        QCOMPARE(write(ends[1], "waiting", 7), ssize_t(7));
        Port port;
        std::array<char, 16> buffer{};
        ssize_t leftOnZero = 0;
        int started = 0;
        QByteArray read;
        QByteArray readWaiting;
        {
            const StandardInputReplacement socket(ends[0]);
            port.Query(20, 0);
            started = port.transciever.StartQuery(Wire::ReadStatus);
            read = Owned(port.transciever.ReadBuffer());
            readWaiting = Owned(port.transciever.ReadBuffer(20));
            leftOnZero = ::read(0, buffer.data(), buffer.size());
        }
        QCOMPARE(started, 1);
        QCOMPARE(read, QByteArray());
        QCOMPARE(readWaiting, QByteArray());
        QCOMPARE(leftOnZero, ssize_t(7));
        QCOMPARE(::read(ends[1], buffer.data(), buffer.size()), ssize_t(-1));
        QCOMPARE(errno, EAGAIN);
        close(ends[0]);
        close(ends[1]);
    }

    void Exchanges_data()
    {
        QTest::addColumn<QList<QByteArray>>("answers");
        QTest::addColumn<int>("maxRetransmissions");
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("requests");
        QTest::addColumn<int>(
            "elapsed"); // 10 ms before the first attempt, 4 for an answer, 200 after a failure.
        const auto row = [](const char* name, const QList<QByteArray>& answers, int maxRetransmissions,
                            int result, int requests, int elapsed) {
            QTest::newRow(name) << answers << maxRetransmissions << result << requests << elapsed;
        };
        using namespace Wire;
        const auto once = [&row](const char* name, const QByteArray& answer, int result) {
            row(name, {answer}, 0, result, 1, result > 1 ? 214 : 14);
        };
        once("data", Data, 0);
        once("data of one byte", Bytes("00 00 00"), 0);
        once("data that begin like an acknowledge", WithChecksum(Bytes("06 C6")), 0);
        once("data that begin like a refusal", WithChecksum(Bytes("21 43")), 0);
        for (const int size : {127, 128, 129, 256, 300, 1000}) {
            once(QByteArray::number(size).constData(), WithChecksum(QByteArray(size - 2, '\xA5')), 0);
        }
        once("acknowledge", Acknowledge, 1);
        once("acknowledge with bytes behind it", Bytes("06 C6 60 AB"), 1);
        once("acknowledge with many bytes behind it", Acknowledge + QByteArray(200, '\x55'), 1);
        once("refusal", Refusal, 2);
        once("refusal with bytes behind it", Bytes("21 43 34 00 00"), 2);
        once("one byte", Bytes("06"), 4);
        once("two bytes", Bytes("06 C6"), 4);
        once("two zero bytes", Bytes("00 00"), 4);
        once("damaged data", DamagedStatus, 4);
        once("damaged acknowledge", Bytes("06 C6 61"), 4);
        once("damaged refusal", Bytes("21 43 35"), 4);
        once("garbage before data", Bytes("55") + Data, 4);
        once("garbage after data", Data + Bytes("55"), 4);
        once("garbage before an acknowledge", Bytes("FF") + Acknowledge, 4);
        once("garbage before a refusal", Bytes("FF") + Refusal, 4);

        row("silence", {Silence}, 0, 3, 1, 2210);
        row("data at once", {Data}, 2, 0, 1, 14);
        row("acknowledge at once", {Acknowledge}, 2, 1, 1, 14);
        row("refusal, then data", {Refusal, Data}, 2, 0, 2, 218);
        row("much damage, then data", {QByteArray(100, '\x55'), Data}, 2, 0, 2, 218);
        row("damage, then acknowledge", {DamagedStatus, Acknowledge}, 2, 1, 2, 218);
        row("refusal, damage, data", {Refusal, DamagedStatus, Data}, 2, 0, 3, 422);
        row("data too late", {Refusal, Refusal, Refusal, Data}, 2, 2, 3, 622);
        row("one attempt", {Refusal, Data}, 0, 2, 1, 214);
        row("damage, then refusal", {DamagedStatus, Refusal, Data}, 1, 2, 2, 418);
        row("refusal, then damage", {Refusal, DamagedStatus, Data}, 1, 4, 2, 418);
        row("refusal, then silence", {Refusal, Silence, Data}, 1, 3, 2, 2414);
        row("silence, then data", {Silence, Data}, 1, 0, 2, 2214);
        row("six attempts", {Refusal, Refusal, Refusal, Refusal, Refusal, Data}, 5, 0, 6, 1034);
    }

    void Exchanges()
    {
        QFETCH(const QList<QByteArray>, answers);
        QFETCH(const int, maxRetransmissions);
        QFETCH(const int, requests);
        Line line;
        line.peer.AnswerInTurn(answers);
        const Outcome outcome = line.Query(Wire::ReadVersion, 2000, maxRetransmissions);
        QTEST(outcome.result, "result");
        QCOMPARE(outcome.Bytes(), answers.at(requests - 1));
        QCOMPARE(line.peer.RequestBytes().size(), requests);
        QCOMPARE(line.peer.RequestBytes().count(Wire::ReadVersion), requests);
        QTEST(outcome.elapsed, "elapsed");
    }

    void StoresAnyNumberOfRetransmissions()
    {
        Port port;
        for (const int maxRetransmissions : {0, 5, -7, 1000000}) {
            port.transciever.SetMaxRetransmissions(maxRetransmissions);
            QCOMPARE(port.transciever.GetMaxRetransmissions(), maxRetransmissions);
        }
    }

    void TheShorterFormsUseTheStoredRetransmissions()
    {
        Line line;
        QCOMPARE(line.transciever.GetMaxRetransmissions(), 2);
        for (const int maxRetransmissions : {2, 1, 0}) {
            line.transciever.SetMaxRetransmissions(maxRetransmissions);
            line.peer.ClearRequests();
            QByteArray* response = nullptr;
            QCOMPARE(line.transciever.RunQuery(Wire::ReadStatus, 300, &response), 3);
            QCOMPARE(Owned(response), QByteArray());
            QCOMPARE(line.peer.RequestBytes().size(), maxRetransmissions + 1);
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(line.transciever.RunQuery(Wire::ReadStatus, &response), 3);
            QCOMPARE(timer.elapsed(), (maxRetransmissions + 1) * (4000 + 200));
            QCOMPARE(Owned(response), QByteArray());
            QCOMPARE(line.peer.RequestBytes().size(), 2 * (maxRetransmissions + 1));
        }
    }

    void NegativeRetransmissionsSendNothing()
    {
        Line line;
        line.peer.AnswerAlways(Data);
        for (const int maxRetransmissions : {-1, -1000}) {
            const Outcome outcome = line.Query(Wire::ReadVersion, EndlessMs, maxRetransmissions);
            QCOMPARE(outcome.result, 0);
            QVERIFY(outcome.response != nullptr);
            QCOMPARE(outcome.Bytes(), QByteArray());
        }
        QCOMPARE(line.Query().result, 0);
        QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadStatus}));
    }

    void SilenceEndsAResponse()
    {
        Line line;
        line.peer.AnswerAlways(Data.left(2));
        const Outcome outcome = line.Query(EndlessMs, 0);
        QCOMPARE(outcome.result, 4);
        QCOMPARE(outcome.Bytes(), Data.left(2));
        line.peer.Send(Data.mid(2));
        QCOMPARE(Owned(line.transciever.ReadBuffer(GenerousMs)), Data.mid(2));
    }

    void SendsLongRequestsWhole()
    {
        Line line;
        line.peer.AnswerAlways(Wire::Acknowledge);
        QByteArray sector("\x46");
        for (int byte = 0; byte < 512; ++byte) {
            sector.append(static_cast<char>(byte));
        }
        const QByteArray request = WithChecksum(sector);
        QCOMPARE(line.Query(request, GenerousMs, 0).result, 1);
        QCOMPARE(line.peer.RequestBytes().join(), request);
    }

    void DiscardsStaleInput_data()
    {
        QTest::addColumn<int>("maxRetransmissions");
        QTest::addColumn<QByteArray>("stale");
        QTest::addColumn<QByteArray>("response");
        QTest::addColumn<int>("result");
        QTest::newRow("before a request") << 0 << QByteArray("stale") << Data << 0;
        QTest::newRow("one buffer only")
            << 0 << QByteArray(128, 'x') + QByteArray(72, 'y') << QByteArray(72, 'y') << 4;
        QTest::newRow("at the end") << -1 << QByteArray("stale") << QByteArray() << 0;
    }

    void DiscardsStaleInput()
    {
        QFETCH(const int, maxRetransmissions);
        QFETCH(const QByteArray, stale);
        Line line;
        line.peer.AnswerAlways(Data);
        line.peer.Send(stale);
        QVERIFY(line.peer.WaitUntilReadable(stale.size()));
        const Outcome outcome = line.Query(GenerousMs, maxRetransmissions);
        QTEST(outcome.result, "result");
        QTEST(outcome.Bytes(), "response");
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
    }

    void ExchangesAreTenMillisecondsApart()
    {
        using Clock = std::chrono::steady_clock;
        constexpr int Exchanges = 20;
        Line line;
        // Taken before the answer is written, so the pause seen from here can only be longer than the real
        // one.
        QList<Clock::time_point> answered;
        line.peer.Answer([&answered](const QByteArray&) {
            answered.append(Clock::now());
            return Data;
        });
        for (int exchange = 0; exchange < Exchanges; ++exchange) {
            QCOMPARE(line.Query().result, 0);
        }
        line.peer.HangUp(); // Ends the peer's thread, which writes the list.
        const QList<ScriptedPeer::Request> requests = line.peer.Requests();
        QCOMPARE(requests.size(), Exchanges);
        for (int exchange = 1; exchange < Exchanges; ++exchange) {
            QVERIFY(requests.at(exchange).received - answered.at(exchange - 1) >=
                    std::chrono::milliseconds(10));
        }
    }

    void StartQuerySendsAndReadsNothing()
    {
        Line line;
        line.peer.AnswerAlways(Data);
        const LogCapture log;
        QCOMPARE(line.transciever.StartQuery(Wire::ReadVersion), 1);
        QVERIFY(line.peer.WaitForRequests(1));
        QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadVersion}));
        QCOMPARE(log.Texts(), QStringList());
        QVERIFY(line.peer.WaitUntilReadable(Data.size()));
        QCOMPARE(Owned(line.transciever.ReadBuffer()), Data);
    }

    void StartQueriesAreTenMillisecondsApart()
    {
        Line line;
        QElapsedTimer timer;
        timer.start();
        for (int query = 0; query < 11; ++query) {
            QCOMPARE(line.transciever.StartQuery(Wire::ReadStatus), 1);
        }
        QCOMPARE(timer.elapsed(), 11 * 10);
    }

    void ReadBufferReadsOnceWithoutWaiting()
    {
        Line line;
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
        line.peer.Send(QByteArray(128, 'x') + QByteArray(72, 'y'));
        QVERIFY(line.peer.WaitUntilReadable(200));
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray(128, 'x'));
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray(72, 'y'));
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
    }

    void ReadBufferWaitsForData()
    {
        Line line;
        auto reading =
            std::async(std::launch::async, [&] { return Owned(line.transciever.ReadBuffer(EndlessMs)); });
        QCOMPARE(reading.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        line.peer.Send(Data);
        QCOMPARE(reading.get(), Data);
    }

    void ReadBufferGivesUpAtTheTimeout()
    {
        Line line;
        const LogCapture log;
        QElapsedTimer timer;
        timer.start();
        const std::unique_ptr<QByteArray> buffer(line.transciever.ReadBuffer(100));
        QCOMPARE(timer.elapsed(), 100);
        QVERIFY(buffer != nullptr);
        QCOMPARE(*buffer, QByteArray());
        QCOMPARE(log.Texts(), QStringList());
    }

    void ReadBufferCollectsUntilSilence()
    {
        Line line;
        const QByteArray sent = QByteArray(128, 'x') + QByteArray(172, 'y');
        line.peer.Send(sent);
        QVERIFY(line.peer.WaitUntilReadable(sent.size()));
        QCOMPARE(Owned(line.transciever.ReadBuffer(EndlessMs)), sent);
    }

    void TroubleEndsAQueryAtItsTimeLimit_data()
    {
        QTest::addColumn<Trouble>("trouble");
        QTest::addColumn<int>("result");
        QTest::newRow("silence") << Trouble::Silence << 3;
        QTest::newRow("bytes without an end") << Trouble::Babble << 4;
        QTest::newRow("nothing is accepted") << Trouble::StoppedOutput << 3;
        QTest::newRow("what is accepted does not leave") << Trouble::HeldOutput << 3;
    }

    void TroubleEndsAQueryAtItsTimeLimit()
    {
        QFETCH(const Trouble, trouble);
        TroubledLine line(trouble);
        const Outcome outcome = line.Query(300, 1);
        QTEST(outcome.result, "result");
        QVERIFY(outcome.elapsed >= 10 + 2 * (300 + 200) && outcome.elapsed <= 10 + 2 * (301 + 200));
        QCOMPARE(outcome.Bytes().isEmpty(), trouble != Trouble::Babble);
        QVERIFY(outcome.Bytes().size() < 4096);
    }

    void ClosingEndsAQuery_data()
    {
        TroubleEndsAQueryAtItsTimeLimit_data();
        QTest::newRow("a pause after a refusal") << Trouble::Refusal << 3;
    }

    void ClosingEndsAQuery()
    {
        QFETCH(const Trouble, trouble);
        TroubledLine line(trouble);
        const LogCapture log;
        auto query = line.BeginQuery(EndlessMs, 2);
        QCOMPARE(query.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        line.transciever.PrepareToClose();
        line.transciever.Close();
        const Outcome outcome = query.get();
        QCOMPARE(outcome.result, 3);
        QCOMPARE(outcome.Bytes(), QByteArray());
        QVERIFY(outcome.elapsed <= 51);
        QCOMPARE(log.Texts().size(), 2); // One attempt, and the closing.
        QVERIFY(line.peer.RequestBytes().size() <= 1);
    }

    void ClosingLeavesNothingOfAResponse()
    {
        TroubledLine line(Trouble::Babble);
        auto query = line.BeginQuery(EndlessMs, 0);
        QCOMPARE(query.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        line.transciever.PrepareToClose();
        const Outcome outcome = query.get();
        QCOMPARE(outcome.result, 3);
        QCOMPARE(outcome.Bytes(), QByteArray());
    }

    void AnExchangeWaitsForTheEndOfAnother()
    {
        Line line;
        auto first = line.BeginQuery(300, 0);
        QCOMPARE(first.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        const Outcome second = line.Query(300, 0);
        QCOMPARE(first.get().elapsed, 10 + 300 + 200);
        QCOMPARE(second.elapsed, 10 + 300 - 50 + 10 + 300 + 200);
        QCOMPARE(line.peer.RequestBytes().size(), 2);
    }

    void ClosingEndsTheWaitForAnotherExchange()
    {
        Line line;
        const auto first = line.BeginQuery(EndlessMs, 0);
        QCOMPARE(first.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        auto second = line.BeginQuery(EndlessMs, 2);
        const auto started =
            std::async(std::launch::async, [&line] { line.transciever.StartQuery(Wire::StartMeasurement); });
        QCOMPARE(started.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        line.transciever.PrepareToClose();
        QCOMPARE(started.wait_for(std::chrono::milliseconds(2)), std::future_status::ready);
        const Outcome outcome = second.get();
        QCOMPARE(outcome.result, 3);
        QVERIFY(outcome.elapsed <= 52);
        QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    }

    void NothingIsWrittenOrReadFromPrepareToCloseUntilClose()
    {
        Line line;
        line.peer.Send("waiting");
        QVERIFY(line.peer.WaitUntilReadable(7));
        line.transciever.PrepareToClose();
        const Outcome outcome = line.Query(EndlessMs, 2);
        QCOMPARE(outcome.result, 3);
        QCOMPARE(outcome.Bytes(), QByteArray());
        QCOMPARE(line.transciever.StartQuery(Wire::StartMeasurement), 1);
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
        QCOMPARE(Owned(line.transciever.ReadBuffer(EndlessMs)), QByteArray());
        QVERIFY(line.peer.WaitUntilReadable(7));

        line.transciever.Close();
        QVERIFY(line.transciever.Open());
        line.peer.AnswerAlways(Data);
        QCOMPARE(line.Query(Wire::ReadVersion, GenerousMs, 0).result, 0);
        QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadVersion}));
    }

    void CloseClearsTheClosingFlag_data()
    {
        QTest::addColumn<bool>("openBefore");
        QTest::newRow("an open port") << true;
        QTest::newRow("a port that is not open") << false;
    }

    void CloseClearsTheClosingFlag()
    {
        QFETCH(const bool, openBefore);
        ScriptedPeer peer;
        Port port;
        if (openBefore) {
            QVERIFY(port.transciever.Open());
        }
        port.transciever.PrepareToClose();
        port.transciever.Close();
        QVERIFY(port.transciever.Open());

        const Outcome outcome = port.Query(300, 0);
        QCOMPARE(outcome.result, 3);
        QVERIFY2(outcome.elapsed >= 300 + 200, "the wait still ends at once");
    }

    void ACloseBetweenAttemptsEndsTheQuery()
    {
        Line line;
        line.peer.AnswerAlways(Wire::Refusal);
        auto query = line.BeginQuery(EndlessMs, 1000);
        QVERIFY(line.peer.WaitForRequests(2));
        line.transciever.Close();
        QCOMPARE(query.get().result, 3);
    }

    void AQueryNeverWritesToTheFileThatTookItsDescriptor()
    {
        Line line;
        line.peer.AnswerAlways(Wire::Refusal);
        auto query = line.BeginQuery(200, 1000);
        QVERIFY(line.peer.WaitForRequests(1));
        line.transciever.Close();
        QTemporaryFile file;
        QVERIFY(file.open());
        QCOMPARE(query.get().result, 3);
        QCOMPARE(file.size(), qint64(0));
    }

    void AFailingReadEndsTheWaitOrAddsNothing()
    {
        for (const int readsBefore : {0, 1}) {
            Line line;
            line.peer.AnswerAlways(Data);
            FailSerialDeviceReads(readsBefore);
            const Outcome outcome = line.Query(EndlessMs, 0);
            QCOMPARE(outcome.result, readsBefore == 0 ? 3 : 0);
            QCOMPARE(outcome.Bytes(), readsBefore == 0 ? QByteArray() : Data);
        }
    }

    void AFailingReadLeavesTheBufferEmpty()
    {
        Line line;
        line.peer.Send(Data);
        QVERIFY(line.peer.WaitUntilReadable(Data.size()));
        FailSerialDeviceReads(0);
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
        QCOMPARE(Owned(line.transciever.ReadBuffer(20)), QByteArray());
    }

    void AFailingReadDoesNotEndTheResponse()
    {
        const QByteArray answer = WithChecksum(QByteArray(300, '\xA5'));
        Line line;
        line.peer.AnswerAlways(answer);
        FailSerialDeviceReads(1, 1);
        QCOMPARE(line.Query().Bytes(), answer);
    }

    void AResponseThatReachesFourKiBIsDamaged_data()
    {
        QTest::addColumn<QByteArray>("beginning");
        QTest::newRow("no frame") << QByteArray(4096, 'x');
        QTest::newRow("an acknowledge") << Wire::Acknowledge + QByteArray(4093, 'x');
        QTest::newRow("a refusal") << Wire::Refusal + QByteArray(4093, 'x');
        QTest::newRow("a valid checksum") << WithChecksum(QByteArray(4094, 'x'));
    }

    void AResponseThatReachesFourKiBIsDamaged()
    {
        QFETCH(const QByteArray, beginning);
        Line line;
        line.peer.AnswerAlways(beginning + QByteArray(1000, 'y'));
        const LogCapture log;
        const Outcome outcome = line.Query();
        QCOMPARE(outcome.result, 4);
        QCOMPARE(outcome.Bytes(), beginning);
        QVERIFY(log.Contains(QStringLiteral("[4096b]\033[0;31m CRC Invalid\033[0m")));
    }

    void ABabblingLineEndsTheReadingOfTheBuffer()
    {
        Line line;
        LetSerialDeviceBabble();
        QElapsedTimer timer;
        timer.start();
        const QByteArray byTime = Owned(line.transciever.ReadBuffer(50));
        QCOMPARE(timer.elapsed(), 51);
        QVERIFY(!byTime.isEmpty() && byTime.size() < 4096);
        QCOMPARE(Owned(line.transciever.ReadBuffer(EndlessMs)), QByteArray(4096, 'x'));
    }

    void ALineThatKeepsItsSettingsBlocksNoRead()
    {
        ScriptedPeer peer; // Its line waits for a byte with each read.
        FailSerialDeviceConfiguration();
        Port port;
        auto query = std::async(std::launch::async, [&port] {
            port.transciever.Open();
            return port.Query().result;
        });
        QVERIFY(peer.WaitForRequests(1));
        QCOMPARE(query.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        peer.Send(Data);
        QCOMPARE(query.get(), 0);
    }

    void AnInterruptedAndShortWriteGoesOn()
    {
        Line line;
        LimitSerialDeviceWrites({-EINTR, 1, -EINTR, -EAGAIN, 1});
        line.transciever.StartQuery(Wire::ReadStatus);
        QTRY_COMPARE(line.peer.RequestBytes().join(), Wire::ReadStatus);
    }

    void AFailedWriteIsNotTriedAgain()
    {
        Line line;
        LimitSerialDeviceWrites({-EIO});
        QCOMPARE(line.Query(20, 0).result, 3);
        line.peer.AnswerAlways(Data);
        QCOMPARE(line.Query(Wire::ReadVersion, GenerousMs, 0).result, 0);
        QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadVersion}));
    }

    void ALineThatComesFreeCarriesTheRequest()
    {
        Line line;
        line.peer.AnswerAlways(Data);
        std::future<Outcome> query;
        {
            const StoppedOutput stopped(line.peer);
            query = line.BeginQuery(EndlessMs, 0);
            QCOMPARE(query.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        }
        QCOMPARE(query.get().result, 0);
        QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadStatus}));
    }

    void ALineThatComesFreeCarriesNothingThatIsNotWantedAnyMore()
    {
        Line line;
        line.peer.AnswerAlways(Wire::Acknowledge);
        std::atomic<bool> isWanted{true};
        std::future<int> query;
        {
            const StoppedOutput stopped(line.peer);
            query = std::async(std::launch::async, [&] {
                QByteArray* response = nullptr;
                const int result = line.transciever.RunQuery(Wire::StartMeasurement, EndlessMs, 2, &response,
                                                             [&] { return isWanted.load(); });
                delete response;
                return result;
            });
            QCOMPARE(query.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
            isWanted = false;
            QCOMPARE(query.wait_for(std::chrono::milliseconds(1)), std::future_status::timeout);
        }
        QCOMPARE(query.get(), 3);
        QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>());
    }

    void AHangUpEndsAQuery_data()
    {
        QTest::addColumn<bool>("duringTheQuery");
        QTest::newRow("before it") << false;
        QTest::newRow("during it") << true;
    }

    void AHangUpEndsAQuery()
    {
        QFETCH(const bool, duringTheQuery);
        Line line;
        if (!duringTheQuery) {
            line.peer.HangUp();
        }
        auto query = line.BeginQuery(500, 1);
        if (duringTheQuery) {
            QVERIFY(line.peer.WaitForRequests(1));
            line.peer.HangUp();
        }
        const Outcome outcome = query.get();
        QCOMPARE(outcome.result, 3);
        QCOMPARE(outcome.Bytes(), QByteArray());
        QCOMPARE(line.transciever.StartQuery(Wire::ReadStatus), 1);
        QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
        QCOMPARE(Owned(line.transciever.ReadBuffer(20)), QByteArray());
    }

    void AHangUpIsOvercomeByOpeningAgain()
    {
        Line line;
        line.peer.HangUp();
        QCOMPARE(line.Query(20, 0).result, 3);
        line.transciever.Close();

        ScriptedPeer next;
        next.AnswerAlways(Data);
        QVERIFY(line.transciever.Open());
        QCOMPARE(line.Query().result, 0);
    }

    void TracesEveryAttempt()
    {
        Line line;
        line.peer.AnswerInTurn({Wire::Refusal, Wire::DamagedStatus, QByteArray(), Data});
        const LogCapture log;
        QCOMPARE(line.Query(2000, 3).result, 0);
        const QStringList texts = log.Texts();
        QCOMPARE(texts.size(), 4);
        QVERIFY(texts.at(0).endsWith(
            QStringLiteral(" \033[0;35m73f44e \033[0;33m214334\033[0m[3b]\033[0;31m NACK\033[0m")));
        QVERIFY(texts.at(1).endsWith(
            QStringLiteral(" \033[0;35m73f44e \033[0;33m00f50000\033[0m[4b]\033[0;31m CRC Invalid\033[0m")));
        QVERIFY(texts.at(2).endsWith(
            QStringLiteral(" \033[0;35m73f44e \033[0;33m\033[0m[0b]\033[0;31m No response\033[0m")));
        QVERIFY(texts.at(3).endsWith(QStringLiteral(" \033[0;35m73f44e \033[0;33ma3529a32\033[0m[4b]")));
    }

    void TracesAStartAndAPrepare()
    {
        Line line;
        line.peer.AnswerAlways(Wire::Acknowledge);
        const LogCapture log;
        QCOMPARE(line.Query(Wire::StartMeasurement, GenerousMs, 0).result, 1);
        QVERIFY(log.Contains(QStringLiteral("[3b]\033[0;32m ACK\033[0m")));
        QVERIFY(log.Contains(QStringLiteral("\033[0;32mFunction run.\033[0m")));

        const QByteArray prepare = WithChecksum(Wire::Bytes("50 03 05 04 00 FF FF FF FF"));
        QCOMPARE(line.Query(prepare, GenerousMs, 0).result, 1);
        QVERIFY(log.Contains(QStringLiteral("\033[0;32mFunction prepare: ")));
        QVERIFY(log.Contains(QStringLiteral("Function name: Riso\033[0m")));
    }

    void TracesTheReadBuffer()
    {
        Line line;
        line.peer.Send(Data);
        QVERIFY(line.peer.WaitUntilReadable(Data.size()));
        const LogCapture log;
        Owned(line.transciever.ReadBuffer());
        Owned(line.transciever.ReadBuffer());
        line.peer.Send(Data);
        Owned(line.transciever.ReadBuffer(GenerousMs));
        QCOMPARE(log.Texts().size(), 3);
        QCOMPARE(log.Texts().filter(QStringLiteral("ReadingBuffer: ")).size(), 3);
        QVERIFY(log.Texts().at(0).contains(QStringLiteral("a3529a32")));
        QVERIFY(!log.Texts().at(1).contains(QStringLiteral("a3529a32")));
        QVERIFY(log.Texts().at(2).contains(QStringLiteral("a3529a32")));
    }
};

QTEST_APPLESS_MAIN(TestTransciever)
#include "tst_transciever.moc"
