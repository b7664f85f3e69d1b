#include "panel/plot/readingplot.h"

#include <algorithm>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "panel/kit/theme.h"
#include "panel/kit/widgets.h"
#include "panel/plot/lane.h"

namespace Panel
{

namespace
{

constexpr double ShortestWidth = 1; ///< Of what is shown, in seconds.
constexpr double ZoomStep = 2;
constexpr double WheelStep = 1.25;
constexpr int ShortestTimeBetweenDrawings = 100; ///< In milliseconds.
constexpr int LongestTimeBetweenDrawings = 1000;
constexpr int DragDistance = 10; ///< In pixels; less is a tap.

} // namespace

ReadingPlot::ReadingPlot() : _area(new QWidget)
{
    setFocusPolicy(Qt::StrongFocus);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(_area, 1);
    column->addWidget(createButtons());
    auto* const lanes = new QVBoxLayout(_area);
    lanes->setContentsMargins(0, 0, 0, 0);
    lanes->setSpacing(2);
    _timer.setSingleShot(true);
    connect(&_timer, &QTimer::timeout, this, &ReadingPlot::draw);
}

QWidget* ReadingPlot::createButtons()
{
    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& text, const char* name, auto action) {
        QPushButton* const button = createButton(text, name);
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QPushButton::clicked, this, action);
        row->addWidget(button, 1);
        return button;
    };
    add(QStringLiteral("−"), "zoomOut", [this] { zoomAtCursor(ZoomStep); });
    add(QStringLiteral("+"), "zoomIn", [this] { zoomAtCursor(1 / ZoomStep); });
    add(tr("All"), "zoomAll", [this] {
        _width = 0;
        moveTo(-1);
    });
    _pause = add(tr("Pause"), "pause", [this] {
        _timer.stop(); // A drawing that is still due would move the plot once more.
        draw();
    });
    _pause->setCheckable(true);
    return buttons;
}

void ReadingPlot::show(const RecordPointer& record)
{
    _record = record;
    _width = 0;
    _right = -1;
    _cursor = -1;
    _pause->setChecked(false);
    clear(_area->layout());
    _lanes.clear();
    const auto readings =
        !record.isNull() ? record->function().readings : QVector<VesmarClient::ReadingInfo>();
    for (int i = 0; i < readings.size(); ++i) {
        auto* const lane = new Lane(readings.at(i), i);
        lane->canvas()->installEventFilter(this);
        _area->layout()->addWidget(lane);
        _lanes.append(lane);
    }
    showOnly(-1);
}

void ReadingPlot::showOnly(int number)
{
    _only = number;
    for (int i = 0; i < _lanes.size(); ++i) {
        _lanes.at(i)->setVisible(number < 0 || i == number);
        _lanes.at(i)->showTimes(i == number || i == _lanes.size() - 1);
    }
    shareHeight();
    draw();
}

/// All lanes are as high as each other, but the times stand below one of them.
void ReadingPlot::shareHeight()
{
    const int count = _only < 0 ? _lanes.size() : 1;
    const int heightOfTimes = _lanes.isEmpty() ? 0 : _lanes.last()->heightOfTimes();
    const int each = std::max((_area->height() - heightOfTimes) / std::max(count, 1), 1);
    for (int i = 0; i < _lanes.size(); ++i) {
        const bool hasTimes = i == _only || i == _lanes.size() - 1;
        static_cast<QVBoxLayout*>(_area->layout())->setStretch(i, hasTimes ? each + heightOfTimes : each);
    }
}

void ReadingPlot::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    shareHeight();
}

void ReadingPlot::refresh()
{
    if (!_timer.isActive() && !_pause->isChecked()) {
        const double timeOfPixel = 1000 * width() / std::max(_area->width(), 1);
        _timer.start(
            qBound(ShortestTimeBetweenDrawings, static_cast<int>(timeOfPixel), LongestTimeBetweenDrawings));
    }
}

