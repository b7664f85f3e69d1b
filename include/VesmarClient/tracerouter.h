#pragma once

#include <QString>

#include <memory>

#include <VesmarClient/failure.h>
#include <VesmarClient/linkstatistics.h>

namespace VesmarClient
{

struct TraceRouting;

/// Takes the lines of the driver's trace out of the application's log while it exists. The application's own
/// messages, those of the category `default` included, go where they went before.
///
/// It stands between the driver and Qt's message handler: create it after the application has installed its
/// own, and create one only. The driver writes its lines as warnings of the category `default`, and formats
/// nothing while that category's warnings are off; the router then has nothing to tell and to count.
class VESMARCLIENT_EXPORT TraceRouter
{
public:
    /// Sends the trace nowhere. It is still counted.
    TraceRouter();
    ~TraceRouter();
    TraceRouter(const TraceRouter&) = delete;
    TraceRouter& operator=(const TraceRouter&) = delete;

    /// The category of the lines after `toCategory`.
    static constexpr char Category[] = "vesmar.trace";

    /// From now on, nowhere.
    void toNowhere();
    /// From now on, to the application's log, as warnings of the category "vesmar.trace".
    void toCategory();
    /// From now on, to the end of this file. When it is larger than `limit` bytes, it becomes `path` with
    /// ".1" at its end in place of an earlier one, and a new one is begun. A file that cannot be written is
    /// told, and the trace goes on as before.
    Failure toFile(const QString& path, qint64 limit = 10LL * 1024 * 1024);

    /// What the trace has told since the line was opened last.
    LinkStatistics statistics() const;

private:
    std::unique_ptr<TraceRouting> _routing;
};

} // namespace VesmarClient
