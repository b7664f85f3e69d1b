#pragma once

#include <QWidget>

#include "panel/plot/readingplot.h"
#include "panel/plot/readingtiles.h"

namespace Panel
{

/// What a measurement reads: the latest values large and, for a continuous function, all of them against
/// time.
class LiveView : public QWidget
{
    Q_OBJECT

public:
    explicit LiveView(const VesmarClient::FunctionInfo& function);

    /// Shows this record from now on; call `refresh` when it has grown.
    void show(const RecordPointer& record);
    void refresh();

private:
    RecordPointer _record;
    ReadingTiles _readings;
    ReadingPlot _plot;
};

} // namespace Panel
