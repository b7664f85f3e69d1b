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

/// Longer than any answer of the peer takes on a busy machine.
constexpr int GenerousMs = 20000;

/// Far longer than a test may take: a wait of this length must end by something else.
constexpr int EndlessMs = 3600 * 1000;

const QByteArray Data = Wire::Bytes("A3529A32");

struct Outcome {
    int result = -1;
    std::unique_ptr<QByteArray> response; ///< Null when it was left untouched.

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

/// Keeps what is written in the near end of a line for as long as it lives.
class HeldOutput
{
public:
    HeldOutput() { HoldSerialDeviceOutput(true); }
    ~HeldOutput() { HoldSerialDeviceOutput(false); }
    HeldOutput(const HeldOutput&) = delete;
    HeldOutput& operator=(const HeldOutput&) = delete;
};

/// Whether work on a thread of its own ends, within a generous time.
template <typename Result>
bool EndsInTime(const std::future<Result>& work)
{
    return work.wait_for(std::chrono::milliseconds(GenerousMs)) == std::future_status::ready;
}

/// The near end of a line, closed.
struct Port {
    Vesmar::CRC16 crc16{nullptr};
    Transciever transciever{&crc16, nullptr};

    Outcome Query(const QByteArray& request, int timeoutMs, int maxRetransmissions)
    {
        QByteArray* response = nullptr;
        Outcome outcome;
        outcome.result = transciever.RunQuery(request, timeoutMs, maxRetransmissions, &response);
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

} // namespace

class TestTransciever : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void OpensForReadingAndWritingWithoutAControllingTerminal();
    void ConfiguresTheLine();
    void OpenTracesItsSteps();
    void OpenDiscardsWhatWasWaiting();
    void OpenOfAnOpenPortDoesNotReconfigureIt();
    void OpenFailsWithTheDevice_data();
    void OpenFailsWithTheDevice();
    void AMissingDeviceIsTriedAgainByTheNextOpen();
    void WithAMissingDeviceNothingIsExchanged();
    void ANegativeHandleOutlivesClose();
    void DescriptorZeroIsMovedHigher();
    void CloseReleasesThePort();
    void CloseTracesItself();
    void TheDestructorReleasesThePort();
    void CanBeOpenedAgainAfterClose();

    void AClosedPortAnswersWithoutTouchingTheResponse();
    void AClosedPortTouchesNoDescriptor();

    void ClassifiesTheAnswer_data();
    void ClassifiesTheAnswer();
    void SendsAgainAfterAFailure_data();
    void SendsAgainAfterAFailure();
    void RetransmitsTwiceByDefault();
    void StoresAnyNumberOfRetransmissions();
    void TheShorterFormsUseTheStoredRetransmissions();
    void NegativeRetransmissionsSendNothing();
    void PausesAfterEveryFailedAttempt();
    void WaitsForTheWholeTimeout();
    void AnAnswerEndsTheWait();
    void SilenceEndsAResponse();
    void CollectsLongResponses();
    void SendsLongRequestsWhole();
    void DiscardsStaleInputBeforeARequest();
    void DiscardsOneBufferOfStaleInputOnly();
    void DiscardsStrayInputAtTheEnd();
    void ExchangesAreTenMillisecondsApart();
    void AnUnansweredRequestIsSentThreeTimesByDefault();

    void StartQuerySendsAndReadsNothing();
    void StartQueriesAreTenMillisecondsApart();
    void ReadBufferReadsOnceWithoutWaiting();
    void ReadBufferWaitsForData();
    void ReadBufferGivesUpAtTheTimeout();
    void ReadBufferCollectsUntilSilence();

    void ClosingEndsTheWaitForAnAnswer();
    void NothingIsWrittenOrReadFromPrepareToCloseUntilClose();
    void AnAnswerThatClosingCutsShortCountsAsNone();
    void CloseClearsTheClosingFlag_data();
    void CloseClearsTheClosingFlag();
    void ACloseBetweenAttemptsEndsTheQuery();
    void ClosingEndsThePauseBeforeARetransmission();
    void AQueryNeverWritesToTheFileThatTookItsDescriptor();

