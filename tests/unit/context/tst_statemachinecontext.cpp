#include <functional>
#include <memory>
#include <thread>
#include <type_traits>
#include <vector>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "link/transciever.h"
#include "support/cells.h"
#include "unit/states/celllog.h"

using Vesmar::Notifible;
using Vesmar::StateMachineContext;

namespace
{

constexpr int GenerousLimitMs = 30000;

struct Components {
    Vesmar::CRC16 crc16{nullptr};
    Vesmar::Transciever transciever{&crc16, nullptr};
    Vesmar::CommandBuilder commandBuilder{&crc16, nullptr};
    Vesmar::ResponseParser responseParser{&crc16, nullptr};
    StateMachineContext context{&crc16, &transciever, &commandBuilder, &responseParser, nullptr};
};

/// The flags among the cells.
std::vector<Vesmar::ThreadSafeProperty<bool>*> Flags(StateMachineContext& context)
{
    std::vector<Vesmar::ThreadSafeProperty<bool>*> flags;
    ForEachCell(context, [&flags](const char* /*name*/, auto& cell) {
        if constexpr (std::is_same_v<decltype(cell.Get()), bool>) {
            flags.push_back(&cell);
        }
    });
    return flags;
}

/// The changes of `MeasurementTime`, each with the time since the recorder was made.
class TickRecorder
{
public:
    struct Tick {
        int value;
        qint64 atMs;
    };

    explicit TickRecorder(StateMachineContext& context)
    {
        _clock.start();
        QObject::connect(&context.MeasurementTime, &Notifible::ValueChanged, &_receiver, [this, &context] {
            _ticks.push_back({context.MeasurementTime.Get(), _clock.elapsed()});
        });
    }

    const std::vector<Tick>& Ticks() const { return _ticks; }
    std::vector<int> Values() const
    {
        std::vector<int> values;
        for (const Tick& tick : _ticks) {
            values.push_back(tick.value);
        }
        return values;
    }

private:
    QElapsedTimer _clock;
    std::vector<Tick> _ticks;
    QObject _receiver;
};

void RunOnAnotherThread(const std::function<void()>& work)
{
    std::thread thread(work);
    thread.join();
}

} // namespace

