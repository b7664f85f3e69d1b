#include "cli/verbs/restartverb.h"

#include <QElapsedTimer>

#include "cli/kit/link.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"

namespace Cli
{

namespace
{

using Vesmar::Tester;

constexpr VerbTexts Texts{
    "restart", "Restart the instrument into its normal mode", "Usage: vesmar restart [OPTIONS]\n",
    "Restarts the instrument, waits until its identity has been read anew and it is in its\n"
    "normal mode, and says how long that took. It also brings back an instrument that was\n"
    "left in update mode with its firmware still whole.\n"
    "\n"
    "JSON: see docs/events.md; events restart and result.\n"
    "\n"
    "Exit status: 0 restarted; 1 bad usage; 2 the link did not come up in time; 3 the\n"
    "output cannot be written; 4 the instrument does not reach its normal mode in time; 7\n"
    "the link was lost; 128 and the signal's number where a signal came first.\n"
    "\n"
    "Example, without an instrument:\n"
    "  vesmar-simulator run --restart-time 1500 -- vesmar restart\n"};

class RestartWork : public QObject
{
public:
    RestartWork(Link& link, std::chrono::milliseconds confirmTimeout)
        : _link(link), _confirmTimeout(confirmTimeout)
    {
        const Tester* tester = &link.Instrument();
        connect(tester, &Tester::DeviceInformationChanged, this, [this] { ReceiveIdentity(); });
        connect(tester, &Tester::ErrorCodeChanged, this,
                [this](Vesmar::Error error) { ReceiveError(error); });
        connect(&link, &Link::Interrupted, this,
                [this](int signalNumber) { _link.Finish(EndedBySignal(signalNumber)); });
    }

private:
    /// The library restarts the instrument before it reads the identity again.
    void ReceiveIdentity()
    {
        if (!_time.isValid()) {
            _link.ConfirmUp();
            _link.FailAfter(_confirmTimeout,
                            QStringLiteral("The instrument has not come back in its normal mode in time."));
            _time.start();
            _link.Instrument().RestartTester();
        } else if (_link.Instrument().TesterMode() == Vesmar::OperationMode::Normal) {
            Show(static_cast<double>(_time.elapsed()) / 1000);
        }
    }

    /// The library reports no error for a restart that lasts long, but for a link that is lost.
    void ReceiveError(Vesmar::Error error)
    {
        if (_time.isValid() && VesmarClient::IsLinkError(error)) {
            _link.Fail(
                ExitStatus::LinkLost,
                LinkLost(QStringLiteral("It is not known whether the instrument has restarted."), error));
        }
    }

    void Show(double seconds)
    {
        const QString message =
            QStringLiteral("The instrument has restarted; that took %1 s.").arg(seconds, 0, 'f', 1);
        _link.Print(_link.IsJson() ? EventLine(QDateTime::currentDateTime(), QStringLiteral("restart"),
                                               {{QStringLiteral("seconds"), seconds}})
                                   : message.toUtf8() + '\n');
        _link.Finish(DoneWith(message));
    }

    Link& _link;
    std::chrono::milliseconds _confirmTimeout;
    QElapsedTimer _time;
};

} // namespace

RestartVerb::RestartVerb(CLI::App& program) : Verb(program, Texts)
{
    AddConfirmTimeout(_confirmTimeout);
}

int RestartVerb::Run()
{
    Link link(Options());
    const RestartWork work(link, _confirmTimeout);
    return link.Work();
}

} // namespace Cli