    void AFailingReadEndsTheWaitAndCountsAsNothing();
    void AFailingReadAddsNothingToTheResponse();
    void AFailingReadLeavesTheBufferEmpty();
    void AFailingReadDoesNotEndTheResponse();
    void AResponseThatReachesFourKiBIsDamaged_data();
    void AResponseThatReachesFourKiBIsDamaged();
    void ABabblingLineEndsAQueryAtItsTimeLimit();
    void ABabblingLineEndsTheReadingOfTheBuffer();
    void ALineThatKeepsItsSettingsBlocksNoRead();
    void AnInterruptedAndShortWriteGoesOn();
    void AFailedWriteIsNotTriedAgain();
    void ABlockedLineEndsAQueryAtItsTimeLimit_data();
    void ABlockedLineEndsAQueryAtItsTimeLimit();
    void ClosingEndsABlockedWrite_data();
    void ClosingEndsABlockedWrite();
    void ALineThatComesFreeCarriesTheRequest();
    void ALineThatComesFreeCarriesNothingThatIsNotWantedAnyMore();
    void AHangUpEndsAQuery_data();
    void AHangUpEndsAQuery();
    void AHangUpIsOvercomeByOpeningAgain();

    void TracesEveryAttempt();
    void TracesAStartAndAPrepare();
    void TracesTheReadBuffer();
};

void TestTransciever::OpensForReadingAndWritingWithoutAControllingTerminal()
{
    const ScriptedPeer peer;
    Port port;
    QVERIFY(port.transciever.Open());
    QCOMPARE(RecordedSerialDevice().opens, 1);
    QCOMPARE(RecordedSerialDevice().openFlags, O_RDWR | O_NOCTTY);
}

void TestTransciever::ConfiguresTheLine()
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

void TestTransciever::OpenTracesItsSteps()
{
    const ScriptedPeer peer;
    Port port;
    const LogCapture log;
    QVERIFY(port.transciever.Open());
    QCOMPARE(log.Texts().size(), 2);
    QVERIFY(log.Texts().at(0).endsWith(QStringLiteral(" Transciever::Open")));
    QVERIFY(
        log.Texts().at(1).endsWith(QStringLiteral(" Transciever::Open: Serial port opened successfully.")));
}

void TestTransciever::OpenDiscardsWhatWasWaiting()
{
    ScriptedPeer peer;
    peer.Send("stale");
    QVERIFY(peer.WaitUntilReadable(5));
    Port port;
    QVERIFY(port.transciever.Open());
    QCOMPARE(Owned(port.transciever.ReadBuffer()), QByteArray());
}

void TestTransciever::OpenOfAnOpenPortDoesNotReconfigureIt()
{
    Line line;
    const LogCapture log;
    QVERIFY(line.transciever.Open());
    QCOMPARE(RecordedSerialDevice().opens, 1);
    QCOMPARE(RecordedSerialDevice().configurations, 1);
    QCOMPARE(log.Texts().size(), 2);
    QVERIFY(log.Texts().at(0).endsWith(QStringLiteral(" Transciever::Open")));
    QVERIFY(log.Texts().at(1).endsWith(QStringLiteral(" Transciever::Open: Serial port already opened.")));

    line.peer.AnswerAlways(Data);
    QCOMPARE(line.Query().result, 0);
}

void TestTransciever::OpenFailsWithTheDevice_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("missing") << ENOENT;
    QTest::newRow("no permission") << EACCES;
    QTest::newRow("no such device") << ENXIO;
    QTest::newRow("input or output error") << EIO;
    QTest::newRow("too many files") << EMFILE;
}

void TestTransciever::OpenFailsWithTheDevice()
{
    QFETCH(const int, error);
    const ScriptedPeer peer;
    FailSerialDeviceOpen(error);
    Port port;
    const LogCapture log;
    QVERIFY(!port.transciever.Open());
    QCOMPARE(log.Texts().size(), 2);
    QVERIFY(log.Texts().at(1).endsWith(QStringLiteral(" Transciever::Open: Serial port failed to open.")));
    QCOMPARE(RecordedSerialDevice().opens, 1);
    QCOMPARE(RecordedSerialDevice().configurations, 0);
}

void TestTransciever::AMissingDeviceIsTriedAgainByTheNextOpen()
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

void TestTransciever::WithAMissingDeviceNothingIsExchanged()
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

void TestTransciever::ANegativeHandleOutlivesClose()
{
    Port port;
    RedirectSerialDevice({});
    QVERIFY(!port.transciever.Open());
    port.transciever.Close();
    const Outcome outcome = port.Query(20, 0);
    QCOMPARE(outcome.result, 3);
    QVERIFY2(outcome.response != nullptr, "the port counts as closed, not as failed");
}

