#include <QtTest>

#include "simulator/model/measurementfunction.h"

using namespace std::chrono_literals;
using Simulator::FunctionTimings;
using Simulator::Measurement;
using Simulator::MeasurementFunction;
using Simulator::Scenario;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

// Preparing takes 150 ms, then there are 50 ms from an accepted start to starting, and 150 ms of that.
constexpr milliseconds PreparedAt = 150ms;
constexpr milliseconds StartedAt = 200ms;
constexpr milliseconds StartingAt = 250ms;
constexpr milliseconds RunningAt = 400ms;

TimePoint At(milliseconds time)
{
    return TimePoint() + time;
}

using States = QVector<int>;

/// States and the times at which they are reported.
using Course = QVector<std::pair<milliseconds, int>>;

/// A function whose status is read now and then.
class WatchedFunction
{
public:
    explicit WatchedFunction(Scenario scenario = Scenario::None) { _function.SetScenario(scenario); }

    MeasurementFunction* operator->() { return &_function; }

    /// Reads the status and returns the state in it.
    int StateAt(milliseconds time)
    {
        const int state = UnseenStateAt(time);
        _function.MarkReported(At(time));
        return state;
    }

    QVector<int> StatesAt(std::initializer_list<milliseconds> times)
    {
        QVector<int> states;
        for (const milliseconds time : times) {
            states.append(StateAt(time));
        }
        return states;
    }

    int UnseenStateAt(milliseconds time)
    {
        _function.Advance(At(time));
        return static_cast<int>(_function.State());
    }

    void StopAt(milliseconds time)
    {
        _function.Advance(At(time));
        _function.Stop(At(time));
    }

    /// Prepares at 0 ms and starts at 200 ms; the status reports nothing but prepared.
    bool BringToStart(Measurement measurement)
    {
        return _function.Prepare(measurement, At(0ms)) && StateAt(PreparedAt) == 4 &&
               StateAt(StartedAt) == 4 && _function.Start(At(StartedAt));
    }

private:
    MeasurementFunction _function{FunctionTimings(), 1};
};

} // namespace

Q_DECLARE_METATYPE(Measurement)
Q_DECLARE_METATYPE(Scenario)
Q_DECLARE_METATYPE(Course)

