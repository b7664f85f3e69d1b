#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/theme.h"

/// What the line is doing, as a person sees it.
class TestPanelConnection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void TheInstrumentIsShown();
};

void TestPanelConnection::TheInstrumentIsShown()
{
    PanelBench bench;
    bench.Connect();
    bench.Click("connection");
    QVERIFY(bench.Text("link").contains(QStringLiteral("Connected")));
    bench.Shoot("connection");
}

QTEST_MAIN(TestPanelConnection)

#include "tst_panelconnection.moc"
