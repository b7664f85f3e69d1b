#include <QtTest>

#include "simulator/model/measurementfunction.h"

using Simulator::FunctionState;
using Simulator::FunctionTimings;
using Simulator::Measurement;
using Simulator::MeasurementFunction;
using Simulator::Scenario;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

// Preparing takes 150 ms, then there are 50 ms from an accepted start to starting, and 150 ms of that.
constexpr milliseconds PreparedAt{150};
constexpr milliseconds StartedAt{200};
constexpr milliseconds StartingAt{250};
constexpr milliseconds RunningAt{400};

TimePoint At(milliseconds time)
{
    return TimePoint() + time;
}

/// A function whose status is read now and then.
class WatchedFunction
{
public:
    explicit WatchedFunction(Scenario scenario = Scenario::None) { _function.SetScenario(scenario); }

    MeasurementFunction* operator->() { return &_function; }

    /// Reads the status and tells the state in it.
    int StateAt(milliseconds time)
    {
        const int state = UnseenStateAt(time);
        _function.NoteReported(At(time));
        return state;
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

    /// Prepares at 0 ms and starts at 200 ms; the status tells of prepared only.
    bool BringToStart(Measurement measurement)
    {
        return _function.Prepare(measurement, At(milliseconds(0))) && StateAt(PreparedAt) == 4 &&
               StateAt(StartedAt) == 4 && _function.Start(At(StartedAt));
    }

private:
    MeasurementFunction _function{FunctionTimings(), 1};
};

} // namespace

Q_DECLARE_METATYPE(Measurement)

class TestMeasurementFunction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NothingIsSelectedAtFirst();
    void Prepares_data();
    void Prepares();
    void StartsAfterADelay();
    void DelayOfTheStartCanBeSet();
    void SingleDeliversOneResult_data();
    void SingleDeliversOneResult();
    void ContinuousDeliversResults_data();
    void ContinuousDeliversResults();
    void StopEndsARunningFunction();
    void StopEndsAStartingFunction();
    void StopCancelsAStart();
    void StopTakesAFunctionAtRestOffTheStatus();
    void StopThatComesTooLateLeavesTheEndToBeSeen();
    void StopWithoutAFunction();
    void RepeatedStopChangesNothing();
    void PrepareWhenOneIsThere();
    void StartWhenNothingIsPrepared();
    void RepeatedStartIsTheSameStart();
    void GoesOnUnwatched();
    void ForeignFunction();
    void Deselected();
    void TellsWhenItChanges();
    void RefusesPrepare();
    void PrepareError();
    void NeverPrepared();
    void StartError();
    void StaysStarting();
    void FallsBack();
    void FastSingle();
    void FastSingleIsNothingToContinuous();
    void EndsWithoutResult_data();
    void EndsWithoutResult();
    void RunsOnAfterStop();
    void ScenarioEndsMidway();
};

void TestMeasurementFunction::NothingIsSelectedAtFirst()
{
    WatchedFunction function;
    QVERIFY(!function->IsSelected());
    QCOMPARE(function->Number(), 0);
    QCOMPARE(function.StateAt(milliseconds(1000)), 0);
    QVERIFY(!function->HasNewResult());
    QVERIFY(!function->NextChangeAt().has_value());
    QCOMPARE(function->TakeChanges(), QStringList());
}

void TestMeasurementFunction::Prepares_data()
{
    QTest::addColumn<Measurement>("measurement");
    QTest::addColumn<int>("number");
    QTest::newRow("RLN") << Measurement::Rln << 1;
    QTest::newRow("IEC") << Measurement::Iec << 1;
    QTest::newRow("RPE") << Measurement::Rpe << 2;
    QTest::newRow("RISO") << Measurement::Riso << 3;
    QTest::newRow("ISUB") << Measurement::Isub << 4;
    QTest::newRow("IPE") << Measurement::Ipe << 5;
    QTest::newRow("IDELTA") << Measurement::Idelta << 6;
    QTest::newRow("IT") << Measurement::It << 7;
    QTest::newRow("POWER") << Measurement::Power << 8;
    QTest::newRow("HVTest") << Measurement::HvTest << 9;
}

