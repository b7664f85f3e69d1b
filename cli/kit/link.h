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
#include "client/line/linelock.h"
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

    /// Connects to the instrument, works until `Finish`, and disconnects. Fails where another program holds
    /// the line. Returns the program's exit status.
    int Work();

    /// Lets a link that does not come up in time count as no failure: `TimeOver()` is emitted instead.
    void TolerateSilence() { _isSilenceTolerated = true; }
    /// Lets the link count as up once the instrument's identity has been read, and emits `Ready` or
    /// `FoundInUpdateMode`. In update mode the work then fails.
    void AwaitReadiness();
    /// Lets the link count as up: the time limit ends.
    void ConfirmUp();
    bool IsUp() const { return _isUp; }
    /// Whether the end has been shown, or is left to the verb. A change that was on its way may still arrive.
    bool IsFinished() const { return _isFinished; }

    /// Emits `Interrupted` for the signals that wait, while the event loop has no time to.
    void EmitPendingSignals() { _signalWatcher.EmitPending(); }

    /// Prints the lines; after the end, nothing.
    void Print(const QByteArray& lines);
    /// Shows how the run has ended, and ends the work. The first end counts. No change of the instrument is
    /// shown after it.
    void Finish(const Ending& ending);
    /// The same for a verb that shows the end itself.
    void EndWork(int exitStatus);
    /// Says what went wrong, and ends the work.
    void Fail(int exitStatus, const Failure& failure);
    /// Gives the instrument so long to do what it was asked for. After that, the work fails with a sentence
    /// that says what was not done.
    void FailAfter(std::chrono::milliseconds limit, const QString& notDone);

Q_SIGNALS:
    /// The instrument's identity and both clocks have been read.
    void Ready();
    /// The instrument's identity has been read. In update mode, its clocks cannot be.
    void FoundInUpdateMode();
    /// Somebody wants the program to end. The verb has to finish.
    void Interrupted(int signalNumber);
    /// The link did not come up in time, which the verb tolerates.
    void TimeOver();

private:
    void FailWhereDeviceCannotBeOpened();
    void EndTimeLimit();
    void FailToComeUp();

    LinkOptions _options;
    SignalWatcher _signalWatcher; // before the tester, which starts a thread
    Output _output;
    QTimer _timeLimit;
    VesmarClient::LineLock _lineLock; // before the tester, which closes the line first
    std::unique_ptr<Vesmar::Tester> _tester;
    std::unique_ptr<VesmarClient::Readiness> _readiness; ///< Null for a verb that does not await it.
    bool _isSilenceTolerated = false;
    bool _hasAnswer = false;
    bool _isUp = false;
    bool _isFinished = false;
};

} // namespace Cli
