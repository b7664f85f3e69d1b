#include <functional>
#include <memory>
#include <thread>
#include <typeinfo>

#include <QCoreApplication>
#include <QDir>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointer>
#include <QTest>

#include <Vesmar/hvtestsettings.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/risosettings.h>
#include <Vesmar/rlnsettings.h>
#include <Vesmar/tester.h>

#include "context/replaceowned.h"
#include "unit/facade/facadefixture.h"

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::OperationState;
using Vesmar::StartTestResult;
using Vesmar::StateMachineContext;
using Vesmar::Tester;
using Vesmar::TesterInformation;

Q_DECLARE_METATYPE(Operation)

namespace
{

const QMap<char, QByteArray> Instrument = {
    {'s', Wire::StartTest0Status},
    {'W', Wire::Bytes("50415431323334353637383931303541424344323031361fe6")},
    {'R', Wire::Bytes("2412312359586199")},
    {'T', Wire::Bytes("200229000000b2b5")},
    {'r', Wire::Acknowledge},
    {'t', Wire::Acknowledge},
    {'x', Wire::Acknowledge}};

int ThreadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

/// The fifteen properties in order: name, type, a change of the cell, and the signal that it makes.
struct Property {
    const char* name;
    const char* type;
    std::function<void(StateMachineContext&)> change;
    QString signal;
};

const QList<Property>& Properties()
{
    static const QList<Property> properties = {
        {"DeviceInformation", "TesterInformation*",
         [](StateMachineContext& context) {
             Vesmar::ReplaceOwned(context.DeviceInformation, new TesterInformation(nullptr), nullptr);
         },
         QStringLiteral("DeviceInformation")},
        {"TesterMode", "OperationMode",
         [](StateMachineContext& context) { context.TesterMode.Set(static_cast<OperationMode>(9)); },
         QStringLiteral("TesterMode=9")},
        {"CurrentDateTime", "QDateTime",
         [](StateMachineContext& context) {
             context.CurrentDateTime.Set(QDateTime({2024, 3, 7}, {14, 5, 9}));
         },
         QStringLiteral("CurrentDateTime")},
        {"CalibrationDateTime", "QDateTime",
         [](StateMachineContext& context) {
             context.CalibrationDateTime.Set(QDateTime({2023, 3, 7}, {0, 0}));
         },
         QStringLiteral("CalibrationDateTime")},
        {"StartTestStatus", "StartTestResult",
         [](StateMachineContext& context) { context.StartTestStatus.Set(static_cast<StartTestResult>(14)); },
         QStringLiteral("StartTestStatus=14")},
        {"MeasurementFunctionStatus", "FunctionState",
         [](StateMachineContext& context) {
             context.MeasurementFunctionStatus.Set(static_cast<FunctionState>(12));
         },
         QStringLiteral("MeasurementFunctionStatus=12")},
        {"ErrorCode", "Error",
         [](StateMachineContext& context) { context.ErrorCode.Set(Error::RCDDeviceError1); },
         QStringLiteral("ErrorCode=521")},
        {"TestSettings", "MeasurementSettings*",
         [](StateMachineContext& context) {
             Vesmar::ReplaceOwned<MeasurementSettings>(context.TestSettings, new Vesmar::RLNSettings,
                                                       nullptr);
         },
         QStringLiteral("TestSettings")},
        {"TestResults", "MeasurementResults*",
         [](StateMachineContext& context) {
             Vesmar::ReplaceOwned(context.TestResults, new MeasurementResults(MeasurementType::RLN, nullptr),
                                  nullptr);
         },
         QStringLiteral("TestResults")},
        {"IsMeasurementRunning", "bool",
         [](StateMachineContext& context) { context.IsMeasurementRunning.Set(true); },
         QStringLiteral("IsMeasurementRunning=1")},
        {"MeasurementStatus", "MeasurementState",
         [](StateMachineContext& context) { context.MeasurementStatus.Set(MeasurementState::Stopping); },
         QStringLiteral("MeasurementStatus=6")},
        {"MeasurementTime", "int", [](StateMachineContext& context) { context.MeasurementTime.Set(42); },
         QStringLiteral("MeasurementTime=42")},
        {"OperationProgress", "int", [](StateMachineContext& context) { context.OperationProgress.Set(77); },
         QStringLiteral("OperationProgress=77")},
        {"CurrentMeasurementType", "MeasurementType",
         [](StateMachineContext& context) {
             context.CurrentMeasurementType.Set(static_cast<MeasurementType>(31));
         },
         QStringLiteral("CurrentMeasurementType=31")},
        {"OperationStatus", "OperationState",
         [](StateMachineContext& context) { context.OperationStatus.Set(OperationState::Finished); },
         QStringLiteral("OperationStatus=3")},
    };
    return properties;
}

std::unique_ptr<MeasurementSettings> SettingsOf(MeasurementType type)
{
    switch (type) {
    case MeasurementType::RLN:
        return std::make_unique<Vesmar::RLNSettings>();
    case MeasurementType::RISO:
        return std::make_unique<Vesmar::RISOSettings>();
    case MeasurementType::HVTest:
        return std::make_unique<Vesmar::HVTestSettings>();
    case MeasurementType::RCD:
        return std::make_unique<Vesmar::RCDSettings>();
    case MeasurementType::RCDIEC:
        return std::make_unique<Vesmar::RCDIECSettings>();
    case MeasurementType::IEC:
        return std::make_unique<Vesmar::IECSettings>();
    default:
        return std::make_unique<MeasurementSettings>(type, nullptr);
    }
}

} // namespace

