#pragma once

#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include "panel/session/record.h"

namespace Panel
{

class Lane;

/// All readings of a record against time, a lane for each, while they come and afterwards. A tap sets a
/// cursor, the wheel and two buttons zoom, dragging moves what is shown; it can be paused.
class ReadingPlot : public QWidget
{
    Q_OBJECT

public:
    ReadingPlot();

    /// Shows this record from now on; call `refresh` when it has grown.
    void show(const RecordPointer& record);
    const RecordPointer& record() const { return _record; }
    /// Draws soon: as soon as anything new could be seen, and not more often.
    void refresh();
    /// Shows the lane of one reading alone; all of them where the number is negative.
    void showOnly(int number);
    int onlyShown() const { return _only; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* createButtons();
    void shareHeight();
    void draw();
    double end() const;
    double width() const;
    void zoom(double factor, double around);
    void zoomAtCursor(double factor);
    void moveTo(double right);
    void setCursor(double time);
    double timeAt(const QPoint& position) const;

    RecordPointer _record;
    QVector<Lane*> _lanes;
    QWidget* _area;
    QPushButton* _pause = nullptr;
    QTimer _timer;
    double _width = 0;  // of what is shown, in seconds; 0 for all of it
    double _right = -1; // its end; negative where it follows the readings
    int _cursor = -1;   // an index of the record's times
    int _only = -1;
    QPoint _pressed;
    double _rightWhenPressed = 0;
    bool _isDragged = false;
};

} // namespace Panel
