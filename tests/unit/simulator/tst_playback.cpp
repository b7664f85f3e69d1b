#include <QElapsedTimer>
#include <QtTest>

#include "instrumentbench.h"
#include "simulator/line/player.h"
#include "simulator/line/recordingfile.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::Fault;
using Simulator::FramePiece;
using Simulator::Instrument;
using Simulator::InstrumentOptions;
using Simulator::Player;
using Simulator::RecordedEntry;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

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
        for (const FramePiece& piece : _player.CollectFrames(_now)) {
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

const QByteArray Result = Bytes("05024741d600f300000000000000000000000000000000005731");

InstrumentOptions Playing(const char* exchanges)
{
    InstrumentOptions options;
    options.recording = Simulator::ParseRecording(QByteArray("{\"exchanges\": [") + exchanges + "]}");
    return options;
}

/// A start and what comes of it.
const char Recording[] =
    "{\"request\": \"73f44e\", \"answer\": \"00fed10e\"},"
    "{\"request\": \"53966a\", \"answer\": \"06c660\"},"
    "{\"unasked\": \"0af73370\", \"after\": 100},"
    "{\"unasked\": \"05024741d600f300000000000000000000000000000000005731\", \"after\": 100},"
    "{\"request\": \"68aeed\", \"answer\": \"06c660\"}";

} // namespace