void TestMeasurementFunction::Prepares()
{
    QFETCH(Measurement, measurement);
    QFETCH(int, number);
    WatchedFunction function;
    QVERIFY(function->Prepare(measurement, At(milliseconds(0))));
    QVERIFY(function->IsSelected());
    QCOMPARE(function->Number(), number);
    QCOMPARE(function.StateAt(milliseconds(0)), 1);
    QCOMPARE(function.StateAt(milliseconds(149)), 1);
    QCOMPARE(function.StateAt(milliseconds(150)), 4);
    QCOMPARE(function.StateAt(milliseconds(3600000)), 4);
    QVERIFY(!function->HasNewResult());
    QCOMPARE(function->TakeChanges(), (QStringList{QStringLiteral("function %1 preparing").arg(number),
                                                   QStringLiteral("function %1 prepared").arg(number)}));
}

void TestMeasurementFunction::StartsAfterADelay()
{
    WatchedFunction function;
    QVERIFY(function.BringToStart(Measurement::HvTest));
    QCOMPARE(function.StateAt(StartingAt - milliseconds(1)), 4);
    QCOMPARE(function.StateAt(StartingAt), 5);
    QCOMPARE(function.StateAt(RunningAt - milliseconds(1)), 5);
    QCOMPARE(function.StateAt(RunningAt), 7);
    QCOMPARE(function->TakeChanges().mid(2),
             (QStringList{QStringLiteral("function 9 starting"), QStringLiteral("function 9 running")}));
}

void TestMeasurementFunction::DelayOfTheStartCanBeSet()
{
    FunctionTimings timings;
    timings.startDelay = milliseconds(2000);
    MeasurementFunction function(timings, 1);
    QVERIFY(function.Prepare(Measurement::Rpe, At(milliseconds(0))));
    function.Advance(At(PreparedAt));
    QVERIFY(function.Start(At(PreparedAt)));
    function.Advance(At(milliseconds(2149)));
    QCOMPARE(static_cast<int>(function.State()), 4);
    function.Advance(At(milliseconds(2150)));
    QCOMPARE(static_cast<int>(function.State()), 5);
}

void TestMeasurementFunction::SingleDeliversOneResult_data()
{
    QTest::addColumn<Measurement>("measurement");
    QTest::newRow("RLN") << Measurement::Rln;
    QTest::newRow("IEC") << Measurement::Iec;
}

void TestMeasurementFunction::SingleDeliversOneResult()
{
    QFETCH(Measurement, measurement);
    WatchedFunction function;
    QVERIFY(function.BringToStart(measurement));
    QCOMPARE(function.StateAt(RunningAt + milliseconds(999)), 7);
    QVERIFY(!function->HasNewResult());

    QCOMPARE(function.StateAt(RunningAt + milliseconds(1000)), 2);
    QVERIFY(function->HasNewResult());
    const QByteArray result = function->TakeResult();
    QVERIFY(result != QByteArray(24, '\0'));
    QVERIFY(!function->HasNewResult());

    QCOMPARE(function.StateAt(milliseconds(3600000)), 2);
    QVERIFY(!function->HasNewResult());
    QCOMPARE(function->TakeResult(), result);
    QCOMPARE(function->TakeChanges().last(), QStringLiteral("function 1 completed"));
}

void TestMeasurementFunction::ContinuousDeliversResults_data()
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