class TestMeasurementFunction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NothingIsSelectedAtFirst()
    {
        WatchedFunction function;
        QVERIFY(!function->IsSelected());
        QCOMPARE(function->Number(), 0);
        QCOMPARE(function.StateAt(1000ms), 0);
        QVERIFY(!function->HasNewResult());
        QVERIFY(!function->NextChangeAt().has_value());
        QCOMPARE(function->CollectChanges(), QStringList());
    }

    void Courses_data()
    {
        QTest::addColumn<Scenario>("scenario");
        QTest::addColumn<Measurement>("measurement");
        QTest::addColumn<Course>("course");
        QTest::addColumn<QString>("lastChange");
        const auto row = [](const char* name, Scenario scenario, Measurement measurement,
                            const Course& course, const char* lastChange) {
            QTest::newRow(name) << scenario << measurement << course << QString::fromLatin1(lastChange);
        };
        row("start after a delay", Scenario::None, Measurement::HvTest,
            {{StartingAt - 1ms, 4}, {StartingAt, 5}, {RunningAt - 1ms, 5}, {RunningAt, 7}},
            "function 9 running");
        row("single", Scenario::None, Measurement::Rln,
            {{RunningAt, 7}, {RunningAt + 999ms, 7}, {RunningAt + 1000ms, 2}, {3600000ms, 2}},
            "function 1 completed");
        row("prepare error", Scenario::PrepareError, Measurement::Rln,
            {{0ms, 1}, {149ms, 1}, {150ms, 3}, {60000ms, 3}}, "function 1 failed to prepare");
        row("never prepared", Scenario::NeverPrepared, Measurement::Rpe, {{0ms, 1}, {3600000ms, 1}},
            "function 2 preparing");
        row("start error", Scenario::StartError, Measurement::HvTest,
            {{StartingAt, 5}, {RunningAt - 1ms, 5}, {RunningAt, 6}, {60000ms, 6}},
            "function 9 failed to start");
        row("fast single is nothing to continuous", Scenario::FastSingle, Measurement::Rpe,
            {{StartingAt, 5}, {RunningAt, 7}}, "function 2 running");
        for (const Measurement measurement : {Measurement::Rln, Measurement::Riso, Measurement::HvTest}) {
            const int number = Simulator::FunctionNumber(measurement);
            QTest::addRow("function %d without a result", number)
                << Scenario::EndsWithoutResult << measurement
                << Course{{RunningAt, 7}, {RunningAt + 299ms, 7}, {RunningAt + 300ms, 9}}
                << QStringLiteral("function %1 terminated without a result").arg(number);
        }
    }

    /// A function that has come to rest stays so, refuses a start, and is deselected by a stop.
    void Courses()
    {
        QFETCH(Scenario, scenario);
        QFETCH(Measurement, measurement);
        QFETCH(Course, course);
        QFETCH(QString, lastChange);
        WatchedFunction function(scenario);
        if (course.first().first > PreparedAt) {
            QVERIFY(function.BringToStart(measurement));
        } else {
            QVERIFY(function->Prepare(measurement, At(0ms)));
        }
        for (const auto& [time, state] : course) {
            QCOMPARE(function.StateAt(time), state);
        }
        QCOMPARE(function->CollectChanges().last(), lastChange);
        if (!function->IsUnderWay()) {
            QVERIFY(!function->NextChangeAt().has_value());
            QVERIFY(!function->Start(At(course.last().first)));
            function.StopAt(course.last().first);
            QVERIFY(!function->IsSelected());
            QVERIFY(!function->HasNewResult());
        }
    }

    void Prepares()
    {
        WatchedFunction function;
        QVERIFY(function->Prepare(Measurement::Power, At(0ms)));
        QVERIFY(function->IsSelected());
        QCOMPARE(function->Number(), 8);
        QCOMPARE(function.StatesAt({0ms, 149ms, 150ms, 3600000ms}), (States{1, 1, 4, 4}));
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function->CollectChanges(), (QStringList{QStringLiteral("function 8 preparing"),
                                                          QStringLiteral("function 8 prepared")}));
        function.StopAt(3600000ms);
        QVERIFY(!function->IsSelected());
        QCOMPARE(function->CollectChanges(), QStringList{QStringLiteral("function 8 deselected")});
    }

    void DelayOfTheStartCanBeSet()
    {
        FunctionTimings timings;
        timings.startDelay = 2000ms;
        MeasurementFunction function(timings, 1);
        QVERIFY(function.Prepare(Measurement::Rpe, At(0ms)));
        function.Advance(At(PreparedAt));
        QVERIFY(function.Start(At(PreparedAt)));
        function.Advance(At(2149ms));
        QCOMPARE(static_cast<int>(function.State()), 4);
        function.Advance(At(2150ms));
        QCOMPARE(static_cast<int>(function.State()), 5);
    }

    void SingleDeliversOneResult_data()
    {
        QTest::addColumn<Measurement>("measurement");
        QTest::newRow("RLN") << Measurement::Rln;
        QTest::newRow("IEC") << Measurement::Iec;
    }

    void SingleDeliversOneResult()
    {
        QFETCH(Measurement, measurement);
        WatchedFunction function;
        QVERIFY(function.BringToStart(measurement));
        QCOMPARE(function.StateAt(RunningAt + 999ms), 7);
        QVERIFY(!function->HasNewResult());

        QCOMPARE(function.StateAt(RunningAt + 1000ms), 2);
        QVERIFY(function->HasNewResult());
        const QByteArray result = function->ReadResult();
        QVERIFY(result != QByteArray(24, '\0'));
        QVERIFY(!function->HasNewResult());

        QCOMPARE(function.StateAt(3600000ms), 2);
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function->ReadResult(), result);
        QCOMPARE(function->CollectChanges().last(), QStringLiteral("function 1 completed"));
    }

    void ContinuousDeliversResults_data()
    {
        QTest::addColumn<Measurement>("measurement");
        QTest::newRow("RPE") << Measurement::Rpe;
        QTest::newRow("RISO") << Measurement::Riso;
        QTest::newRow("ISUB") << Measurement::Isub;
        QTest::newRow("IPE") << Measurement::Ipe;
        QTest::newRow("IDELTA") << Measurement::Idelta;
        QTest::newRow("IT") << Measurement::It;
        QTest::newRow("POWER") << Measurement::Power;
        QTest::newRow("HVTest") << Measurement::HvTest;
    }

    void ContinuousDeliversResults()
    {
        QFETCH(Measurement, measurement);
        WatchedFunction function;
        QVERIFY(function.BringToStart(measurement));
        QByteArray previous;
        for (int round = 1; round <= 100; ++round) {
            const milliseconds due = RunningAt + round * 100ms;
            QCOMPARE(function.StateAt(due - 1ms), 7);
            QVERIFY(!function->HasNewResult());
            QCOMPARE(function.StateAt(due), 7);
            QVERIFY(function->HasNewResult());
            const QByteArray result = function->ReadResult();
            QVERIFY(result != previous);
            previous = result;
        }
    }

    void StopEndsARunningFunction()
    {
        WatchedFunction function;
        QVERIFY(function.BringToStart(Measurement::HvTest));
        QCOMPARE(function.StateAt(1000ms), 7);
        function.StopAt(1010ms);
        function->ReadResult();
        QCOMPARE(function.StatesAt({1010ms, 1159ms, 1160ms, 3600000ms}), (States{8, 8, 9, 9}));
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function->Number(), 9);
        QCOMPARE(function->CollectChanges().mid(4),
                 (QStringList{QStringLiteral("function 9 stopping"),
                              QStringLiteral("function 9 stopped by request")}));
    }

    void StopEndsAStartingFunction()
    {
        WatchedFunction function;
        QVERIFY(function.BringToStart(Measurement::Rln));
        QCOMPARE(function.StateAt(StartingAt), 5);
        function.StopAt(StartingAt);
        QCOMPARE(function.StatesAt({StartingAt, StartingAt + 150ms}), (States{8, 9}));
        QVERIFY(!function->HasNewResult());
    }

    void StopCancelsAStart()
    {
        WatchedFunction function;
        QVERIFY(function.BringToStart(Measurement::HvTest));
        function.StopAt(StartedAt + 49ms);
        QVERIFY(!function->IsSelected());
        QCOMPARE(function.StateAt(5000ms), 0);
        QCOMPARE(function->CollectChanges().mid(2),
                 (QStringList{QStringLiteral("function 9 start cancelled by request"),
                              QStringLiteral("function 9 deselected")}));

        WatchedFunction unseen;
        QVERIFY(unseen->Prepare(Measurement::HvTest, At(0ms)));
        QCOMPARE(unseen.UnseenStateAt(PreparedAt), 4);
        QVERIFY(unseen->Start(At(PreparedAt)));
        unseen.StopAt(PreparedAt + 49ms);
        QCOMPARE(unseen.StateAt(5000ms), 4);
        QCOMPARE(unseen->Number(), 9);
        QCOMPARE(unseen->CollectChanges().last(), QStringLiteral("function 9 start cancelled by request"));
    }

    /// Without this, a stop that meets a function that has just ended would hide the end: the status would
    /// report no function instead of the end of the last one.
    void StopThatComesTooLateLeavesTheEndToBeSeen()
    {
        WatchedFunction function;
        QVERIFY(function.BringToStart(Measurement::Rln));
        QCOMPARE(function.StateAt(RunningAt + 999ms), 7);
        function.StopAt(RunningAt + 1001ms);
        QVERIFY(function->IsSelected());
        QVERIFY(function->HasNewResult());
        QCOMPARE(function.StateAt(RunningAt + 1002ms), 2);
        function.StopAt(RunningAt + 1003ms);
        QVERIFY(!function->IsSelected());
    }

    void StopWithoutAFunction()
    {
        WatchedFunction function;
        QCOMPARE(function.StateAt(10ms), 0);
        function.StopAt(20ms);
        QVERIFY(!function->IsSelected());
        QCOMPARE(function->CollectChanges(), QStringList());
    }

    void RepeatedStopChangesNothing()
    {
        WatchedFunction function;
        QVERIFY(function.BringToStart(Measurement::HvTest));
        function.StopAt(1000ms);
        QCOMPARE(function.StateAt(1100ms), 8);
        function.StopAt(1149ms);
        QCOMPARE(function.StateAt(1150ms), 9);
    }

    void PrepareWhenOneIsThere()
    {
        WatchedFunction function;
        QVERIFY(function->Prepare(Measurement::Rpe, At(0ms)));
        QVERIFY(function->Prepare(Measurement::Riso, At(100ms))); // This replaces one that is preparing.
        QCOMPARE(function->Number(), 3);
        QCOMPARE(function.StatesAt({249ms, 250ms}), (States{1, 4}));
        QVERIFY(function->Prepare(Measurement::HvTest, At(300ms))); // This replaces one that is prepared.
        QCOMPARE(function.StateAt(450ms), 4);

        QVERIFY(function->Start(At(500ms)));
        QVERIFY(!function->Prepare(Measurement::Rpe, At(549ms))); // A start is on its way.
        QCOMPARE(function.StateAt(550ms), 5);
        QVERIFY(!function->Prepare(Measurement::Rpe, At(550ms)));
        QCOMPARE(function.StateAt(700ms), 7);
        QVERIFY(!function->Prepare(Measurement::Rpe, At(700ms)));
        function.StopAt(900ms);
        QVERIFY(!function->Prepare(Measurement::Rpe, At(900ms)));
        QCOMPARE(function->Number(), 9);

        QCOMPARE(function.StateAt(1050ms), 9);
        QVERIFY(function->HasNewResult());
        QVERIFY(function->Prepare(Measurement::Iec, At(1060ms))); // This replaces one that is over.
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function->ReadResult(), QByteArray(24, '\0'));
        QCOMPARE(function->Number(), 1);
        QCOMPARE(function.StateAt(1060ms), 1);
    }

    void StartWhenNothingIsPrepared()
    {
        WatchedFunction function;
        QVERIFY(!function->Start(At(0ms)));
        QVERIFY(function->Prepare(Measurement::Rln, At(0ms)));
        QVERIFY(!function->Start(At(0ms)));
        QCOMPARE(function.StateAt(PreparedAt), 4);
        QVERIFY(function->Start(At(StartedAt)));
        QCOMPARE(function.StateAt(StartingAt), 5);
        QVERIFY(!function->Start(At(StartingAt)));
        QCOMPARE(function.StateAt(RunningAt), 7);
        QVERIFY(!function->Start(At(RunningAt)));
        QCOMPARE(function.StateAt(RunningAt + 1000ms), 2);
        QVERIFY(!function->Start(At(RunningAt + 1000ms)));
    }

    void RepeatedStartIsTheSameStart()
    {
        WatchedFunction function;
        QVERIFY(function.BringToStart(Measurement::Rln));
        QVERIFY(function->Start(At(StartedAt + 30ms)));
        QCOMPARE(function.StateAt(StartingAt), 5);
    }

    void GoesOnUnwatched()
    {
        WatchedFunction function;
        QVERIFY(function->Prepare(Measurement::Rln, At(0ms)));
        function->Advance(At(StartedAt));
        QVERIFY(function->Start(At(StartedAt)));
        QCOMPARE(function.UnseenStateAt(60000ms), 2);
        QCOMPARE(function->CollectChanges(),
                 (QStringList{QStringLiteral("function 1 preparing"), QStringLiteral("function 1 prepared"),
                              QStringLiteral("function 1 starting"), QStringLiteral("function 1 running"),
                              QStringLiteral("function 1 completed")}));
    }

    void ForeignFunction()
    {
        WatchedFunction function;
        function->RunForeign(17);
        QCOMPARE(function->Number(), 17);
        QCOMPARE(function.StateAt(3600000ms), 7);
        QVERIFY(!function->HasNewResult());
        QVERIFY(!function->Prepare(Measurement::Rln, At(3600000ms)));
        function.StopAt(3600000ms);
        QVERIFY(!function->IsSelected());
        QCOMPARE(function.StateAt(3600000ms), 0);
        QCOMPARE(function->CollectChanges(), (QStringList{QStringLiteral("function 17 running"),
                                                          QStringLiteral("function 17 stopped by request")}));
    }

    void Deselected()
    {
        WatchedFunction function;
        function->Deselect("ended");
        QCOMPARE(function->CollectChanges(), QStringList());
        QVERIFY(function.BringToStart(Measurement::HvTest));
        QCOMPARE(function.StateAt(RunningAt + 100ms), 7);
        function->Deselect("ended by a restart");
        QVERIFY(!function->IsSelected());
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function.StateAt(5000ms), 0);
        QCOMPARE(function->CollectChanges().last(), QStringLiteral("function 9 ended by a restart"));
    }

    void KnowsWhenItChanges()
    {
        WatchedFunction function;
        QVERIFY(function->Prepare(Measurement::Rpe, At(0ms)));
        QVERIFY(function->NextChangeAt() == At(PreparedAt));
        QCOMPARE(function.StateAt(PreparedAt), 4);
        QVERIFY(!function->NextChangeAt().has_value());
        QVERIFY(function->Start(At(StartedAt)));
        QVERIFY(function->NextChangeAt() == At(StartingAt));
        QCOMPARE(function.StateAt(StartingAt), 5);
        QVERIFY(function->NextChangeAt() == At(RunningAt));
        QCOMPARE(function.StateAt(RunningAt), 7);
        QVERIFY(!function->NextChangeAt().has_value());
        function.StopAt(1000ms);
        QVERIFY(function->NextChangeAt() == At(1150ms));
        QCOMPARE(function.StateAt(1150ms), 9);
        QVERIFY(!function->NextChangeAt().has_value());
    }

    void RefusesPrepare()
    {
        WatchedFunction function(Scenario::RefusesPrepare);
        QVERIFY(!function->Prepare(Measurement::Rln, At(0ms)));
        QVERIFY(!function->IsSelected());
        QCOMPARE(function->CollectChanges(), QStringList());
    }

    void StaysStarting()
    {
        WatchedFunction function(Scenario::StaysStarting);
        QVERIFY(function.BringToStart(Measurement::HvTest));
        QCOMPARE(function.StateAt(3600000ms), 5);
        QVERIFY(!function->HasNewResult());
        function.StopAt(3600000ms);
        QCOMPARE(function.StatesAt({3600000ms, 3600150ms}), (States{8, 9}));
    }

    void FallsBack()
    {
        WatchedFunction function(Scenario::FallsBack);
        QVERIFY(function.BringToStart(Measurement::Rpe));
        QCOMPARE(function.UnseenStateAt(60000ms), 5);
        QVERIFY(!function->NextChangeAt().has_value());
        QCOMPARE(function.StateAt(60001ms), 5);
        QVERIFY(function->NextChangeAt() == At(60001ms));
        QCOMPARE(function.StatesAt({60002ms, 90000ms}), (States{4, 4}));
        QCOMPARE(function->CollectChanges().last(), QStringLiteral("function 2 fell back to prepared"));
    }

    void FastSingle()
    {
        WatchedFunction function(Scenario::FastSingle);
        QVERIFY(function.BringToStart(Measurement::Iec));
        QCOMPARE(function.StatesAt({StartingAt, RunningAt - 1ms}), (States{5, 5}));
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function.StateAt(RunningAt), 2);
        QVERIFY(function->HasNewResult());
        QCOMPARE(function->ReadResult().left(4).toHex(), QByteArray("0000803f"));

        WatchedFunction unseen(Scenario::FastSingle);
        QVERIFY(unseen.BringToStart(Measurement::Rln));
        QCOMPARE(unseen.UnseenStateAt(60000ms), 5);
    }

    void EndsWithoutResult_data()
    {
        QTest::addColumn<Measurement>("measurement");
        QTest::newRow("single") << Measurement::Rln;
        QTest::newRow("continuous") << Measurement::Riso;
        QTest::newRow("high voltage") << Measurement::HvTest;
    }

    void EndsWithoutResult()
    {
        QFETCH(Measurement, measurement);
        WatchedFunction function(Scenario::EndsWithoutResult);
        QVERIFY(function.BringToStart(measurement));
        QCOMPARE(function.UnseenStateAt(60000ms), 7);
        QCOMPARE(function.StateAt(60001ms), 7);
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function.StateAt(60002ms), 9);
        QVERIFY(!function->HasNewResult());
        QVERIFY(function->CollectChanges().last().endsWith(QLatin1String(" terminated without a result")));
    }

    void RunsOnAfterStop()
    {
        WatchedFunction function(Scenario::RunsOnAfterStop);
        QVERIFY(function.BringToStart(Measurement::HvTest));
        function.StopAt(1000ms);
        QCOMPARE(function.StateAt(1000ms), 7);
        function->ReadResult();
        QCOMPARE(function.StateAt(1100ms), 7);
        QVERIFY(function->HasNewResult());
        function.StopAt(2000ms); // This does not put the end off any further.
        QCOMPARE(function.StatesAt({2999ms, 3000ms, 3150ms}), (States{7, 8, 9}));
        QCOMPARE(function->CollectChanges().last(), QStringLiteral("function 9 stopped by request"));

        WatchedFunction single(Scenario::RunsOnAfterStop);
        QVERIFY(single.BringToStart(Measurement::Rln));
        single.StopAt(1000ms);
        QCOMPARE(single.StatesAt({2999ms, 3000ms}), (States{7, 8}));
        QVERIFY(!single->HasNewResult());
    }

    void ScenarioEndsMidway()
    {
        WatchedFunction function(Scenario::StaysStarting);
        QVERIFY(function.BringToStart(Measurement::Rpe));
        QCOMPARE(function.StateAt(5000ms), 5);
        function->SetScenario(Scenario::None);
        QCOMPARE(function.StateAt(5001ms), 7);
    }
};

QTEST_APPLESS_MAIN(TestMeasurementFunction)
#include "tst_measurementfunction.moc"
