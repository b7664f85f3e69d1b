#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <typeinfo>

#include <QCoreApplication>
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
#include "unit/machine/conditions.h"
#include "virtualtime/virtualtime.h"

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::StateMachineContext;
using Vesmar::Tester;
using Vesmar::TesterInformation;
using VirtualTime::ThreadCount;

Q_DECLARE_METATYPE(Operation)

namespace
{

/// A property: its name and type, and a change of its cell, which is also the signal that follows.
struct Property {
    const char* name;
    const char* type;
    const char* change;
};

/// The fifteen properties, in the order of the interface.
const QList<Property> Properties = {
    {"DeviceInformation", "TesterInformation*", "DeviceInformation"},
    {"TesterMode", "OperationMode", "TesterMode=9"},
    {"CurrentDateTime", "QDateTime", "CurrentDateTime"},
    {"CalibrationDateTime", "QDateTime", "CalibrationDateTime"},
    {"StartTestStatus", "StartTestResult", "StartTestStatus=14"},
    {"MeasurementFunctionStatus", "FunctionState", "MeasurementFunctionStatus=12"},
    {"ErrorCode", "Error", "ErrorCode=521"},
    {"TestSettings", "MeasurementSettings*", "TestSettings"},
    {"TestResults", "MeasurementResults*", "TestResults"},
    {"IsMeasurementRunning", "bool", "IsMeasurementRunning=1"},
    {"MeasurementStatus", "MeasurementState", "MeasurementStatus=6"},
    {"MeasurementTime", "int", "MeasurementTime=42"},
    {"OperationProgress", "int", "OperationProgress=77"},
    {"CurrentMeasurementType", "MeasurementType", "CurrentMeasurementType=31"},
    {"OperationStatus", "OperationState", "OperationStatus=3"},
};

void Change(StateMachineContext& context, const QByteArray& change)
{
    if (change == "DeviceInformation") {
        Vesmar::ReplaceOwned(context.DeviceInformation, new Vesmar::TesterInformation(nullptr));
    } else if (change == "CurrentDateTime") {
        context.CurrentDateTime.Set(QDateTime({2024, 3, 7}, {14, 5, 9}));
    } else if (change == "CalibrationDateTime") {
        context.CalibrationDateTime.Set(QDateTime({2023, 3, 7}, {0, 0}));
    } else if (change == "TestSettings") {
        SetCells(context, "Settings=1");
    } else if (change == "TestResults") {
        SetCells(context, "Results=1");
    } else {
        SetCells(context, change);
    }
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

static void AddSettingsRows(const QMap<int, const char*>& suffixByType)
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("suffix");
    for (auto row = suffixByType.cbegin(); row != suffixByType.cend(); ++row) {
        QTest::addRow("type %d", row.key()) << row.key() << QString(QLatin1String(row.value()));
    }
}

class TestTester : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void InstanceIsOneObjectUntilItIsDeleted()
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

    void FreshTesterReportsTheDefaults()
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

    void DeletionInEveryStateEndsEveryThread_data()
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

    void DeletionInEveryStateEndsEveryThread()
    {
        QFETCH(const Operation, prepare);
        const int threadsBefore = ThreadCount();
        {
            ScriptedPeer peer;
            peer.Answer(&AnswerInNormalMode);
            const Facade facade;
            prepare(*facade.tester);
        }
        QTRY_VERIFY(ThreadCount() <= threadsBefore);
    }

    void MetaObjectListsThePropertiesInOrder()
    {
        const QMetaObject& meta = Tester::staticMetaObject;
        QCOMPARE(meta.className(), "Vesmar::Tester");
        QCOMPARE(meta.propertyCount() - meta.propertyOffset(), Properties.size());
        int index = meta.propertyOffset();
        for (const Property& expected : Properties) {
            const QMetaProperty property = meta.property(index++);
            QCOMPARE(property.name(), expected.name);
            QByteArray type = property.typeName();
            if (QT_VERSION_MAJOR > 5) {
                type.replace("Vesmar::", ""); // Qt 6 tells the whole name.
            }
            QCOMPARE(type, QByteArray(expected.type));
            QVERIFY(property.isReadable());
            QVERIFY(!property.isWritable());
            QVERIFY(!property.isResettable());
            QVERIFY(property.hasNotifySignal());
            QCOMPARE(property.notifySignal().methodSignature(),
                     QByteArray(expected.name) + "Changed(" + expected.type + ')');
        }
    }

