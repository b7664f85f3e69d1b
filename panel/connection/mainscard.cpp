#include "panel/connection/mainscard.h"

#include <QTimer>

#include "panel/kit/widgets.h"
#include "panel/plot/lane.h"

namespace Panel
{

using VesmarClient::Function;
using VesmarClient::FunctionInfo;
using VesmarClient::Functions;
using VesmarClient::Instrument;
using VesmarClient::Result;

namespace
{

constexpr double Minute = 60;            ///< In seconds, as the times of a record.
constexpr int TimeBetweenDrawings = 500; ///< In milliseconds: as often as the mains are read.

} // namespace

MainsCard::MainsCard(Session& session)
    : _readings(Functions::find(Function::Monitoring), ReadingTiles::Size::Small)
{
    setLook(this, "card");
    _lastMinute.settings = VesmarClient::Settings(Function::Monitoring);
    _time.start();
    auto* const column = new QVBoxLayout(this);
    column->addWidget(createLabel("heading", tr("Mains, in the last minute")));
    auto* const row = new QHBoxLayout;
    column->addLayout(row, 1);
    row->addWidget(&_readings, 2);
    auto* const lanes = new QVBoxLayout;
    lanes->setSpacing(2);
    const FunctionInfo mains = Functions::find(Function::Monitoring);
    for (int i = 0; i < mains.readings.size(); ++i) {
        auto* const lane = new Lane(mains.readings.at(i), i);
        lane->showTimes(false);
        lanes->addWidget(lane);
        _lanes.append(lane);
    }
    row->addLayout(lanes, 3);
    connect(&session.instrument(), &Instrument::mainsChanged, this, &MainsCard::keep);
    auto* const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &MainsCard::drawTrend);
    timer->start(TimeBetweenDrawings);
}

void MainsCard::keep(const Result& result)
{
    const double now = static_cast<double>(_time.elapsed()) / 1000;
    _lastMinute.append(now, result);
    while (_lastMinute.times.first() < now - Minute) {
        _lastMinute.times.removeFirst();
        for (QVector<double>& values : _lastMinute.values) {
            values.removeFirst();
        }
    }
    _readings.show(result);
}

void MainsCard::drawTrend()
{
    if (!isVisible()) {
        return;
    }
    const double now = static_cast<double>(_time.elapsed()) / 1000;
    for (Lane* const lane : _lanes) {
        lane->draw(_lastMinute, now - Minute, now);
    }
}

} // namespace Panel