class TestPlayback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ReadsInTheirOrder()
    {
        Deck deck({Exchange(ReadStatus, "00fed10e"), Exchange(ReadStatus, "02fe0000")});
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("00fed10e"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("02fe0000"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("02fe0000"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("02fe0000"));
    }

    void ReadsPassOthersOver()
    {
        Deck deck({Exchange(ReadStatus, "01"), Unasked("77", 5), Exchange(ReadVersion, "02"),
                   Exchange(ReadStatus, "03")});
        QCOMPARE(deck.Ask(ReadVersion), QByteArray("02"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("03"));
        QCOMPARE(deck.NextFrameIn(), -1);
    }

    /// As it was answered last up to the position, whether that was played or passed over.
    void PassedOverReadIsRepeated()
    {
        Deck deck({Exchange(ReadVersion, "01"), Exchange(ReadVersion, "02"), Exchange(ReadStatus, "03")});
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("03"));
        QCOMPARE(deck.Ask(ReadVersion), QByteArray("02"));
    }

    void ReadsWaitForTheNextCommand()
    {
        Deck deck(
            {Exchange(ReadStatus, "01"), Exchange(StartMeasurement, "06c660"), Exchange(ReadStatus, "02")});
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
        QCOMPARE(deck.Ask(StartMeasurement), QByteArray("06c660"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("02"));
    }

    void EveryLetter_data()
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
    void EveryLetter()
    {
        QFETCH(bool, isRead);
        const QByteArray request(QTest::currentDataTag());
        Deck deck({Exchange(StopMeasurement, "06c660"), Exchange(request, "1234")});
        QCOMPARE(deck.Ask(request), isRead ? NotRecorded : QByteArray("1234"));
    }

    void ReadThatWasNotAnsweredYet()
    {
        Deck deck(
            {Exchange(ReadStatus, "01"), Exchange(StopMeasurement, "06c660"), Exchange(ReadVersion, "02")});
        QCOMPARE(deck.Ask(ReadVersion), NotRecorded);
        QCOMPARE(deck.Ask(ReadMeasurement), NotRecorded);
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
        QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
        QCOMPARE(deck.Ask(ReadVersion), QByteArray("02"));
    }

    void SilenceIsRepeated()
    {
        Deck deck({Exchange(ReadStatus, "01"), Exchange(ReadStatus, "")});
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray());
        QCOMPARE(deck.Ask(ReadStatus), QByteArray());
    }

    void CommandsPassEverythingOver()
    {
        Deck deck({Exchange(ReadStatus, "01"), Exchange(StartMeasurement, "214334"), Unasked("77", 5),
                   Exchange(StopMeasurement, "06c660"), Exchange(ReadStatus, "02")});
        QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
        QCOMPARE(deck.Ask(StartMeasurement), QByteArray("214334"));
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("02"));
    }

    /// It changes nothing: what has not been played still is.
    void CommandThatIsNotThere()
    {
        Deck deck({Exchange(ReadStatus, "01"), Exchange(StopMeasurement, "06c660")});
        QCOMPARE(deck.Ask(StartMeasurement), NotRecorded);
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("01"));
        QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
    }

    void CommandIsRepeated()
    {
        Deck deck({Exchange(StopMeasurement, "06c660"), Exchange(StopMeasurement, "")});
        QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
        QCOMPARE(deck.Ask(StopMeasurement), QByteArray());
        QCOMPARE(deck.Ask(StopMeasurement), QByteArray());
    }

    void PayloadsMayDiffer()
    {
        Deck deck({Exchange(Bytes("720102030405060000"), "06c660")});
        QCOMPARE(deck.Ask(Bytes("721111111111111111")), QByteArray("06c660"));
    }

    void UnaskedComesByItself()
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

    void UnaskedBehindSilence()
    {
        Deck deck({Exchange(StartMeasurement, ""), Unasked("0af73370", 30)});
        QCOMPARE(deck.Ask(StartMeasurement), QByteArray());
        QCOMPARE(deck.NextFrameIn(), 30);
    }

    void UnaskedAtOnce()
    {
        Deck deck({Exchange(StartMeasurement, "06c660"), Unasked("0af73370", 0), Unasked("05", 19)});
        QCOMPARE(deck.Ask(StartMeasurement), QByteArray("06c660"));
        QCOMPARE(deck.Frames(), QByteArrayList{"0af73370/0"});
        deck.Wait(19);
        QCOMPARE(deck.Frames(), QByteArrayList{"05/19"});
    }

    /// A late one does not make those behind it later.
    void UnaskedWhenLate()
    {
        Deck deck({Exchange(StartMeasurement, "06c660"), Unasked("01", 100), Unasked("02", 100),
                   Unasked("03", 100)});
        deck.Ask(StartMeasurement);
        deck.Wait(250);
        QCOMPARE(deck.Frames(), (QByteArrayList{"01/20", "02/20"}));
        QCOMPARE(deck.NextFrameIn(), 50);
    }

    void RequestInBetween()
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

    void RepeatInBetween()
    {
        Deck deck({Exchange(ReadStatus, "02"), Exchange(StartMeasurement, "06c660"), Unasked("01", 100)});
        deck.Ask(ReadStatus);
        deck.Ask(StartMeasurement);
        deck.Wait(50);
        QCOMPARE(deck.Ask(ReadStatus), QByteArray("02"));
        QCOMPARE(deck.NextFrameIn(), 50);
    }

    void RepeatedCommandInBetween()
    {
        Deck deck({Exchange(StartMeasurement, "06c660"), Unasked("01", 100)});
        deck.Ask(StartMeasurement);
        deck.Wait(50);
        QCOMPARE(deck.Ask(StartMeasurement), QByteArray("06c660"));
        QCOMPARE(deck.NextFrameIn(), 50);
    }

    void UnaskedPassedOver()
    {
        Deck deck(
            {Exchange(StartMeasurement, "06c660"), Unasked("01", 100), Exchange(StopMeasurement, "06c660")});
        deck.Ask(StartMeasurement);
        QCOMPARE(deck.Ask(StopMeasurement), QByteArray("06c660"));
        QCOMPARE(deck.NextFrameIn(), -1);
        deck.Wait(1000);
        QCOMPARE(deck.Frames(), QByteArrayList());
    }

    void AnswersAndWhatComesUnasked()
    {
        AskedInstrument instrument(Playing(Recording));
        QCOMPARE(instrument.Ask(ReadStatus, 4), IdleStatus);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(instrument.Ask(StartMeasurement, 3), Acknowledge);
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
        QVERIFY(timer.elapsed() >= 99);
        QCOMPARE(instrument.client.Read(26), Result);
        QVERIFY(timer.elapsed() >= 199);
        QCOMPARE(instrument.Ask(ReadStatus, 4), IdleStatus);
        QCOMPARE(instrument.Ask(StopMeasurement, 3), Acknowledge);
    }

    /// A log may begin in the middle, without the identity that every program reads first.
    void WhatIsNotRecordedIsTheModels()
    {
        AskedInstrument instrument(Playing(Recording));
        QCOMPARE(instrument.Ask(Bytes("57122a"), 25).left(6), QByteArray("PAT410"));
        QCOMPARE(instrument.Ask(ReadStatus, 4), IdleStatus);
    }

    void SilenceIsSilence()
    {
        AskedInstrument instrument(
            Playing("{\"request\": \"73f44e\"}, {\"request\": \"68aeed\", \"answer\": \"06\"}"));
        QVERIFY(instrument.client.Write(ReadStatus));
        QTRY_COMPARE(instrument.Requests().size(), 1);
        QCOMPARE(instrument.Ask(StopMeasurement, 1).toHex(), QByteArray("06"));
        QVERIFY(instrument.Exchanges().front().answer.isEmpty());
    }

    void UnaskedIsCancelled()
    {
        AskedInstrument instrument(Playing("{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                                           "{\"unasked\": \"0af73370\", \"after\": 600000},"
                                           "{\"request\": \"68aeed\", \"answer\": \"06c660\"},"
                                           "{\"unasked\": \"77\"}"));
        QCOMPARE(instrument.Ask(StartMeasurement, 3), Acknowledge);
        QCOMPARE(instrument.Ask(StopMeasurement, 4), Acknowledge + QByteArray("w"));
    }

    void NothingIsLeftOfTheModel()
    {
        const LogFile log;
        InstrumentOptions options = Playing(Recording);
        options.logPath = log.Path();
        AskedInstrument instrument(options);
        instrument.SetMode(2);
        instrument.SetError(4);
        instrument.SetFunction(3);
        instrument.Execute(Command("restart 2"));
        instrument.Execute(Command("scenario refuses-prepare"));
        QCOMPARE(instrument.Ask(ReadStatus, 4), IdleStatus);
        QTRY_COMPARE(instrument.Requests().size(), 1);
        QCOMPARE(log.Lines(), QByteArray("73f44e 00fed10e\n"));
    }

    void FaultsWorkOnTop()
    {
        AskedInstrument instrument(Playing(Recording));
        QVERIFY(instrument.AddFaults({Simulator::ParseFault(
            "{\"fault\": \"bad-crc\", \"when\": {\"request\": \"s\", \"from\": 2}, \"count\": 1}")}));
        QCOMPARE(instrument.Ask(ReadStatus, 4).toHex(), QByteArray("00fed10e"));
        QCOMPARE(instrument.Ask(ReadStatus, 4).toHex(), QByteArray("00fed1f1"));
        instrument.SetFault(Fault::Truncated);
        QCOMPARE(instrument.Ask(StopMeasurement, 2).toHex(), QByteArray("06c6"));
    }

    void RefusedRequestIsNotPlayed()
    {
        AskedInstrument instrument(Playing(Recording));
        instrument.SetFault(Fault::Refuse);
        QCOMPARE(instrument.Ask(StopMeasurement, 3), Refusal);
        instrument.Plug();
        QCOMPARE(instrument.Ask(StartMeasurement, 3), Acknowledge);
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
    }

    /// Whatever is due before a request is dealt with before it. There is time enough to unplug it even on a
    /// busy machine.
    void UnaskedIsLostWhileUnplugged()
    {
        AskedInstrument instrument(Playing("{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                                           "{\"unasked\": \"0af73370\", \"after\": 2000},"
                                           "{\"request\": \"68aeed\", \"answer\": \"06c660\"}"));
        QCOMPARE(instrument.Ask(StartMeasurement, 3), Acknowledge);
        QElapsedTimer timer;
        timer.start();
        instrument.Unplug();
        QTRY_VERIFY(timer.elapsed() >= 2000);
        QVERIFY(instrument.client.Write(ReadStatus));
        QTRY_COMPARE(instrument.Requests().size(), 2);
        instrument.Plug();
        QCOMPARE(instrument.Ask(StopMeasurement, 3), Acknowledge);
    }

    void LogOfAPlayback()
    {
        const LogFile log;
        InstrumentOptions options = Playing("{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                                            "{\"unasked\": \"0af73370\", \"after\": 1},"
                                            "{\"request\": \"73f44e\"}");
        options.logPath = log.Path();
        AskedInstrument instrument(options);
        QCOMPARE(instrument.Ask(StartMeasurement, 7), Acknowledge + RcdRunningStatus);
        QVERIFY(instrument.client.Write(ReadStatus));
        QTRY_COMPARE(instrument.Requests().size(), 2);
        QCOMPARE(log.Lines(), QByteArray("53966a 06c660\nunasked 0af73370\n73f44e -\n"));
    }
};

QTEST_GUILESS_MAIN(TestPlayback)
#include "tst_playback.moc"
