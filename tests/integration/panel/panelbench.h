#pragma once

#include <QProcess>

#include "integration/patience.h"
#include "panel/window/mainwindow.h"

/// The window of the panel at a screen, and a simulated instrument at its line. What a person does goes
/// through the window, so that only what can be seen can be hit.
class PanelBench
{
public:
    /// The simulator is given these options.
    explicit PanelBench(const QStringList& simulator = {}, const QSize& size = Panel::MainWindow::Smallest);
    ~PanelBench();

    void Show();
    /// Shows the window, opens the line, and waits until the link is up.
    void Connect();
    /// Has the simulator carry out a command, such as "unplug".
    void Execute(const char* command);

    /// The widget with this name that can be seen; null where there is none.
    template <typename Widget = QWidget>
    Widget* Find(const char* name)
    {
        for (Widget* const widget : window.findChildren<Widget*>(QLatin1String(name))) {
            if (widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }
    /// The text of the label or the button with this name; empty where none can be seen.
    QString Text(const char* name);

    /// Waits until the button can be hit, and does.
    void Click(const char* button);
    void Press(const char* button);
    void Release(const char* button);
    /// Moves a finger from the middle of the widget.
    void Drag(const char* widget, const QPoint& way);
    void PressKey(Qt::Key key);
    void ReleaseKey(Qt::Key key);

    /// Writes what the window shows to screenshots/NAME.png in the folder of the build.
    void Shoot(const char* name);

    Panel::Session session;
    Panel::MainWindow window{session};

private:
    QPoint AwaitHit(const char* button);

    QProcess _simulator;
};
