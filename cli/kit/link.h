#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <memory>

#include <Vesmar/tester.h>

#include "cli/kit/failure.h"
#include "cli/kit/linkoptions.h"
#include "cli/kit/signalwatcher.h"
#include "cli/output/event.h"
#include "cli/output/output.h"
#include "client/sessions/readiness.h"

namespace Cli
{

/// What a verb works with while it runs: the instrument, the output, the time limit for the link, and the
/// signals that end the program. A verb connects what it needs, and then lets it work until it is finished.
class Link : public QObject
{
    Q_OBJECT

public:
    explicit Link(const LinkOptions& options);
    ~Link() override;

    Vesmar::Tester& Instrument() const { return *_tester; }
    bool IsJson() const { return _options.isJson; }

    /// Connects to the instrument and works until `Finish`; disconnects. The program's exit status.
    int Work();

    /// A link that does not come up in time shall be no failure, but `TimeOver()`.
    void TolerateSilence() { _isSilenceTolerated = true; }
    /// Lets the link count as up, and emits `Ready` or `FoundInUpdateMode`, once the instrument's identity
    /// has been read.
    void AwaitReadiness();
    /// The link is what the verb wanted it to be: the time limit is over.
    void ConfirmUp();
    bool IsUp() const { return _isUp; }
    /// The end has been told, or is left to the verb. A change that was on its way may still arrive.
    bool IsFinished() const { return _isFinished; }

    /// Tells of signals at once, while the event loop has no time to.
    void TellPendingSignals() { _signalWatcher.TellPending(); }

    /// After the end, nothing is printed any more.
    void Print(const QByteArray& lines);
    /// Tells how it has ended, and ends the work. The first end counts; nothing of the instrument's is told
    /// after it.
    void Finish(const Ending& ending);
    /// The same for a verb that tells of the end itself.
    void EndWork(int exitStatus);
    /// Says what went wrong, and ends the work.
    void Fail(int exitStatus, const Failure& failure);
    /// Gives the instrument so long to do what it was asked for. Where that is not enough, it fails with what
    /// was not done.
    void FailAfter(std::chrono::milliseconds limit, const QString& notDone);

Q_SIGNALS:
    /// The instrument's identity and both clocks have been read.
    void Ready();
    /// The instrument's identity has been read. In update mode, its clocks cannot be.
    void FoundInUpdateMode();
    /// Somebody wants the program to end. It is the verb's to finish.
    void Interrupted(int signalNumber);
    /// The link did not come up in time, and that was to be tolerated.
    void TimeOver();

private:
    void FailWhereDeviceCannotBeOpened();
    void EndTimeLimit();
    void FailToComeUp();

    LinkOptions _options;
    SignalWatcher _signalWatcher; // before the tester, which starts a thread
    Output _output;
    QTimer _timeLimit;
    std::unique_ptr<Vesmar::Tester> _tester;
    std::unique_ptr<VesmarClient::Readiness> _readiness; ///< Null for a verb that does not await it.
    bool _isSilenceTolerated = false;
    bool _hasAnswer = false;
    bool _isUp = false;
    bool _isFinished = false;
};

} // namespace Cli
