#include "cli/kit/connection.h"

#include <QCoreApplication>

#include <unistd.h>

#include <csignal>

#include <VesmarClient/serialdevice.h>

#include "cli/words/advice.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"

namespace Cli
{

using VesmarClient::LinkState;

namespace
{

/// After so long, people want to know what is waited for.
constexpr std::chrono::milliseconds PatienceOfPeople{1000};

} // namespace

Connection::Connection(const LinkOptions& options)
    : _options(options), _output(STDOUT_FILENO, _signalWatcher.Descriptor())
{
    _timeLimit.setSingleShot(true);
    _timeLimit.setTimerType(Qt::PreciseTimer);
    connect(&_timeLimit, &QTimer::timeout, this, &Connection::EndTimeLimit);
    _patience.setSingleShot(true);
    connect(&_patience, &QTimer::timeout, this, &Connection::SayWhatIsAwaited);
    connect(&_unattended, &UnattendedWatch::Told, this, &Connection::ShowUnattended);
    connect(&_signalWatcher, &SignalWatcher::Received, this, &Connection::Interrupted);
    connect(&_instrument, &VesmarClient::Instrument::openFailed, this, &Connection::FailToOpen);
    connect(&_instrument, &VesmarClient::Instrument::linkStateChanged, this, &Connection::ReceiveLinkState);
}

int Connection::Work()
{
    _timeLimit.start(_options.timeout);
    _patience.start(PatienceOfPeople);
    _instrument.open();
    return QCoreApplication::exec();
}

void Connection::ReceiveLinkState(LinkState state)
{
    if (_hasBeenUp || (state != LinkState::Up && state != LinkState::UpdateMode)) {
        return;
    }
    _hasBeenUp = true;
    _timeLimit.stop();
    _patience.stop();
    if (state == LinkState::Up) {
        Q_EMIT Up();
        return;
    }
    Q_EMIT UpdateModeFound();
    if (!_isUpdateModeAccepted) {
        Fail(ExitStatus::NotDone, InUpdateMode());
    }
}

void Connection::Print(const QByteArray& lines)
{
    if (_isFinished) {
        return;
    }
    switch (_output.Write(lines)) {
    case Output::Result::Written:
    case Output::Result::GivenUp: // the signal that ends the program is on its way
        break;
    case Output::Result::ReaderGone:
        EndWork(ExitStatus::Signalled + SIGPIPE);
        break;
    case Output::Result::Failed:
        WriteError(CannotWrite(_output.LastError()));
        EndWork(ExitStatus::NotDone);
        break;
    }
}

void Connection::Finish(const Ending& ending)
{
    if (IsJson() && !_isFinished) {
        Print(ResultLine(QDateTime::currentDateTime(), ending));
    }
    EndWork(ending.status);
}

void Connection::EndWork(int exitStatus)
{
    if (_isFinished) {
        return;
    }
    _isFinished = true;
    _timeLimit.stop();
    _patience.stop();
    _instrument.disconnect();
    QCoreApplication::exit(exitStatus);
}

void Connection::Fail(int exitStatus, const Failure& failure)
{
    if (_isFinished) {
        return;
    }
    WriteError(IsJson() ? failure.message : WithAdvice(failure.message, failure.error));
    Finish({exitStatus, failure.outcome, failure.message, failure.kind, failure.error});
}

void Connection::Fail(const VesmarClient::Job& job)
{
    const bool isLinkLost = job.outcome() == VesmarClient::Outcome::LinkLost ||
                            job.failure().name == QLatin1String("not-connected");
    if (isLinkLost) {
        Fail(ExitStatus::LinkLost, LinkLost(job.failure()));
    } else {
        Fail(ExitStatus::Failed, FailureOf(job.failure()));
    }
}

void Connection::Fail(const VesmarClient::DateJob& job, const QString& notSet)
{
    if (job.failure().name == QLatin1String("not-set")) {
        Fail(ExitStatus::Failed, {job.failure().name, notSet});
    } else {
        Fail(job);
    }
}

void Connection::ShowUnattended(const QString& sentence, const QJsonObject& fields)
{
    if (IsJson()) {
        const QByteArray line = EventLine(QDateTime::currentDateTime(), QStringLiteral("unattended"), fields);
        _screen != nullptr ? _screen->Write(line) : Print(line);
    }
    _screen != nullptr ? _screen->Say(sentence) : WriteError(sentence);
}

void Connection::SayWhatIsAwaited() const
{
    const double limit = std::chrono::duration<double>(_options.timeout).count();
    SayToTerminal(
        Text::tr("Waiting for the instrument to answer, %1 s at the most. Ctrl-C ends it.").arg(limit));
}

void Connection::FailToOpen(const VesmarClient::Failure& failure)
{
    Fail(ExitStatus::NoLink, FailureOf(failure));
}

void Connection::EndTimeLimit()
{
    if (_isSilenceTolerated) {
        Q_EMIT TimeOver();
    } else {
        FailToComeUp();
    }
}

/// The device may have gone meanwhile, such as with its adapter.
void Connection::FailToComeUp()
{
    const VesmarClient::Failure problem = VesmarClient::SerialDevice::problem();
    if (problem.isFailure()) {
        FailToOpen(problem);
        return;
    }
    const bool hasAnswer = _instrument.identity() != VesmarClient::Identity();
    Fail(ExitStatus::NoLink,
         LinkNotUp({hasAnswer, _instrument.mode(), _instrument.error()}, _options.timeout));
}

} // namespace Cli
