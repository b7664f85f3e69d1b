#pragma once

#include <QElapsedTimer>
#include <QFrame>

#include "panel/plot/readingtiles.h"
#include "panel/session/session.h"

namespace Panel
{

class Lane;

/// The mains, live: the latest readings, and how they were in the last minute.
class MainsCard : public QFrame
{
    Q_OBJECT

public:
    explicit MainsCard(Session& session);

private:
    void keep(const VesmarClient::Result& result);
    void drawTrend();

    Record _lastMinute;
    QElapsedTimer _time;
    ReadingTiles _readings;
    QVector<Lane*> _lanes;
};

} // namespace Panel
