#include "integration/lineinstrument.h"

#include <algorithm>

#include <QFile>

#include "support/serialdevice.h"
#include "support/wire.h"

namespace
{

constexpr char LogName[] = "log";

bool HasFailed(const Simulator::Exchange& exchange)
{
    return exchange.answer.size() < 3 || exchange.answer == Wire::Refusal ||
           WithChecksum(exchange.answer.chopped(2)) != exchange.answer;
}

Simulator::InstrumentOptions WithLog(Simulator::InstrumentOptions options, const QString& path)
{
    options.logPath = path;
    return options;
}

} // namespace

LineInstrument::LineInstrument(const Simulator::InstrumentOptions& options)
    : Instrument(WithLog(options, folder.filePath(QLatin1String(LogName))))
{
    Attach();
}

LineInstrument::~LineInstrument()
{
    RedirectSerialDevice({});
}

void LineInstrument::Attach() const
{
    RedirectSerialDevice(QFile::encodeName(DevicePath()));
}

QVector<Simulator::Exchange> LineInstrument::Record() const
{
    const auto exchanges = Exchanges();
    return {exchanges.cbegin(), exchanges.cend()};
}

QByteArrayList LineInstrument::Sent() const
{
    return RequestsOf(Record());
}

QByteArrayList LineInstrument::SentSinceTheFirstFailure() const
{
    return RequestsOf(RecordSinceTheFirstFailure());
}

QVector<Simulator::Exchange> LineInstrument::RecordSinceTheFirstFailure() const
{
    const QVector<Simulator::Exchange> exchanges = Record();
    const auto first = std::find_if(exchanges.cbegin(), exchanges.cend(), HasFailed);
    return exchanges.mid(static_cast<int>(first - exchanges.cbegin()));
}

QByteArrayList LineInstrument::Log() const
{
    QFile log(folder.filePath(QLatin1String(LogName)));
    log.open(QIODevice::ReadOnly);
    QByteArrayList entries;
    for (const QByteArray& line : log.readAll().split('\n')) {
        entries.append(line.mid(line.indexOf(' ') + 1));
    }
    return entries;
}

QByteArrayList LineInstrument::SentUnasked() const
{
    constexpr int Name = 8; // "unasked "
    QByteArrayList pieces;
    for (const QByteArray& entry : Log()) {
        if (entry.startsWith("unasked ")) {
            pieces.append(QByteArray::fromHex(entry.mid(Name)));
        }
    }
    return pieces;
}

QByteArrayList RequestsOf(const QVector<Simulator::Exchange>& exchanges)
{
    QByteArrayList requests;
    for (const Simulator::Exchange& exchange : exchanges) {
        requests.append(exchange.request);
    }
    return requests;
}

QByteArrayList Since(const QByteArray& first, const QByteArrayList& entries)
{
    const int index = entries.indexOf(first);
    return index < 0 ? QByteArrayList() : QByteArrayList(entries.mid(index));
}

Simulator::InstrumentOptions WithClock(const QDateTime& date)
{
    Simulator::InstrumentOptions options;
    options.model.date = date;
    return options;
}

Simulator::InstrumentOptions WithQuickRestart()
{
    Simulator::InstrumentOptions options;
    options.model.restartTime = std::chrono::milliseconds(0);
    return options;
}
