#include <QtTest>

#include "measurementwindow.h"

/// The example with widgets, used as a person would.
class TestMeasurementWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AMeasurementIsAborted();
    void WhatIsMissingIsSaid();
    void ClosingStopsTheMeasurement();

private:
    static constexpr int Patience = 30000;

    static void Choose(const MeasurementWindow& window, const char* function);
    static void Click(const MeasurementWindow& window, const char* button);
    static QString TextOf(const MeasurementWindow& window, const char* label);
};

void TestMeasurementWindow::Choose(const MeasurementWindow& window, const char* function)
{
    auto* const box = window.findChild<QComboBox*>(QStringLiteral("function"));
    box->setCurrentIndex(box->findData(QString::fromLatin1(function)));
}

void TestMeasurementWindow::Click(const MeasurementWindow& window, const char* button)
{
    auto* const found = window.findChild<QPushButton*>(QString::fromLatin1(button));
    QTRY_VERIFY_WITH_TIMEOUT(found->isEnabled(), Patience);
    QTest::mouseClick(found, Qt::LeftButton);
}

QString TestMeasurementWindow::TextOf(const MeasurementWindow& window, const char* label)
{
    return window.findChild<QLabel*>(QString::fromLatin1(label))->text();
}

void TestMeasurementWindow::AMeasurementIsAborted()
{
    MeasurementWindow window;
    window.show();
    Choose(window, "rpe");
    Click(window, "start");
    QTRY_VERIFY_WITH_TIMEOUT(TextOf(window, "readings").contains(QStringLiteral("resistance")), Patience);
    Click(window, "stop");
    QTRY_COMPARE_WITH_TIMEOUT(TextOf(window, "message"),
                              QStringLiteral("Aborted. The instrument has stopped."), Patience);
}

void TestMeasurementWindow::WhatIsMissingIsSaid()
{
    MeasurementWindow window;
    window.show();
    Choose(window, "rcd");
    Click(window, "start");
    QTRY_VERIFY_WITH_TIMEOUT(TextOf(window, "message").contains(QStringLiteral("ia-ta-1")), Patience);
}

void TestMeasurementWindow::ClosingStopsTheMeasurement()
{
    MeasurementWindow window;
    window.show();
    Choose(window, "hv");
    Click(window, "start");
    QTRY_VERIFY_WITH_TIMEOUT(!TextOf(window, "readings").isEmpty(), Patience);
    QVERIFY(!window.close());
    QTRY_VERIFY_WITH_TIMEOUT(!window.isVisible(), Patience);
    QCOMPARE(TextOf(window, "message"), QStringLiteral("Aborted. The instrument has stopped."));
}

QTEST_MAIN(TestMeasurementWindow)

#include "tst_measurementwindow.moc"
