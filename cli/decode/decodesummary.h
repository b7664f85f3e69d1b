#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QVector>

#include "cli/decode/decodedevent.h"
#include "cli/decode/decodemeasurement.h"

namespace Cli
{

/// Counts what a log tells, and finds the errors that the library reports for it, where its rules are
/// certain.
class DecodeSummary
{
public:
    void Take(const DecodedEvent& event);

    int Exchanges() const { return _exchanges; }
    int Links() const { return _links; }

    QByteArray Text() const;
    QJsonObject Fields() const;

private:
    void TakeExchange(const DecodedEvent& event);
    void TakeNote(const DecodedEvent& event);
    void TakeState(const DecodedEvent& event);
    void JudgeFailure(const DecodedEvent& event);
    void JudgeRecovery(const DecodedEvent& event);
    void Find(Vesmar::Error error, qint64 line);

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
