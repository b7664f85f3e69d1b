#include "panel/report/plotimage.h"

#include <QPainter>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_renderer.h>

#include "panel/plot/segments.h"

namespace Panel
{

using VesmarClient::ReadingInfo;

namespace
{

constexpr QSize Size{1280, 360};
constexpr int PixelsPerPoint = 2; // Printed, the image has half of its size.

void drawCurves(QwtPlot& plot, const QVector<double>& times, const QVector<double>& values)
{
    for (const Segment& segment : segmentsOf(times, values)) {
        auto* const curve = new QwtPlotCurve;
        curve->setPen(Qt::darkBlue, 2);
        curve->setRawSamples(times.constData() + segment.begin, values.constData() + segment.begin,
                             segment.end - segment.begin);
        curve->attach(&plot);
    }
}

} // namespace

QImage plotImage(const Record& record, int reading)
{
    const ReadingInfo info = record.function().readings.at(reading);
    QwtPlot plot;
    plot.setPalette(QPalette(Qt::white)); // paper, whatever the theme of the window
    plot.setAxisTitle(QwtPlot::xBottom, QStringLiteral("s"));
    plot.setAxisTitle(QwtPlot::yLeft,
                      info.unit.isEmpty() ? info.title : info.title + QStringLiteral(" / ") + info.unit);
    auto* const grid = new QwtPlotGrid;
    grid->setPen(Qt::lightGray, 0, Qt::DotLine);
    grid->attach(&plot);
    drawCurves(plot, record.times, record.values.at(reading));
    plot.replot();
    QImage image(Size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(PixelsPerPoint, PixelsPerPoint);
    QwtPlotRenderer renderer;
    renderer.setDiscardFlags(QwtPlotRenderer::DiscardBackground | QwtPlotRenderer::DiscardCanvasBackground);
    renderer.render(&plot, &painter, QRectF(QPointF(), QSizeF(Size) / PixelsPerPoint));
    return image;
}

} // namespace Panel