void TestMeasurementFunction::ContinuousDeliversResults()
{
    QFETCH(Measurement, measurement);
    WatchedFunction function;
    QVERIFY(function.BringToStart(measurement));
    QByteArray previous;
    for (int round = 1; round <= 100; ++round) {
        const milliseconds due = RunningAt + round * milliseconds(100);
        QCOMPARE(function.StateAt(due - milliseconds(1)), 7);
        QVERIFY(!function->HasNewResult());
        QCOMPARE(function.StateAt(due), 7);
        QVERIFY(function->HasNewResult());
        const QByteArray result = function->TakeResult();
        QVERIFY(result != previous);
        previous = result;
    }
}

void TestMeasurementFunction::StopEndsARunningFunction()
{
    WatchedFunction function;
    QVERIFY(function.BringToStart(Measurement::HvTest));
    QCOMPARE(function.StateAt(milliseconds(1000)), 7);
    function.StopAt(milliseconds(1010));
    function->TakeResult();
    QCOMPARE(function.StateAt(milliseconds(1010)), 8);
    QCOMPARE(function.StateAt(milliseconds(1159)), 8);
    QCOMPARE(function.StateAt(milliseconds(1160)), 9);
    QCOMPARE(function.StateAt(milliseconds(3600000)), 9);
    QVERIFY(!function->HasNewResult());
    QCOMPARE(function->Number(), 9);
    QCOMPARE(function->TakeChanges().mid(4), (QStringList{QStringLiteral("function 9 stopping"),
                                                          QStringLiteral("function 9 stopped by request")}));
}

void TestMeasurementFunction::StopEndsAStartingFunction()
{
    WatchedFunction function;
    QVERIFY(function.BringToStart(Measurement::Rln));
    QCOMPARE(function.StateAt(StartingAt), 5);
    function.StopAt(StartingAt);
    QCOMPARE(function.StateAt(StartingAt), 8);
    QCOMPARE(function.StateAt(StartingAt + milliseconds(150)), 9);
    QVERIFY(!function->HasNewResult());
}

void TestMeasurementFunction::StopCancelsAStart()
{
    WatchedFunction function;
    QVERIFY(function.BringToStart(Measurement::HvTest));
    function.StopAt(StartedAt + milliseconds(49));
    QVERIFY(!function->IsSelected());
    QCOMPARE(function.StateAt(milliseconds(5000)), 0);
    QCOMPARE(function->TakeChanges().mid(2),
             (QStringList{QStringLiteral("function 9 start cancelled by request"),
                          QStringLiteral("function 9 deselected")}));

    WatchedFunction unseen;
    QVERIFY(unseen->Prepare(Measurement::HvTest, At(milliseconds(0))));
    QCOMPARE(unseen.UnseenStateAt(PreparedAt), 4);
    QVERIFY(unseen->Start(At(PreparedAt)));
    unseen.StopAt(PreparedAt + milliseconds(49));
    QCOMPARE(unseen.StateAt(milliseconds(5000)), 4);
    QCOMPARE(unseen->Number(), 9);
    QCOMPARE(unseen->TakeChanges().last(), QStringLiteral("function 9 start cancelled by request"));
}

void TestMeasurementFunction::StopTakesAFunctionAtRestOffTheStatus()
{
    WatchedFunction preparing(Scenario::NeverPrepared);
    QVERIFY(preparing->Prepare(Measurement::Rpe, At(milliseconds(0))));
    QCOMPARE(preparing.StateAt(milliseconds(10)), 1);
    preparing.StopAt(milliseconds(20));
    QVERIFY(!preparing->IsSelected());

    WatchedFunction prepared;
    QVERIFY(prepared->Prepare(Measurement::Rpe, At(milliseconds(0))));
    QCOMPARE(prepared.StateAt(PreparedAt), 4);
    prepared.StopAt(PreparedAt);
    QVERIFY(!prepared->IsSelected());

    WatchedFunction completed;
    QVERIFY(completed.BringToStart(Measurement::Iec));
    QCOMPARE(completed.StateAt(milliseconds(2000)), 2);
    completed.StopAt(milliseconds(2010));
    QVERIFY(!completed->IsSelected());
    QVERIFY(!completed->HasNewResult());

    WatchedFunction terminated;
    QVERIFY(terminated.BringToStart(Measurement::Power));
    terminated.StopAt(milliseconds(2000));
    QCOMPARE(terminated.StateAt(milliseconds(2150)), 9);
    terminated.StopAt(milliseconds(2160));
    QVERIFY(!terminated->IsSelected());
    QCOMPARE(terminated->TakeChanges().last(), QStringLiteral("function 8 deselected"));
}

