#include <type_traits>

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
void AddValue(const char* name, Enumeration enumerator, int value)
{
    static_assert(std::is_same_v<std::underlying_type_t<Enumeration>, int>);
    static_assert(!std::is_convertible_v<Enumeration, int>, "the enumeration is not scoped");
    QTest::newRow(name) << static_cast<int>(enumerator) << value;
}

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
    void NamesHaveTheirValues_data();
    void NamesHaveTheirValues();
    void AreUnknownToTheMetaTypeSystem_data();
    void AreUnknownToTheMetaTypeSystem();
    void UnnamedValuesPassThroughACell();
    void TheErrorOfAnAbortedRCDTestIsAnnouncedLikeAnyOther();

private:
    static void AddOperationModes();
    static void AddMeasurementTypes();
    static void AddStartTestResults();
    static void AddFunctionStates();
    static void AddErrors();
    static void AddOperationStates();
    static void AddMeasurementStates();
};

void TestEnumerations::NamesHaveTheirValues_data()
{
    QTest::addColumn<int>("actual");
    QTest::addColumn<int>("expected");
    AddOperationModes();
    AddMeasurementTypes();
    AddStartTestResults();
    AddFunctionStates();
    AddErrors();
    AddOperationStates();
    AddMeasurementStates();
}

void TestEnumerations::NamesHaveTheirValues()
{
    QFETCH(const int, actual);
    QFETCH(const int, expected);
    QCOMPARE(actual, expected);
}

void TestEnumerations::AddOperationModes()
{
    AddValue("OperationMode::Normal", OperationMode::Normal, 0);
    AddValue("OperationMode::Calibration", OperationMode::Calibration, 1);
    AddValue("OperationMode::Mode2", OperationMode::Mode2, 2);
    AddValue("OperationMode::Update", OperationMode::Update, 3);
}

void TestEnumerations::AddMeasurementTypes()
{
    AddValue("MeasurementType::None", MeasurementType::None, -1);
    AddValue("MeasurementType::Monitoring", MeasurementType::Monitoring, 0);
    AddValue("MeasurementType::RLN", MeasurementType::RLN, 1);
    AddValue("MeasurementType::RPE", MeasurementType::RPE, 2);
    AddValue("MeasurementType::RISO", MeasurementType::RISO, 3);
    AddValue("MeasurementType::ISUB", MeasurementType::ISUB, 4);
    AddValue("MeasurementType::IPE", MeasurementType::IPE, 5);
    AddValue("MeasurementType::IDELTA", MeasurementType::IDELTA, 6);
    AddValue("MeasurementType::IT", MeasurementType::IT, 7);
    AddValue("MeasurementType::POWER", MeasurementType::POWER, 8);
    AddValue("MeasurementType::HVTest", MeasurementType::HVTest, 9);
    AddValue("MeasurementType::RCD", MeasurementType::RCD, 10);
    AddValue("MeasurementType::RCDIEC", MeasurementType::RCDIEC, 11);
    AddValue("MeasurementType::IEC", MeasurementType::IEC, 97);
}

void TestEnumerations::AddStartTestResults()
{
    AddValue("StartTestResult::Unknown", StartTestResult::Unknown, -1);
    AddValue("StartTestResult::Status0", StartTestResult::Status0, 0);
    AddValue("StartTestResult::Status1", StartTestResult::Status1, 1);
    AddValue("StartTestResult::Status2", StartTestResult::Status2, 2);
    AddValue("StartTestResult::Status3", StartTestResult::Status3, 3);
    AddValue("StartTestResult::Status4", StartTestResult::Status4, 4);
    AddValue("StartTestResult::Status5", StartTestResult::Status5, 5);
    AddValue("StartTestResult::Status6", StartTestResult::Status6, 6);
    AddValue("StartTestResult::Status7", StartTestResult::Status7, 7);
    AddValue("StartTestResult::Status8", StartTestResult::Status8, 8);
    AddValue("StartTestResult::Status9", StartTestResult::Status9, 9);
    AddValue("StartTestResult::Status10", StartTestResult::Status10, 10);
    AddValue("StartTestResult::Status11", StartTestResult::Status11, 11);
    AddValue("StartTestResult::Status12", StartTestResult::Status12, 12);
    AddValue("StartTestResult::Status13", StartTestResult::Status13, 13);
    AddValue("StartTestResult::Status14", StartTestResult::Status14, 14);
    AddValue("StartTestResult::Status15", StartTestResult::Status15, 15);
}

