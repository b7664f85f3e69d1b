#include "panel/window/mainwindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QScrollArea>
#include <QShortcut>

#include "panel/kit/theme.h"
#include "panel/kit/widgets.h"
#include "panel/session/linklook.h"
#include "panel/window/pages.h"

namespace Panel
{

using VesmarClient::Instrument;

namespace
{

constexpr int RailWidth = 120;

QHBoxLayout* createRow(QWidget* widget, int margin)
{
    auto* const row = new QHBoxLayout(widget);
    row->setContentsMargins(margin, 2, margin, 2);
    return row;
}

} // namespace

MainWindow::MainWindow(Session& session) : _session(session), _stopKeys(session)
{
    setWindowTitle(QStringLiteral("Vesmar"));
    setMinimumSize(Smallest);
    layOut();
    addShortcuts();
    const Instrument& instrument = _session.instrument();
    connect(&instrument, &Instrument::linkStateChanged, this, &MainWindow::showLink);
    connect(&instrument, &Instrument::identityChanged, this, &MainWindow::showLink);
    connect(&_session, &Session::openFailureChanged, this, &MainWindow::showLink);
    connect(&_session, &Session::dangerChanged, this,
            [this] { _banner->setVisible(_session.isDangerous()); });
    showLink();
    showPage(pageNames().first());
}

void MainWindow::layOut()
{
    auto* const column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetNoConstraint);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(createBar());
    column->addWidget(createBanner());
    auto* const area = new QWidget; // What is asked for lies over it, and leaves the banner.
    auto* const row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(createRail());
    _pages = new QStackedWidget;
    for (const PageEntry& entry : pages()) {
        QWidget* const page = entry.create(_session);
        auto* const scroller = new QScrollArea; // for a page that is larger than the screen
        scroller->setWidgetResizable(true);
        scroller->setFrameShape(QFrame::NoFrame);
        scroller->setFocusPolicy(Qt::NoFocus);
        scroller->setWidget(page);
        _pages->addWidget(scroller);
    }
    row->addWidget(_pages, 1);
    column->addWidget(area, 1);
    auto* const curtain = new Curtain(this);
    _closing = std::make_unique<Closing>(_session, *curtain);
    connect(_closing.get(), &Closing::done, this, &QWidget::close);
}

QWidget* MainWindow::createBar()
{
    auto* const bar = new QWidget;
    setLook(bar, "bar");
    QHBoxLayout* const row = createRow(bar, 16);
    _link = createLabel("");
    _link->setObjectName(QStringLiteral("link"));
    row->addWidget(_link, 1);
    QPushButton* const theme = createButton(tr("Light / dark"), "theme", "flat");
    connect(theme, &QPushButton::clicked, this,
            [] { applyTheme(currentTheme() == Theme::Light ? Theme::Dark : Theme::Light); });
    row->addWidget(theme);
    QPushButton* const close = createButton(tr("Quit"), "close", "flat");
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    row->addWidget(close);
    return bar;
}

QWidget* MainWindow::createRail()
{
    auto* const rail = new QWidget;
    rail->setFixedWidth(RailWidth);
    auto* const column = new QVBoxLayout(rail);
    column->setContentsMargins(0, 8, 0, 8);
    column->setSpacing(2);
    for (const PageEntry& entry : pages()) {
        QPushButton* const button =
            createButton(QCoreApplication::translate("Pages", entry.title), entry.name, "page");
        button->setCheckable(true);
        column->addWidget(button);
        _buttons.addButton(button, _buttons.buttons().size());
    }
    column->addStretch();
    connect(&_buttons, &QButtonGroup::idClicked, this, [this](int index) { _pages->setCurrentIndex(index); });
    return rail;
}

QWidget* MainWindow::createBanner()
{
    _banner = new QWidget;
    _banner->setObjectName(QStringLiteral("banner"));
    setLook(_banner, "banner");
    QHBoxLayout* const row = createRow(_banner, 16);
    row->addWidget(createLabel("", tr("⚡  High voltage. Do not touch the appliance.")), 1);
    QPushButton* const stop = createButton(tr("Stop (Esc)"), "stopAny", "bannerStop");
    stop->setFocusPolicy(Qt::NoFocus); // The keyboard has keys for it, and may be holding another button.
    connect(stop, &QPushButton::clicked, &_session, &Session::stopAny);
    row->addWidget(stop);
    _banner->hide();
    return _banner;
}

/// F1 and so on show a page, F11 fills the screen.
void MainWindow::addShortcuts()
{
    for (int i = 0; i < pages().size(); ++i) {
        const auto* const shortcut = new QShortcut(QKeySequence(Qt::Key_F1 + i), this);
        connect(shortcut, &QShortcut::activated, _buttons.button(i), &QAbstractButton::click);
    }
    const auto* const full = new QShortcut(QKeySequence(Qt::Key_F11), this);
    connect(full, &QShortcut::activated, this,
            [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
}

bool MainWindow::showPage(const QString& name)
{
    QAbstractButton* const button = _buttons.button(pageNames().indexOf(name));
    if (button == nullptr) {
        return false;
    }
    button->setFocus();
    button->click();
    return true;
}

void MainWindow::showLink()
{
    const VesmarClient::Identity identity = _session.instrument().identity();
    const LinkLook look = linkLook(_session);
    QString text = QStringLiteral("●  ") + look.words;
    if (!identity.serialNumber.isEmpty()) {
        text += QStringLiteral("   %1 %2").arg(identity.deviceName, identity.serialNumber);
    }
    _link->setText(text);
    setLook(_link, look.look);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    _closing->begin();
    event->setAccepted(_closing->isDone());
}

} // namespace Panel
