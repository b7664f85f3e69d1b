#include <QCoreApplication>

#include "figures.h"
#include "table.h"

/// An application of the driver, and then of the client. The trace is composed and not printed.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    ReadOptions(argc, argv);
    MeasureSteps();
    MeasureSectors();
    MeasureMeasurements();
    return 0;
}
