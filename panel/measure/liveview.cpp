#include "panel/measure/liveview.h"

#include <QHBoxLayout>

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

LiveView::LiveView(const FunctionInfo& function) : _readings(function, sizeFor(function))
{
    const bool isPlotted =
        function.kind == FunctionKind::Continuous || function.kind == FunctionKind::HighVoltage;
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(&_readings, 2);
    row->addWidget(&_plot, 3);
    _plot.setVisible(isPlotted);
    connect(&_readings, &ReadingTiles::chosen, this,
            [this](int reading) { _plot.showOnly(_plot.onlyShown() == reading ? -1 : reading); });
}

void LiveView::show(const RecordPointer& record)
{
    _record = record;
    _plot.show(record);
    refresh();
}

void LiveView::refresh()
{
    _readings.show(_record->latest);
    _plot.refresh();
}

} // namespace Panel