void TestEnumerations::AddFunctionStates()
{
    AddValue("FunctionState::Unknown", FunctionState::Unknown, -1);
    AddValue("FunctionState::Idle", FunctionState::Idle, 0);
    AddValue("FunctionState::Preparing", FunctionState::Preparing, 1);
    AddValue("FunctionState::Completed", FunctionState::Completed, 2);
    AddValue("FunctionState::PrepareError", FunctionState::PrepareError, 3);
    AddValue("FunctionState::Prepared", FunctionState::Prepared, 4);
    AddValue("FunctionState::Starting", FunctionState::Starting, 5);
    AddValue("FunctionState::StartError", FunctionState::StartError, 6);
    AddValue("FunctionState::Running", FunctionState::Running, 7);
    AddValue("FunctionState::Stopping", FunctionState::Stopping, 8);
    AddValue("FunctionState::Terminated", FunctionState::Terminated, 9);
}

void TestEnumerations::AddErrors()
{
    AddValue("Error::DeviceError0", Error::DeviceError0, 0);
    AddValue("Error::DeviceError1", Error::DeviceError1, 1);
    AddValue("Error::DeviceError2", Error::DeviceError2, 2);
    AddValue("Error::DeviceError3", Error::DeviceError3, 3);
    AddValue("Error::DeviceError4", Error::DeviceError4, 4);
    AddValue("Error::DeviceError5", Error::DeviceError5, 5);
    AddValue("Error::DeviceError6", Error::DeviceError6, 6);
    AddValue("Error::DeviceError7", Error::DeviceError7, 7);
    AddValue("Error::DeviceError8", Error::DeviceError8, 8);
    AddValue("Error::DeviceError9", Error::DeviceError9, 9);
    AddValue("Error::DeviceError10", Error::DeviceError10, 10);
    AddValue("Error::DeviceError11", Error::DeviceError11, 11);
    AddValue("Error::DeviceError12", Error::DeviceError12, 12);
    AddValue("Error::DeviceError13", Error::DeviceError13, 13);
    AddValue("Error::DeviceError14", Error::DeviceError14, 14);
    AddValue("Error::NoErrors", Error::NoErrors, 15);
    AddValue("Error::NoResponse", Error::NoResponse, 100);
    AddValue("Error::RequestRefused", Error::RequestRefused, 101);
    AddValue("Error::InvalidResponse", Error::InvalidResponse, 102);
    AddValue("Error::CommunicationRecovery", Error::CommunicationRecovery, 103);
    AddValue("Error::PrepareFailed", Error::PrepareFailed, 200);
    AddValue("Error::StartFailed", Error::StartFailed, 201);
    AddValue("Error::MeasurementFailed", Error::MeasurementFailed, 202);
    AddValue("Error::UpdateModeChangeFailed", Error::UpdateModeChangeFailed, 300);
    AddValue("Error::UpdateDataInvalid", Error::UpdateDataInvalid, 301);
    AddValue("Error::UpdateConfirmationDataInvalid", Error::UpdateConfirmationDataInvalid, 302);
    AddValue("Error::UpdateInitializationFailed", Error::UpdateInitializationFailed, 303);
    AddValue("Error::UpdateConfirmationFailed", Error::UpdateConfirmationFailed, 304);
    AddValue("Error::RCDFunctionMismatch", Error::RCDFunctionMismatch, 398);
    AddValue("Error::RCDIdleStatusAttemptsExhausted", Error::RCDIdleStatusAttemptsExhausted, 400);
    AddValue("Error::RCDPreparedStatusAttemptsExhausted", Error::RCDPreparedStatusAttemptsExhausted, 401);
    AddValue("Error::RCDCheckObjectFailed", Error::RCDCheckObjectFailed, 500);
    AddValue("Error::RCDCheckObject2", Error::RCDCheckObject2, 501);
    AddValue("Error::RCDCheckObject3", Error::RCDCheckObject3, 502);
    AddValue("Error::RCDCheckObject4", Error::RCDCheckObject4, 503);
    AddValue("Error::RCDCheckObject7", Error::RCDCheckObject7, 504);
    AddValue("Error::RCDCheckObject8", Error::RCDCheckObject8, 505);
    AddValue("Error::RCDCheckObject9", Error::RCDCheckObject9, 506);
    AddValue("Error::RCDCheckObjectULNIECInvalid", Error::RCDCheckObjectULNIECInvalid, 507);
    AddValue("Error::RCDDeviceError0", Error::RCDDeviceError0, 520);
    AddValue("Error::RCDDeviceError1", Error::RCDDeviceError1, 521);
    AddValue("Error::RCDDeviceError2", Error::RCDDeviceError2, 522);
    AddValue("Error::RCDDeviceError3", Error::RCDDeviceError3, 523);
    AddValue("Error::RCDDeviceError4", Error::RCDDeviceError4, 524);
    AddValue("Error::RCDDeviceError5", Error::RCDDeviceError5, 525);
    AddValue("Error::RCDDeviceError6", Error::RCDDeviceError6, 526);
    AddValue("Error::RCDDeviceError7", Error::RCDDeviceError7, 527);
    AddValue("Error::RCDDeviceError8", Error::RCDDeviceError8, 528);
    AddValue("Error::RCDDeviceError9", Error::RCDDeviceError9, 529);
    AddValue("Error::RCDDeviceError10", Error::RCDDeviceError10, 530);
    AddValue("Error::RCDDeviceError11", Error::RCDDeviceError11, 531);
    AddValue("Error::RCDDeviceError12", Error::RCDDeviceError12, 532);
    AddValue("Error::RCDDeviceError13", Error::RCDDeviceError13, 533);
    AddValue("Error::RCDDeviceError14", Error::RCDDeviceError14, 534);
}