void TestTransciever::DescriptorZeroIsMovedHigher()
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

void TestTransciever::CloseReleasesThePort()
{
    Line line;
    QCOMPARE(DescriptorsOf(line.peer.DevicePath()), 2); // The peer keeps one.
    line.transciever.Close();
    QCOMPARE(DescriptorsOf(line.peer.DevicePath()), 1);
    line.transciever.Close();
    QCOMPARE(DescriptorsOf(line.peer.DevicePath()), 1);
}

void TestTransciever::CloseTracesItself()
{
    Line line;
    const LogCapture log;
    line.transciever.Close();
    QCOMPARE(log.Texts().size(), 1);
    QVERIFY(log.Texts().first().endsWith(QStringLiteral(" Transciever::Close")));
}

void TestTransciever::TheDestructorReleasesThePort()
{
    const ScriptedPeer peer;
    {
        Port port;
        QVERIFY(port.transciever.Open());
        QCOMPARE(DescriptorsOf(peer.DevicePath()), 2);
    }
    QCOMPARE(DescriptorsOf(peer.DevicePath()), 1);
}

void TestTransciever::CanBeOpenedAgainAfterClose()
{
    Line line;
    line.peer.AnswerAlways(Data);
    line.transciever.Close();
    QVERIFY(line.transciever.Open());
    QCOMPARE(RecordedSerialDevice().opens, 2);
    QCOMPARE(RecordedSerialDevice().configurations, 2);
    QCOMPARE(line.Query().result, 0);
}

void TestTransciever::AClosedPortAnswersWithoutTouchingTheResponse()
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

void TestTransciever::AClosedPortTouchesNoDescriptor()
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

void TestTransciever::ClassifiesTheAnswer_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("result");
    const auto bytes = [](const char* hex) { return Wire::Bytes(hex); };
    QTest::newRow("data") << Data << 0;
    QTest::newRow("data of one byte") << bytes("00 00 00") << 0;
    QTest::newRow("data that begin like an acknowledge") << WithChecksum(bytes("06 C6")) << 0;
    QTest::newRow("data that begin like a refusal") << WithChecksum(bytes("21 43")) << 0;
    QTest::newRow("acknowledge") << Wire::Acknowledge << 1;
    QTest::newRow("acknowledge with bytes behind it") << bytes("06 C6 60 AB") << 1;
    QTest::newRow("acknowledge with many bytes behind it")
        << Wire::Acknowledge + QByteArray(200, '\x55') << 1;
    QTest::newRow("refusal") << Wire::Refusal << 2;
    QTest::newRow("refusal with bytes behind it") << bytes("21 43 34 00 00") << 2;
    QTest::newRow("no answer") << QByteArray() << 3;
    QTest::newRow("one byte") << bytes("06") << 4;
    QTest::newRow("two bytes") << bytes("06 C6") << 4;
    QTest::newRow("two zero bytes") << bytes("00 00") << 4;
    QTest::newRow("damaged data") << Wire::DamagedStatus << 4;
    QTest::newRow("damaged acknowledge") << bytes("06 C6 61") << 4;
    QTest::newRow("damaged refusal") << bytes("21 43 35") << 4;
    QTest::newRow("garbage before data") << bytes("55") + Data << 4;
    QTest::newRow("garbage after data") << Data + bytes("55") << 4;
    QTest::newRow("garbage before an acknowledge") << bytes("FF") + Wire::Acknowledge << 4;
    QTest::newRow("garbage before a refusal") << bytes("FF") + Wire::Refusal << 4;
}

void TestTransciever::ClassifiesTheAnswer()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const int, result);
    Line line;
    line.peer.AnswerAlways(answer);
    const Outcome outcome = line.Query(answer.isEmpty() ? 20 : GenerousMs, 0);
    QCOMPARE(outcome.result, result);
    QCOMPARE(outcome.Bytes(), answer);
    QVERIFY(line.peer.WaitForRequests(1));
    QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadStatus}));
}

