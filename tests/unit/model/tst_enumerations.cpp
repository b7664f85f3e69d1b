#include <QMetaType>
#include <QSignalSpy>
#include <QtTest>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/operationstate.h>
#include <Vesmar/starttestresult.h>

#include "context/threadsafeproperty.h"

#include "numbers.h"

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::OperationState;
using Vesmar::StartTestResult;

namespace
{

template <typename Enumeration>
void VerifyPassesThroughACell(int value)
{
    Vesmar::ThreadSafeProperty<Enumeration> cell;
    QSignalSpy changes(&cell, &Vesmar::Notifible::ValueChanged);
    cell.Set(static_cast<Enumeration>(value));
    QCOMPARE(static_cast<int>(cell.Get()), value);
    QCOMPARE(changes.count(), 1);
}

} // namespace

class TestEnumerations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NamesOfTheInstrumentHaveTheirNumbers()
    {
        QCOMPARE(Numbers({OperationMode::Normal, OperationMode::Calibration, OperationMode::Mode2,
                          OperationMode::Update}),
                 Range(0, 3));
        QCOMPARE(Numbers({MeasurementType::None, MeasurementType::Monitoring, MeasurementType::RLN,
                          MeasurementType::RPE, MeasurementType::RISO, MeasurementType::ISUB,
                          MeasurementType::IPE, MeasurementType::IDELTA, MeasurementType::IT,
                          MeasurementType::POWER, MeasurementType::HVTest, MeasurementType::RCD,
                          MeasurementType::RCDIEC, MeasurementType::IEC}),
                 Range(-1, 11) + QVector<int>{97});
        QCOMPARE(Numbers({StartTestResult::Unknown, StartTestResult::Status0, StartTestResult::Status1,
                          StartTestResult::Status2, StartTestResult::Status3, StartTestResult::Status4,
                          StartTestResult::Status5, StartTestResult::Status6, StartTestResult::Status7,
                          StartTestResult::Status8, StartTestResult::Status9, StartTestResult::Status10,
                          StartTestResult::Status11, StartTestResult::Status12, StartTestResult::Status13,
                          StartTestResult::Status14, StartTestResult::Status15}),
                 Range(-1, 15));
        QCOMPARE(Numbers({FunctionState::Unknown, FunctionState::Idle, FunctionState::Preparing,
                          FunctionState::Completed, FunctionState::PrepareError, FunctionState::Prepared,
                          FunctionState::Starting, FunctionState::StartError, FunctionState::Running,
                          FunctionState::Stopping, FunctionState::Terminated}),
                 Range(-1, 9));
        QCOMPARE(Numbers({OperationState::Idle, OperationState::Started, OperationState::InProgress,
                          OperationState::Finished}),
                 Range(0, 3));
        QCOMPARE(
            Numbers({MeasurementState::Unknown, MeasurementState::Idle, MeasurementState::Preparing,
                     MeasurementState::Prepared, MeasurementState::Starting, MeasurementState::Running,
                     MeasurementState::Measuring, MeasurementState::Stopping, MeasurementState::Stopped}),
            Range(-1, 7));
    }

    void NamesOfErrorsHaveTheirNumbers()
    {
        QCOMPARE(
            Numbers({Error::DeviceError0, Error::DeviceError1, Error::DeviceError2, Error::DeviceError3,
                     Error::DeviceError4, Error::DeviceError5, Error::DeviceError6, Error::DeviceError7,
                     Error::DeviceError8, Error::DeviceError9, Error::DeviceError10, Error::DeviceError11,
                     Error::DeviceError12, Error::DeviceError13, Error::DeviceError14, Error::NoErrors}),
            Range(0, 15));
        QCOMPARE(Numbers({Error::NoResponse, Error::RequestRefused, Error::InvalidResponse,
                          Error::CommunicationRecovery}),
                 Range(100, 103));
        QCOMPARE(Numbers({Error::PrepareFailed, Error::StartFailed, Error::MeasurementFailed}),
                 Range(200, 202));
        QCOMPARE(Numbers({Error::UpdateModeChangeFailed, Error::UpdateDataInvalid,
                          Error::UpdateConfirmationDataInvalid, Error::UpdateInitializationFailed,
                          Error::UpdateConfirmationFailed}),
                 Range(300, 304));
        QCOMPARE(Numbers({Error::RCDFunctionMismatch}), QVector<int>{398});
        QCOMPARE(Numbers({Error::RCDIdleStatusAttemptsExhausted, Error::RCDPreparedStatusAttemptsExhausted}),
                 Range(400, 401));
        QCOMPARE(Numbers({Error::RCDCheckObjectFailed, Error::RCDCheckObject2, Error::RCDCheckObject3,
                          Error::RCDCheckObject4, Error::RCDCheckObject7, Error::RCDCheckObject8,
                          Error::RCDCheckObject9, Error::RCDCheckObjectULNIECInvalid}),
                 Range(500, 507));
        QCOMPARE(Numbers({Error::RCDDeviceError0, Error::RCDDeviceError1, Error::RCDDeviceError2,
                          Error::RCDDeviceError3, Error::RCDDeviceError4, Error::RCDDeviceError5,
                          Error::RCDDeviceError6, Error::RCDDeviceError7, Error::RCDDeviceError8,
                          Error::RCDDeviceError9, Error::RCDDeviceError10, Error::RCDDeviceError11,
                          Error::RCDDeviceError12, Error::RCDDeviceError13, Error::RCDDeviceError14}),
                 Range(520, 534));
    }

    void AreUnknownToTheMetaTypeSystem()
    {
        for (const QByteArray name : {"OperationMode", "MeasurementType", "StartTestResult", "FunctionState",
                                      "Error", "OperationState", "MeasurementState"}) {
            QVERIFY2(QMetaType::type(name) == QMetaType::UnknownType, name);
            QVERIFY2(QMetaType::type("Vesmar::" + name) == QMetaType::UnknownType, name);
        }
    }

    void UnnamedValuesPassThroughACell()
    {
        VerifyPassesThroughACell<OperationMode>(-1);
        VerifyPassesThroughACell<OperationMode>(4);
        VerifyPassesThroughACell<MeasurementType>(12);
        VerifyPassesThroughACell<MeasurementType>(31);
        VerifyPassesThroughACell<MeasurementType>(96);
        VerifyPassesThroughACell<MeasurementType>(98);
        VerifyPassesThroughACell<StartTestResult>(-2);
        VerifyPassesThroughACell<StartTestResult>(16);
        VerifyPassesThroughACell<FunctionState>(10);
        VerifyPassesThroughACell<FunctionState>(12);
        VerifyPassesThroughACell<FunctionState>(15);
        VerifyPassesThroughACell<Error>(16);
        VerifyPassesThroughACell<Error>(99);
        VerifyPassesThroughACell<Error>(399);
        VerifyPassesThroughACell<Error>(521);
        VerifyPassesThroughACell<Error>(535);
        VerifyPassesThroughACell<OperationState>(-1);
        VerifyPassesThroughACell<OperationState>(4);
        VerifyPassesThroughACell<MeasurementState>(-2);
        VerifyPassesThroughACell<MeasurementState>(8);
    }
};

QTEST_APPLESS_MAIN(TestEnumerations)
#include "tst_enumerations.moc"
