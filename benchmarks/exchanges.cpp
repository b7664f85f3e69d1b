#include "figures.h"

#include <atomic>
#include <memory>
#include <thread>

#include "barelink.h"
#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "link/transciever.h"
#include "peer.h"
#include "samples.h"
#include "support/serialdevice.h"
#include "support/wire.h"
#include "table.h"

namespace
{

constexpr double MicrosecondsPerMs = 1000;

struct Case {
    const char* name;
    int delayUs;
};

/// Threads that keep every core busy while it lives.
class BusyCores
{
public:
    BusyCores()
    {
        for (unsigned core = 0; core < std::thread::hardware_concurrency(); ++core) {
            _threads.emplace_back([this] {
                while (!_isEnding) {
                }
            });
        }
    }

    ~BusyCores()
    {
        _isEnding = true;
        for (std::thread& thread : _threads) {
            thread.join();
        }
    }

    BusyCores(const BusyCores&) = delete;
    BusyCores& operator=(const BusyCores&) = delete;

private:
    std::atomic<bool> _isEnding{false};
    std::vector<std::thread> _threads;
};

void MeasureExchange(const Case& exchange)
{
    constexpr int BlockSize = 20;
    const Peer peer{std::chrono::microseconds(exchange.delayUs)};
    RedirectSerialDevice(peer.DevicePath());
    Vesmar::CRC16 crc16(nullptr);
    const Vesmar::CommandBuilder builder(&crc16, nullptr);
    Vesmar::Transciever transciever(&crc16, nullptr);
    transciever.Open();
    BareLink bareLink(peer.DevicePath());
    const auto ours = [&] {
        QByteArray* answer = nullptr;
        if (transciever.RunQuery(*builder.GetStatusFrame(), &answer) != Vesmar::QueryResult::Data) {
            qFatal("The peer did not answer.");
        }
        delete answer;
    };
    const Pair pair =
        MeasureInTurn(Scaled(20), BlockSize, ours, [&] { bareLink.Exchange(Wire::ReadStatus); });
    for (const auto& [name, share] : {std::pair("median", 0.5), std::pair("99 of 100 within", 0.99)}) {
        Print({std::string("Exchange, ") + exchange.name + ": " + name, "ms",
               pair.ours.Quantile(share) / MicrosecondsPerMs, pair.beside.Quantile(share) / MicrosecondsPerMs,
               "bare loop"});
    }
}

} // namespace

void MeasureExchanges()
{
    for (const Case& exchange : {Case{"answer after 0.5 ms", 500}, Case{"answer after 5 ms", 5000},
                                 Case{"answer after 20 ms", 20000}}) {
        MeasureExchange(exchange);
    }
    const BusyCores busy;
    MeasureExchange({"answer after 5 ms, all cores busy", 5000});
}