class TestTester : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void InstanceIsOneObjectUntilItIsDeleted();
    void FreshTesterReportsTheDefaults();
    void DeletionInEveryStateEndsEveryThread_data();
    void DeletionInEveryStateEndsEveryThread();

    void MetaObjectListsThePropertiesInOrder();
    void MetaObjectListsTheSignalsAndThenTheSlotsInOrderAndNothingElse();
    void PointerTypesAreRegisteredAndEnumerationsAreNot();

    void EachSlotEmitsItsSignalWithThePresentValue_data();
    void EachSlotEmitsItsSignalWithThePresentValue();
    void EachChangeOfACellOnThisThreadSignalsAtOnceAndOnce_data();
    void EachChangeOfACellOnThisThreadSignalsAtOnceAndOnce();
    void ChangesOnAnotherThreadSignalHereWithTheValueThatIsThere();
    void MeasurementTimeIsLoggedBeforeItsSignal();
    void AbortedRCDMeasurementsErrorIsSignalledLikeAnyOther();

    void EnableAndDisableToggleIsEnabled();
    void EnableOfAnEnabledTesterDoesNothing();
    void DisableOfADisabledTesterDoesNothing();
    void EnabledTesterPublishesTheInstrumentOnThisThread();
    void RepeatedEnablingAndDisablingWorks();

    void RequestSetsItsFlagOnce_data();
    void RequestSetsItsFlagOnce();
    void ConfiguredDateIsStoredAndSignalledBeforeItIsRequested_data();
    void ConfiguredDateIsStoredAndSignalledBeforeItIsRequested();
    void RequestReachesTheWire_data();
    void RequestReachesTheWire();
    void MeasurementModeIsLoggedOnEveryCallAndSignalledOnce();

    void PrepareStoresACloneBeforeItIsRequested_data();
    void PrepareStoresACloneBeforeItIsRequested();
    void PrepareTwiceWithEqualSettingsReplacesThem();
    void PrepareKeepsTheOldSettingsUntilTheNewOnesAreSignalled();
    void PrepareDeletesTheOldSettingsWhileEnabledToo();
    void StartWithdrawsAnAbortBeforeItIsRequested();
    void StartWithoutAnAbortSetsItsFlagAlone();
    void QuickStartPreparesAndThenStarts_data();
    void QuickStartPreparesAndThenStarts();

    void AbortActsByTheMeasurementStatus_data();
    void AbortActsByTheMeasurementStatus();
    void AbortInStoppedSignalsTheStatusTwice();
    void AbortWithRCDSettingsAlwaysAsksTheStates_data();
    void AbortWithRCDSettingsAlwaysAsksTheStates();
};

void TestTester::InstanceIsOneObjectUntilItIsDeleted()
{
    Tester* first = Tester::Instance();
    QCOMPARE(Tester::Instance(), first);
    QCOMPARE(first->parent(), nullptr);
    const QPointer<Tester> watch(first);
    first->SetIsMeasurementModeActive(true);
    delete first;
    QVERIFY(watch.isNull());
    const std::unique_ptr<Tester> second(Tester::Instance());
    QVERIFY(second != nullptr);
    QCOMPARE(Tester::Instance(), second.get());
    QVERIFY(!second->GetIsMeasurementModeActive());
}

