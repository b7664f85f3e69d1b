#include "cli/doctor/lineprobe.h"

#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "support/scriptedpeer.h"
#include "support/serialdevice.h"

using Cli::LineAnswer;
using Cli::LineExchange;
using Cli::LineProbe;
using std::chrono::milliseconds;

namespace
{

constexpr milliseconds Patience{30000};
const QByteArray Status = QByteArray::fromHex("00F01FEF");

/// The near end of the peer's line, opened as the probe needs it.
class NearEnd
{
public:
    explicit NearEnd(const QByteArray& path)
        : _descriptor(::open(path.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~NearEnd() { ::close(_descriptor); }
    NearEnd(const NearEnd&) = delete;
    NearEnd& operator=(const NearEnd&) = delete;

    int Descriptor() const { return _descriptor; }

private:
    int _descriptor;
};

/// A far end that sends without a pause and without an end.
class BabblingLine
{
public:
    BabblingLine() : _master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        ::grantpt(_master);
        ::unlockpt(_master);
        _thread = std::thread([this] {
            while (!_isEnding) {
                [[maybe_unused]] const ssize_t written = ::write(_master, "babble", 6);
            }
        });
    }
    ~BabblingLine()
    {
        _isEnding = true;
        _thread.join();
        ::close(_master);
    }
    BabblingLine(const BabblingLine&) = delete;
    BabblingLine& operator=(const BabblingLine&) = delete;

    QByteArray Path() const { return ::ptsname(_master); }

private:
    int _master;
    std::atomic<bool> _isEnding{false};
    std::thread _thread;
};

} // namespace

class TestCliLineProbe : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AnswersHaveAKind_data();
    void AnswersHaveAKind();
    void SetsTheLineUp();
    void AsksAndReceivesTheAnswer();
    void ReceivesWhateverComes();
    void PassesOverWhatWasThereBefore();
    void MeasuresTheTime();
    void WaitsNoLongerThanItsPatience();
    void PausesBeforeEachRequest();
    void CutsOffWhatHasNoEnd();
    void TellsOfABrokenLine();
};

void TestCliLineProbe::AnswersHaveAKind_data()
{
    QTest::addColumn<int>("kind");
    const auto row = [](const char* answer, LineAnswer kind) {
        QTest::newRow(answer) << static_cast<int>(kind);
    };
    row("00 F0 1F EF", LineAnswer::Proper);
    row("A3 52 9A 32", LineAnswer::Proper);
    row("", LineAnswer::Silent);
    row("21 43 34", LineAnswer::Refused);
    row("21 43 34 00", LineAnswer::Refused);
    row("01 F0 1F EF", LineAnswer::Damaged);
    row("00 F0 00 C1 13", LineAnswer::Damaged); // Too long, with a valid checksum.
    row("06 C6 60", LineAnswer::Damaged);       // Too short, with a valid checksum.
}

void TestCliLineProbe::AnswersHaveAKind()
{
    QTEST(static_cast<int>(Cli::Classify(QByteArray::fromHex(QTest::currentDataTag()))), "kind");
}

void TestCliLineProbe::SetsTheLineUp()
{
    const ScriptedPeer peer;
    const NearEnd line(peer.DevicePath());
    const LineProbe probe(line.Descriptor());
    const SerialDeviceRecord record = RecordedSerialDevice();
    QCOMPARE(record.configurations, 1);
    QCOMPARE(record.configuration.c_cflag, static_cast<tcflag_t>(0x19B2));
    QCOMPARE(record.configuration.c_iflag, static_cast<tcflag_t>(0));
    QCOMPARE(record.configuration.c_oflag, static_cast<tcflag_t>(0));
    QCOMPARE(record.configuration.c_lflag, static_cast<tcflag_t>(0));
    QCOMPARE(static_cast<int>(record.configuration.c_cc[VMIN]), 0);
    QCOMPARE(static_cast<int>(record.configuration.c_cc[VTIME]), 0);
}

void TestCliLineProbe::AsksAndReceivesTheAnswer()
{
    ScriptedPeer peer;
    peer.AnswerAlways(Status);
    const NearEnd line(peer.DevicePath());
    const LineProbe probe(line.Descriptor(), Patience);
    for (int i = 0; i < 3; ++i) {
        const LineExchange exchange = probe.AskForStatus();
        QCOMPARE(exchange.answer, Status);
        QCOMPARE(exchange.lineError, 0);
    }
    const QByteArray request = QByteArray::fromHex("73F44E");
    QCOMPARE(peer.RequestBytes(), (QList<QByteArray>{request, request, request}));
}

void TestCliLineProbe::ReceivesWhateverComes()
{
    const QByteArray answer(200, 'x');
    ScriptedPeer peer;
    peer.AnswerAlways(answer);
    const NearEnd line(peer.DevicePath());
    QCOMPARE(LineProbe(line.Descriptor(), Patience).AskForStatus().answer, answer);
}

void TestCliLineProbe::PassesOverWhatWasThereBefore()
{
    ScriptedPeer peer;
    peer.AnswerAlways(Status);
    const NearEnd line(peer.DevicePath());
    const LineProbe probe(line.Descriptor(), Patience);
    peer.Send("stale");
    QVERIFY(peer.WaitUntilReadable(5));
    QCOMPARE(probe.AskForStatus().answer, Status);
}

void TestCliLineProbe::MeasuresTheTime()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray&) {
        std::this_thread::sleep_for(milliseconds(120));
        return Status;
    });
    const NearEnd line(peer.DevicePath());
    const LineExchange exchange = LineProbe(line.Descriptor(), Patience).AskForStatus();
    QCOMPARE(exchange.answer, Status);
    QVERIFY(exchange.time >= milliseconds(120));
}

void TestCliLineProbe::WaitsNoLongerThanItsPatience()
{
    const ScriptedPeer peer;
    const NearEnd line(peer.DevicePath());
    const LineExchange exchange = LineProbe(line.Descriptor(), milliseconds(30)).AskForStatus();
    QCOMPARE(exchange.answer, QByteArray());
    QCOMPARE(exchange.lineError, 0);
    QVERIFY(peer.WaitForRequests(1));
}

void TestCliLineProbe::PausesBeforeEachRequest()
{
    ScriptedPeer peer;
    peer.AnswerAlways(Status);
    const NearEnd line(peer.DevicePath());
    const LineProbe probe(line.Descriptor(), Patience);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(probe.AskForStatus().answer, Status);
    }
    QVERIFY(timer.elapsed() >= 50);
}

void TestCliLineProbe::CutsOffWhatHasNoEnd()
{
    const BabblingLine babbling;
    const NearEnd line(babbling.Path());
    const LineExchange exchange = LineProbe(line.Descriptor(), Patience).AskForStatus();
    QVERIFY(exchange.answer.contains("babble"));
    QCOMPARE(exchange.lineError, 0);
    QVERIFY(Cli::Classify(exchange.answer) == LineAnswer::Damaged);
}

void TestCliLineProbe::TellsOfABrokenLine()
{
    ScriptedPeer peer;
    const NearEnd line(peer.DevicePath());
    const LineProbe probe(line.Descriptor(), Patience);
    peer.HangUp();
    QCOMPARE(probe.AskForStatus().lineError, EIO);
}

QTEST_GUILESS_MAIN(TestCliLineProbe)
#include "tst_clilineprobe.moc"