/// Without this, a stop that meets a function that has just ended would hide the end: the status would tell
/// of no function, and not how the last one ended.
void TestMeasurementFunction::StopThatComesTooLateLeavesTheEndToBeSeen()
{
    WatchedFunction function;
    QVERIFY(function.BringToStart(Measurement::Rln));
    QCOMPARE(function.StateAt(RunningAt + milliseconds(999)), 7);
    function.StopAt(RunningAt + milliseconds(1001));
    QVERIFY(function->IsSelected());
    QVERIFY(function->HasNewResult());
    QCOMPARE(function.StateAt(RunningAt + milliseconds(1002)), 2);
    function.StopAt(RunningAt + milliseconds(1003));
    QVERIFY(!function->IsSelected());
}

void TestMeasurementFunction::StopWithoutAFunction()
{
    WatchedFunction function;
    QCOMPARE(function.StateAt(milliseconds(10)), 0);
    function.StopAt(milliseconds(20));
    QVERIFY(!function->IsSelected());
    QCOMPARE(function->TakeChanges(), QStringList());
}

void TestMeasurementFunction::RepeatedStopChangesNothing()
{
    WatchedFunction function;
    QVERIFY(function.BringToStart(Measurement::HvTest));
    function.StopAt(milliseconds(1000));
    QCOMPARE(function.StateAt(milliseconds(1100)), 8);
    function.StopAt(milliseconds(1149));
    QCOMPARE(function.StateAt(milliseconds(1150)), 9);
}

void TestMeasurementFunction::PrepareWhenOneIsThere()
{
    WatchedFunction function;
    QVERIFY(function->Prepare(Measurement::Rpe, At(milliseconds(0))));
    QVERIFY(function->Prepare(Measurement::Riso, At(milliseconds(100)))); // another while preparing
    QCOMPARE(function->Number(), 3);
    QCOMPARE(function.StateAt(milliseconds(249)), 1);
    QCOMPARE(function.StateAt(milliseconds(250)), 4);
    QVERIFY(function->Prepare(Measurement::HvTest, At(milliseconds(300)))); // another when prepared
    QCOMPARE(function.StateAt(milliseconds(450)), 4);

    QVERIFY(function->Start(At(milliseconds(500))));
    QVERIFY(!function->Prepare(Measurement::Rpe, At(milliseconds(549)))); // a start is on its way
    QCOMPARE(function.StateAt(milliseconds(550)), 5);
    QVERIFY(!function->Prepare(Measurement::Rpe, At(milliseconds(550))));
    QCOMPARE(function.StateAt(milliseconds(700)), 7);
    QVERIFY(!function->Prepare(Measurement::Rpe, At(milliseconds(700))));
    function.StopAt(milliseconds(900));
    QVERIFY(!function->Prepare(Measurement::Rpe, At(milliseconds(900))));
    QCOMPARE(function->Number(), 9);

    QCOMPARE(function.StateAt(milliseconds(1050)), 9);
    QVERIFY(function->HasNewResult());
    QVERIFY(function->Prepare(Measurement::Iec, At(milliseconds(1060)))); // another when it is over
    QVERIFY(!function->HasNewResult());
    QCOMPARE(function->TakeResult(), QByteArray(24, '\0'));
    QCOMPARE(function->Number(), 1);
    QCOMPARE(function.StateAt(milliseconds(1060)), 1);
}

