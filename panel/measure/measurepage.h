#pragma once

#include <QStackedWidget>

#include "panel/measure/tiles.h"
#include "panel/session/session.h"

namespace Panel
{

/// The functions, and the one that was chosen.
class MeasurePage : public QStackedWidget
{
    Q_OBJECT

public:
    explicit MeasurePage(Session& session);

private:
    void open(const VesmarClient::FunctionInfo& function);
    void leave();

    Session& _session;
    Tiles _tiles;
};

} // namespace Panel
