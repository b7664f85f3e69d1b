#include "storm/kinds.h"

#include "support/wire.h"

namespace
{

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// The longest that a fault of the whole line lasts.
constexpr int LongestMs = 120000;

milliseconds SomeTime(Exchange& exchange)
{
    switch (exchange.random.Below(8)) {
    case 0:
        return milliseconds(exchange.random.Between(1000, LongestMs));
    case 1:
        return milliseconds(exchange.random.Between(1000, LongestMs / 6));
    default:
        return milliseconds(exchange.random.Between(1, 1000));
    }
}

Nanoseconds Until(Exchange& exchange)
{
    return exchange.now + SomeTime(exchange);
}

/// The first frame of the answer, which there is none of while the instrument restarts.
QByteArray& FirstFrame(Exchange& exchange)
{
    static QByteArray none;
    none.clear();
    return exchange.Answer().empty() ? none : exchange.Answer().front().bytes;
}

void Replace(Exchange& exchange, const QByteArray& bytes)
{
    FirstFrame(exchange) = bytes;
}

void Delay(Exchange& exchange, Nanoseconds time)
{
    for (Chunk& chunk : exchange.Answer()) {
        chunk.due += time;
    }
}

void LoseAnswer(Exchange& exchange)
{
    exchange.Answer().clear();
}

void LoseRequest(Exchange& exchange)
{
    exchange.Lose();
}

void BeLate(Exchange& exchange)
{
    Delay(exchange, milliseconds(exchange.random.Between(5, 3900)));
}

/// The driver waits for 500 ms or for 4 s, and tries again 200 ms later or in its next step.
void BeLateIntoNextExchange(Exchange& exchange)
{
    Delay(exchange,
          milliseconds((exchange.random.IsOneIn(2) ? 500 : 4000) + exchange.random.Between(0, 320)));
}

void Split(Exchange& exchange)
{
    std::vector<Chunk> parts;
    for (const Chunk& chunk : exchange.Answer()) {
        Nanoseconds due = chunk.due;
        for (const char byte : chunk.bytes) {
            parts.push_back({due, QByteArray(1, byte)});
            due += microseconds(exchange.random.IsOneIn(4) ? exchange.random.Between(1000, 5000)
                                                           : exchange.random.Between(50, 900));
        }
    }
    exchange.Answer() = parts;
}

void Flip(Exchange& exchange)
{
    QByteArray& frame = FirstFrame(exchange);
    if (!frame.isEmpty()) {
        const int place = exchange.random.Below(frame.size());
        frame[place] = static_cast<char>(frame.at(place) ^ 1 << exchange.random.Below(8));
    }
}

void Randomize(Exchange& exchange)
{
    Replace(exchange, exchange.random.Bytes(FirstFrame(exchange).size()));
}

void Truncate(Exchange& exchange)
{
    QByteArray& frame = FirstFrame(exchange);
    frame.truncate(exchange.random.Below(frame.size() + 1));
}

void AddTail(Exchange& exchange)
{
    FirstFrame(exchange) += exchange.random.Bytes(exchange.random.Between(1, 40));
}

void AddNoiseInFront(Exchange& exchange)
{
    FirstFrame(exchange).prepend(exchange.random.Bytes(exchange.random.Between(1, 40)));
}

void GiveWrongLength(Exchange& exchange)
{
    Replace(exchange, WithChecksum(exchange.random.Bytes(exchange.random.Between(5, 300))));
}

void SendZeros(Exchange& exchange)
{
    Replace(exchange, QByteArray(exchange.random.Between(1, 30), '\0'));
}

void Refuse(Exchange& exchange)
{
    if (exchange.random.IsOneIn(2)) {
        exchange.Lose();
    }
    exchange.Answer() = {{exchange.now + milliseconds(1), Wire::Refusal}};
}

void AcknowledgeRead(Exchange& exchange)
{
    if (FirstFrame(exchange) != Wire::Acknowledge) {
        Replace(exchange, Wire::Acknowledge);
    }
}

void SendDataForAcknowledge(Exchange& exchange)
{
    if (FirstFrame(exchange) == Wire::Acknowledge) {
        Replace(exchange, exchange.random.IsOneIn(2) ? Wire::IdleStatus : Wire::SixReadings);
    }
}

void Babble(Exchange& exchange)
{
    exchange.trouble.babblesUntil = Until(exchange);
}

void BabbleWithoutEnd(Exchange& exchange)
{
    exchange.trouble.babblesUntil = exchange.now + seconds(100);
}

void SendBetweenExchanges(Exchange& exchange)
{
    const Nanoseconds due = exchange.now + milliseconds(exchange.random.Between(5, 100));
    exchange.Answer().push_back({due, exchange.random.Bytes(exchange.random.Between(1, 30))});
}

void Echo(Exchange& exchange)
{
    FirstFrame(exchange).prepend(exchange.request);
}

void DoubleAnswer(Exchange& exchange)
{
    std::vector<Chunk>& answer = exchange.Answer();
    if (!answer.empty()) {
        Chunk again = answer.front();
        again.due += microseconds(exchange.random.Below(20000));
        answer.push_back(again);
    }
}

void HangUp(Exchange& exchange)
{
    exchange.trouble.hungUpUntil = Until(exchange);
}

void Vanish(Exchange& exchange)
{
    exchange.trouble.goneUntil = Until(exchange);
}

void NeverRead(Exchange& exchange)
{
    exchange.trouble.unreadUntil = Until(exchange);
}

void FailReads(Exchange& exchange)
{
    exchange.trouble.failingReads = exchange.random.Between(1, 6);
}

void InterruptReads(Exchange& exchange)
{
    exchange.trouble.interruptedReads = exchange.random.Between(1, 6);
}

void FailWrites(Exchange& exchange)
{
    exchange.trouble.failingWrites = exchange.random.Between(1, 4);
}

void InterruptWrites(Exchange& exchange)
{
    exchange.trouble.interruptedWrites = exchange.random.Between(1, 6);
}

void ShortenWrites(Exchange& exchange)
{
    exchange.trouble.shortWrites = exchange.random.Between(1, 3);
}

void FailDrains(Exchange& exchange)
{
    exchange.trouble.failingDrains = exchange.random.Between(1, 4);
}

void InterruptDrains(Exchange& exchange)
{
    exchange.trouble.interruptedDrains = exchange.random.Between(1, 4);
}

void FailOpens(Exchange& exchange)
{
    exchange.trouble.failingOpens = 1;
}

void InterruptOpens(Exchange& exchange)
{
    exchange.trouble.interruptedOpens = 1;
}

void FailSettings(Exchange& exchange)
{
    exchange.trouble.failingSettings = 1;
}

void InterruptSettings(Exchange& exchange)
{
    exchange.trouble.interruptedSettings = 1;
}

void CutSleeps(Exchange& exchange)
{
    exchange.trouble.cutSleeps = exchange.random.Between(1, 50);
}

void JumpClock(Exchange& exchange)
{
    exchange.trouble.clockOffsetSeconds += exchange.random.Between(-100000, 100000);
}

void Stall(Exchange& exchange)
{
    exchange.trouble.stall = SomeTime(exchange) / 10;
}

} // namespace

