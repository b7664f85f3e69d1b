#include "simulator/line/instrument.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

namespace Simulator
{

namespace
{

int OpenWake()
{
    const int descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "no event descriptor");
    }
    return descriptor;
}

/// Waits until a descriptor is readable or the deadline has come; without a deadline as long as it takes.
void WaitReadable(int line, int wake, const std::optional<TimePoint>& deadline)
{
    std::array<pollfd, 2> descriptors{{{line, POLLIN, 0}, {wake, POLLIN, 0}}};
    timespec timeout{};
    if (deadline) {
        const auto left = std::max(*deadline - Clock::now(), Clock::duration::zero());
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        timeout.tv_sec = static_cast<time_t>(seconds.count());
        timeout.tv_nsec = static_cast<long>(std::chrono::nanoseconds(left - seconds).count());
    }
    ::ppoll(descriptors.data(), descriptors.size(), deadline ? &timeout : nullptr, nullptr);
    eventfd_t wakes = 0;
    ::eventfd_read(wake, &wakes);
}

} // namespace

Instrument::Instrument(const InstrumentOptions& options)
    : _server(options), _wake(OpenWake()), _thread([this] { Run(); })
{
}

Instrument::~Instrument()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopping = true;
    }
    Wake();
    _thread.join();
}

QString Instrument::DevicePath() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _server.DevicePath();
}

void Instrument::SetLineListener(std::function<void(const QString& devicePath)> listener)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _server.SetLineListener(std::move(listener));
}

void Instrument::Execute(const ControlCommand& command)
{
    std::unique_lock<std::mutex> lock(_mutex);
    _commands.push_back(command);
    Wake();
    _areCommandsExecuted.wait(lock, [this] { return _commands.empty(); });
}

void Instrument::SetScenario(Scenario scenario, int number)
{
    Execute({ControlCommand::Verb::Scenario, number, Fault::None, scenario});
}

void Instrument::SetFault(Fault fault, std::chrono::milliseconds slowAnswer)
{
    Execute({ControlCommand::Verb::Fault, 0, fault, Scenario::None, slowAnswer});
}

bool Instrument::AddFaults(const std::vector<FaultEntry>& faults)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    const bool areAdded = _server.AddFaults(faults);
    Wake();
    return areAdded;
}

void Instrument::ClearFaults()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _server.ClearFaults();
}

void Instrument::SetAnswerAfter(std::chrono::microseconds delay)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _server.SetAnswerAfter(delay);
}

void Instrument::AnswerNextWith(const QByteArray& raw)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _server.AnswerNextWith(raw);
}

void Instrument::Send(const QByteArray& raw)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _server.Send(raw);
}

std::vector<Exchange> Instrument::Exchanges() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _server.Exchanges();
}

void Instrument::ClearRequests()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _server.ClearExchanges();
}

QDateTime Instrument::Date() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _server.Model().Date(Clock::now());
}

QDateTime Instrument::CalibrationDate() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _server.Model().CalibrationDate();
}

StatusWord Instrument::Status()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _server.AdvanceModel();
    return _server.Model().Status();
}

QByteArray Instrument::Firmware() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _server.Firmware();
}

void Instrument::Run()
{
    std::unique_lock<std::mutex> lock(_mutex);
    while (!_isStopping) {
        ExecuteCommands();
        _server.Work();
        const int line = _server.Handle();
        const std::optional<TimePoint> deadline = _server.NextWorkAt();
        lock.unlock();
        WaitReadable(line, _wake.Get(), deadline);
        lock.lock();
    }
}

/// A command may close the line, at which only the serving thread waits.
void Instrument::ExecuteCommands()
{
    for (; !_commands.empty(); _commands.pop_front()) {
        _server.Execute(_commands.front());
    }
    _areCommandsExecuted.notify_all();
}

void Instrument::Wake()
{
    ::eventfd_write(_wake.Get(), 1);
}

} // namespace Simulator
