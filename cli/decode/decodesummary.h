#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QVector>

#include "cli/decode/decodedevent.h"
#include "cli/decode/decodemeasurement.h"

namespace Cli
{

/// Counts what a log tells, and finds the errors that the library reports for it, where that is certain.
class DecodeSummary
{
public:
    void Add(const DecodedEvent& event);

    int Exchanges() const { return _exchanges; }
    int Links() const { return _links; }

    QByteArray Text() const;
    QJsonObject Fields() const;

private:
    void AddExchange(const DecodedEvent& event);
    void AddNote(const DecodedEvent& event);
    void AddState(const DecodedEvent& event);
    void FindErrorOfFailure(const DecodedEvent& event);
    void FindErrorOfRecovery(const DecodedEvent& event);
    void AddError(Vesmar::Error error, qint64 line);

    int _exchanges = 0;
    int _refused = 0;
    int _damaged = 0;
    int _silent = 0;
    int _cut = 0;
    int _unasked = 0;
    int _links = 0;
    int _longest = 0;        ///< In milliseconds.
    qint64 _longestLine = 0; ///< 0 as long as no time is known.
    bool _isRecovering = false;
    bool _hasResetMode = false; ///< In this recovery.
    DecodeMeasurement _measurement;
    QVector<FoundError> _errors;
};

} // namespace Cli