void TestTester::FreshTesterReportsTheDefaults()
{
    const Facade facade;
    const Tester& tester = *facade.tester;
    QVERIFY(!facade.tester->IsEnabled());
    const TesterInformation* information = tester.DeviceInformation();
    QCOMPARE((QStringList{information->DeviceName, information->DeviceCode, information->SerialNumber,
                          information->Version, information->VersionCode, information->RevisionCode,
                          information->BuildNumber}),
             Changes("PAT 000 000000 000 000 00 0000"));
    QCOMPARE(static_cast<int>(tester.TesterMode()), 0);
    QCOMPARE(tester.CurrentDateTime(), QDateTime({2016, 1, 1}, {0, 0}));
    QVERIFY(tester.CalibrationDateTime().isNull());
    QCOMPARE(static_cast<int>(tester.StartTestStatus()), -1);
    QCOMPARE(static_cast<int>(tester.MeasurementFunctionStatus()), -1);
    QCOMPARE(static_cast<int>(tester.ErrorCode()), 15);
    QCOMPARE(static_cast<int>(tester.TestSettings()->GetMeasurementType()), -1);
    QCOMPARE(static_cast<int>(tester.TestResults()->GetMeasurementType()), -1);
    QCOMPARE(tester.IsMeasurementRunning(), false);
    QCOMPARE(static_cast<int>(tester.MeasurementStatus()), 0);
    QCOMPARE(tester.MeasurementTime(), 0);
    QCOMPARE(tester.OperationProgress(), 0);
    QCOMPARE(static_cast<int>(tester.CurrentMeasurementType()), -1);
    QCOMPARE(static_cast<int>(tester.OperationStatus()), 0);
    QVERIFY(!facade.tester->GetIsMeasurementModeActive());
}

void TestTester::DeletionInEveryStateEndsEveryThread_data()
{
    QTest::addColumn<Operation>("prepare");
    QTest::newRow("created") << Operation([](Tester&) {});
    QTest::newRow("enabled") << Operation([](Tester& tester) { tester.Enable(); });
    QTest::newRow("connected") << Operation([](Tester& tester) {
        tester.Enable();
        QTRY_COMPARE_WITH_TIMEOUT(tester.CurrentMeasurementType(), MeasurementType::Monitoring, Patience);
    });
    QTest::newRow("disabled") << Operation([](Tester& tester) {
        tester.Enable();
        tester.Disable();
    });
    QTest::newRow("enabled again") << Operation([](Tester& tester) {
        tester.Enable();
        tester.Disable();
        tester.Enable();
    });
}

void TestTester::DeletionInEveryStateEndsEveryThread()
{
    QFETCH(const Operation, prepare);
    const int threadsBefore = ThreadCount();
    {
        ScriptedPeer peer;
        peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
        const Facade facade;
        prepare(*facade.tester);
    }
    QTRY_VERIFY(ThreadCount() <= threadsBefore);
}

void TestTester::MetaObjectListsThePropertiesInOrder()
{
    const QMetaObject& meta = Tester::staticMetaObject;
    QCOMPARE(meta.className(), "Vesmar::Tester");
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), Properties().size());
    int index = meta.propertyOffset();
    for (const Property& expected : Properties()) {
        const QMetaProperty property = meta.property(index++);
        QCOMPARE(property.name(), expected.name);
        QCOMPARE(property.typeName(), expected.type);
        QVERIFY(property.isReadable());
        QVERIFY(!property.isWritable());
        QVERIFY(!property.isResettable());
        QVERIFY(property.hasNotifySignal());
        QCOMPARE(property.notifySignal().methodSignature(),
                 QByteArray(expected.name) + "Changed(" + expected.type + ')');
    }
}

void TestTester::MetaObjectListsTheSignalsAndThenTheSlotsInOrderAndNothingElse()
{
    const QMetaObject& meta = Tester::staticMetaObject;
    const int offset = meta.methodOffset();
    const int count = Properties().size();
    QCOMPARE(meta.methodCount() - offset, 2 * count);
    for (int index = 0; index < count; ++index) {
        const Property& property = Properties().at(index);
        const QMetaMethod signal = meta.method(offset + index);
        QCOMPARE(signal.methodType(), QMetaMethod::Signal);
        QCOMPARE(signal.methodSignature(), QByteArray(property.name) + "Changed(" + property.type + ')');
        const QMetaMethod slot = meta.method(offset + count + index);
        QCOMPARE(slot.methodType(), QMetaMethod::Slot);
        QCOMPARE(slot.access(), QMetaMethod::Public);
        QCOMPARE(slot.methodSignature(), QByteArray("Update") + property.name + "()");
    }
}

