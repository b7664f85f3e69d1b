#include "storm/exchangeround.h"

#include <vector>

#include "support/wire.h"
#include "virtualtime/virtualtime.h"

using namespace Vesmar;

namespace
{

using std::chrono::milliseconds;

constexpr int ExchangesOfRound = 30;
constexpr int LargestResponse = 4096;
/// The pause before a repetition, that between exchanges, and what the polls of the line round up.
constexpr milliseconds LongestPauses{230};

} // namespace

ExchangeRound::ExchangeRound(std::uint64_t seed, const Kind* kind, Counts& counts)
    : _counts(counts), _kind(kind), _random(seed)
{
    SerialLine::Get().Connect(_instrument, _random);
    SerialLine::Get().onRequest = [this](Exchange& exchange) { return InjectInto(exchange); };
}

bool ExchangeRound::InjectInto(Exchange& exchange)
{
    ++_transmissions;
    const Kind& kind = _kind != nullptr ? *_kind : Pick(AllKinds(), _random);
    if (!_isArmed || !_random.IsOneIn(2) || !kind.apply(exchange)) {
        return false;
    }
    _counts.Add(kind.name, State);
    return true;
}

std::string ExchangeRound::Run()
{
    Reopen();
    for (int count = 0; count < ExchangesOfRound && _finding.empty(); ++count) {
        if (_random.IsOneIn(6)) {
            Reopen();
        } else if (_random.IsOneIn(6)) {
            ReadBuffer();
        } else {
            RunQuery();
        }
        VirtualTime::Sleep(milliseconds(_random.Below(300)));
    }
    CheckEnd();
    _transciever.Close();
    return _finding;
}

void ExchangeRound::Reopen()
{
    _transciever.Close();
    _transciever.Open();
}

void ExchangeRound::RunQuery()
{
    static const std::vector<QByteArray> requests = {Wire::ReadStatus, Wire::ReadVersion,
                                                     Wire::ReadMeasurement, Wire::ReadCurrentDate,
                                                     Wire::StopMeasurement};
    const QByteArray request = Pick(requests, _random);
    const int timeoutMs = _random.IsOneIn(2) ? 500 : 4000;
    const int repetitions = _random.Below(3);
    const Nanoseconds begin = VirtualTime::Now();
    _transmissions = 0;
    QByteArray* answer = nullptr;
    const int result = _transciever.RunQuery(request, timeoutMs, repetitions, &answer);
    const std::unique_ptr<QByteArray> response(answer);
    if (_transmissions > repetitions + 1) {
        Report("more repetitions than were allowed");
    }
    Check(result, response != nullptr ? *response : QByteArray());
    // To write the request, to wait for the response, and to collect it.
    CheckTime(begin, (repetitions + 1) * (3 * milliseconds(timeoutMs) + LongestPauses));
}

void ExchangeRound::ReadBuffer()
{
    const int timeoutMs = _random.Between(1, 2000);
    const Nanoseconds begin = VirtualTime::Now();
    const std::unique_ptr<QByteArray> bytes(_transciever.ReadBuffer(timeoutMs));
    if (bytes->size() > LargestResponse) {
        Report("a buffer that is too large");
    }
    CheckTime(begin, 2 * milliseconds(timeoutMs) + LongestPauses);
}

void ExchangeRound::Check(int result, const QByteArray& response)
{
    constexpr int ChecksumSize = 2;
    const bool isWhole =
        response.size() > ChecksumSize && WithChecksum(response.chopped(ChecksumSize)) == response;
    if (response.size() > LargestResponse) {
        Report("a response that is too large");
    } else if (result == QueryResult::Data && !isWhole) {
        Report("data with a wrong checksum");
    } else if (result == QueryResult::Acknowledged && !response.startsWith(Wire::Acknowledge)) {
        Report("an acknowledge that is none");
    } else if (result == QueryResult::Refused && !response.startsWith(Wire::Refusal)) {
        Report("a refusal that is none");
    } else if (result == QueryResult::NoResponse && !response.isEmpty()) {
        Report("a response that is said to be missing");
    }
}

void ExchangeRound::CheckTime(Nanoseconds begin, Nanoseconds limit)
{
    if (VirtualTime::Now() - begin > limit && SerialLine::Get().LastStall() < begin) {
        Report("an exchange that takes too long");
    }
}

/// Once the line is faultless, the first exchange succeeds.
void ExchangeRound::CheckEnd()
{
    _isArmed = false;
    SerialLine::Get().EndTrouble();
    Reopen();
    VirtualTime::Sleep(std::chrono::seconds(1));
    QByteArray* answer = nullptr;
    const int result = _transciever.RunQuery(Wire::ReadStatus, 500, 0, &answer);
    const std::unique_ptr<QByteArray> response(answer);
    if (result != QueryResult::Data || response->size() != Wire::IdleStatus.size()) {
        Report("an exchange that fails on a faultless line");
    }
}

void ExchangeRound::Report(const std::string& what)
{
    if (_finding.empty()) {
        _finding = what + ", in a single exchange";
    }
}
