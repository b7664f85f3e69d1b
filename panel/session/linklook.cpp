#include "panel/session/linklook.h"

#include <QCoreApplication>

namespace Panel
{

using VesmarClient::LinkState;

namespace
{

struct Link {
    Q_DECLARE_TR_FUNCTIONS(Link)
};

LinkLook good(const QString& words, const QString& sentence)
{
    return {words, sentence, "good", "titleGood"};
}

LinkLook warning(const QString& words, const QString& sentence)
{
    return {words, sentence, "warning", "titleWarning"};
}

LinkLook danger(const QString& words, const QString& sentence)
{
    return {words, sentence, "danger", "titleDanger"};
}

LinkLook closed(Session& session)
{
    const QString name = session.openFailure().name;
    if (name == QLatin1String("device-held")) {
        return danger(Link::tr("Held by another program"), session.openFailure().whatHappened);
    }
    return danger(Link::tr("Not connected"), session.openFailure().whatHappened);
}

} // namespace

LinkLook linkLook(Session& session)
{
    switch (session.instrument().linkState()) {
    case LinkState::Opening:
        return warning(Link::tr("Connecting …"), Link::tr("The instrument is being asked who it is."));
    case LinkState::Up:
        return good(Link::tr("Connected"), Link::tr("The instrument answers."));
    case LinkState::Interrupted:
        return warning(Link::tr("Interrupted"),
                       Link::tr("A request has failed. The link is being brought back."));
    case LinkState::Lost:
        return danger(Link::tr("Connection lost"),
                      Link::tr("The instrument cannot be reached. It comes back by itself when it answers."));
    case LinkState::UpdateMode:
        return warning(Link::tr("Waits for firmware"),
                       Link::tr("The instrument is in update mode and measures nothing."));
    case LinkState::Closed:
        break;
    }
    return closed(session);
}

} // namespace Panel
