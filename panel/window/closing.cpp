#include "panel/window/closing.h"

namespace Panel
{

using VesmarClient::Instrument;
using VesmarClient::LinkState;

Closing::Closing(Session& session, Curtain& curtain) : _session(session), _curtain(curtain)
{
    connect(&session, &Session::measurementEnded, this, &Closing::goOn);
    connect(&session.instrument(), &Instrument::linkStateChanged, this, &Closing::goOn);
    connect(&curtain, &Curtain::answered, this, &Closing::receiveAnswer);
}

void Closing::begin()
{
    if (_step == Step::None) {
        _step = Step::Stopping;
        _curtain.show(
            "title", tr("Closing …"),
            _session.isUpdating()
                ? tr("Firmware is being sent, which must not be ended in the middle: do not switch the "
                     "instrument off. The window closes when it is installed.")
                : tr("Whatever is under way is being ended. The window closes when that is done."));
        _session.stop();
        goOn();
    }
}

void Closing::goOn()
{
    if (_step == Step::Stopping && _session.measurement() == nullptr) {
        if (_session.isStopInDoubt()) {
            ask();
            return;
        }
        _step = Step::GivingBack;
        _session.close();
    }
    if (_step == Step::GivingBack && _session.instrument().linkState() == LinkState::Closed) {
        _step = Step::Done;
        Q_EMIT done();
    }
}

void Closing::ask()
{
    _step = Step::Asking;
    _curtain.show(
        "titleDanger", tr("The instrument may still run"),
        tr("It is not confirmed that the instrument has stopped. Treat it as if it still ran: do not touch "
           "the appliance, and cut its mains supply."),
        {tr("Stop again"), tr("Close all the same")});
}

void Closing::receiveAnswer(int answer)
{
    if (_step != Step::Asking) {
        return;
    }
    _curtain.show("title", tr("Closing …"), tr("The instrument is being asked to stop."));
    if (answer == 0) {
        connect(_session.proveStop(), &VesmarClient::Job::finished, this, [this] {
            _step = Step::Stopping;
            goOn();
        });
        return;
    }
    _step = Step::GivingBack;
    _session.close();
    goOn();
}

} // namespace Panel
