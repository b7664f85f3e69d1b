#pragma once

#include <QPointer>
#include <QWidget>

namespace Panel
{

/// Lies over the whole of its parent while it is visible, and the topmost one keeps the keyboard of the
/// window. It is part of the window, because a window of its own would need a window manager.
class Overlay : public QWidget
{
    Q_OBJECT

public:
    explicit Overlay(QWidget* parent);
    /// Gives the keyboard back to what had it.
    ~Overlay() override;

protected:
    /// Shows it above everything else, with the keyboard at this widget.
    void showWith(QWidget* first);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isTopmost() const;
    void keepFocus(const QWidget* present);

    QPointer<QWidget> _before; // had the keyboard
    QPointer<QWidget> _first;
};

} // namespace Panel