class TestStateMachineContext : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ReturnsItsComponents()
    {
        Components components;
        QCOMPARE(components.context.GetCRC16(), &components.crc16);
        QCOMPARE(components.context.GetTransciever(), &components.transciever);
        QCOMPARE(components.context.GetCommandBuilder(), &components.commandBuilder);
        QCOMPARE(components.context.GetResponseParser(), &components.responseParser);
    }

    void HasItsSignalsAndSlots()
    {
        const QMetaObject& metaData = StateMachineContext::staticMetaObject;
        QCOMPARE(metaData.className(), "Vesmar::StateMachineContext");
        QVERIFY(metaData.indexOfSignal("StartMeasurementTimerRequested(int,int)") >= 0);
        QVERIFY(metaData.indexOfSignal("StopMeasurementTimerRequested()") >= 0);
        QVERIFY(metaData.indexOfSlot("OnStartMeasurementTimerRequested(int,int)") >= 0);
        QVERIFY(metaData.indexOfSlot("OnStopMeasurementTimerRequested()") >= 0);
        QVERIFY(metaData.indexOfSlot("MeasurementTimerTick()") >= 0);
    }

    void BeginsWithTheFirstValues()
    {
        Components components;
        StateMachineContext& context = components.context;
        QCOMPARE(context.MeasurementTime.Get(), 0);
        QCOMPARE(static_cast<int>(context.TesterMode.Get()), 0);
        QCOMPARE(static_cast<int>(context.CurrentMeasurementType.Get()), -1);
        QCOMPARE(static_cast<int>(context.StartTestStatus.Get()), -1);
        QCOMPARE(static_cast<int>(context.MeasurementFunctionStatus.Get()), -1);
        QCOMPARE(static_cast<int>(context.ErrorCode.Get()), 15);
        QCOMPARE(context.OperationProgress.Get(), 0);
        QCOMPARE(static_cast<int>(context.OperationStatus.Get()), 0);
        QCOMPARE(static_cast<int>(context.MeasurementStatus.Get()), 0);
        QVERIFY(context.UpdateData.isEmpty());
        QVERIFY(context.UpdateConfirmationData.isEmpty());
    }

    void BeginsWithEveryFlagLowered()
    {
        Components components;
        for (const auto* flag : Flags(components.context)) {
            QCOMPARE(flag->Get(), false);
        }
    }

    void CellsHaveNoParent()
    {
        Components components;
        int count = 0;
        int orphans = 0;
        ForEachCell(components.context, [&](const char* /*name*/, const Notifible& cell) {
            ++count;
            orphans += cell.parent() == nullptr ? 1 : 0;
        });
        QCOMPARE(count, 29);
        QCOMPARE(orphans, 29);
    }

    void BeginsAt2016InLocalTimeAndWithoutACalibration()
    {
        Components components;
        const QDateTime current = components.context.CurrentDateTime.Get();
        QCOMPARE(current.date(), QDate(2016, 1, 1));
        QCOMPARE(current.time(), QTime(0, 0, 0, 0));
        QCOMPARE(current.timeSpec(), Qt::LocalTime);
        QVERIFY(components.context.CalibrationDateTime.Get().isNull());
    }

    void BeginsWithPlaceholderObjects()
    {
        Components components;
        StateMachineContext& context = components.context;
        QVERIFY(context.DeviceInformation.Get() != nullptr);
        QVERIFY(context.DeviceInformation.Get()->parent() == nullptr);
        QCOMPARE(context.DeviceInformation.Get()->DeviceName, QStringLiteral("PAT"));
        QCOMPARE(context.DeviceInformation.Get()->BuildNumber, QStringLiteral("0000"));
        QVERIFY(context.TestResults.Get() != nullptr);
        QVERIFY(context.TestResults.Get()->parent() == nullptr);
        QCOMPARE(static_cast<int>(context.TestResults.Get()->GetMeasurementType()), -1);
        QVERIFY(context.TestSettings.Get() != nullptr);
        QVERIFY(context.TestSettings.Get()->parent() == nullptr);
        QCOMPARE(static_cast<int>(context.TestSettings.Get()->GetMeasurementType()), -1);
    }

    void HasAnIdleTimerOfOneSecondOfItsOwn()
    {
        Components components;
        const QTimer* timer = components.context.GetMeasurementTimer();
        QVERIFY(timer != nullptr);
        QCOMPARE(timer->parent(), &components.context);
        QCOMPARE(timer->interval(), 1000);
        QVERIFY(!timer->isActive());
    }

    void ResetChangesTheMeasurementStatusAlone()
    {
        Components components;
        StateMachineContext& context = components.context;
        for (auto* flag : Flags(context)) {
            flag->Set(true);
        }
        context.MeasurementTime.Set(11);
        context.OperationProgress.Set(12);
        context.TesterMode.Set(Vesmar::OperationMode::Update);
        context.CurrentMeasurementType.Set(Vesmar::MeasurementType::RISO);
        context.StartTestStatus.Set(Vesmar::StartTestResult::Status14);
        context.MeasurementFunctionStatus.Set(Vesmar::FunctionState::Running);
        context.ErrorCode.Set(Vesmar::Error::PrepareFailed);
        context.OperationStatus.Set(Vesmar::OperationState::InProgress);
        context.MeasurementStatus.Set(Vesmar::MeasurementState::Measuring);
        context.CalibrationDateTime.Set(QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9)));
        context.UpdateData = "image";
        context.UpdateConfirmationData = "confirmation";

        const CellLog cells(context);
        context.ResetAllProperty();
        QCOMPARE(cells.Changes(), Changes("MeasurementStatus=0"));
        QCOMPARE(context.UpdateData, QByteArray("image"));
        QCOMPARE(context.UpdateConfirmationData, QByteArray("confirmation"));
    }

    void StoresAnUpdateWithoutTouchingACell()
    {
        Components components;
        StateMachineContext& context = components.context;
        const CellLog cells(context);
        context.SetUpdate("image", "confirmation");
        QCOMPARE(context.UpdateData, QByteArray("image"));
        QCOMPARE(context.UpdateConfirmationData, QByteArray("confirmation"));
        context.SetUpdate("next image", {});
        const Vesmar::FirmwareUpdate update = context.GetUpdate();
        QCOMPARE(update.image, QByteArray("next image"));
        QCOMPARE(update.confirmation, QByteArray());
        QCOMPARE(cells.Changes(), QStringList());
    }

    void SharesTheUpdateUntilOneSideWrites()
    {
        Components components;
        QByteArray image(512, 'i');
        QByteArray confirmation("cc");
        components.context.SetUpdate(image, confirmation);
        Vesmar::FirmwareUpdate update = components.context.GetUpdate();
        QCOMPARE(update.image.constData(), image.constData());
        QCOMPARE(update.confirmation.constData(), confirmation.constData());

        image[0] = 'x';
        confirmation.clear();
        update.image.append('y');
        update.confirmation[1] = 'z';
        QCOMPARE(components.context.GetUpdate().image, QByteArray(512, 'i'));
        QCOMPARE(components.context.GetUpdate().confirmation, QByteArray("cc"));
    }

    void DeletesThePublishedObjectsAtItsEnd()
    {
        int destroyed = 0;
        {
            Components components;
            const auto count = [&destroyed] { ++destroyed; };
            connect(components.context.DeviceInformation.Get(), &QObject::destroyed, this, count);
            connect(components.context.TestResults.Get(), &QObject::destroyed, this, count);
            connect(components.context.TestSettings.Get(), &QObject::destroyed, this, count);
        }
        QCOMPARE(destroyed, 3);
    }

    void AsksForTheTimerWithTheOffsetInMilliseconds_data()
    {
        QTest::addColumn<float>("offsetSeconds");
        QTest::addColumn<int>("milliseconds");
        QTest::newRow("3.5 s") << 3.5F << 3500;
        QTest::newRow("nothing") << 0.0F << 0;
        QTest::newRow("half a millisecond more is cut off") << 0.0015F << 1;
        QTest::newRow("nearly a millisecond is cut off") << 0.00099F << 0;
        QTest::newRow("negative, cut off towards zero") << -0.0015F << -1;
        QTest::newRow("a minute") << 60.25F << 60250;
    }

    void AsksForTheTimerWithTheOffsetInMilliseconds()
    {
        QFETCH(const float, offsetSeconds);
        QFETCH(const int, milliseconds);
        Components components;
        QSignalSpy requests(&components.context, &StateMachineContext::StartMeasurementTimerRequested);
        components.context.StartMeasurementTimer(10, offsetSeconds);
        QCOMPARE(requests.count(), 1);
        QCOMPARE(requests.first(), QList<QVariant>({10, milliseconds}));
    }

    void AsksForTheTimerWithoutAnOffset()
    {
        Components components;
        QSignalSpy starts(&components.context, &StateMachineContext::StartMeasurementTimerRequested);
        QSignalSpy stops(&components.context, &StateMachineContext::StopMeasurementTimerRequested);
        components.context.StartMeasurementTimer(-1);
        QCOMPARE(starts.count(), 1);
        QCOMPARE(starts.first(), QList<QVariant>({-1, 0}));
        QCOMPARE(stops.count(), 0);
        components.context.StopMeasurementTimer();
        QCOMPARE(stops.count(), 1);
    }

    void ClearsTheElapsedFlagAtOnceWhenTheTimerIsAskedFor()
    {
        Components components;
        StateMachineContext& context = components.context;
        context.MeasurementTimeElapsed.Set(true);
        RunOnAnotherThread([&] { context.StartMeasurementTimer(5); });
        QCOMPARE(context.MeasurementTimeElapsed.Get(), false);

        context.MeasurementTimeElapsed.Set(true);
        RunOnAnotherThread([&] { context.StartMeasurementTimer(5, 3.5F); });
        QCOMPARE(context.MeasurementTimeElapsed.Get(), false);
    }

    void ClearsTheElapsedFlagWhenTheTimerStarts()
    {
        Components components;
        components.context.MeasurementTimeElapsed.Set(true);
        components.context.OnStartMeasurementTimerRequested(5, 0);
        QCOMPARE(components.context.MeasurementTimeElapsed.Get(), false);
    }

    void StartsWithTheOffsetOnTopOfTheFirstSecond()
    {
        Components components;
        const QTimer* timer = components.context.GetMeasurementTimer();
        components.context.StartMeasurementTimer(5);
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 1000);
        components.context.StartMeasurementTimer(10, 3.5F);
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 4500);
        components.context.StopMeasurementTimer();
        QVERIFY(!timer->isActive());
    }

    void KeepsTheMeasurementTimeUntilTheFirstTick()
    {
        Components components;
        StateMachineContext& context = components.context;
        context.MeasurementTime.Set(9);
        context.StartMeasurementTimer(5);
        QCOMPARE(context.MeasurementTime.Get(), 9);
        QTRY_VERIFY_WITH_TIMEOUT(context.MeasurementTime.Get() != 9, GenerousLimitMs);
        QCOMPARE(context.MeasurementTime.Get(), 1);
    }

    void TicksOnceASecondUntilTheLimit()
    {
        Components components;
        StateMachineContext& context = components.context;
        const TickRecorder recorder(context);
        std::vector<int> elapsedAt;
        connect(&context.MeasurementTimeElapsed, &Notifible::ValueChanged, this,
                [&] { elapsedAt.push_back(context.MeasurementTime.Get()); });

        context.StartMeasurementTimer(3);
        QTRY_VERIFY_WITH_TIMEOUT(context.MeasurementTimeElapsed.Get(), GenerousLimitMs);

        QCOMPARE(recorder.Values(), std::vector<int>({1, 2, 3}));
        for (const TickRecorder::Tick& tick : recorder.Ticks()) {
            QCOMPARE(tick.atMs, qint64(1000) * tick.value);
        }
        QCOMPARE(elapsedAt, std::vector<int>({3}));
        QVERIFY2(!context.GetMeasurementTimer()->isActive(), "another tick would follow");
    }

    void ALimitOfZeroEndsWithTheFirstTick()
    {
        Components components;
        StateMachineContext& context = components.context;
        context.StartMeasurementTimer(0);
        QCOMPARE(context.MeasurementTimeElapsed.Get(), false);
        QTRY_VERIFY_WITH_TIMEOUT(context.MeasurementTimeElapsed.Get(), GenerousLimitMs);
        QCOMPARE(context.MeasurementTime.Get(), 1);
        QVERIFY(!context.GetMeasurementTimer()->isActive());
    }

    /// Seconds in which no event loop runs become one tick.
    void ABlockedEventLoopProlongsTheTime()
    {
        constexpr unsigned long BlockedMs = 2100;
        Components components;
        StateMachineContext& context = components.context;
        context.StartMeasurementTimer(2);
        QThread::msleep(BlockedMs);
        QCoreApplication::processEvents();
        QCOMPARE(context.MeasurementTime.Get(), 1);
        QVERIFY(!context.MeasurementTimeElapsed.Get());
        QTRY_VERIFY_WITH_TIMEOUT(context.MeasurementTimeElapsed.Get(), GenerousLimitMs);
    }

    void TheOffsetDelaysTheFirstTickAlone()
    {
        Components components;
        StateMachineContext& context = components.context;
        const TickRecorder recorder(context);
        context.StartMeasurementTimer(10, 0.5F);
        QTRY_COMPARE_WITH_TIMEOUT(context.MeasurementTime.Get(), 1, GenerousLimitMs);
        QCOMPARE(recorder.Ticks().front().atMs, qint64(1500));
        QCOMPARE(context.GetMeasurementTimer()->interval(), 1000);
        QVERIFY(context.GetMeasurementTimer()->isActive());
        QCOMPARE(context.MeasurementTimeElapsed.Get(), false);
    }

    void ANegativeLimitCountsUntilItIsStopped()
    {
        Components components;
        StateMachineContext& context = components.context;
        const TickRecorder recorder(context);
        context.StartMeasurementTimer(-1);
        QTRY_COMPARE_WITH_TIMEOUT(context.MeasurementTime.Get(), 2, GenerousLimitMs);
        QVERIFY(context.GetMeasurementTimer()->isActive());
        QCOMPARE(context.MeasurementTimeElapsed.Get(), false);
        context.StopMeasurementTimer();
        QVERIFY(!context.GetMeasurementTimer()->isActive());
        QCOMPARE(recorder.Values(), std::vector<int>({1, 2}));
    }

    void AnotherStartCountsFromZeroWithItsOwnOffset()
    {
        Components components;
        StateMachineContext& context = components.context;
        context.StartMeasurementTimer(10);
        QTRY_COMPARE_WITH_TIMEOUT(context.MeasurementTime.Get(), 2, GenerousLimitMs);

        const TickRecorder recorder(context);
        context.StartMeasurementTimer(2, 0.5F);
        QTRY_VERIFY_WITH_TIMEOUT(context.MeasurementTimeElapsed.Get(), GenerousLimitMs);
        QCOMPARE(recorder.Values(), std::vector<int>({1, 2}));
        QCOMPARE(recorder.Ticks().front().atMs, qint64(1500));
    }

    void KeepsTheCountWhenStopped()
    {
        Components components;
        StateMachineContext& context = components.context;
        context.OnStartMeasurementTimerRequested(10, 0);
        context.MeasurementTimerTick();
        context.MeasurementTimerTick();
        context.OnStopMeasurementTimerRequested();
        QCOMPARE(context.MeasurementTime.Get(), 2);
        context.MeasurementTimerTick();
        QCOMPARE(context.MeasurementTime.Get(), 3);
    }

    void TheWorkersStartAndStopHappenOnTheContextsThreadInOrder()
    {
        Components components;
        StateMachineContext& context = components.context;
        const QTimer* timer = context.GetMeasurementTimer();

        RunOnAnotherThread([&] { context.StartMeasurementTimer(5); });
        QVERIFY2(!timer->isActive(), "started on the worker's thread");
        QTRY_VERIFY(timer->isActive());
        QCOMPARE(timer->thread(), QThread::currentThread());

        RunOnAnotherThread([&] {
            context.StartMeasurementTimer(7, 2.0F);
            context.StopMeasurementTimer();
        });
        QTRY_VERIFY(!timer->isActive());
        QCOMPARE(timer->interval(), 3000);

        RunOnAnotherThread([&] {
            context.StopMeasurementTimer();
            context.StartMeasurementTimer(5);
        });
        QTRY_VERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 1000);
    }

    void ATickIsTheTimersOwnSlot()
    {
        Components components;
        StateMachineContext& context = components.context;
        context.OnStartMeasurementTimerRequested(2, 60000);
        QCOMPARE(context.GetMeasurementTimer()->interval(), 61000);
        context.MeasurementTimerTick();
        QCOMPARE(context.GetMeasurementTimer()->interval(), 1000);
        QCOMPARE(context.MeasurementTime.Get(), 1);
        QCOMPARE(context.MeasurementTimeElapsed.Get(), false);
        context.MeasurementTimerTick();
        QCOMPARE(context.MeasurementTime.Get(), 2);
        QCOMPARE(context.MeasurementTimeElapsed.Get(), true);
        QVERIFY(!context.GetMeasurementTimer()->isActive());
    }
};

QTEST_GUILESS_MAIN(TestStateMachineContext)
#include "tst_statemachinecontext.moc"
