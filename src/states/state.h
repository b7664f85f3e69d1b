#pragma once

#include <functional>
#include <memory>

#include <QByteArray>
#include <QDateTime>
#include <QObject>

#include <Vesmar/error.h>
#include <Vesmar/measurementsettings.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>

namespace Vesmar
{

class StateMachineContext;

/// The outcome of an exchange: a `QueryResult`, and the answer, which is null when the port is closed.
struct Answer {
    int result;
    std::unique_ptr<QByteArray> response;
};

/// The base of every state: the three hooks that the runner calls, and one operation for each exchange with
/// the instrument.
///
/// A state owns nothing; the runner owns the states. Hooks and requests run on the worker's thread, except
/// for an update without a machine, which runs on the application's. A request that fails, for whatever
/// reason, raises `CommunicationError` and returns false. No request clears `CommunicationError`.
class State : public QObject
{
    Q_OBJECT

public:
    /// With a `banner`, which must outlive the state, the base announces on the log that the state is entered
    /// and left.
    State(StateMachineContext* context, State* parentState, QObject* parent, const char* banner = nullptr);
    ~State() override;

    /// Called once when the state becomes the current one, at the start of its first step.
    virtual void OnEntry();
    /// Called once when the state is left.
    virtual void OnExit();
    /// Called on every step, the first included.
    virtual void OnRunning();

    StateMachineContext* GetContext() const { return _context; }
    /// The enclosing state; null at the top.
    State* GetParentState() const { return _parentState; }

    bool RequestStatus();
    bool RequestVersion();
    bool RequestCurrentDateTime();
    bool RequestCalibrationDateTime();
    bool RequestMeasurementResults(MeasurementType type);

    bool ConfigureCurrentDateTime(const QDateTime& dateTime);
    bool ConfigureCalibrationDateTime(const QDateTime& dateTime);
    bool ChangeTesterMode(OperationMode mode);
    bool PrepareMeasurement(MeasurementSettings& settings);
    /// A start is not sent again once an abort is requested.
    bool StartMeasurement();
    bool StopMeasurement();

    /// Stores the error in `ErrorCode` unless that holds one already.
    void ReportError(Error error);

protected:
    /// Writes a blue line that tells what the state is doing.
    static void TraceBanner(const char* text, const char* end = "");

    /// Runs one exchange, with retransmissions; with an `isWanted`, what waits for them or for the line is
    /// given up once that returns false.
    Answer Query(const QByteArray& frame, const std::function<bool()>& isWanted = {});
    /// Runs one exchange without retransmissions, in which the instrument has this time to answer.
    Answer QueryOnce(const QByteArray& frame, int timeoutMs);
    /// Sends a read request, and ignores the contents of the answer.
    bool Fetch(const QByteArray& frame);
    /// Sends a command, which the instrument answers with an acknowledge.
    bool Send(const QByteArray& frame);

    /// Clears the request to prepare that these settings have fulfilled, unless the application has prepared
    /// others meanwhile.
    void ClearPrepareRequest(const MeasurementSettings& sent);
    /// Withdraws every request of a measurement and leaves measurement mode, for which the application has to
    /// ask anew.
    void ClearMeasurementRequests();

private:
    std::unique_ptr<QByteArray> Read(const QByteArray& frame);
    bool RaiseErrorUnless(bool succeeded);
    void Announce(const char* passage) const;

    StateMachineContext* _context;
    State* _parentState;
    const char* _banner;
};

} // namespace Vesmar
