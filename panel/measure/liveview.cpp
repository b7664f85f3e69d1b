#include "panel/measure/liveview.h"

#include "panel/kit/widgets.h"

namespace Panel
{

namespace
{

constexpr int MostOfLargeReadings = 3;

ReadingTiles::Size sizeFor(const VesmarClient::FunctionInfo& function)
{
    return function.readings.size() > MostOfLargeReadings ? ReadingTiles::Size::Small
                                                          : ReadingTiles::Size::Large;
}

} // namespace

using VesmarClient::FunctionInfo;
using VesmarClient::FunctionKind;

LiveView::LiveView(const FunctionInfo& function)
    : _isPlotted(function.kind == FunctionKind::Continuous || function.kind == FunctionKind::HighVoltage),
      _readings(function, sizeFor(function))
{
    auto* const content = new QWidget;
    auto* const row = new QHBoxLayout(content);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(&_readings, 5);
    row->addWidget(&_plot, 6);
    row->addWidget(&_failure, 6);
    fillScrollArea(this, content);
    connect(&_readings, &ReadingTiles::chosen, this, &LiveView::choose);
}

void LiveView::choose(int reading)
{
    const bool wasShown = _plot.isVisible();
    show(VesmarClient::Failure());
    _plot.showOnly(wasShown && _plot.onlyShown() == reading ? -1 : reading);
}

void LiveView::show(const VesmarClient::Failure& failure)
{
    _failure.show(failure);
    _plot.setVisible(_isPlotted && !failure.isFailure());
}

void LiveView::show(const RecordPointer& record)
{
    _record = record;
    show(VesmarClient::Failure());
    _plot.show(record);
    refresh();
}

void LiveView::refresh()
{
    _readings.show(_record->latest);
    _plot.refresh();
}

} // namespace Panel
