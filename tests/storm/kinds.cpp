#include "storm/kinds.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <QCoreApplication>
#include <QThread>

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

/// Spoils the first frame of the answer, which there is none of while the instrument restarts.
template <typename Change>
bool ChangeFrame(Exchange& exchange, Change change)
{
    if (exchange.Answer().empty()) {
        return false;
    }
    change(exchange.Answer().front().bytes);
    return true;
}

bool Replace(Exchange& exchange, const QByteArray& bytes)
{
    return ChangeFrame(exchange, [&](QByteArray& frame) { frame = bytes; });
}

bool IsAcknowledged(Exchange& exchange)
{
    return !exchange.Answer().empty() && exchange.Answer().front().bytes == Wire::Acknowledge;
}

bool Delay(Exchange& exchange, Nanoseconds time)
{
    for (Chunk& chunk : exchange.Answer()) {
        chunk.due += time;
    }
    return !exchange.Answer().empty();
}

/// Lets the next calls fail, unless those that were to fail have not been made yet.
bool Arm(int& count, int calls)
{
    const bool isNew = count == 0;
    count = isNew ? calls : count;
    return isNew;
}

bool LoseAnswer(Exchange& exchange)
{
    const bool wasAnswered = !exchange.Answer().empty();
    exchange.Answer().clear();
    return wasAnswered;
}

bool LoseRequest(Exchange& exchange)
{
    exchange.Lose();
    return true;
}

bool BeLate(Exchange& exchange)
{
    return Delay(exchange, milliseconds(exchange.random.Between(5, 3900)));
}

/// The driver waits for 500 ms or for 4 s, and tries again 200 ms later or in its next step.
bool BeLateIntoNextExchange(Exchange& exchange)
{
    return Delay(exchange,
                 milliseconds((exchange.random.IsOneIn(2) ? 500 : 4000) + exchange.random.Between(0, 320)));
}

bool Split(Exchange& exchange)
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
    return !parts.empty();
}

bool Flip(Exchange& exchange)
{
    return ChangeFrame(exchange, [&](QByteArray& frame) {
        const int place = exchange.random.Below(frame.size());
        frame[place] = static_cast<char>(frame.at(place) ^ 1 << exchange.random.Below(8));
    });
}

bool Randomize(Exchange& exchange)
{
    return ChangeFrame(exchange, [&](QByteArray& frame) { frame = exchange.random.Bytes(frame.size()); });
}

bool Truncate(Exchange& exchange)
{
    return ChangeFrame(exchange,
                       [&](QByteArray& frame) { frame.truncate(exchange.random.Below(frame.size())); });
}

bool AddTail(Exchange& exchange)
{
    return ChangeFrame(
        exchange, [&](QByteArray& frame) { frame += exchange.random.Bytes(exchange.random.Between(1, 40)); });
}

bool AddNoiseInFront(Exchange& exchange)
{
    return ChangeFrame(exchange, [&](QByteArray& frame) {
        frame.prepend(exchange.random.Bytes(exchange.random.Between(1, 40)));
    });
}

bool GiveWrongLength(Exchange& exchange)
{
    return Replace(exchange, WithChecksum(exchange.random.Bytes(exchange.random.Between(5, 300))));
}

bool SendZeros(Exchange& exchange)
{
    return Replace(exchange, QByteArray(exchange.random.Between(1, 30), '\0'));
}

bool Refuse(Exchange& exchange)
{
    if (exchange.random.IsOneIn(2)) {
        exchange.Lose();
    }
    exchange.Answer() = {{exchange.now + milliseconds(1), Wire::Refusal}};
    return true;
}

bool AcknowledgeRead(Exchange& exchange)
{
    return !IsAcknowledged(exchange) && Replace(exchange, Wire::Acknowledge);
}

bool SendDataForAcknowledge(Exchange& exchange)
{
    return IsAcknowledged(exchange) &&
           Replace(exchange, exchange.random.IsOneIn(2) ? Wire::IdleStatus : Wire::SixReadings);
}

bool Babble(Exchange& exchange)
{
    exchange.trouble.babblesUntil = Until(exchange);
    return true;
}