    void MetaObjectListsTheSignalsAndThenTheSlotsInOrderAndNothingElse()
    {
        const QMetaObject& meta = Tester::staticMetaObject;
        const int offset = meta.methodOffset();
        const int count = Properties.size();
        QCOMPARE(meta.methodCount() - offset, 2 * count);
        for (int index = 0; index < count; ++index) {
            const Property& property = Properties.at(index);
            const QMetaMethod signal = meta.method(offset + index);
            QCOMPARE(signal.methodType(), QMetaMethod::Signal);
            QCOMPARE(signal.methodSignature(), QByteArray(property.name) + "Changed(" + property.type + ')');
            const QMetaMethod slot = meta.method(offset + count + index);
            QCOMPARE(slot.methodType(), QMetaMethod::Slot);
            QCOMPARE(slot.access(), QMetaMethod::Public);
            QCOMPARE(slot.methodSignature(), QByteArray("Update") + property.name + "()");
        }
    }

    void PointerTypesAreRegisteredAndEnumerationsAreNot()
    {
        if (QT_VERSION_MAJOR > 5) {
            QSKIP("Qt 6 registers the type of every property by itself.");
        }
        const QMetaObject& meta = Tester::staticMetaObject;
        for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
            const QMetaProperty property = meta.property(index);
            const QByteArray type = property.typeName();
            if (type.endsWith('*')) {
                QVERIFY2(QMetaType::typeFlags(property.userType()).testFlag(QMetaType::PointerToQObject),
                         type);
            } else if (type != "QDateTime" && type != "bool" && type != "int") {
                QCOMPARE(property.userType(), static_cast<int>(QMetaType::UnknownType));
                QCOMPARE(QMetaType::type("Vesmar::" + type), static_cast<int>(QMetaType::UnknownType));
            }
        }
    }

    void EachChangeOfACellIsSignalledAtOnceAndOnce()
    {
        for (const Property& property : Properties) {
            const Facade facade;
            const SignalLog changes(*facade.tester);
            Change(facade.context, property.change);
            QCOMPARE(changes.Signals(), Changes(property.change));
            QCoreApplication::processEvents();
            QCOMPARE(changes.Signals(), Changes(property.change));
        }
    }

    void EachSlotEmitsItsSignalWithThePresentValue()
    {
        for (const Property& property : Properties) {
            const Facade facade;
            Change(facade.context, property.change);
            const SignalLog changes(*facade.tester);
            QVERIFY(QMetaObject::invokeMethod(facade.tester.get(), QByteArray("Update") + property.name));
            QCOMPARE(changes.Signals(), Changes(property.change));
        }
    }

    void ChangesOnAnotherThreadSignalHereWithTheValueThatIsThere()
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

    void MeasurementTimeIsLoggedBeforeItsSignal()
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

    void SecondEnableAndSecondDisableDoNothing()
    {
        const ScriptedPeer peer; // It stays silent, so that the first query waits during the whole test.
        Facade facade;
        const Operation enable = [](Tester& tester) { tester.Enable(); };
        const Operation disable = [](Tester& tester) { tester.Disable(); };
        QCOMPARE(facade.ChangesOf(disable), QStringList{});
        QCOMPARE(facade.log.Texts(), QStringList{});
        QVERIFY(!facade.tester->IsEnabled());

        enable(*facade.tester);
        QVERIFY(facade.tester->IsEnabled());
        QVERIFY(peer.WaitForRequests(1));
        facade.context.MeasurementStatus.Set(MeasurementState::Prepared);
        const int threads = ThreadCount();
        QCOMPARE(facade.ChangesOf(enable), QStringList{});
        QCOMPARE(facade.log.Texts(), QStringList{});
        QCOMPARE(ThreadCount(), threads);
        QVERIFY(facade.tester->IsEnabled());

        disable(*facade.tester);
        QVERIFY(!facade.tester->IsEnabled());
    }

    void EnabledTesterPublishesTheInstrumentOnThisThread()
    {
        ScriptedPeer peer;
        peer.Answer(&AnswerInNormalMode);
        const Facade facade;
        const SignalLog changes(*facade.tester);
        facade.tester->Enable();
        QTRY_COMPARE_WITH_TIMEOUT(changes.Signals().size(), 5, Patience);
        QCOMPARE(changes.Signals(), Changes("CurrentMeasurementType=0 StartTestStatus=14 DeviceInformation "
                                            "CurrentDateTime CalibrationDateTime"));
        QVERIFY(changes.AreAllOfThisThread());
        QCOMPARE(facade.tester->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
        QCOMPARE(facade.tester->CalibrationDateTime(), QDateTime({2024, 2, 15}, {0, 0}));
    }

    void RepeatedEnablingAndDisablingWorks()
    {
        ScriptedPeer peer;
        peer.Answer(&AnswerInNormalMode);
        const Facade facade;
        for (int cycle = 0; cycle < 4; ++cycle) {
            peer.ClearRequests();
            facade.tester->Enable();
            QTRY_VERIFY_WITH_TIMEOUT(peer.RequestBytes().contains(Wire::ReadCalibrationDate), Patience);
            facade.tester->Disable();
        }
        QCOMPARE(facade.tester->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
    }

    void RequestSetsItsFlagOnceAndReachesTheWire_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QStringList>("changes");
        QTest::addColumn<QList<QByteArray>>("frames");
        const QDateTime date({2024, 3, 7}, {14, 5, 9});
        QTest::newRow("RestartTester")
            << Operation([](Tester& tester) { tester.RestartTester(); }) << Changes("RestartRequested=1")
            << QList<QByteArray>{Wire::ChangeToNormalMode};
        QTest::newRow("RetrieveDeviceInformation")
            << Operation([](Tester& tester) { tester.RetrieveDeviceInformation(); })
            << Changes("DeviceInformationRequested=1") << QList<QByteArray>{Wire::ReadVersion};
        QTest::newRow("RetrieveCurrentDateTime")
            << Operation([](Tester& tester) { tester.RetrieveCurrentDateTime(); })
            << Changes("CurrentDateTimeRequested=1") << QList<QByteArray>{Wire::ReadCurrentDate};
        QTest::newRow("RetrieveCalibrationDateTime")
            << Operation([](Tester& tester) { tester.RetrieveCalibrationDateTime(); })
            << Changes("CalibrationDateTimeRequested=1") << QList<QByteArray>{Wire::ReadCalibrationDate};
        // A date is stored, and signalled, before its flag is set.
        QTest::newRow("ConfigureCurrentDateTime")
            << Operation([date](Tester& tester) { tester.ConfigureCurrentDateTime(date); })
            << QStringList{QStringLiteral("CurrentDateTime=2024-03-07 14:05:09"),
                           QStringLiteral("CurrentDateTimeConfigurationRequested=1")}
            << QList<QByteArray>{Wire::Bytes("72240307140509ab99")};
        QTest::newRow("ConfigureCalibrationDateTime")
            << Operation([date](Tester& tester) { tester.ConfigureCalibrationDateTime(date); })
            << QStringList{QStringLiteral("CalibrationDateTime=2024-03-07 14:05:09"),
                           QStringLiteral("CalibrationDateTimeConfigurationRequested=1")}
            << QList<QByteArray>{Wire::ChangeToCalibrationMode, Wire::Bytes("74240307000000f1c9"),
                                 Wire::ChangeToNormalMode};
    }

    void RequestSetsItsFlagOnceAndReachesTheWire()
    {
        QFETCH(const Operation, operation);
        QFETCH(const QStringList, changes);
        QFETCH(const QList<QByteArray>, frames);
        {
            Facade facade;
            const SignalLog signalled(*facade.tester);
            QCOMPARE(facade.ChangesOf(operation), changes);
            QCOMPARE(facade.ChangesOf(operation), QStringList{});
            QCOMPARE(facade.log.Texts(), QStringList{});
            QCOMPARE(signalled.Signals().size(), changes.size() - 1);
        }
        ScriptedPeer peer;
        peer.Answer(&AnswerInNormalMode);
        const Facade facade;
        facade.tester->Enable();
        QTRY_VERIFY_WITH_TIMEOUT(peer.RequestBytes().contains(Wire::ReadCalibrationDate), Patience);
        QVERIFY(peer.WaitForRequests(5)); // The machine is in monitoring by now.
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

    void MeasurementModeIsLoggedOnEveryCallAndSignalledOnce()
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

    void PrepareStoresACloneBeforeItIsRequested_data()
    {
        AddSettingsRows(
            {{1, " : RLN"}, {3, " : 3"}, {9, " : 9"}, {10, " : 10"}, {11, " : 11"}, {97, " : IEC"}});
    }

    void PrepareStoresACloneBeforeItIsRequested()
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

    void PrepareTwiceWithEqualSettingsReplacesThem()
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

    void PrepareKeepsTheOldSettingsUntilTheNewOnesAreSignalled()
    {
        const Facade facade;
        Vesmar::RLNSettings settings;
        facade.tester->PrepareMeasurement(settings);
        const QPointer<MeasurementSettings> previous(facade.tester->TestSettings());
        bool wasAliveAtTheSignal = false;
        QObject::connect(facade.tester.get(), &Tester::TestSettingsChanged, facade.tester.get(),
                         [&](MeasurementSettings* value) {
                             wasAliveAtTheSignal = !previous.isNull() && value != previous;
                         });
        facade.tester->PrepareMeasurement(settings);
        QVERIFY(wasAliveAtTheSignal);
        QVERIFY(previous.isNull());
    }

    void PrepareDeletesTheOldSettingsOnThisThreadWhileEnabledToo()
    {
        ScriptedPeer peer;
        peer.Answer(&AnswerInNormalMode);
        const Facade facade;
        facade.tester->Enable();
        QTRY_VERIFY_WITH_TIMEOUT(peer.RequestBytes().contains(Wire::ReadCalibrationDate), Patience);
        Vesmar::RLNSettings settings;
        facade.tester->PrepareMeasurement(settings);
        std::atomic<QThread*> deletedOn{nullptr};
        QObject::connect(
            facade.tester->TestSettings(), &QObject::destroyed, facade.tester.get(),
            [&deletedOn] { deletedOn = QThread::currentThread(); }, Qt::DirectConnection);
        facade.tester->PrepareMeasurement(settings);
        QVERIFY(deletedOn == nullptr); // The worker may still hold it.
        QTRY_VERIFY_WITH_TIMEOUT(deletedOn != nullptr, Patience);
        QCOMPARE(deletedOn.load(), QThread::currentThread());
    }

    void PreparedSettingsThatWereReplacedAreDeletedWithTheDisable()
    {
        const ScriptedPeer peer; // It answers nothing, so that the worker ends no step.
        const Facade facade;
        facade.tester->Enable();
        QVERIFY(peer.WaitForRequests(1));
        Vesmar::RLNSettings settings;
        const QPointer<MeasurementSettings> previous(facade.tester->TestSettings());
        facade.tester->PrepareMeasurement(settings);
        QVERIFY(!previous.isNull());
        facade.tester->Disable();
        QVERIFY(previous.isNull());
    }

    void StartWithdrawsAnAbortAndSetsItsFlagOnce()
    {
        Facade facade;
        facade.context.AbortMeasurementRequested.Set(true);
        const Operation start = [](Tester& tester) { tester.StartMeasurement(); };
        QCOMPARE(facade.ChangesOf(start), Changes("AbortMeasurementRequested=0 StartMeasurementRequested=1"));
        QCOMPARE(facade.log.Texts(), QStringList{});
        QCOMPARE(facade.ChangesOf(start), QStringList{});
    }

    void QuickStartPreparesAndThenStarts_data()
    {
        AddSettingsRows({{1, " - PREPARE AND START RLN| : RLN"},
                         {9, " - PREPEARE AND START: 9| : 9"},
                         {10, " - PREPEARE AND START: 10| : 10"},
                         {97, " - PREPARE AND START IEC| : IEC"}});
    }

    void QuickStartPreparesAndThenStarts()
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
        QCOMPARE(facade.log.Texts(),
                 (QStringList{Red(QStringLiteral("QUICK START MEASUREMENT") + suffixes.at(0)),
                              Red(QStringLiteral("PREPARE MEASUREMENT") + suffixes.at(1))}));
        QCOMPARE(facade.ChangesOf(start), Changes("TestSettings"));
    }

    void AbortActsByTheMeasurementStatus_data()
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

    void AbortActsByTheMeasurementStatus()
    {
        QFETCH(const int, status);
        QFETCH(const bool, isDroppedAtOnce);
        QFETCH(const QStringList, changes);
        const Operation abort = [](Tester& tester) { tester.AbortMeasurement(); };
        const QString asked = Red(QStringLiteral("ABORT MEASUREMENT"));
        const auto prepare = [status](Facade& facade, int function) {
            SetCells(facade.context,
                     "PrepareMeasurementRequested StartMeasurementRequested IsMeasurementRunning "
                     "MeasurementStatus=" +
                         QByteArray::number(status) + " Settings=" + QByteArray::number(function));
        };
        for (const int function : {-1, 1, 9}) {
            Facade facade;
            prepare(facade, function);
            QCOMPARE(facade.ChangesOf(abort), changes);
            QCOMPARE(facade.log.Texts(), isDroppedAtOnce
                                             ? QStringList({asked, Red(QStringLiteral("STOPPED"))})
                                             : QStringList{asked});
        }
        for (const int function : {10, 11}) { // The states of the RCD tests decide for themselves.
            Facade facade;
            prepare(facade, function);
            QCOMPARE(facade.ChangesOf(abort), Changes("AbortMeasurementRequested=1"));
            QCOMPARE(facade.log.Texts(), QStringList{asked});
            QCOMPARE(facade.ChangesOf(abort), QStringList{});
        }
    }

    void AbortInStoppedSignalsTheStatusTwice()
    {
        const Facade facade;
        facade.context.MeasurementStatus.Set(MeasurementState::Stopped);
        const SignalLog changes(*facade.tester);
        facade.tester->AbortMeasurement();
        QCOMPARE(changes.Signals(), Changes("MeasurementStatus=-1 MeasurementStatus=7"));
    }
};

QTEST_GUILESS_MAIN(TestTester)
#include "tst_tester.moc"
