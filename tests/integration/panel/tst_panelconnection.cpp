#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/theme.h"

namespace
{

/// Whether a process has the simulated instrument's line open.
bool HoldsLine(qint64 process)
{
    const QString line = QFile::symLinkTarget(qEnvironmentVariable("VESMAR_SIMULATOR_DEVICE"));
    const QDir files(QStringLiteral("/proc/%1/fd").arg(process));
    const QFileInfoList links = files.entryInfoList(QDir::Files | QDir::System);
    return std::any_of(links.cbegin(), links.cend(),
                       [&line](const QFileInfo& link) { return link.symLinkTarget() == line; });
}

} // namespace

/// What the line is doing, as a person sees it.
class TestPanelConnection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void TheInstrumentIsShown();
    void AnUnpluggedCableIsTold();
    void ASecondPanelIsRefused();
    void TheWindowClosesWithoutALink();
};

void TestPanelConnection::TheInstrumentIsShown()
{
    PanelBench bench;
    bench.Connect();
    QCOMPARE(bench.Text("state"), QStringLiteral("●  Connected"));
    AWAIT(bench.Text("value-ULN").startsWith(QStringLiteral("23")));
    AWAIT(bench.session.instrument().statistics().exchanges > 50);
    bench.Shoot("connection");
}

void TestPanelConnection::AnUnpluggedCableIsTold()
{
    PanelBench bench;
    bench.Connect();
    bench.Execute("unplug");
    AWAIT_EQUAL(bench.Text("state"), QStringLiteral("●  Interrupted"));
    AWAIT_EQUAL(bench.Text("state"), QStringLiteral("●  Connection lost"));
    QVERIFY(bench.Find("failure") != nullptr);
    bench.Shoot("connection-lost");
    bench.Execute("plug");
    AWAIT_EQUAL(bench.Text("state"), QStringLiteral("●  Connected"));
    QVERIFY(bench.Find("failure") == nullptr);
}

/// The first one is a program of its own, as it would be on a bench.
void TestPanelConnection::ASecondPanelIsRefused()
{
    PanelBench bench;
    QProcess first;
    first.start(QStringLiteral(PANEL_PROGRAM), QStringList());
    AWAIT(HoldsLine(first.processId()));
    bench.Show();
    bench.session.open();
    AWAIT_EQUAL(bench.Text("state"), QStringLiteral("●  Held by another program"));
    const QString holder = QStringLiteral("vesmar-panel (process %1)").arg(first.processId());
    QVERIFY2(bench.Text("whatHappened").contains(holder), qPrintable(bench.Text("whatHappened")));
    bench.Shoot("held");
    first.kill();
    QVERIFY(first.waitForFinished());
    AWAIT_EQUAL(bench.Text("state"), QStringLiteral("●  Connected"));
}

void TestPanelConnection::TheWindowClosesWithoutALink()
{
    PanelBench bench;
    bench.Show();
    QVERIFY(bench.window.close());
}

QTEST_MAIN(TestPanelConnection)

#include "tst_panelconnection.moc"
