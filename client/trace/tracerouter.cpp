#include <VesmarClient/tracerouter.h>

#include <atomic>
#include <mutex>

#include <QLoggingCategory>

#include "client/trace/driverlines.h"
#include "client/trace/linecounter.h"
#include "client/trace/statistics.h"
#include "client/trace/tracefile.h"

namespace VesmarClient
{

/// Where the lines of the trace go.
struct TraceRouting {
    bool isToCategory = false;
    std::unique_ptr<TraceFile> file;
};

namespace
{

/// What the message handler needs. Any thread may call it, also when the router is gone: a handler that was
/// installed later may still pass messages on to it.
struct Messages {
    std::atomic<QtMessageHandler> before{nullptr}; ///< The handler before the router's.
    std::mutex mutex;                              ///< Guards what follows.
    TraceRouting* routing = nullptr;               ///< Null while there is no router.
    LineCounter counter;
};

Messages& All()
{
    static auto* const messages = new Messages; // Never deleted: threads log until the very end.
    return *messages;
}

void PassOnAsTrace(const QMessageLogContext& context, const QString& text)
{
    static const QLoggingCategory category(TraceRouter::Category);
    if (category.isWarningEnabled()) {
        const QMessageLogContext ofTrace(context.file, context.line, context.function, TraceRouter::Category);
        All().before.load()(QtWarningMsg, ofTrace, text);
    }
}

/// Returns whether there is a router for the line. The application's handler is called without the lock: it
/// may log itself.
bool RouteLine(const QMessageLogContext& context, const QString& line)
{
    std::unique_lock lock(All().mutex);
    const TraceRouting* routing = All().routing;
    if (routing == nullptr) {
        return false;
    }
    All().counter.Count(line);
    const Failure failure = routing->file ? routing->file->Write(line) : Failure();
    const bool isToCategory = routing->isToCategory;
    lock.unlock();
    if (isToCategory) {
        PassOnAsTrace(context, line);
    } else if (failure.isFailure()) {
        PassOnAsTrace(context, failure.whatHappened);
    }
    return true;
}

void Handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!IsDriverLine(type, context) || !RouteLine(context, text)) {
        All().before.load()(type, context, text);
    }
}

} // namespace

LinkStatistics CurrentStatistics()
{
    const std::lock_guard lock(All().mutex);
    return All().counter.Statistics();
}

TraceRouter::TraceRouter() : _routing(std::make_unique<TraceRouting>())
{
    std::unique_lock lock(All().mutex);
    All().routing = _routing.get();
    All().counter = LineCounter();
    lock.unlock();
    const QtMessageHandler before = qInstallMessageHandler(nullptr);
    if (before != Handle) {
        All().before = before;
    }
    qInstallMessageHandler(Handle);
}

/// A handler that was installed after the router's stays, and passes on to it what it always has.
TraceRouter::~TraceRouter()
{
    const QtMessageHandler present = qInstallMessageHandler(All().before);
    if (present != Handle) {
        qInstallMessageHandler(present);
    }
    const std::lock_guard lock(All().mutex);
    All().routing = nullptr;
}

void TraceRouter::toNowhere()
{
    const std::lock_guard lock(All().mutex);
    *_routing = {};
}

void TraceRouter::toCategory()
{
    const std::lock_guard lock(All().mutex);
    *_routing = {true, nullptr};
}

Failure TraceRouter::toFile(const QString& path, qint64 limit)
{
    auto file = std::make_unique<TraceFile>(path, limit);
    Failure failure = file->Open();
    if (!failure.isFailure()) {
        const std::lock_guard lock(All().mutex);
        *_routing = {false, std::move(file)};
    }
    return failure;
}

LinkStatistics TraceRouter::statistics() const
{
    return CurrentStatistics();
}

} // namespace VesmarClient