void TestEnumerations::AddOperationStates()
{
    AddValue("OperationState::Idle", OperationState::Idle, 0);
    AddValue("OperationState::Started", OperationState::Started, 1);
    AddValue("OperationState::InProgress", OperationState::InProgress, 2);
    AddValue("OperationState::Finished", OperationState::Finished, 3);
}

void TestEnumerations::AddMeasurementStates()
{
    AddValue("MeasurementState::Unknown", MeasurementState::Unknown, -1);
    AddValue("MeasurementState::Idle", MeasurementState::Idle, 0);
    AddValue("MeasurementState::Preparing", MeasurementState::Preparing, 1);
    AddValue("MeasurementState::Prepared", MeasurementState::Prepared, 2);
    AddValue("MeasurementState::Starting", MeasurementState::Starting, 3);
    AddValue("MeasurementState::Running", MeasurementState::Running, 4);
    AddValue("MeasurementState::Measuring", MeasurementState::Measuring, 5);
    AddValue("MeasurementState::Stopping", MeasurementState::Stopping, 6);
    AddValue("MeasurementState::Stopped", MeasurementState::Stopped, 7);
}

void TestEnumerations::AreUnknownToTheMetaTypeSystem_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("OperationMode") << QByteArray("OperationMode");
    QTest::newRow("MeasurementType") << QByteArray("MeasurementType");
    QTest::newRow("StartTestResult") << QByteArray("StartTestResult");
    QTest::newRow("FunctionState") << QByteArray("FunctionState");
    QTest::newRow("Error") << QByteArray("Error");
    QTest::newRow("OperationState") << QByteArray("OperationState");
    QTest::newRow("MeasurementState") << QByteArray("MeasurementState");
}

void TestEnumerations::AreUnknownToTheMetaTypeSystem()
{
    QFETCH(const QByteArray, name);
    QCOMPARE(QMetaType::type(name), int(QMetaType::UnknownType));
    QCOMPARE(QMetaType::type("Vesmar::" + name), int(QMetaType::UnknownType));
}

void TestEnumerations::UnnamedValuesPassThroughACell()
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
    VerifyPassesThroughACell<Error>(535);
    VerifyPassesThroughACell<OperationState>(-1);
    VerifyPassesThroughACell<OperationState>(4);
    VerifyPassesThroughACell<MeasurementState>(-2);
    VerifyPassesThroughACell<MeasurementState>(8);
}

void TestEnumerations::TheErrorOfAnAbortedRCDTestIsAnnouncedLikeAnyOther()
{
    VerifyPassesThroughACell<Error>(521);
}

QTEST_APPLESS_MAIN(TestEnumerations)
#include "tst_enumerations.moc"
