#include <QFile>
#include <QTest>

#include "unit/machine/documenttables.h"

/// Compares docs/statemachine.md with what `vesmar_statemachine_document` would make of it.
class TestStateMachineDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(QStringLiteral(VESMAR_STATE_MACHINE_DOCUMENT));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        _page = QString::fromUtf8(file.readAll());
    }

    void PageIsUpToDate()
    {
        QCOMPARE(_page.split(QLatin1Char('\n')), DocumentTables::UpToDate(_page).split(QLatin1Char('\n')));
    }

    void ChangedTableIsWrittenAnew()
    {
        for (const auto& text : {QStringLiteral("| `RCDMonitoringState` | `RCDMeasurementModeState` |\n"),
                                 QStringLiteral("| `InitializationToMonitoringTransition` |")}) {
            QString changed = _page;
            changed.replace(text, QStringLiteral("| other |"));
            QVERIFY(changed != _page);
            QCOMPARE(DocumentTables::UpToDate(changed), _page);
        }
    }

    void PageWithoutAMarkIsRefused()
    {
        for (const auto& mark :
             {QStringLiteral("<!-- begin tree -->"), QStringLiteral("<!-- end tree -->"),
              QStringLiteral("<!-- begin transitions -->"), QStringLiteral("<!-- end transitions -->")}) {
            QCOMPARE(DocumentTables::UpToDate(QString(_page).remove(mark)), QString());
        }
    }

private:
    QString _page;
};

QTEST_APPLESS_MAIN(TestStateMachineDocument)
#include "tst_statemachinedocument.moc"
