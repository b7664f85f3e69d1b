#include "figures.h"

#include <algorithm>
#include <array>
#include <thread>

#include <QDateTime>
#include <QDebug>
#include <QThread>

#include <Vesmar/functionstate.h>

#include "context/threadsafeproperty.h"
#include "eventloop.h"
#include "link/trace.h"
#include "protocol/checksum.h"
#include "samples.h"
#include "support/wire.h"
#include "table.h"

namespace
{

constexpr double NanosecondsPerUs = 1000;

/// Keeps the compiler from leaving out what makes the value.
template <typename T>
void Use(const T& value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// A call is too short for a clock.
template <typename Call>
auto ManyOf(const Call& call)
{
    return [&call] {
        for (int count = 0; count < 1000; ++count) {
            call();
        }
    };
}

template <typename Ours, typename Beside>
void MeasureShort(const char* figure, const Ours& ours, const char* what, const Beside& beside)
{
    const Pair pair = MeasureInTurn(Scaled(50), 20, ManyOf(ours), ManyOf(beside));
    Print({figure, "ns", pair.ours.Median(), pair.beside.Median(), what});
}

void OurLines()
{
    Vesmar::Trace::Data(Wire::ReadStatus, Wire::IdleStatus);
    Vesmar::Trace::Line() << "DeviceMode: " << 0 << " MeasurementType: " << 0 << " Error: " << 15
                          << " ProcessStatus: " << 14 << " NewMeasurement: " << 0;
}

/// The same lines, made as an application makes its own.
void LinesOfStreams()
{
    qWarning().noquote() << QDateTime::currentDateTimeUtc().toString(QStringLiteral("hh:mm:ss.zzz"))
                         << QStringLiteral(" \033[0;35m") + QString::fromLatin1(Wire::ReadStatus.toHex()) +
                                QStringLiteral(" \033[0;33m") +
                                QString::fromLatin1(Wire::IdleStatus.toHex()) +
                                QStringLiteral("\033[0m[%1b]").arg(Wire::IdleStatus.size());
    qWarning().nospace() << "DeviceMode: " << 0 << " MeasurementType: " << 0 << " Error: " << 15
                         << " ProcessStatus: " << 14 << " NewMeasurement: " << 0;
}

void MeasureLines()
{
    MeasureShort("Both log lines of an idle step, caches warm", OurLines, "Qt's streams", LinesOfStreams);
    std::vector<char> memory(16U << 20U);
    Pair pair;
    const auto measureCold = [&memory](Samples& samples, void (*lines)()) {
        for (size_t position = 0; position < memory.size(); position += 64) {
            ++memory[position];
        }
        QThread::msleep(5);
        samples.Add(TimeOf(lines));
    };
    for (int count = 0; count < Scaled(500); ++count) {
        measureCold(pair.ours, &OurLines);
        measureCold(pair.beside, &LinesOfStreams);
    }
    Print({"Both log lines of an idle step, caches cold", "us", pair.ours.Median(), pair.beside.Median(),
           "Qt's streams"});
}

void MeasureCells()
{
    Vesmar::ThreadSafeProperty<Vesmar::FunctionState> cell;
    QMutex mutex;
    auto value = Vesmar::FunctionState::Idle;
    const auto copyLocked = [&] {
        const QMutexLocker lock(&mutex);
        const auto copy = value;
        Use(copy);
    };
    const auto compareLocked = [&] {
        const QMutexLocker lock(&mutex);
        Use(value == Vesmar::FunctionState::Running);
    };
    cell.Set(value);
    MeasureShort(
        "Reading a cell", [&] { Use(cell.Get()); }, "mutex and copy", copyLocked);
    MeasureShort(
        "Writing what a cell holds already", [&] { cell.Set(value); }, "mutex and comparison", compareLocked);
}

/// From a thread that works to a slot of this one.
template <typename Announce>
Samples MeasureSlot(const Vesmar::Notifible& sender, const Announce& announce)
{
    Samples samples;
    std::chrono::steady_clock::time_point start;
    QEventLoop loop;
    QObject::connect(&sender, &Vesmar::Notifible::ValueChanged, &loop, [&] {
        samples.Add(Microseconds(std::chrono::steady_clock::now() - start).count());
        loop.quit();
    });
    for (int count = 0; count < Scaled(100); ++count) {
        std::thread worker([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // Until the loop waits.
            start = std::chrono::steady_clock::now();
            announce();
        });
        loop.exec();
        worker.join();
    }
    return samples;
}

void MeasureChange()
{
    Vesmar::ThreadSafeProperty<int> cell;
    Vesmar::Notifible signal;
    int value = 0;
    Pair pair;
    for (int block = 0; block < 10; ++block) {
        pair.ours.Add(MeasureSlot(cell, [&] { cell.Set(++value); }));
        pair.beside.Add(MeasureSlot(signal, [&] { Q_EMIT signal.ValueChanged(); }));
    }
    Print({"A change in a cell to the application's slot", "us", pair.ours.Median(), pair.beside.Median(),
           "queued signal"});
}

void MeasureChecksums()
{
    const QVector<int> table = Vesmar::ChecksumTable();
    std::array<quint16, 256> entries{};
    std::copy(table.begin(), table.end(), entries.begin());
    for (const int size : {26, 515}) {
        const QByteArray frame(size, 'F');
        const auto lookUp = [&] {
            quint16 crc = 0;
            for (const char byte : frame) {
                crc = static_cast<quint16>(entries[static_cast<quint8>(byte) ^ (crc >> 8U)] ^ (crc << 8U));
            }
            Use(crc);
        };
        MeasureShort(
            qPrintable(QStringLiteral("Checksum of %1 bytes").arg(size)),
            [&] { Use(Vesmar::Checksum(table, frame, size)); }, "one look-up a byte", lookUp);
    }
}

} // namespace

void MeasureParts()
{
    MeasureLines();
    MeasureCells();
    MeasureChange();
    MeasureChecksums();
}