void TestTransciever::SendsAgainAfterAFailure_data()
{
    QTest::addColumn<QList<QByteArray>>("answers");
    QTest::addColumn<int>("maxRetransmissions");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("requests");
    const auto row = [](const char* name, const QList<QByteArray>& answers, int maxRetransmissions,
                        int result, int requests) {
        QTest::newRow(name) << answers << maxRetransmissions << result << requests;
    };
    using namespace Wire;
    row("data at once", {Data}, 2, 0, 1);
    row("acknowledge at once", {Acknowledge}, 2, 1, 1);
    row("refusal, then data", {Refusal, Data}, 2, 0, 2);
    row("much damage, then data", {QByteArray(100, '\x55'), Data}, 2, 0, 2);
    row("damage, then acknowledge", {DamagedStatus, Acknowledge}, 2, 1, 2);
    row("refusal, damage, data", {Refusal, DamagedStatus, Data}, 2, 0, 3);
    row("data too late", {Refusal, Refusal, Refusal, Data}, 2, 2, 3);
    row("one attempt", {Refusal, Data}, 0, 2, 1);
    row("damage, then refusal", {DamagedStatus, Refusal, Data}, 1, 2, 2);
    row("refusal, then damage", {Refusal, DamagedStatus, Data}, 1, 4, 2);
    row("refusal, then silence", {Refusal, QByteArray(), Data}, 1, 3, 2);
    row("six attempts", {Refusal, Refusal, Refusal, Refusal, Refusal, Data}, 5, 0, 6);
}

void TestTransciever::SendsAgainAfterAFailure()
{
    QFETCH(const QList<QByteArray>, answers);
    QFETCH(const int, maxRetransmissions);
    QFETCH(const int, result);
    QFETCH(const int, requests);
    Line line;
    line.peer.AnswerInTurn(answers);
    const Outcome outcome =
        line.Query(Wire::ReadVersion, result == 3 ? 2000 : GenerousMs, maxRetransmissions);
    QCOMPARE(outcome.result, result);
    QCOMPARE(outcome.Bytes(), answers.at(requests - 1));
    QCOMPARE(line.peer.RequestBytes().size(), requests);
    QCOMPARE(line.peer.RequestBytes().count(Wire::ReadVersion), requests);
}

void TestTransciever::RetransmitsTwiceByDefault()
{
    Line line;
    QCOMPARE(line.transciever.GetMaxRetransmissions(), 2);
    line.peer.AnswerAlways(Wire::Refusal);
    QByteArray* response = nullptr;
    QCOMPARE(line.transciever.RunQuery(Wire::ReadStatus, GenerousMs, &response), 2);
    QCOMPARE(Owned(response), Wire::Refusal);
    QCOMPARE(line.peer.RequestBytes().size(), 3);
}

void TestTransciever::StoresAnyNumberOfRetransmissions()
{
    Port port;
    for (const int maxRetransmissions : {0, 5, -7, 1000000}) {
        port.transciever.SetMaxRetransmissions(maxRetransmissions);
        QCOMPARE(port.transciever.GetMaxRetransmissions(), maxRetransmissions);
    }
}

void TestTransciever::TheShorterFormsUseTheStoredRetransmissions()
{
    Line line;
    line.peer.AnswerAlways(Wire::Refusal);
    line.transciever.SetMaxRetransmissions(1);
    QByteArray* response = nullptr;
    QCOMPARE(line.transciever.RunQuery(Wire::ReadStatus, GenerousMs, &response), 2);
    QCOMPARE(Owned(response), Wire::Refusal);
    QCOMPARE(line.peer.RequestBytes().size(), 2);

    line.peer.ClearRequests();
    line.transciever.SetMaxRetransmissions(0);
    QCOMPARE(line.transciever.RunQuery(Wire::ReadStatus, &response), 2);
    QCOMPARE(Owned(response), Wire::Refusal);
    QCOMPARE(line.peer.RequestBytes().size(), 1);
}

void TestTransciever::NegativeRetransmissionsSendNothing()
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

void TestTransciever::PausesAfterEveryFailedAttempt()
{
    Line line;
    line.peer.AnswerAlways(Wire::Refusal);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(line.Query(GenerousMs, 2).result, 2);
    QVERIFY(timer.elapsed() >= 3 * 200);
}

void TestTransciever::WaitsForTheWholeTimeout()
{
    Line line;
    QElapsedTimer timer;
    timer.start();
    const Outcome outcome = line.Query(300, 1);
    QVERIFY(timer.elapsed() >= 2 * (300 + 200));
    QCOMPARE(outcome.result, 3);
    QCOMPARE(outcome.Bytes(), QByteArray());
    QVERIFY(line.peer.WaitForRequests(2));
    QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadStatus, Wire::ReadStatus}));
}

