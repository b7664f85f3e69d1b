#pragma once

#include <qwt_plot.h>

#include "panel/session/record.h"

class QwtPlotMarker;
class QwtPlotTextLabel;
class QwtPlotZoneItem;

namespace Panel
{

/// One reading of a record against time. Where there was none for a while, the curve is broken and the time
/// is shaded.
class Lane : public QwtPlot
{
    Q_OBJECT

public:
    Lane(const VesmarClient::ReadingInfo& reading, int number);

    /// Draws what the record holds by now, between two times.
    void draw(const Record& record, double from, double to);
    /// Draws the cursor at one of the times of the record; none where the index is negative.
    void drawCursor(const Record& record, int index);
    void showTimes(bool areShown);
    /// By how much the lane with the times is higher than the others.
    int heightOfTimes() const;

private:
    void drawCurves();
    void drawGaps(const Record& record);
    void applyColours();

    VesmarClient::ReadingInfo _reading;
    int _number;
    QVector<double> _times;  // shared with the record as it was when it was drawn
    QVector<double> _values; // likewise
    QwtPlotMarker* _cursor;
    QwtPlotTextLabel* _title;
};

} // namespace Panel
