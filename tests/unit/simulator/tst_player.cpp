#include <QtTest>

#include "simulator/line/player.h"

using Simulator::FramePiece;
using Simulator::Player;
using Simulator::RecordedEntry;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const QByteArray ReadStatus = QByteArray::fromHex("73f44e");
const QByteArray ReadVersion = QByteArray::fromHex("57122a");
const QByteArray ReadMeasurement = QByteArray::fromHex("65033c");
const QByteArray StartMeasurement = QByteArray::fromHex("53966a");
const QByteArray StopMeasurement = QByteArray::fromHex("68aeed");
const QByteArray NotRecorded("not recorded");

RecordedEntry Exchange(const QByteArray& request, const char* answer)
{
    return {request, QByteArray::fromHex(answer), milliseconds(0)};
}

RecordedEntry Unasked(const char* bytes, int after)
{
    return {{}, QByteArray::fromHex(bytes), milliseconds(after)};
}

/// A player and the time that it is given.
class Deck
{
public:
    explicit Deck(const std::vector<RecordedEntry>& recording) : _player(recording) {}

    void Wait(int ms) { _now += milliseconds(ms); }
    QByteArray Ask(const QByteArray& request)
    {
        const std::optional<QByteArray> answer = _player.Answer(request, _now);
        return answer ? answer->toHex() : NotRecorded;
    }

    /// What goes out now, and how long the line is quiet before each: "0af73370/20".
    QByteArrayList Frames()
    {
        QByteArrayList frames;
        for (const FramePiece& piece : _player.TakeFrames(_now)) {
            const auto pause = std::chrono::duration_cast<milliseconds>(piece.pauseBefore);
            frames.append(piece.bytes.toHex() + '/' + QByteArray::number(static_cast<int>(pause.count())));
        }
        return frames;
    }

    /// In milliseconds from now; -1 for never.
    int NextFrameIn() const
    {
        const std::optional<TimePoint> next = _player.NextFrameAt();
        return next ? static_cast<int>(std::chrono::duration_cast<milliseconds>(*next - _now).count()) : -1;
    }

private:
    Player _player;
    TimePoint _now;
};

} // namespace

class TestPlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ReadsInTheirOrder();
    void ReadsPassOthersOver();
    void PassedOverReadIsRepeated();
    void ReadsWaitForTheNextCommand();
    void EveryLetter_data();
    void EveryLetter();
    void ReadThatWasNotAnsweredYet();
    void SilenceIsRepeated();
    void CommandsPassEverythingOver();
    void CommandThatIsNotThere();
    void CommandIsRepeated();
    void PayloadsMayDiffer();
    void UnaskedComesByItself();
    void UnaskedBehindSilence();
    void UnaskedAtOnce();
    void UnaskedWhenLate();
    void RequestInBetween();
    void RepeatInBetween();
    void RepeatedCommandInBetween();
    void UnaskedPassedOver();
};

void TestPlayer::ReadsInTheirOrder()
{
    Deck deck({Exchange(ReadStatus, "00fed10e"), Exchange(ReadStatus, "02fe0000")});
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("00fed10e"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("02fe0000"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("02fe0000"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("02fe0000"));
}

void TestPlayer::ReadsPassOthersOver()
{
    Deck deck({Exchange(ReadStatus, "01"), Unasked("77", 5), Exchange(ReadVersion, "02"),
               Exchange(ReadStatus, "03")});
    QCOMPARE(deck.Ask(ReadVersion), QByteArray("02"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("03"));
    QCOMPARE(deck.NextFrameIn(), -1);
}

/// As it was answered last up to the position, whether that was played or passed over.
void TestPlayer::PassedOverReadIsRepeated()
{
    Deck deck({Exchange(ReadVersion, "01"), Exchange(ReadVersion, "02"), Exchange(ReadStatus, "03")});
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("03"));
    QCOMPARE(deck.Ask(ReadVersion), QByteArray("02"));
}

void TestPlayer::ReadsWaitForTheNextCommand()
{
    Deck deck({Exchange(ReadStatus, "01"), Exchange(StartMeasurement, "06c660"), Exchange(ReadStatus, "02")});
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
    QCOMPARE(deck.Ask(StartMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("02"));
}

void TestPlayer::EveryLetter_data()
{
    QTest::addColumn<bool>("isRead");
    for (const char* letter : {"s", "W", "R", "T", "e"}) {
        QTest::newRow(letter) << true;
    }
    for (const char* letter : {"S", "V", "F", "Z", "x", "P", "r", "t", "q", "\xFF"}) {
        QTest::newRow(letter) << false;
    }
}

/// A read is not looked for beyond a command, a command is.
void TestPlayer::EveryLetter()
{
    QFETCH(bool, isRead);
    const QByteArray request(QTest::currentDataTag());
    Deck deck({Exchange(StopMeasurement, "06c660"), Exchange(request, "1234")});
    QCOMPARE(deck.Ask(request), isRead ? NotRecorded : QByteArray("1234"));
}

void TestPlayer::ReadThatWasNotAnsweredYet()
{
    Deck deck({Exchange(ReadStatus, "01"), Exchange(StopMeasurement, "06c660"), Exchange(ReadVersion, "02")});
    QCOMPARE(deck.Ask(ReadVersion), NotRecorded);
    QCOMPARE(deck.Ask(ReadMeasurement), NotRecorded);
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
    QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.Ask(ReadVersion), QByteArray("02"));
}

void TestPlayer::SilenceIsRepeated()
{
    Deck deck({Exchange(ReadStatus, "01"), Exchange(ReadStatus, "")});
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray());
    QCOMPARE(deck.Ask(ReadStatus), QByteArray());
}

void TestPlayer::CommandsPassEverythingOver()
{
    Deck deck({Exchange(ReadStatus, "01"), Exchange(StartMeasurement, "214334"), Unasked("77", 5),
               Exchange(StopMeasurement, "06c660"), Exchange(ReadStatus, "02")});
    QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.Ask(StartMeasurement), QByteArray("214334"));
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("02"));
}

