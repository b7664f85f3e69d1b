// Measures one function with the driver alone: everyfunction rpe. The client does more: it proves that the
// instrument has stopped, whatever goes wrong with the link or the application.
#include <QCoreApplication>
#include <QDebug>
#include <Vesmar/tester.h>
#include <Vesmar/testerinformation.h>

#include "results.h"
#include "settings.h"

using namespace Vesmar;

namespace
{

/// The readings of the mains come while nothing is measured: they say that the link is up, and in the end
/// that the instrument has stopped.
class Run
{
public:
    Run(Tester& tester, MeasurementSettings& settings) : _tester(tester), _settings(settings)
    {
        QObject::connect(&tester, &Tester::TestResultsChanged,
                         [this](const MeasurementResults* results) { ReceiveResults(*results); });
        QObject::connect(&tester, &Tester::MeasurementStatusChanged, [this](MeasurementState status) {
            if (status == MeasurementState::Stopped) {
                _isOver = true;
                _tester.SetIsMeasurementModeActive(false);
            }
        });
        QObject::connect(&tester, &Tester::ErrorCodeChanged, [](Error error) {
            if (error != Error::NoErrors) {
                qCritical() << "It has failed:" << static_cast<int>(error);
                QCoreApplication::exit(1);
            }
        });
    }

private:
    void ReceiveResults(const MeasurementResults& results)
    {
        qInfo().noquote() << Describe(results);
        if (results.GetMeasurementType() != MeasurementType::Monitoring) {
            return;
        }
        if (_isOver) {
            QCoreApplication::quit();
        } else if (!_tester.GetIsMeasurementModeActive()) {
            const TesterInformation* information = _tester.DeviceInformation();
            qInfo() << "The instrument:" << information->DeviceName << information->SerialNumber;
            _tester.StartMeasurement(_settings);
            _tester.SetIsMeasurementModeActive(true);
        }
    }

    Tester& _tester;
    MeasurementSettings& _settings;
    bool _isOver = false;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const auto settings = MakeSettings(QCoreApplication::arguments().value(1));
    if (!settings) {
        qCritical() << "everyfunction rln|iec|rpe|riso|isub|ipe|idelta|it|power|hv|rcd|rcd-iec";
        return 2;
    }
    Tester* tester = Tester::Instance();
    const Run run(*tester, *settings);
    tester->Enable();
    const int status = QCoreApplication::exec();
    delete tester; // This disables it first.
    return status;
}
