#include <QCoreApplication>
#include <QDebug>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/tester.h>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Vesmar::Tester* tester = Vesmar::Tester::Instance();
    QObject::connect(tester, &Vesmar::Tester::TestResultsChanged, [](Vesmar::MeasurementResults* results) {
        if (results->GetMeasurementType() == Vesmar::MeasurementType::Monitoring) {
            const auto* mains = static_cast<Vesmar::MonitoringResults*>(results);
            qInfo() << "The mains:" << mains->_uln << mains->_frequency;
            QCoreApplication::quit();
        }
    });
    tester->Enable();
    const int status = QCoreApplication::exec();
    delete tester;
    return status;
}
