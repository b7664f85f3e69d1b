#pragma once

#include <QScrollArea>

#include "panel/kit/failurecard.h"
#include "panel/plot/readingplot.h"
#include "panel/plot/readingtiles.h"

namespace Panel
{

/// What a measurement reads: the latest values large and, for a continuous function, all of them against
/// time.
class LiveView : public QScrollArea
{
    Q_OBJECT

public:
    explicit LiveView(const VesmarClient::FunctionInfo& function);

    /// Shows this record from now on; call `refresh` when it has grown.
    void show(const RecordPointer& record);
    void refresh();
    /// Shows it in place of the plot, until a reading is chosen.
    void show(const VesmarClient::Failure& failure);

private:
    void choose(int reading);

    bool _isPlotted;
    RecordPointer _record;
    FailureCard _failure;
    ReadingTiles _readings;
    ReadingPlot _plot;
};

} // namespace Panel
