#include <benchmark/benchmark.h>

#include <QByteArray>

#include <Vesmar/functionstate.h>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "context/threadsafeproperty.h"
#include "link/crc16.h"

namespace
{

void CellGet(benchmark::State& state)
{
    Vesmar::ThreadSafeProperty<Vesmar::FunctionState> cell;
    for (auto _ : state) {
        benchmark::DoNotOptimize(cell.Get());
    }
}

void CellSetPresentValue(benchmark::State& state)
{
    Vesmar::ThreadSafeProperty<Vesmar::FunctionState> cell;
    for (auto _ : state) {
        cell.Set(Vesmar::FunctionState::Idle);
    }
}

void ChecksumOf515Bytes(benchmark::State& state)
{
    const Vesmar::CRC16 crc16(nullptr);
    const QByteArray sectorRequest(515, 'F');
    for (auto _ : state) {
        benchmark::DoNotOptimize(crc16.Calculate(sectorRequest));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * sectorRequest.size());
}

void ParseStatus(benchmark::State& state)
{
    Vesmar::CRC16 crc16(nullptr);
    const Vesmar::ResponseParser parser(&crc16, nullptr);
    Vesmar::StateMachineContext context(&crc16, nullptr, nullptr, nullptr, nullptr);
    const QByteArray status("\x00\xFF\xF0\x1E", 4);
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.ParseStatusFrame(status, context));
    }
}

} // namespace

BENCHMARK(CellGet);
BENCHMARK(CellSetPresentValue);
BENCHMARK(ChecksumOf515Bytes);
BENCHMARK(ParseStatus);