void TestMeasurementFunction::StartWhenNothingIsPrepared()
{
    WatchedFunction function;
    QVERIFY(!function->Start(At(milliseconds(0))));
    QVERIFY(function->Prepare(Measurement::Rln, At(milliseconds(0))));
    QVERIFY(!function->Start(At(milliseconds(0))));
    QCOMPARE(function.StateAt(PreparedAt), 4);
    QVERIFY(function->Start(At(StartedAt)));
    QCOMPARE(function.StateAt(StartingAt), 5);
    QVERIFY(!function->Start(At(StartingAt)));
    QCOMPARE(function.StateAt(RunningAt), 7);
    QVERIFY(!function->Start(At(RunningAt)));
    QCOMPARE(function.StateAt(RunningAt + milliseconds(1000)), 2);
    QVERIFY(!function->Start(At(RunningAt + milliseconds(1000))));
}

void TestMeasurementFunction::RepeatedStartIsTheSameStart()
{
    WatchedFunction function;
    QVERIFY(function.BringToStart(Measurement::Rln));
    QVERIFY(function->Start(At(StartedAt + milliseconds(30))));
    QCOMPARE(function.StateAt(StartingAt), 5);
}

void TestMeasurementFunction::GoesOnUnwatched()
{
    WatchedFunction function;
    QVERIFY(function->Prepare(Measurement::Rln, At(milliseconds(0))));
    function->Advance(At(StartedAt));
    QVERIFY(function->Start(At(StartedAt)));
    QCOMPARE(function.UnseenStateAt(milliseconds(60000)), 2);
    QCOMPARE(function->TakeChanges(),
             (QStringList{QStringLiteral("function 1 preparing"), QStringLiteral("function 1 prepared"),
                          QStringLiteral("function 1 starting"), QStringLiteral("function 1 running"),
                          QStringLiteral("function 1 completed")}));
}

void TestMeasurementFunction::ForeignFunction()
{
    WatchedFunction function;
    function->RunForeign(17);
    QCOMPARE(function->Number(), 17);
    QCOMPARE(function.StateAt(milliseconds(3600000)), 7);
    QVERIFY(!function->HasNewResult());
    QVERIFY(!function->Prepare(Measurement::Rln, At(milliseconds(3600000))));
    function.StopAt(milliseconds(3600000));
    QVERIFY(!function->IsSelected());
    QCOMPARE(function.StateAt(milliseconds(3600000)), 0);
    QCOMPARE(function->TakeChanges(), (QStringList{QStringLiteral("function 17 running"),
                                                   QStringLiteral("function 17 stopped by request")}));
}

void TestMeasurementFunction::Deselected()
{
    WatchedFunction function;
    function->Deselect("ended");
    QCOMPARE(function->TakeChanges(), QStringList());
    QVERIFY(function.BringToStart(Measurement::HvTest));
    QCOMPARE(function.StateAt(RunningAt + milliseconds(100)), 7);
    function->Deselect("ended by a restart");
    QVERIFY(!function->IsSelected());
    QVERIFY(!function->HasNewResult());
    QCOMPARE(function.StateAt(milliseconds(5000)), 0);
    QCOMPARE(function->TakeChanges().last(), QStringLiteral("function 9 ended by a restart"));
}

void TestMeasurementFunction::TellsWhenItChanges()
{
    WatchedFunction function;
    QVERIFY(function->Prepare(Measurement::Rpe, At(milliseconds(0))));
    QVERIFY(function->NextChangeAt() == At(PreparedAt));
    QCOMPARE(function.StateAt(PreparedAt), 4);
    QVERIFY(!function->NextChangeAt().has_value());
    QVERIFY(function->Start(At(StartedAt)));
    QVERIFY(function->NextChangeAt() == At(StartingAt));
    QCOMPARE(function.StateAt(StartingAt), 5);
    QVERIFY(function->NextChangeAt() == At(RunningAt));
    QCOMPARE(function.StateAt(RunningAt), 7);
    QVERIFY(!function->NextChangeAt().has_value());
    function.StopAt(milliseconds(1000));
    QVERIFY(function->NextChangeAt() == At(milliseconds(1150)));
    QCOMPARE(function.StateAt(milliseconds(1150)), 9);
    QVERIFY(!function->NextChangeAt().has_value());
}