void TestTester::PointerTypesAreRegisteredAndEnumerationsAreNot()
{
    const QMetaObject& meta = Tester::staticMetaObject;
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
        const QMetaProperty property = meta.property(index);
        const QByteArray type = property.typeName();
        if (type.endsWith('*')) {
            QVERIFY2(QMetaType::typeFlags(property.userType()).testFlag(QMetaType::PointerToQObject), type);
        } else if (type != "QDateTime" && type != "bool" && type != "int") {
            QCOMPARE(property.userType(), static_cast<int>(QMetaType::UnknownType));
            QCOMPARE(QMetaType::type("Vesmar::" + type), static_cast<int>(QMetaType::UnknownType));
        }
    }
}

static void AddPropertyRows()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < Properties().size(); ++index) {
        QTest::newRow(Properties().at(index).name) << index;
    }
}

void TestTester::EachSlotEmitsItsSignalWithThePresentValue_data()
{
    AddPropertyRows();
}

void TestTester::EachSlotEmitsItsSignalWithThePresentValue()
{
    QFETCH(const int, index);
    const Property& property = Properties().at(index);
    const Facade facade;
    property.change(facade.context);
    const SignalLog changes(*facade.tester);
    QVERIFY(QMetaObject::invokeMethod(facade.tester.get(), QByteArray("Update") + property.name));
    QCOMPARE(changes.Signals(), QStringList{property.signal});
}

void TestTester::EachChangeOfACellOnThisThreadSignalsAtOnceAndOnce_data()
{
    AddPropertyRows();
}

void TestTester::EachChangeOfACellOnThisThreadSignalsAtOnceAndOnce()
{
    QFETCH(const int, index);
    const Property& property = Properties().at(index);
    const Facade facade;
    const SignalLog changes(*facade.tester);
    property.change(facade.context);
    QCOMPARE(changes.Signals(), QStringList{property.signal});
    QCoreApplication::processEvents();
    QCOMPARE(changes.Signals(), QStringList{property.signal});
}

void TestTester::ChangesOnAnotherThreadSignalHereWithTheValueThatIsThere()
{
    const Facade facade;
    const SignalLog changes(*facade.tester);
    std::thread([&facade]() {
        facade.context.OperationProgress.Set(1);
        facade.context.OperationProgress.Set(2);
    }).join();
    QCOMPARE(changes.Signals(), QStringList{});
    QCoreApplication::processEvents();
    QCOMPARE(changes.Signals(),
             (QStringList{QStringLiteral("OperationProgress=2"), QStringLiteral("OperationProgress=2")}));
    QVERIFY(changes.AreAllOfThisThread());
}

void TestTester::MeasurementTimeIsLoggedBeforeItsSignal()
{
    Facade facade;
    QStringList linesAtTheSignal;
    QObject::connect(facade.tester.get(), &Tester::MeasurementTimeChanged, facade.tester.get(),
                     [&](int) { linesAtTheSignal = facade.log.Texts(); });
    facade.context.MeasurementTime.Set(12);
    QCOMPARE(linesAtTheSignal, QStringList{QStringLiteral("\033[0;34mMEASUREMENT TIME: 12\033[0m")});
    QCOMPARE(facade.log.Texts(), linesAtTheSignal);
    QCOMPARE(facade.log.Messages().constFirst().type, QtWarningMsg);
}

void TestTester::AbortedRCDMeasurementsErrorIsSignalledLikeAnyOther()
{
    const Facade facade;
    const SignalLog changes(*facade.tester);
    std::thread([&facade]() { facade.context.ErrorCode.Set(Error::RCDDeviceError1); }).join();
    QCoreApplication::processEvents();
    QCOMPARE(changes.Signals(), QStringList{QStringLiteral("ErrorCode=521")});
    QCOMPARE(facade.tester->ErrorCode(), Error::RCDDeviceError1);
}

void TestTester::EnableAndDisableToggleIsEnabled()
{
    const ScriptedPeer peer;
    const Facade facade;
    QVERIFY(!facade.tester->IsEnabled());
    facade.tester->Enable();
    QVERIFY(facade.tester->IsEnabled());
    QVERIFY(peer.WaitForRequests(1));
    facade.tester->Disable();
    QVERIFY(!facade.tester->IsEnabled());
}

