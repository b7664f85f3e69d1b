#include <QCoreApplication>

#include "figures.h"
#include "table.h"

/// What the driver is made of. The trace is composed and not printed.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    ReadOptions(argc, argv);
    MeasureExchanges();
    MeasureParts();
    MeasureLoading();
    return 0;
}
