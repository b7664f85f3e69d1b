// Measures the protective-earth resistance for three seconds, and shows the readings as they arrive.
#include <QCoreApplication>
#include <QDebug>
#include <QTimer>
#include <Vesmar/rperesults.h>
#include <Vesmar/rpesettings.h>
#include <Vesmar/tester.h>

/// One measurement, from the first readings of the instrument to the confirmed end.
class Measurement : public QObject
{
public:
    Measurement()
    {
        connect(_tester, &Vesmar::Tester::TestResultsChanged, this, &Measurement::OnResults);
        connect(_tester, &Vesmar::Tester::MeasurementStatusChanged, this, &Measurement::OnStatus);
        connect(_tester, &Vesmar::Tester::ErrorCodeChanged, this, &Measurement::OnError);
        _tester->Enable();
    }

private:
    void OnResults(const Vesmar::MeasurementResults* results)
    {
        if (results->GetMeasurementType() == Vesmar::MeasurementType::RPE) {
            const auto* readings = static_cast<const Vesmar::RPEResults*>(results);
            qInfo() << "RPE:" << readings->_resistance << "at" << readings->_current;
        } else if (_phase == Phase::Connecting) { // These are mains readings: the link is up.
            _phase = Phase::Preparing;
            Vesmar::RPESettings settings;
            settings.SetTime(3);
            _tester->PrepareMeasurement(settings); // Before measurement mode, which begins with it.
            _tester->SetIsMeasurementModeActive(true);
        } else if (_phase == Phase::Ending) { // Mains readings again: no function is active any more.
            qInfo() << "The instrument has stopped.";
            QCoreApplication::exit(_status);
        }
    }
    void OnStatus(Vesmar::MeasurementState status)
    {
        if (_phase == Phase::Preparing && status == Vesmar::MeasurementState::Prepared) {
            _phase = Phase::Measuring;
            _tester->StartMeasurement();
        } else if (_phase == Phase::Measuring && status == Vesmar::MeasurementState::Stopped) {
            _phase = Phase::Ending; // The three seconds are over.
            _tester->SetIsMeasurementModeActive(false);
        }
    }
    void OnError(Vesmar::Error error)
    {
        if (error != Vesmar::Error::NoErrors && _status == EXIT_SUCCESS) {
            qCritical() << "Failed with error" << static_cast<int>(error);
            _status = EXIT_FAILURE;
            _phase = Phase::Ending;
            _tester->AbortMeasurement();
            _tester->SetIsMeasurementModeActive(false);
        }
    }

    enum class Phase { Connecting, Preparing, Measuring, Ending };
    Vesmar::Tester* _tester = Vesmar::Tester::Instance();
    Phase _phase = Phase::Connecting;
    int _status = EXIT_SUCCESS;
};

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const Measurement measurement;
    QTimer::singleShot(30000, [] {
        qCritical() << "Not done in time; the instrument may still be running. Switch it off.";
        QCoreApplication::exit(EXIT_FAILURE);
    });
    const int status = QCoreApplication::exec();
    delete Vesmar::Tester::Instance();
    return status;
}