void TestTester::EnableOfAnEnabledTesterDoesNothing()
{
    const ScriptedPeer peer; // Silence: the first query waits all the while.
    Facade facade;
    facade.tester->Enable();
    QVERIFY(peer.WaitForRequests(1));
    facade.context.MeasurementStatus.Set(MeasurementState::Prepared);
    const int threads = ThreadCount();
    QCOMPARE(facade.ChangesOf([](Tester& tester) { tester.Enable(); }), QStringList{});
    QCOMPARE(facade.log.Texts(), QStringList{});
    QCOMPARE(ThreadCount(), threads);
    QVERIFY(facade.tester->IsEnabled());
}

void TestTester::DisableOfADisabledTesterDoesNothing()
{
    Facade facade;
    QCOMPARE(facade.ChangesOf([](Tester& tester) { tester.Disable(); }), QStringList{});
    QCOMPARE(facade.log.Texts(), QStringList{});
    QVERIFY(!facade.tester->IsEnabled());
}

void TestTester::EnabledTesterPublishesTheInstrumentOnThisThread()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
    const Facade facade;
    const SignalLog changes(*facade.tester);
    facade.tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(changes.Signals().size(), 5, Patience);
    QCOMPARE(changes.Signals(), Changes("CurrentMeasurementType=0 StartTestStatus=0 DeviceInformation "
                                        "CurrentDateTime CalibrationDateTime"));
    QVERIFY(changes.AreAllOfThisThread());
    QCOMPARE(facade.tester->DeviceInformation()->SerialNumber, QStringLiteral("456789"));
    QCOMPARE(facade.tester->CalibrationDateTime(), QDateTime({2020, 2, 29}, {0, 0}));
}

void TestTester::RepeatedEnablingAndDisablingWorks()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
    const Facade facade;
    for (int cycle = 0; cycle < 4; ++cycle) {
        peer.ClearRequests();
        facade.tester->Enable();
        QTRY_VERIFY_WITH_TIMEOUT(peer.RequestBytes().contains(Wire::ReadCalibrationDate), Patience);
        facade.tester->Disable();
    }
    QCOMPARE(facade.tester->DeviceInformation()->SerialNumber, QStringLiteral("456789"));
}

void TestTester::RequestSetsItsFlagOnce_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("flag");
    QTest::newRow("RestartTester") << Operation([](Tester& tester) { tester.RestartTester(); })
                                   << QStringLiteral("RestartRequested=1");
    QTest::newRow("RetrieveDeviceInformation")
        << Operation([](Tester& tester) { tester.RetrieveDeviceInformation(); })
        << QStringLiteral("DeviceInformationRequested=1");
    QTest::newRow("RetrieveCurrentDateTime")
        << Operation([](Tester& tester) { tester.RetrieveCurrentDateTime(); })
        << QStringLiteral("CurrentDateTimeRequested=1");
    QTest::newRow("RetrieveCalibrationDateTime")
        << Operation([](Tester& tester) { tester.RetrieveCalibrationDateTime(); })
        << QStringLiteral("CalibrationDateTimeRequested=1");
}

void TestTester::RequestSetsItsFlagOnce()
{
    QFETCH(const Operation, operation);
    QFETCH(const QString, flag);
    Facade facade;
    QCOMPARE(facade.ChangesOf(operation), QStringList{flag});
    QCOMPARE(facade.log.Texts(), QStringList{});
    QCOMPARE(facade.ChangesOf(operation), QStringList{});
    QCOMPARE(facade.log.Texts(), QStringList{});
}

namespace
{

void ConfigureCurrent(Tester& tester)
{
    QDateTime value({2024, 3, 7}, {14, 5, 9});
    tester.ConfigureCurrentDateTime(value);
}

void ConfigureCalibration(Tester& tester)
{
    QDateTime value({2024, 3, 7}, {14, 5, 9});
    tester.ConfigureCalibrationDateTime(value);
}

} // namespace

void TestTester::ConfiguredDateIsStoredAndSignalledBeforeItIsRequested_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("cell");
    QTest::newRow("current") << Operation(&ConfigureCurrent) << QStringLiteral("CurrentDateTime");
    QTest::newRow("calibration") << Operation(&ConfigureCalibration) << QStringLiteral("CalibrationDateTime");
}

void TestTester::ConfiguredDateIsStoredAndSignalledBeforeItIsRequested()
{
    QFETCH(const Operation, operation);
    QFETCH(const QString, cell);
    Facade facade;
    const SignalLog changes(*facade.tester);
    QCOMPARE(facade.ChangesOf(operation), (QStringList{cell + QStringLiteral("=2024-03-07 14:05:09"),
                                                       cell + QStringLiteral("ConfigurationRequested=1")}));
    QCOMPARE(changes.Signals(), QStringList{cell});
    QCOMPARE(facade.log.Texts(), QStringList{});
    QCOMPARE(facade.ChangesOf(operation), QStringList{});
    QCOMPARE(changes.Signals(), QStringList{cell});
}

