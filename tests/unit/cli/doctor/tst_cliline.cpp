#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <thread>

#include "cli/doctor/lineprobe.h"
#include "cli/doctor/linerecord.h"
#include "support/scriptedpeer.h"
#include "support/serialdevice.h"

using Cli::LineAnswer;
using Cli::LineExchange;
using Cli::LineProbe;
using Cli::LineRecord;
using std::chrono::microseconds;
using std::chrono::milliseconds;

namespace
{

constexpr milliseconds Patience{30000};
const QByteArray Status = QByteArray::fromHex("00F01FEF");

const QByteArray Refusal = QByteArray::fromHex("214334");

LineExchange Answered(const QByteArray& answer, int micros)
{
    return {answer, microseconds(micros), 0};
}

void Add(LineRecord& record, const LineExchange& exchange, int times)
{
    for (int i = 0; i < times; ++i) {
        record.Add(exchange);
    }
}

/// The counts of all buckets, in order.
QVector<int> Counts(const LineRecord& record)
{
    QVector<int> counts;
    for (const Cli::TimeBucket& bucket : record.Histogram()) {
        counts.append(bucket.count);
    }
    return counts;
}

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

/// A far end that sends without an end, and with no pause that is worth the name.
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
                std::this_thread::sleep_for(std::chrono::microseconds(100));
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

/// The asking of the instrument, and the record of its answers.
class TestCliLine : public QObject
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
    void ReportsABrokenLine();
    void IsEmptyBeforeAnythingIsAsked();
    void CountsEachKind();
    void KeepsTheLastProperStatus();
    void CountsEachTimeInOneBucket_data();
    void CountsEachTimeInOneBucket();
    void CountsWhatIsLaterThanALostLinkWaits();
    void IsHopelessAfterThreeSilencesInARow();
    void IsHopelessWithABrokenLine();
};

void TestCliLine::AnswersHaveAKind_data()
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

void TestCliLine::AnswersHaveAKind()
{
    QTEST(static_cast<int>(Cli::Classify(QByteArray::fromHex(QTest::currentDataTag()))), "kind");
}

void TestCliLine::SetsTheLineUp()
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

void TestCliLine::AsksAndReceivesTheAnswer()
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

void TestCliLine::ReceivesWhateverComes()
{
    const QByteArray answer(200, 'x');
    ScriptedPeer peer;
    peer.AnswerAlways(answer);
    const NearEnd line(peer.DevicePath());
    QCOMPARE(LineProbe(line.Descriptor(), Patience).AskForStatus().answer, answer);
}

void TestCliLine::PassesOverWhatWasThereBefore()
{
    ScriptedPeer peer;
    peer.AnswerAlways(Status);
    const NearEnd line(peer.DevicePath());
    const LineProbe probe(line.Descriptor(), Patience);
    peer.Send("stale");
    QVERIFY(peer.WaitUntilReadable(5));
    QCOMPARE(probe.AskForStatus().answer, Status);
}

void TestCliLine::MeasuresTheTime()
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

void TestCliLine::WaitsNoLongerThanItsPatience()
{
    const ScriptedPeer peer;
    const NearEnd line(peer.DevicePath());
    const LineExchange exchange = LineProbe(line.Descriptor(), milliseconds(30)).AskForStatus();
    QCOMPARE(exchange.answer, QByteArray());
    QCOMPARE(exchange.lineError, 0);
    QVERIFY(peer.WaitForRequests(1));
}

void TestCliLine::PausesBeforeEachRequest()
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

void TestCliLine::CutsOffWhatHasNoEnd()
{
    const BabblingLine babbling;
    const NearEnd line(babbling.Path());
    const LineExchange exchange = LineProbe(line.Descriptor(), Patience).AskForStatus();
    QVERIFY(exchange.answer.contains("babble"));
    QCOMPARE(exchange.lineError, 0);
    QVERIFY(Cli::Classify(exchange.answer) == LineAnswer::Damaged);
}

