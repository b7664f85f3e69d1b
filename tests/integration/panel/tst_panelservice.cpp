#include <QDateTimeEdit>
#include <QLineEdit>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/files.h"
#include "panel/kit/theme.h"

/// What is done to the instrument itself, and what is told of what went wrong.
class TestPanelService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void TheDatesAreSet();
    void TheInstrumentRestarts();
    void AFingerScrolls();
    void FirmwareIsInstalled();
    void AnUpdateIsNotClosedInTheMiddle();
    void AnUpdateThatFailsIsTold();
    void AFileThatIsNotThereIsTold();

private:
    /// Fills in both files of an update, and begins it.
    static void Update(PanelBench& bench, const QTemporaryDir& folder);
    /// Where the button for a restart is in the window.
    static int Top(PanelBench& bench) { return bench.Find("restart")->mapTo(&bench.window, QPoint()).y(); }
};

namespace
{

constexpr int SectorSize = 512;
const QByteArray Confirmation = QByteArray::fromHex("00FFAB12");

QByteArray Image(int sectors)
{
    return QByteArray(sectors * SectorSize, 'x');
}

void Write(const QTemporaryDir& folder, const char* name, const QByteArray& content)
{
    QVERIFY(!Panel::writeNewFile(folder.filePath(QLatin1String(name)), content).isFailure());
}

/// Returns the options of a simulator that stores this firmware, at a line that takes its time.
QStringList WriteFirmware(const QTemporaryDir& folder)
{
    Write(folder, "image", Image(40));
    Write(folder, "confirmation", Confirmation);
    return {QStringLiteral("--confirmation"),  QStringLiteral("AB12"),
            QStringLiteral("--save-firmware"), folder.filePath(QStringLiteral("firmware")),
            QStringLiteral("--baud"),          QStringLiteral("57600")};
}

} // namespace

void TestPanelService::Update(PanelBench& bench, const QTemporaryDir& folder)
{
    bench.Connect();
    bench.Click("service");
    for (const char* const name : {"image", "confirmation"}) {
        bench.Find<QLineEdit>(name)->setText(folder.filePath(QLatin1String(name)));
    }
    bench.Click("update");
}

void TestPanelService::TheDatesAreSet()
{
    PanelBench bench;
    bench.Connect();
    bench.Click("service");
    const QDateTime date(QDate(2026, 3, 14), QTime(15, 9, 26));
    bench.Find<QDateTimeEdit>("clockEdit")->setDateTime(date);
    bench.Click("clockSet");
    AWAIT_EQUAL(bench.Text("jobStatus"), QStringLiteral("The clock is set."));
    QCOMPARE(bench.session.instrument().clock().date(), date.date());
    bench.Find<QDateTimeEdit>("calibrationEdit")->setDateTime(date);
    bench.Click("calibrationUp"); // The year, which is the first part.
    bench.Click("calibrationSet");
    AWAIT_EQUAL(bench.Text("jobStatus"), QStringLiteral("The date of the calibration is set."));
    QCOMPARE(bench.session.instrument().calibrationDate().date(), QDate(2027, 3, 14));
    bench.Shoot("service");
}

void TestPanelService::TheInstrumentRestarts()
{
    PanelBench bench;
    bench.Connect();
    bench.Click("service");
    bench.Click("restart");
    AWAIT_EQUAL(bench.Text("jobStatus"), QStringLiteral("The instrument has restarted."));
}

/// It hits nothing on its way.
void TestPanelService::AFingerScrolls()
{
    PanelBench bench;
    bench.Connect();
    bench.Click("service");
    const int before = Top(bench);
    bench.Drag("restart", QPoint(0, -100));
    AWAIT(Top(bench) < before - 50);
    QVERIFY(!bench.session.instrument().isBusy());
}

void TestPanelService::FirmwareIsInstalled()
{
    const QTemporaryDir folder;
    PanelBench bench(WriteFirmware(folder));
    Update(bench, folder);
    AWAIT(bench.Text("updateDetails").contains(QStringLiteral("left")));
    QVERIFY(bench.Text("updateDetails").contains(QStringLiteral("of 40")));
    QVERIFY(!bench.Find("update")->isEnabled());
    bench.Shoot("update");
    AWAIT_EQUAL(bench.Text("jobStatus"), QStringLiteral("The firmware is installed."));
    QVERIFY(bench.Text("updateDetails").contains(QStringLiteral("Version before: ")));
    QVERIFY(bench.Text("updateDetails").contains(QStringLiteral("version now: ")));
    QCOMPARE(bench.Find<QProgressBar>("updateProgress")->value(), 40);
    QCOMPARE(Panel::readFile(folder.filePath(QStringLiteral("firmware")), 100000).bytes, Image(40));
    bench.Shoot("update-done");
}

void TestPanelService::AnUpdateIsNotClosedInTheMiddle()
{
    const QTemporaryDir folder;
    PanelBench bench(WriteFirmware(folder));
    Update(bench, folder);
    AWAIT(bench.Text("updateDetails").contains(QStringLiteral("left")));
    QVERIFY(!bench.window.close());
    AWAIT(bench.Text("curtainText").contains(QStringLiteral("must not be ended in the middle")));
    bench.Shoot("update-closing");
    AWAIT_EQUAL(bench.session.instrument().linkState(), VesmarClient::LinkState::Closed);
    QCOMPARE(Panel::readFile(folder.filePath(QStringLiteral("firmware")), 100000).bytes, Image(40));
}

void TestPanelService::AnUpdateThatFailsIsTold()
{
    const QTemporaryDir folder;
    Write(folder, "image", Image(5));
    Write(folder, "confirmation", Confirmation);
    PanelBench bench({QStringLiteral("--scenario"), QStringLiteral("refuses-sector 4")});
    Update(bench, folder);
    AWAIT(bench.Find("failure") != nullptr);
    bench.Click("errors");
    AWAIT(bench.Find("failure") != nullptr);
    QString told;
    for (const auto* const label : bench.Find("failure")->findChildren<QLabel*>()) {
        told += label->text() + QLatin1Char('\n');
    }
    QVERIFY2(told.contains(QStringLiteral("update mode")), qPrintable(told));
    QVERIFY2(told.contains(QStringLiteral("What to do: ")), qPrintable(told));
    bench.Shoot("errors");
    bench.Click("forgetErrors");
    QVERIFY(bench.Find("failure") == nullptr);
}

void TestPanelService::AFileThatIsNotThereIsTold()
{
    const QTemporaryDir folder;
    PanelBench bench;
    Update(bench, folder);
    AWAIT(bench.Find("failure") != nullptr);
    QVERIFY(!bench.session.isUpdating());
}

QTEST_MAIN(TestPanelService)

#include "tst_panelservice.moc"