void TestTester::RequestReachesTheWire_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::newRow("RestartTester") << Operation([](Tester& tester) { tester.RestartTester(); })
                                   << QList<QByteArray>{Wire::ChangeToNormalMode};
    QTest::newRow("RetrieveDeviceInformation")
        << Operation([](Tester& tester) { tester.RetrieveDeviceInformation(); })
        << QList<QByteArray>{Wire::ReadVersion};
    QTest::newRow("RetrieveCurrentDateTime")
        << Operation([](Tester& tester) { tester.RetrieveCurrentDateTime(); })
        << QList<QByteArray>{Wire::ReadCurrentDate};
    QTest::newRow("RetrieveCalibrationDateTime")
        << Operation([](Tester& tester) { tester.RetrieveCalibrationDateTime(); })
        << QList<QByteArray>{Wire::ReadCalibrationDate};
    QTest::newRow("ConfigureCurrentDateTime")
        << Operation(&ConfigureCurrent) << QList<QByteArray>{Wire::Bytes("72240307140509ab99")};
    QTest::newRow("ConfigureCalibrationDateTime")
        << Operation(&ConfigureCalibration)
        << QList<QByteArray>{Wire::ChangeToCalibrationMode, Wire::Bytes("74240307000000f1c9"),
                             Wire::ChangeToNormalMode};
}

void TestTester::RequestReachesTheWire()
{
    QFETCH(const Operation, operation);
    QFETCH(const QList<QByteArray>, frames);
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
    const Facade facade;
    facade.tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(peer.RequestBytes().contains(Wire::ReadCalibrationDate), Patience);
    QVERIFY(peer.WaitForRequests(5)); // In monitoring by now.
    peer.ClearRequests();
    operation(*facade.tester);
    const auto others = [&peer]() {
        QList<QByteArray> requests = peer.RequestBytes();
        requests.removeAll(Wire::ReadStatus);
        return requests;
    };
    QTRY_VERIFY_WITH_TIMEOUT(others().size() >= frames.size(), Patience);
    QCOMPARE(others().mid(0, frames.size()), frames);
}

void TestTester::MeasurementModeIsLoggedOnEveryCallAndSignalledOnce()
{
    Facade facade;
    const QStringList line{Red(QStringLiteral("SET MEASUREMENT MODE"))};
    const Operation activate = [](Tester& tester) { tester.SetIsMeasurementModeActive(true); };
    QCOMPARE(facade.ChangesOf(activate), Changes("IsMeasurementModeActive=1"));
    QCOMPARE(facade.log.Texts(), line);
    QCOMPARE(facade.log.Messages().constFirst().type, QtWarningMsg);
    QVERIFY(facade.tester->GetIsMeasurementModeActive());
    QCOMPARE(facade.ChangesOf(activate), QStringList{});
    QCOMPARE(facade.log.Texts(), line);
    QCOMPARE(facade.ChangesOf([](Tester& tester) { tester.SetIsMeasurementModeActive(false); }),
             Changes("IsMeasurementModeActive=0"));
    QCOMPARE(facade.log.Texts(), line);
    QVERIFY(!facade.tester->GetIsMeasurementModeActive());
}

static void AddSettingsRows(const QMap<int, const char*>& suffixByType)
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("suffix");
    for (auto row = suffixByType.cbegin(); row != suffixByType.cend(); ++row) {
        QTest::addRow("type %d", row.key()) << row.key() << QString(QLatin1String(row.value()));
    }
}

void TestTester::PrepareStoresACloneBeforeItIsRequested_data()
{
    AddSettingsRows({{1, " : RLN"}, {3, " : 3"}, {9, " : 9"}, {10, " : 10"}, {11, " : 11"}, {97, " : IEC"}});
}

