#include "integration/panel/panelbench.h"

#include <QAbstractButton>
#include <QDir>
#include <QScrollArea>
#include <QtTest>

using VesmarClient::LinkState;

PanelBench::PanelBench(const QStringList& simulator, const QSize& size)
{
    window.resize(size);
    _simulator.setProcessChannelMode(QProcess::ForwardedChannels);
    const QString path = qEnvironmentVariable("VESMAR_SIMULATOR_DEVICE");
    // It ends with this program, also when that crashes.
    _simulator.start(QStringLiteral("setpriv"),
                     QStringList{QStringLiteral("--pdeathsig"), QStringLiteral("TERM"),
                                 QStringLiteral(SIMULATOR_PROGRAM), QStringLiteral("--link"), path} +
                         simulator);
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(path), Patience);
}

PanelBench::~PanelBench()
{
    session.close();
    AWAIT_EQUAL(session.instrument().linkState(), LinkState::Closed);
    Execute("quit");
    _simulator.waitForFinished();
}

void PanelBench::Show()
{
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window, Patience));
}

void PanelBench::Connect()
{
    Show();
    session.open();
    AWAIT_EQUAL(session.instrument().linkState(), LinkState::Up);
}

void PanelBench::Execute(const char* command)
{
    _simulator.write(QByteArray(command) + '\n');
    _simulator.waitForBytesWritten();
}

QString PanelBench::Text(const char* name)
{
    if (const auto* const label = Find<QLabel>(name)) {
        return label->text();
    }
    const auto* const button = Find<QAbstractButton>(name);
    return button != nullptr ? button->text() : QString();
}

QPoint PanelBench::AwaitHit(const char* button)
{
    const auto isReady = [&] {
        QWidget* const widget = Find(button);
        return widget != nullptr && widget->isEnabled();
    };
    if (!QTest::qWaitFor(isReady, Patience)) {
        qFatal("there is no button \"%s\" that can be hit", button);
    }
    QWidget* const widget = Find(button);
    for (QWidget* parent = widget->parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(parent)) {
            area->ensureWidgetVisible(widget);
        }
    }
    return widget->mapTo(&window, widget->rect().center());
}

void PanelBench::Click(const char* button)
{
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, AwaitHit(button));
}

void PanelBench::Press(const char* button)
{
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, AwaitHit(button));
}

void PanelBench::Release(const char* button)
{
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, AwaitHit(button));
}

void PanelBench::Drag(const char* widget, const QPoint& way)
{
    static QTouchDevice* const screen = QTest::createTouchDevice();
    constexpr int Steps = 4;
    QWindow* const target = window.windowHandle();
    const QPoint from = AwaitHit(widget);
    QTest::touchEvent(target, screen).press(0, from, target);
    for (int step = 1; step <= Steps; ++step) {
        QTest::touchEvent(target, screen).move(0, from + way * step / Steps, target);
    }
    QTest::touchEvent(target, screen).release(0, from + way, target);
}

void PanelBench::PressKey(Qt::Key key)
{
    QTest::keyPress(window.windowHandle(), key);
}

void PanelBench::ReleaseKey(Qt::Key key)
{
    QTest::keyRelease(window.windowHandle(), key);
}

void PanelBench::Shoot(const char* name)
{
    QCoreApplication::processEvents();
    QDir(QStringLiteral(SCREENSHOT_FOLDER)).mkpath(QStringLiteral("."));
    QVERIFY(window.grab().save(QStringLiteral(SCREENSHOT_FOLDER "/%1.png").arg(QLatin1String(name))));
}
