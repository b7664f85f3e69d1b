#pragma once

#include <QObject>

#include <Vesmar/tester.h>

namespace VesmarClient
{

/// Finds out when identity and both clocks have really been read from the instrument. It decides, and does
/// nothing itself.
///
/// A clock that reads the same as the library's initial value signals no change, but every identity that is
/// read does. After the first identity the library reads both clocks before it begins anything else. So an
/// identity that is asked for then, and arrives without a loss of the link or a change of the mode in
/// between, tells that the clocks have been read. A loss of the link always shows as a change of the error
/// code, and so may other things: each change of it makes the waiting start over. In update mode the library
/// does not read the clocks.
class ReadinessSteps
{
public:
    enum class Step {
        Wait,
        AskForIdentity, ///< Ask for the identity, and wait.
        Complete,
        FoundInUpdateMode ///< The identity has been read, the clocks cannot be.
    };

    Step IdentityRead(Vesmar::OperationMode mode);
    Step ModeChanged(Vesmar::OperationMode mode);
    void ErrorChanged();

private:
    bool _hasIdentity = false;
    bool _areClocksDue = false; ///< An identity was read, and nothing has come in between since.
};

/// Waits until the link is up and the instrument's identity and both clocks have been read. It emits one
/// signal, and is done with it.
class Readiness : public QObject
{
    Q_OBJECT

public:
    /// The tester outlives this.
    explicit Readiness(Vesmar::Tester& tester);

    /// After this, nothing is asked for and no signal is emitted.
    void Stop();

Q_SIGNALS:
    void Ready();
    /// The identity has been read, the clocks cannot be.
    void FoundInUpdateMode();

private:
    void CarryOut(ReadinessSteps::Step step);

    Vesmar::Tester& _tester;
    ReadinessSteps _steps;
    bool _isDone = false; ///< A change that was on its way may still arrive.
};

} // namespace VesmarClient