void TestTester::PrepareStoresACloneBeforeItIsRequested()
{
    QFETCH(const int, type);
    QFETCH(const QString, suffix);
    Facade facade;
    const std::unique_ptr<MeasurementSettings> settings = SettingsOf(static_cast<MeasurementType>(type));
    const QPointer<MeasurementSettings> previous(facade.tester->TestSettings());
    const Operation prepare = [&settings](Tester& tester) { tester.PrepareMeasurement(*settings); };
    QCOMPARE(facade.ChangesOf(prepare), Changes("TestSettings PrepareMeasurementRequested=1"));
    QCOMPARE(facade.log.Texts(), QStringList{Red(QStringLiteral("PREPARE MEASUREMENT") + suffix)});
    QCOMPARE(facade.log.Messages().constFirst().type, QtWarningMsg);
    MeasurementSettings* stored = facade.tester->TestSettings();
    QVERIFY(stored != settings.get());
    QVERIFY(typeid(*stored) == typeid(*settings));
    QCOMPARE(static_cast<int>(stored->GetMeasurementType()), type);
    QVERIFY(previous.isNull());
}

void TestTester::PrepareTwiceWithEqualSettingsReplacesThem()
{
    Facade facade;
    Vesmar::RISOSettings settings;
    settings.SetTime(17);
    const Operation prepare = [&settings](Tester& tester) { tester.PrepareMeasurement(settings); };
    SignalLog changes(*facade.tester);
    QCOMPARE(facade.ChangesOf(prepare), Changes("TestSettings PrepareMeasurementRequested=1"));
    const QPointer<MeasurementSettings> first(facade.tester->TestSettings());
    QCOMPARE(facade.ChangesOf(prepare), Changes("TestSettings"));
    QCOMPARE(facade.log.Texts().size(), 1);
    QCOMPARE(changes.Signals(), Changes("TestSettings TestSettings"));
    QVERIFY(first.isNull());
    QCOMPARE(dynamic_cast<Vesmar::RISOSettings*>(facade.tester->TestSettings())->GetTime(), 17);
}

void TestTester::PrepareKeepsTheOldSettingsUntilTheNewOnesAreSignalled()
{
    const Facade facade;
    Vesmar::RLNSettings settings;
    facade.tester->PrepareMeasurement(settings);
    const QPointer<MeasurementSettings> previous(facade.tester->TestSettings());
    bool wasAliveAtTheSignal = false;
    QObject::connect(
        facade.tester.get(), &Tester::TestSettingsChanged, facade.tester.get(),
        [&](MeasurementSettings* value) { wasAliveAtTheSignal = !previous.isNull() && value != previous; });
    facade.tester->PrepareMeasurement(settings);
    QVERIFY(wasAliveAtTheSignal);
    QVERIFY(previous.isNull());
}

void TestTester::PrepareDeletesTheOldSettingsWhileEnabledToo()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
    const Facade facade;
    facade.tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(peer.RequestBytes().contains(Wire::ReadCalibrationDate), Patience);
    Vesmar::RLNSettings settings;
    facade.tester->PrepareMeasurement(settings);
    const QPointer<MeasurementSettings> previous(facade.tester->TestSettings());
    facade.tester->PrepareMeasurement(settings);
    QTRY_VERIFY_WITH_TIMEOUT(previous.isNull(), Patience);
}

void TestTester::StartWithdrawsAnAbortBeforeItIsRequested()
{
    Facade facade;
    facade.context.AbortMeasurementRequested.Set(true);
    const Operation start = [](Tester& tester) { tester.StartMeasurement(); };
    QCOMPARE(facade.ChangesOf(start), Changes("AbortMeasurementRequested=0 StartMeasurementRequested=1"));
    QCOMPARE(facade.log.Texts(), QStringList{});
}

void TestTester::StartWithoutAnAbortSetsItsFlagAlone()
{
    Facade facade;
    const Operation start = [](Tester& tester) { tester.StartMeasurement(); };
    QCOMPARE(facade.ChangesOf(start), Changes("StartMeasurementRequested=1"));
    QCOMPARE(facade.log.Texts(), QStringList{});
    QCOMPARE(facade.ChangesOf(start), QStringList{});
}

void TestTester::QuickStartPreparesAndThenStarts_data()
{
    AddSettingsRows({{1, " - PREPARE AND START RLN| : RLN"},
                     {9, " - PREPEARE AND START: 9| : 9"},
                     {10, " - PREPEARE AND START: 10| : 10"},
                     {97, " - PREPARE AND START IEC| : IEC"}});
}

