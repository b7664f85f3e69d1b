#include "client/trace/linecounter.h"

#include <QHash>

namespace VesmarClient
{

namespace
{

// A line of an exchange: the time, the request in magenta, the answer in yellow, its length, and what became
// of it where that is not plain data.
constexpr int TimeSize = 12;
const QLatin1String RequestBegin("  \033[0;35m");
const QLatin1String AnswerEnd("b]");
const QLatin1String RefusedWord(" NACK");
const QLatin1String DamagedWord(" CRC Invalid");
const QLatin1String SilentWord(" No response");

const QLatin1String BannerBegin("\033[0;34m<<<");
const QLatin1String RecoveryBegin("ENTERING COMMUNICATION RECOVERY");
const QLatin1String RecoveryEnd("LEAVING COMMUNICATION RECOVERY");
const QLatin1String Opened(" Transciever::Open: Serial port opened successfully.");

} // namespace

void LineCounter::Count(const QString& line)
{
    const QStringView afterTime = QStringView(line).mid(TimeSize);
    if (afterTime.startsWith(RequestBegin)) {
        CountExchange(afterTime.mid(RequestBegin.size()));
    } else if (line.startsWith(BannerBegin)) {
        CountBanner(line);
    } else if (afterTime == Opened) {
        *this = LineCounter();
    }
}

void LineCounter::CountExchange(QStringView exchange)
{
    const uint request = qHash(exchange.left(exchange.indexOf(QLatin1Char(' '))));
    const QStringView outcome = exchange.mid(exchange.lastIndexOf(AnswerEnd) + AnswerEnd.size());
    if (_failedRequest == request && !_isRecovering) {
        ++_statistics.retransmissions;
    }
    if (outcome.contains(RefusedWord)) {
        CountFailure(&LinkStatistics::refused, request);
    } else if (outcome.contains(DamagedWord)) {
        CountFailure(&LinkStatistics::damaged, request);
    } else if (outcome.contains(SilentWord)) {
        CountFailure(&LinkStatistics::silent, request);
    } else {
        ++_statistics.exchanges;
        _failedRequest.reset();
    }
}

void LineCounter::CountFailure(int LinkStatistics::*counter, uint request)
{
    ++(_statistics.*counter);
    _failedRequest = request;
}

/// The same request in another state is a request of its own, and recovery asks for the status again and
/// again.
void LineCounter::CountBanner(const QString& line)
{
    _failedRequest.reset();
    if (line.contains(RecoveryBegin)) {
        ++_statistics.recoveries;
        _isRecovering = true;
    } else if (line.contains(RecoveryEnd)) {
        _isRecovering = false;
    }
}

} // namespace VesmarClient