void TestMeasurementFunction::RefusesPrepare()
{
    WatchedFunction function(Scenario::RefusesPrepare);
    QVERIFY(!function->Prepare(Measurement::Rln, At(milliseconds(0))));
    QVERIFY(!function->IsSelected());
    QCOMPARE(function->TakeChanges(), QStringList());
}

void TestMeasurementFunction::PrepareError()
{
    WatchedFunction function(Scenario::PrepareError);
    QVERIFY(function->Prepare(Measurement::Rln, At(milliseconds(0))));
    QCOMPARE(function.StateAt(milliseconds(149)), 1);
    QCOMPARE(function.StateAt(milliseconds(150)), 3);
    QCOMPARE(function.StateAt(milliseconds(60000)), 3);
    QVERIFY(!function->Start(At(milliseconds(60000))));
    QCOMPARE(function->TakeChanges().last(), QStringLiteral("function 1 failed to prepare"));
    function.StopAt(milliseconds(60000));
    QVERIFY(!function->IsSelected());
}

void TestMeasurementFunction::NeverPrepared()
{
    WatchedFunction function(Scenario::NeverPrepared);
    QVERIFY(function->Prepare(Measurement::Rln, At(milliseconds(0))));
    QCOMPARE(function.StateAt(milliseconds(3600000)), 1);
    QVERIFY(!function->NextChangeAt().has_value());
}

void TestMeasurementFunction::StartError()
{
    WatchedFunction function(Scenario::StartError);
    QVERIFY(function.BringToStart(Measurement::HvTest));
    QCOMPARE(function.StateAt(StartingAt), 5);
    QCOMPARE(function.StateAt(RunningAt - milliseconds(1)), 5);
    QCOMPARE(function.StateAt(RunningAt), 6);
    QCOMPARE(function.StateAt(milliseconds(60000)), 6);
    QCOMPARE(function->TakeChanges().last(), QStringLiteral("function 9 failed to start"));
    function.StopAt(milliseconds(60000));
    QVERIFY(!function->IsSelected());
}

void TestMeasurementFunction::StaysStarting()
{
    WatchedFunction function(Scenario::StaysStarting);
    QVERIFY(function.BringToStart(Measurement::HvTest));
    QCOMPARE(function.StateAt(milliseconds(3600000)), 5);
    QVERIFY(!function->HasNewResult());
    function.StopAt(milliseconds(3600000));
    QCOMPARE(function.StateAt(milliseconds(3600000)), 8);
    QCOMPARE(function.StateAt(milliseconds(3600150)), 9);
}

void TestMeasurementFunction::FallsBack()
{
    WatchedFunction function(Scenario::FallsBack);
    QVERIFY(function.BringToStart(Measurement::Rpe));
    QCOMPARE(function.UnseenStateAt(milliseconds(60000)), 5);
    QVERIFY(!function->NextChangeAt().has_value());
    QCOMPARE(function.StateAt(milliseconds(60001)), 5);
    QVERIFY(function->NextChangeAt() == At(milliseconds(60001)));
    QCOMPARE(function.StateAt(milliseconds(60002)), 4);
    QCOMPARE(function.StateAt(milliseconds(90000)), 4);
    QCOMPARE(function->TakeChanges().last(), QStringLiteral("function 2 fell back to prepared"));
}

