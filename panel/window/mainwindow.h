#pragma once

#include <memory>

#include <QButtonGroup>
#include <QStackedWidget>
#include <QWidget>

#include "panel/session/session.h"
#include "panel/window/closing.h"
#include "panel/window/stopkeys.h"

namespace Panel
{

/// The whole panel: a bar with the state of the line, a red banner while a dangerous voltage may be present,
/// the pages, and a curtain over all of it for what has to be known before anything else.
///
/// It does not close before the instrument is proved to have stopped, or the person has read that it is not.
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    /// The smallest touch screen that it is made for.
    static constexpr QSize Smallest{800, 480};

    explicit MainWindow(Session& session);

public Q_SLOTS:
    /// Shows the page with this name; false where there is none.
    bool showPage(const QString& name);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();
    QWidget* createBar();
    QWidget* createRail();
    QWidget* createBanner();
    void addShortcuts();
    void showLink();

    Session& _session;
    QButtonGroup _buttons; // one for each page
    QStackedWidget* _pages = nullptr;
    QLabel* _link = nullptr;
    QWidget* _banner = nullptr;
    std::unique_ptr<Closing> _closing;
    StopKeys _stopKeys;
};

} // namespace Panel
