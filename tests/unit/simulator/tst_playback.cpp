#include <QElapsedTimer>
#include <QtTest>

#include "instrumentbench.h"
#include "simulator/line/player.h"
#include "simulator/line/recordingfile.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::Fault;
using Simulator::FramePiece;
using Simulator::InstrumentOptions;
using Simulator::Player;
using Simulator::RecordedEntry;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

/// Returns a recording that is written in short: "s=01" is an exchange with the letter of its request and its
/// answer, "5:77" stands for bytes that come unasked after 5 ms.
std::vector<RecordedEntry> Recorded(const QByteArray& text)
{
    std::vector<RecordedEntry> recording;
    for (const QByteArray& entry : text.split(' ')) {
        const int colon = entry.indexOf(':');
        if (colon > 0) {
            recording.push_back({{}, Bytes(entry.mid(colon + 1)), milliseconds(entry.left(colon).toInt())});
        } else {
            recording.push_back({entry.left(1) + "recorded", Bytes(entry.mid(2)), milliseconds(0)});
        }
    }
    return recording;
}

/// A player and the time that it is told.
class Deck
{
public:
    explicit Deck(const QByteArray& recording) : _player(Recorded(recording)) {}

    void Wait(int ms) { _now += milliseconds(ms); }

    /// Returns the answers to requests that begin with these letters. "-" stands for silence, "?" for a
    /// request that the recording does not contain.
    QByteArray Ask(const QByteArray& letters)
    {
        QByteArrayList answers;
        for (const QByteArray& letter : letters.split(' ')) {
            const std::optional<QByteArray> answer = _player.Answer(letter + "asked", _now);
            answers.append(!answer ? "?" : answer->isEmpty() ? "-" : answer->toHex());
        }
        return answers.join(' ');
    }

    /// Returns what goes out now, and how long the line is quiet before each frame: "0af73370/20".
    QByteArray Frames()
    {
        QByteArrayList frames;
        for (const FramePiece& piece : _player.CollectFrames(_now)) {
            const auto pause = std::chrono::duration_cast<milliseconds>(piece.pauseBefore);
            frames.append(piece.bytes.toHex() + '/' + QByteArray::number(static_cast<int>(pause.count())));
        }
        return frames.join(' ');
    }

    /// Returns the time in milliseconds from now, or -1 for never.
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

/// A start and its consequences.
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
    void Answers_data()
    {
        QTest::addColumn<QByteArray>("recording");
        QTest::addColumn<QByteArray>("letters");
        QTest::addColumn<QByteArray>("answers");
        const auto row = [](const char* name, const char* recording, const char* letters,
                            const char* answers) {
            QTest::newRow(name) << QByteArray(recording) << QByteArray(letters) << QByteArray(answers);
        };
        row("reads in their order", "s=00fed10e s=02fe0000", "s s s s",
            "00fed10e 02fe0000 02fe0000 02fe0000");
        row("reads pass others over", "s=01 5:77 W=02 s=03", "W s", "02 03");
        row("a read that was passed over is repeated", "W=01 W=02 s=03", "s W", "03 02");
        row("reads wait for the next command", "s=01 S=06c660 s=02", "s s S s", "01 01 06c660 02");
        row("a read that was not answered yet", "s=01 h=06c660 W=02", "W e s h W", "? ? 01 06c660 02");
        row("silence is repeated", "s=01 s=", "s s s", "01 - -");
        row("commands pass everything over", "s=01 S=214334 5:77 h=06c660 s=02", "h S s", "06c660 214334 02");
        row("a command that is not there changes nothing", "s=01 h=06c660", "S s h", "? 01 06c660");
        row("a command is repeated", "h=06c660 h=", "h h h", "06c660 - -");
    }

