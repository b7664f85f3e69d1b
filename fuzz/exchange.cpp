#include <memory>

#include "fuzz/finding.h"
#include "fuzz/scriptedline.h"
#include "link/crc16.h"
#include "link/transciever.h"
#include "support/wire.h"

using namespace Vesmar;

namespace
{

constexpr std::int64_t PerMillisecond = 1000;
constexpr int LongestAnswer = 4096;

bool IsSealed(const QByteArray& answer)
{
    return answer.size() > 2 && WithChecksum(answer.chopped(2)) == answer;
}

/// What an answer is worth, from its bytes, and from whether the line may have gone on behind them.
void RequireResult(int result, const QByteArray& answer, bool isCut)
{
    switch (result) {
    case QueryResult::Data:
        Require(IsSealed(answer), "data has its checksum");
        break;
    case QueryResult::Acknowledged:
        Require(answer.startsWith(Wire::Acknowledge), "an acknowledgement begins like one");
        break;
    case QueryResult::Refused:
        Require(answer.startsWith(Wire::Refusal), "a refusal begins like one");
        break;
    case QueryResult::NoResponse:
        Require(answer.isEmpty(), "no response has no bytes");
        break;
    default:
        Require(result == QueryResult::BadChecksum && !answer.isEmpty(), "there are no other results");
        Require(!IsSealed(answer) || isCut, "an intact answer is not damaged");
        break;
    }
}

void RequireAnswer(const ScriptedLine& line, const QByteArray& answer)
{
    Require(answer.size() <= LongestAnswer, "an answer has 4 KiB at the most");
    Require(line.ReadSinceWritten().startsWith(answer), "an answer is what came behind the request");
}

/// Sending, waiting and collecting have the time limit each; the rest is for the driver's own pauses.
void RequireTime(std::int64_t duration, int timeout, int attempts)
{
    Require(duration <= attempts * (3 * timeout + 500) * PerMillisecond, "an exchange ends in time");
}

void CheckQuery(Transciever& transciever, ScriptedLine& line, Input& input)
{
    const QByteArray request = WithChecksum(input.Bytes(1 + input.Byte() % 16) + 's');
    const int timeout = input.Byte();
    const int attempts = 1 + input.Byte() % 3;
    const int before = line.Written().size();
    line.Expect(request);
    const std::int64_t begin = line.Now();
    QByteArray* response = nullptr;
    const int result = transciever.RunQuery(request, timeout, attempts - 1, &response);
    const std::unique_ptr<QByteArray> answer(response);
    Require(answer != nullptr, "an open port has an answer");
    const bool isCut = answer->size() == LongestAnswer || line.Now() - begin >= timeout * PerMillisecond;
    RequireResult(result, *answer, isCut);
    RequireAnswer(line, *answer);
    Require(line.Written().size() - before <= request.size() * attempts,
            "there are no more attempts than allowed");
    RequireTime(line.Now() - begin, timeout, attempts);
}

void CheckReading(Transciever& transciever, const ScriptedLine& line, Input& input)
{
    const int timeout = input.Byte();
    const std::int64_t begin = line.Now();
    const std::unique_ptr<QByteArray> buffer(transciever.ReadBuffer(timeout));
    Require(buffer->size() <= LongestAnswer, "a reading has 4 KiB at the most");
    Require(line.ReadSinceWritten().contains(*buffer), "a reading is what came");
    RequireTime(line.Now() - begin, timeout, 1);
}

} // namespace

/// A row of calls of a size that the first byte tells, and behind it the script of the line.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int MostCalls = 4;
    Input whole(data, size);
    const QByteArray calls = whole.Bytes(1 + whole.Byte() % 64);
    Input input(reinterpret_cast<const std::uint8_t*>(calls.constData()),
                static_cast<std::size_t>(calls.size()));
    CRC16 crc16(nullptr);
    Transciever* port = nullptr;
    ScriptedLine line(whole.Rest(), [&port] { port->PrepareToClose(); });
    Transciever transciever(&crc16, nullptr);
    port = &transciever;
    Require(transciever.Open(), "the line can be opened");
    for (int call = 0; call < MostCalls && !input.IsOver(); ++call) {
        const int kind = input.Byte() % 4;
        if (kind == 0) {
            CheckReading(transciever, line, input);
        } else {
            CheckQuery(transciever, line, input);
        }
    }
    return 0;
}
