#pragma once

#include "unit/states/rcdrunningsteps.h"

/// What the two IEC tests have in common while they are prepared.
namespace IECPrepared
{

using namespace RCDRunningSteps;

/// What `ErrorCode` holds before a step, so that every write shows.
constexpr int EarlierError = 399;

/// What comes of a prepared function, the pause after it, and the pause after any other state.
inline void AddRows(const char* preparedOutcome, const QString& prepared, const QString& waiting)
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    const QString otherFunction = QStringLiteral("ErrorCode=398 MeasurementStatus=7");
    const QString ended = QStringLiteral("MeasurementStatus=7");
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) { QTest::newRow(name) << answer << outcome << pauses; };
    for (const bool isNew : {false, true}) {
        for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
            if (state == 3) {
                continue;
            }
            QTest::addRow("function state %d, %s", state, isNew ? "new" : "not new")
                << RCDWire::IECStatus(state, isNew)
                << (state == 4 ? QString(QLatin1String(preparedOutcome)) : NoChange)
                << (state == 4 ? prepared : waiting);
        }
    }
    row("prepare error, not new", RCDWire::IECStatus(3), NoChange, Pause);
    row("error 0", RCDWire::IECStatus(4, false, 0), ended, NoPause);
    row("error 5", RCDWire::IECStatus(2, false, 5), ended, NoPause);
    row("error 14", RCDWire::IECStatus(3, true, 14), ended, NoPause);
    row("RCD", RCDWire::Status(4), otherFunction, NoPause);
    row("RCD, error 5", RCDWire::Status(4, false, 5), otherFunction, NoPause);
    row("function 27", WithChecksum(Wire::Bytes("1bf4")), QString(QLatin1String(preparedOutcome)), prepared);
    row("no function", RCDWire::Ready, QStringLiteral("ErrorCode=15 ") + otherFunction, NoPause);
    row("another function, error 4", MeasurementEngine::Status(Vesmar::MeasurementType::RPE, 4, false, 4),
        QStringLiteral("ErrorCode=4 ") + otherFunction, NoPause);
    row("acknowledged", Wire::Acknowledge, NoChange, NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
}

template <typename Test>
void FollowsTheFunction()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Run<Test> run;
    run.peer.AnswerAlways(answer);
    run.SetError(EarlierError);
    QCOMPARE(run.StepIn(Prepared), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    QCOMPARE(run.Pauses(), pauses);
}

/// The pause after something that is wrong with the object, and after a check that failed by itself.
inline void AddCheckRows(const QString& wrong)
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    QTest::newRow("clean") << RCDWire::ObjectCheck(0) << QStringLiteral("ErrorCode=15 MeasurementStatus=3")
                           << NoPause;
    for (const int code : {1, 2, 3, 4, 5, 7, 8, 9, 11, 255}) {
        QTest::addRow("code %d", code) << RCDWire::ObjectCheck(code) << NoChange << wrong;
    }
    QTest::newRow("acknowledged") << Wire::Acknowledge << NoChange << wrong;
    QTest::newRow("refused") << Wire::Refusal << NoChange << wrong;
    QTest::newRow("damaged") << Wire::DamagedStatus << NoChange << wrong;
}

template <typename Test>
void ChecksTheObject()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Run<Test> run;
    run.AnswerByCommand({{'s', Test::Status(3, true)}, {'e', answer}});
    run.SetError(EarlierError);
    QCOMPARE(run.StepIn(Prepared), outcome);
    QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
    QCOMPARE(run.Pauses(), pauses);
}

template <typename Test>
void GivesUpAfterFiveStatuses()
{
    Run<Test> run;
    run.peer.AnswerAlways(Test::Status(2));
    run.SetPhase(Prepared);
    QVERIFY(run.StepsInVain(5, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

template <typename Test>
void FailedPollsCountToo()
{
    Run<Test> run;
    run.peer.AnswerInTurn({Wire::Acknowledge, Wire::Refusal, Test::Status(3), Wire::DamagedStatus,
                           Wire::Acknowledge, Test::Status(4)});
    run.SetPhase(Prepared);
    QVERIFY(run.StepsInVain(5, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

/// What the last check of the object makes of an exhausted budget.
inline void AddLastCheckRows()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("error");
    const QMap<int, int> errors = {{1, 500}, {2, 501}, {3, 502}, {4, 503}, {7, 504}, {8, 505}, {9, 506}};
    for (auto row = errors.cbegin(); row != errors.cend(); ++row) {
        QTest::addRow("code %d", row.key()) << RCDWire::ObjectCheck(row.key()) << row.value();
    }
    QTest::newRow("acknowledged") << Wire::Acknowledge << 500;
    QTest::newRow("refused") << Wire::Refusal << 500;
    QTest::newRow("damaged") << Wire::DamagedStatus << 500;
    QTest::newRow("silence") << Wire::Silence << 500;
}

template <typename Test>
void GivesUpWithTheErrorOfTheLastCheck()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const int, error);
    Run<Test> run;
    run.SetPhase(Prepared);
    run.peer.AnswerAlways(Test::Status(2));
    QVERIFY(run.StepsInVain(4, "s"));
    run.AnswerByCommand({{'s', Test::Status(3, true)}, {'e', answer}});
    QVERIFY(run.StepsInVain(1, "se"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=%1 MeasurementStatus=7").arg(error));
    QCOMPARE(run.Commands(), QByteArray());
}

/// A prepare that succeeds begins a new budget, and forgets what was wrong with the object.
template <typename Test>
void PrepareBeginsANewBudget()
{
    Run<Test> run;
    run.SetPhase(Prepared);
    run.peer.AnswerAlways(Test::Status(2));
    QVERIFY(run.StepsInVain(4, "s"));
    run.AnswerByCommand({{'s', Test::Status(3, true)}, {'e', RCDWire::ObjectCheck(3)}});
    QVERIFY(run.StepsInVain(1, "se"));

    run.peer.AnswerInTurn({Wire::StartTest0Status, Wire::Acknowledge});
    QCOMPARE(run.StepIn(Preparing), NoChange);
    QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=2"));
    run.peer.AnswerAlways(Test::Status(2));
    QVERIFY(run.StepsInVain(5, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

template <typename Test>
void FailedPrepareKeepsWhatIsWrongWithTheObject()
{
    Run<Test> run;
    run.SetPhase(Prepared);
    run.peer.AnswerAlways(Test::Status(2));
    QVERIFY(run.StepsInVain(4, "s"));
    run.AnswerByCommand({{'s', Test::Status(3, true)}, {'e', RCDWire::ObjectCheck(3)}});
    QVERIFY(run.StepsInVain(1, "se"));
    run.peer.AnswerAlways(Wire::StartTest0Status);
    QCOMPARE(run.StepIn(Preparing), NoChange);
    QCOMPARE(run.StepIn(Prepared), QStringLiteral("ErrorCode=502 MeasurementStatus=7"));
}

/// Entering does the same.
template <typename Test>
void EntryForgetsWhatIsWrongWithTheObject()
{
    Run<Test> run;
    run.SetPhase(Prepared);
    run.AnswerByCommand({{'s', Test::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    run.Step();
    run.SetError(15);
    run.state.OnEntry();
    run.peer.AnswerAlways(Test::Status(2));
    run.SetPhase(Prepared);
    QVERIFY(run.StepsInVain(5, "s")); // The first one is counted.
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

} // namespace IECPrepared
