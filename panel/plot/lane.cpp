#include "panel/plot/lane.h"

#include <cmath>

#include <QLocale>

#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_textlabel.h>
#include <qwt_plot_zoneitem.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_widget.h>
#include <qwt_symbol.h>

#include "panel/kit/theme.h"
#include "panel/kit/words.h"
#include "panel/plot/segments.h"

namespace Panel
{

using VesmarClient::Gap;
using VesmarClient::ReadingInfo;

namespace
{

constexpr double ShortestRangeInMinutes = 6; ///< In seconds; less is told in tenths of a second.
constexpr int AxisWidth = 52;                ///< The same for all, so that times stand below each other.
constexpr QSize SmallestSize{160, 22};       ///< Without the times: six of them fit a small screen.
constexpr int HalfOfLabel = 7;               ///< What of the lowest value stands below the curve.
constexpr int HeightOfTick = 28;
constexpr int PointsOfBroadCurve = 2000; ///< A broad pen takes long for many points.

class TimeScale : public QwtScaleDraw
{
public:
    QwtText label(double seconds) const override
    {
        const bool isFine = scaleDiv().range() < ShortestRangeInMinutes;
        return isFine ? QLocale().toString(seconds, 'f', 1) + QStringLiteral(" s")
                      : duration(std::llround(seconds * 1000));
    }
};

/// Where there is little room, only the first and the last value.
class ValueScale : public QwtScaleDraw
{
public:
    QwtText label(double value) const override
    {
        const bool isEnd = value == scaleDiv().lowerBound() || value == scaleDiv().upperBound();
        return isEnd || length() > 2 * HeightOfTick ? QwtScaleDraw::label(value) : QwtText();
    }
};

} // namespace

Lane::Lane(const ReadingInfo& reading, int number)
    : _reading(reading), _number(number), _cursor(new QwtPlotMarker), _title(new QwtPlotTextLabel)
{
    setObjectName(QStringLiteral("lane"));
    (new QwtPlotGrid)->attach(this);
    _cursor->setLineStyle(QwtPlotMarker::VLine);
    _cursor->setVisible(false);
    _cursor->attach(this);
    _title->attach(this);
    setAxisScaleDraw(xBottom, new TimeScale);
    setAxisScaleDraw(yLeft, new ValueScale);
    axisScaleDraw(yLeft)->setMinimumExtent(AxisWidth);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    setMinimumSize(SmallestSize);
    setAxisMaxMinor(yLeft, 0);
    setAxisMaxMinor(xBottom, 0);
    setAxisMaxMajor(xBottom, 6);
    QFont small = font();
    small.setPixelSize(12);
    for (const int axis : {static_cast<int>(yLeft), static_cast<int>(xBottom)}) {
        setAxisFont(axis, small);
        axisScaleDraw(axis)->enableComponent(QwtAbstractScaleDraw::Backbone, false);
    }
    static_cast<QwtPlotCanvas*>(canvas())->setFrameStyle(QFrame::NoFrame);
    drawCursor({}, -1);
}

void Lane::draw(const Record& record, double from, double to)
{
    _times = record.times;
    _values = record.values.value(_number);
    detachItems(QwtPlotItem::Rtti_PlotCurve);
    detachItems(QwtPlotItem::Rtti_PlotZone);
    drawCurves();
    drawGaps(record);
    applyColours();
    setAxisScale(xBottom, from, to);
    setAxisMaxMajor(yLeft, qBound(1, height() / HeightOfTick, 8));
    replot();
}

void Lane::drawCurves()
{
    const QColor colour = colours().curves.value(_number % colours().curves.size());
    for (const Segment& segment : segmentsOf(_times, _values)) {
        const int points = segment.end - segment.begin;
        auto* const curve = new QwtPlotCurve;
        curve->setRawSamples(_times.constData() + segment.begin, _values.constData() + segment.begin, points);
        curve->setPaintAttribute(QwtPlotCurve::FilterPoints);
        curve->setPen(colour, _values.size() < PointsOfBroadCurve ? 2 : 1);
        if (points == 1) {
            curve->setSymbol(new QwtSymbol(QwtSymbol::Ellipse, colour, colour, QSize(9, 9)));
        }
        curve->attach(this);
    }
}

void Lane::drawGaps(const Record& record)
{
    for (const Gap& gap : record.gaps) {
        auto* const zone = new QwtPlotZoneItem;
        zone->setInterval(static_cast<double>(gap.begin) / 1000,
                          static_cast<double>(gap.begin + gap.duration) / 1000);
        zone->setBrush(QBrush(colours().warning, Qt::BDiagPattern));
        zone->setPen(QPen(Qt::NoPen));
        zone->attach(this);
    }
}

void Lane::applyColours()
{
    setCanvasBackground(colours().surface);
    for (QwtPlotItem* const item : itemList(QwtPlotItem::Rtti_PlotGrid)) {
        static_cast<QwtPlotGrid*>(item)->setPen(colours().line, 0, Qt::DotLine);
    }
    _cursor->setLinePen(colours().text, 1);
}

void Lane::drawCursor(const Record& record, int index)
{
    const double value = record.values.value(_number).value(index, std::nan(""));
    QString text = QStringLiteral(" %1 ").arg(_reading.title);
    if (index >= 0) {
        text += shownValue(value, _reading.unit, _reading.decimals) + QLatin1Char(' ');
        _cursor->setXValue(record.times.at(index));
    }
    QwtText title(text);
    title.setRenderFlags(Qt::AlignTop | Qt::AlignLeft);
    title.setColor(colours().curves.value(_number % colours().curves.size()));
    title.setBackgroundBrush(colours().surface);
    QFont font = this->font();
    font.setPixelSize(14);
    title.setFont(font);
    _title->setText(title);
    _cursor->setVisible(index >= 0);
    replot();
}

int Lane::heightOfTimes() const
{
    return axisWidget(xBottom)->minimumSizeHint().height() - HalfOfLabel;
}

void Lane::showTimes(bool areShown)
{
    enableAxis(xBottom, areShown);
    setContentsMargins(0, 0, 0, areShown ? 0 : HalfOfLabel);
    setMinimumHeight(SmallestSize.height() + (areShown ? heightOfTimes() + HalfOfLabel : 0));
}

} // namespace Panel
