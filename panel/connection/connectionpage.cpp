#include "panel/connection/connectionpage.h"

#include "panel/kit/widgets.h"

namespace Panel
{

using VesmarClient::Instrument;

ConnectionPage::ConnectionPage(Session& session) : _session(session), _serialNumber(createLabel(""))
{
    auto* const column = new QVBoxLayout(this);
    column->addWidget(createLabel("title", tr("Connection")));
    column->addWidget(&_failure);
    column->addWidget(_serialNumber);
    column->addStretch();
    connect(&session.instrument(), &Instrument::identityChanged, this, &ConnectionPage::showIdentity);
    connect(&session, &Session::openFailureChanged, this, [this] { _failure.show(_session.openFailure()); });
}

void ConnectionPage::showIdentity()
{
    _serialNumber->setText(_session.instrument().identity().serialNumber);
}

} // namespace Panel