void TestTester::QuickStartPreparesAndThenStarts()
{
    QFETCH(const int, type);
    QFETCH(const QString, suffix);
    Facade facade;
    facade.context.AbortMeasurementRequested.Set(true);
    const std::unique_ptr<MeasurementSettings> settings = SettingsOf(static_cast<MeasurementType>(type));
    const Operation start = [&settings](Tester& tester) { tester.StartMeasurement(*settings); };
    QCOMPARE(facade.ChangesOf(start), Changes("TestSettings PrepareMeasurementRequested=1 "
                                              "AbortMeasurementRequested=0 StartMeasurementRequested=1"));
    const QStringList suffixes = suffix.split(QLatin1Char('|'));
    QCOMPARE(facade.log.Texts(), (QStringList{Red(QStringLiteral("QUICK START MEASUREMENT") + suffixes.at(0)),
                                              Red(QStringLiteral("PREPARE MEASUREMENT") + suffixes.at(1))}));
    QCOMPARE(facade.ChangesOf(start), Changes("TestSettings"));
}

void TestTester::AbortActsByTheMeasurementStatus_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isDroppedAtOnce");
    QTest::addColumn<QStringList>("changes");
    const char* const drop = "PrepareMeasurementRequested=0 StartMeasurementRequested=0";
    const QStringList stop =
        Changes(drop) + Changes("MeasurementStatus=-1 MeasurementStatus=7 IsMeasurementRunning=0");
    const QStringList request = Changes("AbortMeasurementRequested=1");
    QTest::newRow("unknown") << -1 << true
                             << Changes(drop) + Changes("MeasurementStatus=7 IsMeasurementRunning=0");
    QTest::newRow("idle") << 0 << true << stop;
    QTest::newRow("preparing") << 1 << false << request;
    QTest::newRow("prepared") << 2 << false << request;
    QTest::newRow("starting") << 3 << false << request;
    QTest::newRow("running") << 4 << false << request + Changes(drop);
    QTest::newRow("measuring") << 5 << false << request + Changes(drop);
    QTest::newRow("stopping") << 6 << false << Changes(drop);
    QTest::newRow("stopped") << 7 << true << stop;
    QTest::newRow("8, which has no name") << 8 << false << QStringList{};
    QTest::newRow("-2, which has no name") << -2 << false << QStringList{};
}

static void RequestEverything(StateMachineContext& context, int status)
{
    context.PrepareMeasurementRequested.Set(true);
    context.StartMeasurementRequested.Set(true);
    context.IsMeasurementRunning.Set(true);
    context.MeasurementStatus.Set(static_cast<MeasurementState>(status));
}

void TestTester::AbortActsByTheMeasurementStatus()
{
    QFETCH(const int, status);
    QFETCH(const bool, isDroppedAtOnce);
    QFETCH(const QStringList, changes);
    for (const MeasurementType type :
         {MeasurementType::None, MeasurementType::RLN, MeasurementType::HVTest}) {
        Facade facade;
        Vesmar::ReplaceOwned(facade.context.TestSettings, SettingsOf(type).release(), nullptr);
        RequestEverything(facade.context, status);
        QCOMPARE(facade.ChangesOf([](Tester& tester) { tester.AbortMeasurement(); }), changes);
        QStringList lines{Red(QStringLiteral("ABORT MEASUREMENT"))};
        if (isDroppedAtOnce) {
            lines += Red(QStringLiteral("STOPPED"));
        }
        QCOMPARE(facade.log.Texts(), lines);
    }
}

void TestTester::AbortInStoppedSignalsTheStatusTwice()
{
    const Facade facade;
    facade.context.MeasurementStatus.Set(MeasurementState::Stopped);
    const SignalLog changes(*facade.tester);
    facade.tester->AbortMeasurement();
    QCOMPARE(changes.Signals(), Changes("MeasurementStatus=-1 MeasurementStatus=7"));
}

void TestTester::AbortWithRCDSettingsAlwaysAsksTheStates_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("status");
    for (const int type : {10, 11}) {
        for (int status = -2; status <= 8; ++status) {
            QTest::addRow("type %d, status %d", type, status) << type << status;
        }
    }
}

void TestTester::AbortWithRCDSettingsAlwaysAsksTheStates()
{
    QFETCH(const int, type);
    QFETCH(const int, status);
    Facade facade;
    Vesmar::ReplaceOwned(facade.context.TestSettings,
                         SettingsOf(static_cast<MeasurementType>(type)).release(), nullptr);
    RequestEverything(facade.context, status);
    const Operation abort = [](Tester& tester) { tester.AbortMeasurement(); };
    QCOMPARE(facade.ChangesOf(abort), Changes("AbortMeasurementRequested=1"));
    QCOMPARE(facade.log.Texts(), QStringList{Red(QStringLiteral("ABORT MEASUREMENT"))});
    QCOMPARE(facade.ChangesOf(abort), QStringList{});
}

QTEST_GUILESS_MAIN(TestTester)
#include "tst_tester.moc"