void TestMeasurementFunction::FastSingle()
{
    WatchedFunction function(Scenario::FastSingle);
    QVERIFY(function.BringToStart(Measurement::Iec));
    QCOMPARE(function.StateAt(StartingAt), 5);
    QCOMPARE(function.StateAt(RunningAt - milliseconds(1)), 5);
    QVERIFY(!function->HasNewResult());
    QCOMPARE(function.StateAt(RunningAt), 2);
    QVERIFY(function->HasNewResult());
    QCOMPARE(function->TakeResult().left(4).toHex(), QByteArray("0000803f"));

    WatchedFunction unseen(Scenario::FastSingle);
    QVERIFY(unseen.BringToStart(Measurement::Rln));
    QCOMPARE(unseen.UnseenStateAt(milliseconds(60000)), 5);
}

void TestMeasurementFunction::FastSingleIsNothingToContinuous()
{
    WatchedFunction function(Scenario::FastSingle);
    QVERIFY(function.BringToStart(Measurement::Rpe));
    QCOMPARE(function.StateAt(StartingAt), 5);
    QCOMPARE(function.StateAt(RunningAt), 7);
}

void TestMeasurementFunction::EndsWithoutResult_data()
{
    QTest::addColumn<Measurement>("measurement");
    QTest::newRow("single") << Measurement::Rln;
    QTest::newRow("continuous") << Measurement::Riso;
    QTest::newRow("high voltage") << Measurement::HvTest;
}

void TestMeasurementFunction::EndsWithoutResult()
{
    QFETCH(Measurement, measurement);
    WatchedFunction function(Scenario::EndsWithoutResult);
    QVERIFY(function.BringToStart(measurement));
    QCOMPARE(function.UnseenStateAt(milliseconds(60000)), 7);
    QCOMPARE(function.StateAt(milliseconds(60001)), 7);
    QVERIFY(!function->HasNewResult());
    QCOMPARE(function.StateAt(milliseconds(60002)), 9);
    QVERIFY(!function->HasNewResult());
    QVERIFY(function->TakeChanges().last().endsWith(QLatin1String(" terminated without a result")));

    WatchedFunction watched(Scenario::EndsWithoutResult);
    QVERIFY(watched.BringToStart(measurement));
    QCOMPARE(watched.StateAt(RunningAt), 7);
    QCOMPARE(watched.StateAt(RunningAt + milliseconds(299)), 7);
    QCOMPARE(watched.StateAt(RunningAt + milliseconds(300)), 9);
}

void TestMeasurementFunction::RunsOnAfterStop()
{
    WatchedFunction function(Scenario::RunsOnAfterStop);
    QVERIFY(function.BringToStart(Measurement::HvTest));
    function.StopAt(milliseconds(1000));
    QCOMPARE(function.StateAt(milliseconds(1000)), 7);
    function->TakeResult();
    QCOMPARE(function.StateAt(milliseconds(1100)), 7);
    QVERIFY(function->HasNewResult());
    function.StopAt(milliseconds(2000)); // puts it off no further
    QCOMPARE(function.StateAt(milliseconds(2999)), 7);
    QCOMPARE(function.StateAt(milliseconds(3000)), 8);
    QCOMPARE(function.StateAt(milliseconds(3150)), 9);
    QCOMPARE(function->TakeChanges().last(), QStringLiteral("function 9 stopped by request"));

    WatchedFunction single(Scenario::RunsOnAfterStop);
    QVERIFY(single.BringToStart(Measurement::Rln));
    single.StopAt(milliseconds(1000));
    QCOMPARE(single.StateAt(milliseconds(2999)), 7);
    QCOMPARE(single.StateAt(milliseconds(3000)), 8);
    QVERIFY(!single->HasNewResult());
}

void TestMeasurementFunction::ScenarioEndsMidway()
{
    WatchedFunction function(Scenario::StaysStarting);
    QVERIFY(function.BringToStart(Measurement::Rpe));
    QCOMPARE(function.StateAt(milliseconds(5000)), 5);
    function->SetScenario(Scenario::None);
    QCOMPARE(function.StateAt(milliseconds(5001)), 7);
}

QTEST_APPLESS_MAIN(TestMeasurementFunction)
#include "tst_measurementfunction.moc"
