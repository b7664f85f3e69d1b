#include "cli/kit/link.h"

#include <QCoreApplication>

#include <unistd.h>

#include <csignal>

#include "cli/words/advice.h"
#include "cli/words/exitstatus.h"

namespace Cli
{

using Vesmar::Error;
using Vesmar::Tester;

Link::Link(const LinkOptions& options)
    : _options(options), _output(STDOUT_FILENO, _signalWatcher.Descriptor()), _tester(Tester::Instance())
{
    _timeLimit.setSingleShot(true);
    _timeLimit.setTimerType(Qt::PreciseTimer);
    connect(&_timeLimit, &QTimer::timeout, this, &Link::EndTimeLimit);
    connect(&_signalWatcher, &SignalWatcher::Received, this, &Link::Interrupted);
    connect(_tester.get(), &Tester::DeviceInformationChanged, this, [this] { _hasAnswer = true; });
    // Queued, so that the change is shown before the program ends because of it.
    connect(_tester.get(), &Tester::ErrorCodeChanged, this, [this] {
        QMetaObject::invokeMethod(this, &Link::FailWhereDeviceCannotBeOpened, Qt::QueuedConnection);
    });
}

Link::~Link() = default;

int Link::Work()
{
    const VesmarClient::Failure failure = _lineLock.Lock();
    if (failure.name == QLatin1String("device-held")) {
        QTimer::singleShot(0, this, [this, failure] { Fail(ExitStatus::NoLink, FailureOf(failure)); });
        return QCoreApplication::exec();
    }
    _timeLimit.start(_options.timeout);
    _tester->Enable();
    const int exitStatus = QCoreApplication::exec();
    _tester->Disable();
    return exitStatus;
}

void Link::AwaitReadiness()
{
    using VesmarClient::Readiness;
    _readiness = std::make_unique<Readiness>(*_tester);
    connect(_readiness.get(), &Readiness::Ready, this, &Link::ConfirmUp);
    connect(_readiness.get(), &Readiness::Ready, this, &Link::Ready);
    connect(_readiness.get(), &Readiness::FoundInUpdateMode, this, &Link::ConfirmUp);
    connect(_readiness.get(), &Readiness::FoundInUpdateMode, this, &Link::FoundInUpdateMode);
    connect(_readiness.get(), &Readiness::FoundInUpdateMode, this,
            [this] { Fail(ExitStatus::NotDone, InUpdateMode()); });
}

void Link::ConfirmUp()
{
    _isUp = true;
    _timeLimit.stop();
}

void Link::Print(const QByteArray& lines)
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
        WriteError(QStringLiteral("cannot write the output: ") + qt_error_string(_output.LastError()));
        EndWork(ExitStatus::NotDone);
        break;
    }
}

void Link::Finish(const Ending& ending)
{
    if (IsJson() && !_isFinished) {
        Print(ResultLine(QDateTime::currentDateTime(), ending));
    }
    EndWork(ending.status);
}

void Link::EndWork(int exitStatus)
{
    if (_isFinished) {
        return;
    }
    _isFinished = true;
    _timeLimit.stop();
    _tester->disconnect();
    if (_readiness) {
        _readiness->Stop();
    }
    QCoreApplication::exit(exitStatus);
}

void Link::Fail(int exitStatus, const Failure& failure)
{
    if (_isFinished) {
        return;
    }
    WriteError(IsJson() ? failure.message : WithAdvice(failure.message, failure.error));
    Finish({exitStatus, failure.outcome, failure.message, failure.kind, failure.error});
}

void Link::FailAfter(std::chrono::milliseconds limit, const QString& notDone)
{
    QTimer::singleShot(limit, this, [this, notDone] {
        if (VesmarClient::IsLinkError(_tester->ErrorCode())) {
            Fail(ExitStatus::LinkLost, LinkLost(notDone, _tester->ErrorCode()));
        } else {
            Fail(ExitStatus::Failed, {QStringLiteral("not-confirmed"), notDone});
        }
    });
}

/// The library opens the device only once, so there is nothing to wait for.
void Link::FailWhereDeviceCannotBeOpened()
{
    const Error error = _tester->ErrorCode();
    const bool isDown = error == Error::CommunicationRecovery || error == Error::NoResponse;
    if (isDown && !_isUp && !_isFinished && VesmarClient::TryToOpenSerialDevice() != 0) {
        FailToComeUp();
    }
}

void Link::EndTimeLimit()
{
    if (_isSilenceTolerated) {
        Q_EMIT TimeOver();
    } else {
        FailToComeUp();
    }
}

void Link::FailToComeUp()
{
    const VesmarClient::Situation situation{VesmarClient::TryToOpenSerialDevice(), _hasAnswer,
                                            _tester->TesterMode(), _tester->ErrorCode()};
    Fail(ExitStatus::NoLink, LinkNotUp(situation, _options.timeout));
}

} // namespace Cli