void TestTransciever::AnAnswerEndsTheWait()
{
    Line line;
    line.peer.AnswerAlways(Data);
    auto query = line.BeginQuery(EndlessMs, 0);
    QVERIFY(EndsInTime(query));
    QCOMPARE(query.get().result, 0);
}

void TestTransciever::SilenceEndsAResponse()
{
    Line line;
    line.peer.AnswerAlways(Data.left(2));
    const Outcome outcome = line.Query(EndlessMs, 0);
    QCOMPARE(outcome.result, 4);
    QCOMPARE(outcome.Bytes(), Data.left(2));
    line.peer.Send(Data.mid(2));
    QCOMPARE(Owned(line.transciever.ReadBuffer(GenerousMs)), Data.mid(2));
}

void TestTransciever::CollectsLongResponses()
{
    Line line;
    for (const int size : {127, 128, 129, 256, 300, 1000}) {
        const QByteArray answer = WithChecksum(QByteArray(size - 2, '\xA5'));
        line.peer.AnswerAlways(answer);
        const Outcome outcome = line.Query();
        QCOMPARE(outcome.result, 0);
        QCOMPARE(outcome.Bytes(), answer);
    }
}

void TestTransciever::SendsLongRequestsWhole()
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

void TestTransciever::DiscardsStaleInputBeforeARequest()
{
    Line line;
    line.peer.AnswerAlways(Data);
    line.peer.Send("stale");
    QVERIFY(line.peer.WaitUntilReadable(5));
    const Outcome outcome = line.Query();
    QCOMPARE(outcome.result, 0);
    QCOMPARE(outcome.Bytes(), Data);
}

void TestTransciever::DiscardsOneBufferOfStaleInputOnly()
{
    Line line;
    const QByteArray stale = QByteArray(128, 'x') + QByteArray(72, 'y');
    line.peer.Send(stale);
    QVERIFY(line.peer.WaitUntilReadable(200));
    const Outcome outcome = line.Query();
    QCOMPARE(outcome.result, 4);
    QCOMPARE(outcome.Bytes(), QByteArray(72, 'y'));
}

void TestTransciever::DiscardsStrayInputAtTheEnd()
{
    Line line;
    line.peer.Send("stray");
    QVERIFY(line.peer.WaitUntilReadable(5));
    QCOMPARE(line.Query(GenerousMs, -1).result, 0);
    QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
}

void TestTransciever::ExchangesAreTenMillisecondsApart()
{
    using Clock = std::chrono::steady_clock;
    constexpr int Exchanges = 20;
    Line line;
    // Taken before the answer is written, so the pause seen from here can only be longer than the real one.
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
        QVERIFY(requests.at(exchange).received - answered.at(exchange - 1) >= std::chrono::milliseconds(10));
    }
}

void TestTransciever::AnUnansweredRequestIsSentThreeTimesByDefault()
{
    Line line;
    QElapsedTimer timer;
    timer.start();
    QByteArray* response = nullptr;
    QCOMPARE(line.transciever.RunQuery(Wire::ReadStatus, &response), 3);
    QVERIFY(timer.elapsed() >= 3 * (4000 + 200));
    QCOMPARE(Owned(response), QByteArray());
    QCOMPARE(line.peer.RequestBytes(),
             QList<QByteArray>({Wire::ReadStatus, Wire::ReadStatus, Wire::ReadStatus}));
}

void TestTransciever::StartQuerySendsAndReadsNothing()
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

void TestTransciever::StartQueriesAreTenMillisecondsApart()
{
    Line line;
    QElapsedTimer timer;
    timer.start();
    for (int query = 0; query < 11; ++query) {
        QCOMPARE(line.transciever.StartQuery(Wire::ReadStatus), 1);
    }
    QVERIFY(timer.elapsed() >= 10 * 10);
}

void TestTransciever::ReadBufferReadsOnceWithoutWaiting()
{
    Line line;
    QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
    line.peer.Send(QByteArray(128, 'x') + QByteArray(72, 'y'));
    QVERIFY(line.peer.WaitUntilReadable(200));
    QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray(128, 'x'));
    QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray(72, 'y'));
    QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
}

