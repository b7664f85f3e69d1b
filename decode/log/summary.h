#pragma once

#include <QVector>

#include "decode/events/event.h"
#include "decode/events/measurementerrors.h"

namespace Decode
{

/// Counts what a log tells, and finds the errors that the library reports for it, where that is certain.
class Summary
{
public:
    void Add(const Event& event);

    int Exchanges() const { return _exchanges; }
    int Links() const { return _links; }

    int Refused() const { return _refused; }
    int Damaged() const { return _damaged; }
    int Silent() const { return _silent; }
    int Cut() const { return _cut; }
    int Unasked() const { return _unasked; }
    /// The longest time that an exchange took at most, in milliseconds, and its line: 0 as long as no time is
    /// known.
    int Longest() const { return _longest; }
    qint64 LongestLine() const { return _longestLine; }
    /// Every error once, with the first line that shows it.
    const QVector<FoundError>& Errors() const { return _errors; }

private:
    void AddExchange(const Event& event);
    void AddNote(const Event& event);
    void AddState(const Event& event);
    void FindErrorOfFailure(const Event& event);
    void FindErrorOfRecovery(const Event& event);
    void AddError(Vesmar::Error error, qint64 line);

    int _exchanges = 0;
    int _refused = 0;
    int _damaged = 0;
    int _silent = 0;
    int _cut = 0;
    int _unasked = 0;
    int _links = 0;
    int _longest = 0;
    qint64 _longestLine = 0;
    bool _isRecovering = false;
    bool _hasResetMode = false; ///< In this recovery.
    MeasurementErrors _measurement;
    QVector<FoundError> _errors;
};

} // namespace Decode