bool BabbleWithoutEnd(Exchange& exchange)
{
    exchange.trouble.babblesUntil = exchange.now + seconds(100);
    return true;
}

bool SendBetweenExchanges(Exchange& exchange)
{
    const Nanoseconds due = exchange.now + milliseconds(exchange.random.Between(5, 100));
    exchange.Answer().push_back({due, exchange.random.Bytes(exchange.random.Between(1, 30))});
    return true;
}

bool Echo(Exchange& exchange)
{
    return ChangeFrame(exchange, [&](QByteArray& frame) { frame.prepend(exchange.request); });
}

bool DoubleAnswer(Exchange& exchange)
{
    std::vector<Chunk>& answer = exchange.Answer();
    if (answer.empty()) {
        return false;
    }
    Chunk again = answer.front();
    again.due += microseconds(exchange.random.Below(20000));
    answer.push_back(again);
    return true;
}

bool HangUp(Exchange& exchange)
{
    exchange.trouble.hungUpUntil = Until(exchange);
    return true;
}

bool Vanish(Exchange& exchange)
{
    exchange.trouble.goneUntil = Until(exchange);
    return true;
}

bool NeverRead(Exchange& exchange)
{
    exchange.trouble.unreadUntil = Until(exchange);
    return true;
}

bool FailReads(Exchange& exchange)
{
    return Arm(exchange.trouble.failingReads, exchange.random.Between(1, 6));
}

bool InterruptReads(Exchange& exchange)
{
    return Arm(exchange.trouble.interruptedReads, exchange.random.Between(1, 6));
}

bool FailWrites(Exchange& exchange)
{
    return Arm(exchange.trouble.failingWrites, exchange.random.Between(1, 4));
}

bool InterruptWrites(Exchange& exchange)
{
    return Arm(exchange.trouble.interruptedWrites, exchange.random.Between(1, 6));
}

bool ShortenWrites(Exchange& exchange)
{
    return Arm(exchange.trouble.shortWrites, exchange.random.Between(1, 3));
}

bool FailDrains(Exchange& exchange)
{
    return Arm(exchange.trouble.failingDrains, exchange.random.Between(1, 4));
}

bool InterruptDrains(Exchange& exchange)
{
    return Arm(exchange.trouble.interruptedDrains, exchange.random.Between(1, 4));
}

bool FailOpens(Exchange& exchange)
{
    return Arm(exchange.trouble.failingOpens, 1);
}

bool InterruptOpens(Exchange& exchange)
{
    return Arm(exchange.trouble.interruptedOpens, 1);
}

bool FailSettings(Exchange& exchange)
{
    return Arm(exchange.trouble.failingSettings, 1);
}

bool InterruptSettings(Exchange& exchange)
{
    return Arm(exchange.trouble.interruptedSettings, 1);
}

bool CutSleeps(Exchange& exchange)
{
    return Arm(exchange.trouble.cutSleeps, exchange.random.Between(1, 50));
}

bool JumpClock(Exchange& exchange)
{
    exchange.trouble.clockOffsetSeconds += exchange.random.Between(-100000, 100000);
    return true;
}

bool Stall(Exchange& exchange)
{
    exchange.trouble.stall = SomeTime(exchange) / 10;
    return true;
}

/// Between two looks at the cells, so that the application can come in between; unless it is the
/// application's own thread that makes the exchange.
bool Preempt(Exchange& exchange)
{
    if (QThread::currentThread() == QCoreApplication::instance()->thread() ||
        !Arm(exchange.trouble.locksUntilPreemption, exchange.random.Between(1, 400))) {
        return false;
    }
    exchange.trouble.preempted = std::this_thread::get_id();
    exchange.trouble.preemption = SomeTime(exchange) / 10;
    return true;
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
        {"preempted", Preempt},
    };
    return kinds;
}

const Kind& KindNamed(const std::string& name)
{
    const auto found = std::find_if(AllKinds().begin(), AllKinds().end(),
                                    [&](const Kind& kind) { return name == kind.name; });
    if (found == AllKinds().end()) {
        std::fprintf(stderr, "There is no kind of fault \"%s\".\n", name.c_str());
        std::exit(2);
    }
    return *found;
}
