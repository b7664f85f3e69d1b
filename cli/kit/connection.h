#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <VesmarClient/datejobs.h>
#include <VesmarClient/instrument.h>

#include "cli/kit/failure.h"
#include "cli/kit/linkoptions.h"
#include "cli/kit/signalwatcher.h"
#include "cli/kit/unattended.h"
#include "cli/output/event.h"
#include "cli/output/livescreen.h"
#include "cli/output/output.h"

namespace Cli
{

/// What a verb works with while it runs: the instrument, the output, the time limit for the link, and the
/// signals that end the program. A verb connects what it needs, and then lets it work until it is finished.
class Connection : public QObject
{
    Q_OBJECT

public:
    explicit Connection(const LinkOptions& options);

    VesmarClient::Instrument& Instrument() { return _instrument; }
    bool IsJson() const { return _options.isJson; }

    /// Opens the line and works until `Finish`. Returns the program's exit status. The destructor closes the
    /// line, and waits until a job that is still under way has ended as far as it must.
    int Work();

    /// What is told unasked goes to this screen from now on, which outlives the work.
    void ShowOn(LiveScreen& screen) { _screen = &screen; }
    /// An instrument in update mode is no failure for the verb, which connects `UpdateModeFound`.
    void AcceptUpdateMode() { _isUpdateModeAccepted = true; }
    /// Lets a link that does not come up in time count as no failure: `TimeOver` is emitted instead.
    void TolerateSilence() { _isSilenceTolerated = true; }
    /// Whether the link has been up, or in update mode, at least once.
    bool HasBeenUp() const { return _hasBeenUp; }
    /// Whether the end has been shown, or is left to the verb. A change that was on its way may still arrive.
    bool IsFinished() const { return _isFinished; }

    /// Prints the lines; after the end, nothing.
    void Print(const QByteArray& lines);
    /// Shows how the run has ended, and ends the work. The first end counts. No change of the instrument is
    /// shown after it.
    void Finish(const Ending& ending);
    /// The same for a verb that shows the end itself.
    void EndWork(int exitStatus);
    /// Says what went wrong, and ends the work.
    void Fail(int exitStatus, const Failure& failure);
    /// The same for a job that has not been completed.
    void Fail(const VesmarClient::Job& job);
    /// The same for one that has set a date. The sentence tells of another date that the instrument reports.
    void Fail(const VesmarClient::DateJob& job, const QString& notSet);

Q_SIGNALS:
    /// The link has come up for the first time: the instrument's identity and both clocks have been read.
    void Up();
    /// The instrument's identity has been read for the first time, in update mode, where its clocks cannot be
    /// read. Unless the verb accepts that, the work then fails.
    void UpdateModeFound();
    /// The link did not come up in time, which the verb tolerates.
    void TimeOver();
    /// Somebody wants the program to end. The verb has to finish.
    void Interrupted(int signalNumber);

private:
    void ReceiveLinkState(VesmarClient::LinkState state);
    void FailToOpen(const VesmarClient::Failure& failure);
    void ShowUnattended(const QString& sentence, const QJsonObject& fields);
    void SayWhatIsAwaited() const;
    void EndTimeLimit();
    void FailToComeUp();

    LinkOptions _options;
    SignalWatcher _signalWatcher; // before the instrument, which starts threads
    Output _output;
    LiveScreen* _screen = nullptr; ///< Null where the output is written to.
    QTimer _timeLimit;
    QTimer _patience;
    VesmarClient::Instrument _instrument;
    UnattendedWatch _unattended{_instrument};
    bool _isUpdateModeAccepted = false;
    bool _isSilenceTolerated = false;
    bool _hasBeenUp = false;
    bool _isFinished = false;
};

} // namespace Cli