    void Answers()
    {
        QFETCH(QByteArray, recording);
        QFETCH(QByteArray, letters);
        QTEST(Deck(recording).Ask(letters), "answers");
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

    /// The search for a read ends at a command, but the search for a command does not.
    void EveryLetter()
    {
        QFETCH(bool, isRead);
        const QByteArray letter(QTest::currentDataTag());
        QCOMPARE(Deck("h=06c660 " + letter + "=1234").Ask(letter), QByteArray(isRead ? "?" : "1234"));
    }

    void UnaskedComesByItself()
    {
        Deck deck("S=06c660 200:0af73370 100:05024741 s=01 1:99");
        QCOMPARE(deck.NextFrameIn(), -1);
        deck.Wait(5000);
        QCOMPARE(deck.Frames(), QByteArray());
        QCOMPARE(deck.Ask("S"), QByteArray("06c660"));
        QCOMPARE(deck.NextFrameIn(), 200);
        deck.Wait(199);
        QCOMPARE(deck.Frames(), QByteArray());
        deck.Wait(1);
        QCOMPARE(deck.Frames(), QByteArray("0af73370/20"));
        QCOMPARE(deck.NextFrameIn(), 100);
        deck.Wait(100);
        QCOMPARE(deck.Frames(), QByteArray("05024741/20"));
        QCOMPARE(deck.NextFrameIn(), -1);
        QCOMPARE(deck.Ask("s"), QByteArray("01"));
    }

    void UnaskedAtOnce()
    {
        Deck deck("S=06c660 0:0af73370 19:05");
        deck.Ask("S");
        QCOMPARE(deck.Frames(), QByteArray("0af73370/0"));
        deck.Wait(19);
        QCOMPARE(deck.Frames(), QByteArray("05/19"));
    }

    /// A frame that goes out late does not make those behind it later.
    void UnaskedWhenLate()
    {
        Deck deck("S=06c660 100:01 100:02 100:03");
        deck.Ask("S");
        deck.Wait(250);
        QCOMPARE(deck.Frames(), QByteArray("01/20 02/20"));
        QCOMPARE(deck.NextFrameIn(), 50);
    }

    void RequestInBetween_data()
    {
        QTest::addColumn<QByteArray>("recording");
        QTest::addColumn<QByteArray>("letters");
        QTest::addColumn<QByteArray>("between");
        QTest::addColumn<int>("nextFrameIn");
        const auto row = [](const char* name, const char* recording, const char* letters, const char* between,
                            int nextFrameIn) {
            QTest::newRow(name) << QByteArray(recording) << QByteArray(letters) << QByteArray(between)
                                << nextFrameIn;
        };
        row("a recorded one", "S=06c660 100:01 s=02 100:03", "S", "s", 100);
        row("a repeated read", "s=02 S=06c660 100:01", "s S", "s", 50);
        row("a repeated command", "S=06c660 100:01", "S", "S", 50);
        row("a later command", "S=06c660 100:01 h=06c660", "S", "h", -1);
        row("after silence", "S= 100:01", "S", "S", 50);
        row("a read in front of the frame", "s=01 5:77 W=02 s=03", "W", "s", -1);
    }

    void RequestInBetween()
    {
        QFETCH(QByteArray, recording);
        QFETCH(QByteArray, letters);
        QFETCH(QByteArray, between);
        Deck deck(recording);
        deck.Ask(letters);
        deck.Wait(50);
        deck.Ask(between);
        QTEST(deck.NextFrameIn(), "nextFrameIn");
        deck.Wait(49);
        QCOMPARE(deck.Frames(), QByteArray());
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

    /// What is due before a request happens before it.
    void UnaskedIsLostWhileUnplugged()
    {
        AskedInstrument instrument(Playing("{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                                           "{\"unasked\": \"0af73370\", \"after\": 2000},"
                                           "{\"request\": \"68aeed\", \"answer\": \"06c660\"}"));
        QCOMPARE(instrument.Ask(StartMeasurement, 3), Acknowledge);
        instrument.Unplug();
        QTest::qWait(2000);
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
