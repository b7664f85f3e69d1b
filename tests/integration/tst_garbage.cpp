#include <random>

#include "integration/patience.h"
#include "integration/watchedtester.h"
#include "support/scriptedpeer.h"
#include "support/wire.h"

namespace
{

/// Answers with everything that is wrong, and now and then with what is right. It is never silent, so that
/// many exchanges fit into a test. The same seed gives the same answers.
class GarbageSource
{
public:
    explicit GarbageSource(quint32 seed) : _generator(seed) {}

    QByteArray Answer(const QByteArray& request)
    {
        const QByteArray proper = Wire::AnswerTo(request);
        switch (Number(0, 9)) {
        case 0:
            return proper;
        case 1:
            return Wire::Acknowledge;
        case 2:
            return Wire::Refusal;
        case 3:
            return proper.left(Number(1, proper.size() - 1));
        case 4:
            return Bytes(Number(1, 5)) + proper;
        case 5:
            return proper + Bytes(Number(1, 5));
        case 6:
            return WithOneBitChanged(proper);
        case 7:
            return Bytes(Number(1, LongestAnswer));
        case 8:
            return WithChecksum(Bytes(Number(1, LongestAnswer)));
        default:
            return WithChecksum(Bytes(proper.size() - ChecksumSize)); // Any values in a proper frame.
        }
    }

private:
    static constexpr int LongestAnswer = 400; // More than any buffer for one answer holds.
    static constexpr int ChecksumSize = 2;

    int Number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(_generator); }

    QByteArray Bytes(int count)
    {
        QByteArray bytes;
        while (bytes.size() < count) {
            bytes.append(static_cast<char>(Number(0, 255)));
        }
        return bytes;
    }

    QByteArray WithOneBitChanged(QByteArray frame)
    {
        const int position = Number(0, frame.size() - 1);
        frame[position] = static_cast<char>(frame.at(position) ^ (1 << Number(0, 7)));
        return frame;
    }

    std::mt19937 _generator;
};

} // namespace

class TestGarbage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LibrarySurvivesAndRecovers();
};

void TestGarbage::LibrarySurvivesAndRecovers()
{
    constexpr quint32 Seed = 20240307;
    constexpr int Exchanges = 200;
    ScriptedPeer peer;
    peer.Answer(
        [source = GarbageSource(Seed)](const QByteArray& request) mutable { return source.Answer(request); });
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(peer.Requests().size() >= Exchanges, 2 * Patience);
    QVERIFY(tester.Errors().contains("103"));

    peer.Answer([](const QByteArray& request) { return Wire::AnswerTo(request); });
    tester->RestartTester(); // The garbage may have brought the update mode about.
    const int identities = tester.Signalled("DeviceInformation").size();
    AWAIT(tester.Signalled("DeviceInformation").size() > identities);
    AWAIT_EQUAL(tester.LastSignalled("CurrentDateTime"), QByteArray("2024-03-07 14:05:09"));
    AWAIT_EQUAL(tester.LastSignalled("CalibrationDateTime"), QByteArray("2024-02-15 00:00:00"));
    AWAIT_EQUAL(tester.ErrorCode(), QByteArray("15"));
    QCOMPARE(tester.LastSignalled("DeviceInformation"), QByteArray("PAT 410 204815 1.05 03 02 2016"));
    QCOMPARE(tester->TesterMode(), Vesmar::OperationMode::Normal);
    QVERIFY(tester.HasStayedOnItsThread());
}

QTEST_GUILESS_MAIN(TestGarbage)
#include "tst_garbage.moc"