void TestTransciever::ReadBufferWaitsForData()
{
    Line line;
    auto reading =
        std::async(std::launch::async, [&] { return Owned(line.transciever.ReadBuffer(EndlessMs)); });
    QCOMPARE(reading.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    line.peer.Send(Data);
    QVERIFY(EndsInTime(reading));
    QCOMPARE(reading.get(), Data);
}

void TestTransciever::ReadBufferGivesUpAtTheTimeout()
{
    Line line;
    const LogCapture log;
    QElapsedTimer timer;
    timer.start();
    const std::unique_ptr<QByteArray> buffer(line.transciever.ReadBuffer(100));
    QVERIFY(timer.elapsed() >= 100);
    QVERIFY(buffer != nullptr);
    QCOMPARE(*buffer, QByteArray());
    QCOMPARE(log.Texts(), QStringList());
}

void TestTransciever::ReadBufferCollectsUntilSilence()
{
    Line line;
    const QByteArray sent = QByteArray(128, 'x') + QByteArray(172, 'y');
    line.peer.Send(sent);
    QVERIFY(line.peer.WaitUntilReadable(sent.size()));
    QCOMPARE(Owned(line.transciever.ReadBuffer(EndlessMs)), sent);
}

void TestTransciever::ClosingEndsTheWaitForAnAnswer()
{
    Line line;
    auto query = line.BeginQuery(EndlessMs, 2);
    QVERIFY(line.peer.WaitForRequests(1));
    line.transciever.PrepareToClose();
    QVERIFY(EndsInTime(query));
    const Outcome outcome = query.get();
    QCOMPARE(outcome.result, 3);
    QCOMPARE(outcome.Bytes(), QByteArray());
}

void TestTransciever::NothingIsWrittenOrReadFromPrepareToCloseUntilClose()
{
    Line line;
    line.peer.Send("waiting");
    QVERIFY(line.peer.WaitUntilReadable(7));
    line.transciever.PrepareToClose();
    auto exchanges = std::async(std::launch::async, [&] {
        const Outcome outcome = line.Query(EndlessMs, 2);
        return QString::number(outcome.result) + QString::number(outcome.Bytes().size()) +
               QString::number(line.transciever.StartQuery(Wire::StartMeasurement)) +
               QString::number(Owned(line.transciever.ReadBuffer()).size()) +
               QString::number(Owned(line.transciever.ReadBuffer(EndlessMs)).size());
    });
    QVERIFY(EndsInTime(exchanges));
    QCOMPARE(exchanges.get(), QStringLiteral("30100"));
    QVERIFY(line.peer.WaitUntilReadable(7));

    line.transciever.Close();
    QVERIFY(line.transciever.Open());
    line.peer.AnswerAlways(Data);
    QCOMPARE(line.Query(Wire::ReadVersion, GenerousMs, 0).result, 0);
    QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadVersion}));
}

void TestTransciever::AnAnswerThatClosingCutsShortCountsAsNone()
{
    Line line;
    LetSerialDeviceBabble();
    auto query = line.BeginQuery(EndlessMs, 2);
    QVERIFY(line.peer.WaitForRequests(1));
    line.transciever.PrepareToClose();
    QVERIFY(EndsInTime(query));
    const Outcome outcome = query.get();
    QCOMPARE(outcome.result, 3);
    QCOMPARE(outcome.Bytes(), QByteArray());
}

void TestTransciever::CloseClearsTheClosingFlag_data()
{
    QTest::addColumn<bool>("openBefore");
    QTest::newRow("an open port") << true;
    QTest::newRow("a port that is not open") << false;
}

void TestTransciever::CloseClearsTheClosingFlag()
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

    QElapsedTimer timer;
    timer.start();
    QCOMPARE(port.Query(300, 0).result, 3);
    QVERIFY2(timer.elapsed() >= 300 + 200, "the wait still ends at once");
}

void TestTransciever::ACloseBetweenAttemptsEndsTheQuery()
{
    Line line;
    line.peer.AnswerAlways(Wire::Refusal);
    auto query = line.BeginQuery(EndlessMs, 1000);
    QVERIFY(line.peer.WaitForRequests(2));
    line.transciever.Close();
    QVERIFY(EndsInTime(query));
    QCOMPARE(query.get().result, 3);
}