const std::vector<Kind>& AllKinds()
{
    static const std::vector<Kind> kinds = {
        {"silence", LoseAnswer},
        {"lost request", LoseRequest},
        {"late", BeLate},
        {"late into the next exchange", BeLateIntoNextExchange},
        {"split", Split},
        {"flipped", Flip},
        {"random", Randomize},
        {"truncated", Truncate},
        {"tail", AddTail},
        {"noise in front", AddNoiseInFront},
        {"valid checksum, wrong length", GiveWrongLength},
        {"zeros", SendZeros},
        {"refusal", Refuse},
        {"acknowledge for data", AcknowledgeRead},
        {"data for acknowledge", SendDataForAcknowledge},
        {"babble", Babble},
        {"babble without end", BabbleWithoutEnd},
        {"bytes between exchanges", SendBetweenExchanges},
        {"echo", Echo},
        {"doubled", DoubleAnswer},
        {"hang-up", HangUp},
        {"vanishing port", Vanish},
        {"peer that never reads", NeverRead},
        {"read fails", FailReads},
        {"read interrupted", InterruptReads},
        {"write fails", FailWrites},
        {"write interrupted", InterruptWrites},
        {"write short", ShortenWrites},
        {"drain fails", FailDrains},
        {"drain interrupted", InterruptDrains},
        {"open fails", FailOpens},
        {"open interrupted", InterruptOpens},
        {"settings fail", FailSettings},
        {"settings interrupted", InterruptSettings},
        {"sleeps cut", CutSleeps},
        {"clock jumps", JumpClock},
        {"stall", Stall},
    };
    return kinds;
}