double ReadingPlot::end() const
{
    return !_record.isNull() && !_record->times.isEmpty() ? std::max(_record->times.last(), ShortestWidth)
                                                          : ShortestWidth;
}

double ReadingPlot::width() const
{
    return _width > 0 ? _width : end();
}

void ReadingPlot::draw()
{
    if (_record.isNull()) {
        return;
    }
    const double right = _right < 0 ? end() : _right;
    for (Lane* const lane : _lanes) {
        if (lane->isVisibleTo(this)) {
            lane->draw(*_record, right - width(), right);
        }
    }
}

/// The time keeps its place on the screen. What reaches the end follows the readings.
void ReadingPlot::zoom(double factor, double around)
{
    const double right = _right < 0 ? end() : _right;
    const double wanted = qBound(ShortestWidth, width() * factor, end());
    const double newRight = around + (right - around) * wanted / width();
    _width = wanted < end() ? wanted : 0;
    moveTo(newRight);
}

void ReadingPlot::zoomAtCursor(double factor)
{
    const double right = _right < 0 ? end() : _right;
    zoom(factor, _cursor >= 0 ? _record->times.at(_cursor) : right);
}

void ReadingPlot::moveTo(double right)
{
    const bool isAtEnd = _width <= 0 || right < 0 || right >= end();
    _right = isAtEnd && !_pause->isChecked() ? -1 : qBound(width(), right < 0 ? end() : right, end());
    draw();
}

void ReadingPlot::setCursor(double time)
{
    const QVector<double>& times = _record->times;
    if (times.isEmpty()) {
        return;
    }
    const auto* const next = std::lower_bound(times.cbegin(), times.cend() - 1, time);
    const auto* const previous = next == times.cbegin() ? next : next - 1;
    _cursor = static_cast<int>((time - *previous < *next - time ? previous : next) - times.cbegin());
    for (Lane* const lane : _lanes) {
        lane->drawCursor(*_record, _cursor);
    }
}

double ReadingPlot::timeAt(const QPoint& position) const
{
    for (const Lane* const lane : _lanes) {
        if (lane->isVisible()) {
            return lane->invTransform(QwtPlot::xBottom, position.x());
        }
    }
    return 0;
}

bool ReadingPlot::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const mouse = dynamic_cast<QMouseEvent*>(event);
    if (const auto* const wheel = dynamic_cast<QWheelEvent*>(event)) {
        zoom(wheel->angleDelta().y() > 0 ? 1 / WheelStep : WheelStep, timeAt(wheel->position().toPoint()));
        return true;
    }
    if (mouse == nullptr || _lanes.isEmpty()) {
        return QWidget::eventFilter(watched, event);
    }
    if (event->type() == QEvent::MouseButtonPress) {
        _pressed = mouse->pos();
        _rightWhenPressed = _right < 0 ? end() : _right;
        _isDragged = false;
    } else if (event->type() == QEvent::MouseMove) {
        _isDragged = _isDragged || std::abs(mouse->x() - _pressed.x()) >= DragDistance;
        if (_isDragged && _width > 0) {
            const double moved = timeAt(_pressed) - timeAt(mouse->pos());
            moveTo(_rightWhenPressed + moved);
        }
    } else if (event->type() == QEvent::MouseButtonRelease && !_isDragged) {
        setCursor(timeAt(mouse->pos()));
    }
    return false;
}

/// The arrow keys move the cursor, + and - zoom.
void ReadingPlot::keyPressEvent(QKeyEvent* event)
{
    if (_record.isNull() || _record->times.isEmpty()) {
        return;
    }
    const int last = _record->times.size() - 1;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const int moved = (_cursor < 0 ? last : _cursor) + (event->key() == Qt::Key_Left ? -1 : 1);
        setCursor(_record->times.at(qBound(0, moved, last)));
        break;
    }
    case Qt::Key_Plus:
        zoomAtCursor(1 / ZoomStep);
        break;
    case Qt::Key_Minus:
        zoomAtCursor(ZoomStep);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ReadingPlot::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        draw();
    }
}

} // namespace Panel
