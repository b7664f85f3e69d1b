#include <QLineEdit>
#include <QtTest>

#include "integration/panel/fit.h"
#include "integration/panel/panelbench.h"
#include "panel/kit/theme.h"
#include "panel/program/language.h"
#include "panel/window/pages.h"

using VesmarClient::FunctionInfo;
using VesmarClient::Functions;

/// On the smallest screen no text is cut off and nothing lies over anything else, in both languages.
class TestPanelFit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EverythingFitsInEnglish() { VerifyFit("en", Panel::Theme::Light); }
    void EverythingFitsInGerman() { VerifyFit("de", Panel::Theme::Dark); }

private:
    static void VerifyFit(const char* language, Panel::Theme theme);
};

namespace
{

void VerifyView(PanelBench& bench, const QString& name)
{
    QTest::qWait(0);
    bench.Shoot(qPrintable(name));
    const QStringList misfits = Misfits(bench.window);
    QVERIFY2(misfits.isEmpty(), qPrintable(name + QStringLiteral(": ") + misfits.join(QStringLiteral("; "))));
}

/// What starts and stops is never scrolled away.
void VerifyButtons(PanelBench& bench)
{
    for (const char* const name : {"start", "stop"}) {
        QWidget* const button = bench.Find(name);
        QCOMPARE(button->visibleRegion().boundingRect(), button->rect());
    }
}

/// What is asked for leaves the banner, when somebody starts a high-voltage test at the instrument meanwhile.
void VerifyDialog(PanelBench& bench, const char* opener, const QString& prefix)
{
    bench.Click(opener);
    bench.Execute("function 9");
    AWAIT(bench.Find("banner") != nullptr);
    VerifyView(bench, prefix + QLatin1String(opener));
    bench.Click("stopAny");
    AWAIT(bench.Find("banner") == nullptr && !bench.session.instrument().isBusy());
    bench.Click("cancel");
    AWAIT(bench.Find("cancel") == nullptr);
}

void VerifyFunction(PanelBench& bench, const FunctionInfo& function, const QString& prefix)
{
    bench.Click(qPrintable(QStringLiteral("tile-") + function.identifier));
    VerifyView(bench, prefix + function.identifier);
    VerifyButtons(bench);
    if (bench.Find("number") != nullptr) {
        VerifyDialog(bench, "number", prefix);
    }
    bench.Click("back");
}

/// With most readings, and while all that can be said stands there. Looking at it takes longer than the
/// voltage may be on unattended.
void VerifyHighVoltage(PanelBench& bench, const QString& prefix)
{
    bench.Click("tile-hv");
    bench.Find<QLineEdit>("number")->setText(QStringLiteral("600"));
    bench.Press("start");
    bench.session.measurement()->setKeepAliveInterval(0);
    AWAIT(bench.session.record()->times.size() > 20);
    VerifyView(bench, prefix + QStringLiteral("voltage-on"));
    VerifyButtons(bench);
    bench.Release("start");
    AWAIT(!bench.Text("outcome").isEmpty());
    VerifyView(bench, prefix + QStringLiteral("voltage-off"));
    VerifyButtons(bench);
    bench.Click("back");
}

} // namespace

void TestPanelFit::VerifyFit(const char* language, Panel::Theme theme)
{
    Panel::applyTheme(theme);
    Panel::speak(language);
    const QString prefix = QStringLiteral("fit-%1-").arg(QLatin1String(language));
    PanelBench bench;
    bench.Connect();
    AWAIT(!bench.session.instrument().mains().isEmpty());
    for (const Panel::PageEntry& page : Panel::pages()) {
        bench.Click(page.name);
        VerifyView(bench, prefix + QLatin1String(page.name));
    }
    bench.Click("sequence");
    VerifyDialog(bench, "openPlan", prefix);
    VerifyDialog(bench, "chooseFolder", prefix);
    bench.Click("measure");
    for (const FunctionInfo& function : Functions::all()) {
        VerifyFunction(bench, function, prefix);
    }
    VerifyHighVoltage(bench, prefix);
}

QTEST_MAIN(TestPanelFit)

#include "tst_panelfit.moc"