void TestTransciever::ClosingEndsThePauseBeforeARetransmission()
{
    Line line;
    line.peer.AnswerAlways(Wire::Refusal);
    const LogCapture log;
    auto query = line.BeginQuery(EndlessMs, 2);
    QVERIFY(line.peer.WaitForRequests(1));
    QTRY_COMPARE(log.Texts().size(), 1); // The pause begins once the refusal has been traced.
    QElapsedTimer timer;
    timer.start();
    line.transciever.PrepareToClose();
    const Outcome outcome = query.get();
    QVERIFY(timer.elapsed() < 10);
    QCOMPARE(outcome.result, 3);
    QCOMPARE(outcome.Bytes(), QByteArray());
    QCOMPARE(log.Texts().size(), 1);
    QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadStatus}));
}

void TestTransciever::AQueryNeverWritesToTheFileThatTookItsDescriptor()
{
    Line line;
    line.peer.AnswerAlways(Wire::Refusal);
    auto query = line.BeginQuery(200, 1000);
    QVERIFY(line.peer.WaitForRequests(1));
    line.transciever.Close();
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(EndsInTime(query));
    QCOMPARE(query.get().result, 3);
    QCOMPARE(file.size(), qint64(0));
}

void TestTransciever::AFailingReadEndsTheWaitAndCountsAsNothing()
{
    Line line;
    FailSerialDeviceReads(0);
    auto query = line.BeginQuery(EndlessMs, 0);
    QVERIFY(EndsInTime(query));
    const Outcome outcome = query.get();
    QCOMPARE(outcome.result, 3);
    QCOMPARE(outcome.Bytes(), QByteArray());
}

void TestTransciever::AFailingReadAddsNothingToTheResponse()
{
    Line line;
    line.peer.AnswerAlways(Data);
    FailSerialDeviceReads(1);
    const Outcome outcome = line.Query();
    QCOMPARE(outcome.result, 0);
    QCOMPARE(outcome.Bytes(), Data);
}

void TestTransciever::AFailingReadLeavesTheBufferEmpty()
{
    Line line;
    line.peer.Send(Data);
    QVERIFY(line.peer.WaitUntilReadable(Data.size()));
    FailSerialDeviceReads(0);
    QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
    QCOMPARE(Owned(line.transciever.ReadBuffer(20)), QByteArray());
}

/// On a busy machine, a failing read itself may last longer than the silence that ends a response.
void TestTransciever::AFailingReadDoesNotEndTheResponse()
{
    const QByteArray answer = WithChecksum(QByteArray(300, '\xA5'));
    const auto isReceivedWhole = [&answer] {
        Line line;
        line.peer.AnswerAlways(answer);
        FailSerialDeviceReads(1, 1);
        return line.Query().Bytes() == answer;
    };
    QVERIFY(QTest::qWaitFor(isReceivedWhole));
}

void TestTransciever::AResponseThatReachesFourKiBIsDamaged_data()
{
    QTest::addColumn<QByteArray>("beginning");
    QTest::newRow("no frame") << QByteArray(4096, 'x');
    QTest::newRow("an acknowledge") << Wire::Acknowledge + QByteArray(4093, 'x');
    QTest::newRow("a refusal") << Wire::Refusal + QByteArray(4093, 'x');
    QTest::newRow("a valid checksum") << WithChecksum(QByteArray(4094, 'x'));
}

void TestTransciever::AResponseThatReachesFourKiBIsDamaged()
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

void TestTransciever::ABabblingLineEndsAQueryAtItsTimeLimit()
{
    Line line;
    LetSerialDeviceBabble();
    QElapsedTimer timer;
    timer.start();
    const Outcome outcome = line.Query(50, 1);
    QVERIFY(timer.elapsed() >= 2 * (50 + 200));
    QCOMPARE(outcome.result, 4);
    QVERIFY(outcome.Bytes().size() < 4096);
    QVERIFY(line.peer.WaitForRequests(2));
}

void TestTransciever::ABabblingLineEndsTheReadingOfTheBuffer()
{
    Line line;
    LetSerialDeviceBabble();
    QElapsedTimer timer;
    timer.start();
    const QByteArray byTime = Owned(line.transciever.ReadBuffer(50));
    QVERIFY(timer.elapsed() >= 50);
    QVERIFY(!byTime.isEmpty() && byTime.size() < 4096);
    QCOMPARE(Owned(line.transciever.ReadBuffer(EndlessMs)), QByteArray(4096, 'x'));
}

void TestTransciever::ALineThatKeepsItsSettingsBlocksNoRead()
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
    QVERIFY(EndsInTime(query));
    QCOMPARE(query.get(), 0);
}

