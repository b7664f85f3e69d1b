#include "cli/measure/measurementview.h"

#include <CLI/CLI.hpp>

#include <QTemporaryFile>
#include <QtTest>

#include <Vesmar/itresults.h>

#include "support/eventschema.h"
#include "support/redirection.h"

class TestCliMeasurementView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ResultIsTheLastLine();
};

/// A change that was on its way when the measurement ended may still arrive.
void TestCliMeasurementView::ResultIsTheLastLine()
{
    CLI::App app;
    const Cli::MeasureFunctions functions(app);
    app.parse("it");
    const VesmarClient::MeasurementSession session(Vesmar::MeasurementType::IT, false,
                                                   5); // its stop is not confirmed
    QTemporaryFile file;
    QTemporaryFile errors;
    QVERIFY(file.open() && errors.open());
    {
        const Redirection output(STDOUT_FILENO, file.handle());
        const Redirection errorOutput(STDERR_FILENO, errors.handle());
        Cli::MeasurementView view(*functions.Chosen(), true, nullptr);
        const auto showAll = [&view] {
            view.ShowStatus(Vesmar::MeasurementState::Stopped);
            view.ShowError(Vesmar::Error::NoErrors);
            view.ShowResults(Vesmar::ITResults(0.25F));
        };
        showAll();
        QCOMPARE(view.ShowEnd(session, Vesmar::Error::NoErrors), 6);
        showAll();
        view.Finish();
    }
    file.seek(0);
    const QByteArray shown = file.readAll();
    QCOMPARE(shown.count('\n'), 4);
    QCOMPARE(ProblemOfRun(shown, 6), QString());
}

QTEST_GUILESS_MAIN(TestCliMeasurementView)
#include "tst_climeasurementview.moc"
