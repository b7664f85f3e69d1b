#pragma once

#include "integration/programrun.h"

/// Whether the function is over, for whatever reason, since it last ran.
inline bool HasFunctionStopped(const QByteArrayList& log, int function)
{
    const QByteArray name = "function " + QByteArray::number(function);
    const int running = log.lastIndexOf(name + " running");
    return running >= 0 && log.lastIndexOf(name + " deselected") > running;
}

/// `vesmar measure`, with a simulated instrument of its own.
class MeasureRun : public VesmarRun
{
public:
    explicit MeasureRun(const QString& arguments, const QStringList& simulatorOptions = {},
                        Time time = Time::Virtual)
        : VesmarRun(QStringLiteral("measure ") + arguments, simulatorOptions, time)
    {
    }

    bool HasStopped(int function) const { return HasFunctionStopped(Log(), function); }
};

using MeasureRuns = std::vector<std::unique_ptr<MeasureRun>>;

inline QByteArray EventOf(const QByteArray& line)
{
    return TextOf(ObjectOf(line), "event");
}

inline QByteArrayList EventsOf(const QByteArrayList& lines, const char* event)
{
    QByteArrayList events;
    for (const QByteArray& line : lines) {
        if (EventOf(line) == event) {
            events.append(line);
        }
    }
    return events;
}

/// The result of a run with JSON, which is the last line.
inline QJsonObject ResultOf(MeasureRun& run)
{
    const QByteArray last = run->Lines().value(run->Lines().size() - 1);
    return EventOf(last) == "result" ? ObjectOf(last) : QJsonObject();
}