void TestTransciever::AnInterruptedAndShortWriteGoesOn()
{
    Line line;
    LimitSerialDeviceWrites({-EINTR, 1, -EINTR, -EAGAIN, 1});
    line.transciever.StartQuery(Wire::ReadStatus);
    QTRY_COMPARE(line.peer.RequestBytes().join(), Wire::ReadStatus);
}

void TestTransciever::AFailedWriteIsNotTriedAgain()
{
    Line line;
    LimitSerialDeviceWrites({-EIO});
    QCOMPARE(line.Query(20, 0).result, 3);
    line.peer.AnswerAlways(Data);
    QCOMPARE(line.Query(Wire::ReadVersion, GenerousMs, 0).result, 0);
    QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadVersion}));
}

void TestTransciever::ABlockedLineEndsAQueryAtItsTimeLimit_data()
{
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("nothing is accepted") << false;
    QTest::newRow("what is accepted does not leave") << true;
}

void TestTransciever::ABlockedLineEndsAQueryAtItsTimeLimit()
{
    QFETCH(const bool, isAccepted);
    Line line;
    std::future<Outcome> query; // Ends after the line is free again.
    std::optional<StoppedOutput> stopped;
    std::optional<HeldOutput> held;
    isAccepted ? void(held.emplace()) : void(stopped.emplace(line.peer));
    QElapsedTimer timer;
    timer.start();
    query = line.BeginQuery(300, 1);
    QVERIFY(EndsInTime(query));
    QVERIFY(timer.elapsed() >= 2 * (300 + 200));
    QCOMPARE(query.get().result, 3);
}

void TestTransciever::ClosingEndsABlockedWrite_data()
{
    ABlockedLineEndsAQueryAtItsTimeLimit_data();
}

void TestTransciever::ClosingEndsABlockedWrite()
{
    QFETCH(const bool, isAccepted);
    Line line;
    std::future<Outcome> query; // Both end after the line is free again.
    std::future<void> closing;
    std::optional<StoppedOutput> stopped;
    std::optional<HeldOutput> held;
    isAccepted ? void(held.emplace()) : void(stopped.emplace(line.peer));
    query = line.BeginQuery(EndlessMs, 2);
    QCOMPARE(query.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    closing = std::async(std::launch::async, [&line] {
        line.transciever.PrepareToClose();
        line.transciever.Close();
    });
    QVERIFY(EndsInTime(closing));
    QVERIFY(EndsInTime(query));
    QCOMPARE(query.get().result, 3);
}

void TestTransciever::ALineThatComesFreeCarriesTheRequest()
{
    Line line;
    line.peer.AnswerAlways(Data);
    std::future<Outcome> query;
    {
        const StoppedOutput stopped(line.peer);
        query = line.BeginQuery(EndlessMs, 0);
        QCOMPARE(query.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    }
    QVERIFY(EndsInTime(query));
    QCOMPARE(query.get().result, 0);
    QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>({Wire::ReadStatus}));
}

void TestTransciever::ALineThatComesFreeCarriesNothingThatIsNotWantedAnyMore()
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
    QVERIFY(EndsInTime(query));
    QCOMPARE(query.get(), 3);
    QCOMPARE(line.peer.RequestBytes(), QList<QByteArray>());
}

void TestTransciever::AHangUpEndsAQuery_data()
{
    QTest::addColumn<bool>("duringTheQuery");
    QTest::newRow("before it") << false;
    QTest::newRow("during it") << true;
}

void TestTransciever::AHangUpEndsAQuery()
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
    QVERIFY(EndsInTime(query));
    const Outcome outcome = query.get();
    QCOMPARE(outcome.result, 3);
    QCOMPARE(outcome.Bytes(), QByteArray());
    QCOMPARE(line.transciever.StartQuery(Wire::ReadStatus), 1);
    QCOMPARE(Owned(line.transciever.ReadBuffer()), QByteArray());
    QCOMPARE(Owned(line.transciever.ReadBuffer(20)), QByteArray());
}

void TestTransciever::AHangUpIsOvercomeByOpeningAgain()
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

void TestTransciever::TracesEveryAttempt()
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

void TestTransciever::TracesAStartAndAPrepare()
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

void TestTransciever::TracesTheReadBuffer()
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

QTEST_APPLESS_MAIN(TestTransciever)
#include "tst_transciever.moc"