void TestCliLine::ReportsABrokenLine()
{
    ScriptedPeer peer;
    const NearEnd line(peer.DevicePath());
    const LineProbe probe(line.Descriptor(), Patience);
    peer.HangUp();
    QCOMPARE(probe.AskForStatus().lineError, EIO);
}

void TestCliLine::IsEmptyBeforeAnythingIsAsked()
{
    const LineRecord record;
    QCOMPARE(record.Asked(), 0);
    QCOMPARE(record.LateCount(), 0);
    QVERIFY(!record.Times().has_value());
    QVERIFY(!record.Status().has_value());
    QVERIFY(!record.IsHopeless());
    QCOMPARE(Counts(record), QVector<int>(13, 0));
}

void TestCliLine::CountsEachKind()
{
    LineRecord record;
    Add(record, Answered(Status, 100), 4);
    Add(record, Answered(Refusal, 100), 3);
    Add(record, Answered("noise", 100), 2);
    Add(record, Answered({}, 0), 1);
    QCOMPARE(record.Asked(), 10);
    QCOMPARE(record.Count(LineAnswer::Proper), 4);
    QCOMPARE(record.Count(LineAnswer::Refused), 3);
    QCOMPARE(record.Count(LineAnswer::Damaged), 2);
    QCOMPARE(record.Count(LineAnswer::Silent), 1);
    QCOMPARE(record.LineError(), 0);
}

void TestCliLine::KeepsTheLastProperStatus()
{
    LineRecord record;
    record.Add(Answered(Status, 100));
    record.Add(Answered(QByteArray::fromHex("A3529A32"), 100));
    record.Add(Answered(Refusal, 100));
    QVERIFY(record.Status()->function == Vesmar::MeasurementType::RISO);
}

void TestCliLine::CountsEachTimeInOneBucket_data()
{
    QTest::addColumn<int>("micros");
    QTest::addColumn<int>("bucket");
    QTest::newRow("at once") << 0 << 0;
    QTest::newRow("just below the first limit") << 999 << 0;
    QTest::newRow("at the first limit") << 1000 << 1;
    QTest::newRow("in the middle") << 150000 << 7;
    QTest::newRow("just below the last limit") << 3999999 << 11;
    QTest::newRow("at the last limit") << 4000000 << 12;
}

void TestCliLine::CountsEachTimeInOneBucket()
{
    QFETCH(int, micros);
    QFETCH(int, bucket);
    LineRecord record;
    Add(record, Answered(Status, micros), 7);
    QVector<int> expected(13, 0);
    expected[bucket] = 7;
    QCOMPARE(Counts(record), expected);
}

void TestCliLine::CountsWhatIsLaterThanALostLinkWaits()
{
    LineRecord record;
    record.Add(Answered(Status, 500000));
    QCOMPARE(record.LateCount(), 0);
    record.Add(Answered(Status, 500001));
    record.Add(Answered(Refusal, 3000000));
    QCOMPARE(record.LateCount(), 2);
}

void TestCliLine::IsHopelessAfterThreeSilencesInARow()
{
    LineRecord record;
    Add(record, Answered({}, 0), 2);
    QVERIFY(!record.IsHopeless());
    record.Add(Answered("noise", 100));
    Add(record, Answered({}, 0), 2);
    QVERIFY(!record.IsHopeless());
    record.Add(Answered({}, 0));
    QVERIFY(record.IsHopeless());
    QCOMPARE(record.Asked(), 6);
}

void TestCliLine::IsHopelessWithABrokenLine()
{
    LineRecord record;
    record.Add({Status, microseconds(100), EIO});
    QVERIFY(record.IsHopeless());
    QCOMPARE(record.LineError(), EIO);
    QCOMPARE(record.Asked(), 0);
}

QTEST_GUILESS_MAIN(TestCliLine)
#include "tst_cliline.moc"