/// It changes nothing: what has not been played still is.
void TestPlayer::CommandThatIsNotThere()
{
    Deck deck({Exchange(ReadStatus, "01"), Exchange(StopMeasurement, "06c660")});
    QCOMPARE(deck.Ask(StartMeasurement), NotRecorded);
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
    QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
}

void TestPlayer::CommandIsRepeated()
{
    Deck deck({Exchange(StopMeasurement, "06c660"), Exchange(StopMeasurement, "")});
    QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.Ask(StopMeasurement), QByteArray());
    QCOMPARE(deck.Ask(StopMeasurement), QByteArray());
}

void TestPlayer::PayloadsMayDiffer()
{
    Deck deck({Exchange(QByteArray::fromHex("720102030405060000"), "06c660")});
    QCOMPARE(deck.Ask(QByteArray::fromHex("721111111111111111")), QByteArray("06c660"));
}

void TestPlayer::UnaskedComesByItself()
{
    Deck deck({Exchange(StartMeasurement, "06c660"), Unasked("0af73370", 200), Unasked("05024741", 100),
               Exchange(ReadStatus, "01"), Unasked("99", 1)});
    QCOMPARE(deck.NextFrameIn(), -1);
    deck.Wait(5000);
    QCOMPARE(deck.Frames(), QByteArrayList());
    QCOMPARE(deck.Ask(StartMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.NextFrameIn(), 200);
    deck.Wait(199);
    QCOMPARE(deck.Frames(), QByteArrayList());
    deck.Wait(1);
    QCOMPARE(deck.Frames(), QByteArrayList{"0af73370/20"});
    QCOMPARE(deck.NextFrameIn(), 100);
    deck.Wait(100);
    QCOMPARE(deck.Frames(), QByteArrayList{"05024741/20"});
    QCOMPARE(deck.NextFrameIn(), -1);
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
}

void TestPlayer::UnaskedBehindSilence()
{
    Deck deck({Exchange(StartMeasurement, ""), Unasked("0af73370", 30)});
    QCOMPARE(deck.Ask(StartMeasurement), QByteArray());
    QCOMPARE(deck.NextFrameIn(), 30);
}

void TestPlayer::UnaskedAtOnce()
{
    Deck deck({Exchange(StartMeasurement, "06c660"), Unasked("0af73370", 0), Unasked("05", 19)});
    QCOMPARE(deck.Ask(StartMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.Frames(), QByteArrayList{"0af73370/0"});
    deck.Wait(19);
    QCOMPARE(deck.Frames(), QByteArrayList{"05/19"});
}

/// A late one does not make those behind it later.
void TestPlayer::UnaskedWhenLate()
{
    Deck deck(
        {Exchange(StartMeasurement, "06c660"), Unasked("01", 100), Unasked("02", 100), Unasked("03", 100)});
    deck.Ask(StartMeasurement);
    deck.Wait(250);
    QCOMPARE(deck.Frames(), (QByteArrayList{"01/20", "02/20"}));
    QCOMPARE(deck.NextFrameIn(), 50);
}

void TestPlayer::RequestInBetween()
{
    Deck deck({Exchange(StartMeasurement, "06c660"), Unasked("01", 100), Exchange(ReadStatus, "02"),
               Unasked("03", 100)});
    deck.Ask(StartMeasurement);
    deck.Wait(50);
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("02"));
    QCOMPARE(deck.NextFrameIn(), 100);
    deck.Wait(100);
    QCOMPARE(deck.Frames(), QByteArrayList{"03/20"});
}

void TestPlayer::RepeatInBetween()
{
    Deck deck({Exchange(ReadStatus, "02"), Exchange(StartMeasurement, "06c660"), Unasked("01", 100)});
    deck.Ask(ReadStatus);
    deck.Ask(StartMeasurement);
    deck.Wait(50);
    QCOMPARE(deck.Ask(ReadStatus), QByteArray("02"));
    QCOMPARE(deck.NextFrameIn(), 50);
}

void TestPlayer::RepeatedCommandInBetween()
{
    Deck deck({Exchange(StartMeasurement, "06c660"), Unasked("01", 100)});
    deck.Ask(StartMeasurement);
    deck.Wait(50);
    QCOMPARE(deck.Ask(StartMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.NextFrameIn(), 50);
}

void TestPlayer::UnaskedPassedOver()
{
    Deck deck(
        {Exchange(StartMeasurement, "06c660"), Unasked("01", 100), Exchange(StopMeasurement, "06c660")});
    deck.Ask(StartMeasurement);
    QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
    QCOMPARE(deck.NextFrameIn(), -1);
    deck.Wait(1000);
    QCOMPARE(deck.Frames(), QByteArrayList());
}

QTEST_APPLESS_MAIN(TestPlayer)
#include "tst_player.moc"
