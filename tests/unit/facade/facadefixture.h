#pragma once

#include <functional>
#include <memory>

#include <QThread>

#include <Vesmar/tester.h>

#include "unit/facade/testeraccess.h"
#include "unit/machine/instrument.h"

using Operation = std::function<void(Vesmar::Tester&)>;

/// The singleton for one test, with its cells watched and the log captured.
struct Facade {
    LogCapture log;
    std::unique_ptr<Vesmar::Tester> tester{Vesmar::Tester::Instance()};
    Vesmar::StateMachineContext& context = TesterAccess::ContextOf(*tester);
    CellLog cells{context};

    /// What the operation changes. Afterwards the log holds its lines alone.
    QStringList ChangesOf(const Operation& operation)
    {
        cells.Clear();
        log.Clear();
        operation(*tester);
        return cells.Changes();
    }
};

/// Records each change signal by the name of its property, with the value where it is a number.
class SignalLog
{
public:
    explicit SignalLog(Vesmar::Tester& tester)
    {
        WatchObjects(tester);
        Watch(tester, "TesterMode", &Vesmar::Tester::TesterModeChanged);
        Watch(tester, "StartTestStatus", &Vesmar::Tester::StartTestStatusChanged);
        Watch(tester, "MeasurementFunctionStatus", &Vesmar::Tester::MeasurementFunctionStatusChanged);
        Watch(tester, "ErrorCode", &Vesmar::Tester::ErrorCodeChanged);
        Watch(tester, "IsMeasurementRunning", &Vesmar::Tester::IsMeasurementRunningChanged);
        Watch(tester, "MeasurementStatus", &Vesmar::Tester::MeasurementStatusChanged);
        Watch(tester, "MeasurementTime", &Vesmar::Tester::MeasurementTimeChanged);
        Watch(tester, "OperationProgress", &Vesmar::Tester::OperationProgressChanged);
        Watch(tester, "CurrentMeasurementType", &Vesmar::Tester::CurrentMeasurementTypeChanged);
        Watch(tester, "OperationStatus", &Vesmar::Tester::OperationStatusChanged);
    }

    QStringList Signals() const { return _signals; }
    void Clear() { _signals.clear(); }
    bool AreAllOfThisThread() const { return _areAllOfThisThread; }

private:
    void WatchObjects(Vesmar::Tester& tester)
    {
        Connect(&tester, &Vesmar::Tester::DeviceInformationChanged,
                [this, &tester](Vesmar::TesterInformation* value) {
                    Append(QStringLiteral("DeviceInformation"), value == tester.DeviceInformation());
                });
        Connect(&tester, &Vesmar::Tester::TestSettingsChanged,
                [this, &tester](Vesmar::MeasurementSettings* value) {
                    Append(QStringLiteral("TestSettings"), value == tester.TestSettings());
                });
        Connect(&tester, &Vesmar::Tester::TestResultsChanged,
                [this, &tester](Vesmar::MeasurementResults* value) {
                    Append(QStringLiteral("TestResults"), value == tester.TestResults());
                });
        Connect(&tester, &Vesmar::Tester::CurrentDateTimeChanged, [this, &tester](const QDateTime& value) {
            Append(QStringLiteral("CurrentDateTime"), value == tester.CurrentDateTime());
        });
        Connect(&tester, &Vesmar::Tester::CalibrationDateTimeChanged,
                [this, &tester](const QDateTime& value) {
                    Append(QStringLiteral("CalibrationDateTime"), value == tester.CalibrationDateTime());
                });
    }

    template <typename Value>
    void Watch(Vesmar::Tester& tester, const char* name, void (Vesmar::Tester::*signal)(Value))
    {
        Connect(&tester, signal, [this, name](Value value) {
            Append(QStringLiteral("%1=%2").arg(QLatin1String(name)).arg(static_cast<int>(value)), true);
        });
    }

    template <typename Signal, typename Slot>
    void Connect(Vesmar::Tester* tester, Signal signal, Slot slot)
    {
        QObject::connect(tester, signal, &_receiver, slot, Qt::DirectConnection);
    }

    void Append(const QString& text, bool isPresentValue)
    {
        _signals.append(isPresentValue ? text : text + QStringLiteral(" with a value not present"));
        _areAllOfThisThread = _areAllOfThisThread && QThread::currentThread() == _receiver.thread();
    }

    QObject _receiver;
    QStringList _signals;
    bool _areAllOfThisThread = true;
};
