#include "unit/states/rcdruns.h"

using namespace RCDRuns;

namespace
{

/// What `ErrorCode` holds before a step of an IEC run, so that every write shows.
constexpr int EarlierError = 399;

const QString InvalidVoltage =
    QStringLiteral("\033[0;32m       PREPARED raport: RCD_CheckObject_ULNIECInvalid\033[0m");

/// The lines that a step of the clean-up writes about its poll.
QStringList PollLines(const LogCapture& log)
{
    return log.Texts().filter(QStringLiteral("<<< MeasurementState::Prepared: "));
}

/// Runs four polls of five that find nothing wrong, and one whose check of the object is answered so.
bool UsesUpThePolls(Run& run, const QByteArray& check)
{
    run.SetPhase(Prepared);
    run.peer.AnswerAlways(run.Status(2));
    const bool isInVain = run.StepsInVain(4, "s");
    run.AnswerCheck(check);
    return isInVain && run.StepsInVain(1, "se");
}

/// The rows for errors, other functions and answers that say nothing. The IEC runs keep the error of an RCD
/// status to themselves.
void AddStatusRows(const StepRows& rows, int kind)
{
    const QString otherFunction = Text(Ended398);
    const bool isIEC = Of(kind).function == Vesmar::MeasurementType::RCDIEC;
    const auto reported = [isIEC](int error) {
        return isIEC ? QString() : QStringLiteral("ErrorCode=%1 ").arg(error);
    };
    const QString ended = QStringLiteral("MeasurementStatus=7");
    rows.Add(QStringLiteral("error 0"), StatusOf(kind, 4, false, 0), reported(520) + ended, NoPause);
    rows.Add(QStringLiteral("error 5"), StatusOf(kind, 2, false, 5), reported(525) + ended, NoPause);
    rows.Add(QStringLiteral("error 14"), StatusOf(kind, 3, true, 14), reported(534) + ended, NoPause);
    rows.Add(QStringLiteral("the other RCD function"), isIEC ? RCDWire::Status(4) : RCDWire::IECStatus(4),
             otherFunction, NoPause);
    rows.Add(QStringLiteral("the other RCD function, error 5"),
             isIEC ? RCDWire::Status(4, false, 5) : RCDWire::IECStatus(4, false, 5),
             reported(525) + otherFunction, NoPause);
    rows.Add(QStringLiteral("no function"), Wire::ReadyStatus,
             (isIEC ? QStringLiteral("ErrorCode=15 ") : QString()) + otherFunction, NoPause);
    rows.Add(QStringLiteral("another function, error 4"),
             MeasurementEngine::Status(Vesmar::MeasurementType::RPE, 4, false, 4),
             QStringLiteral("ErrorCode=4 ") + otherFunction, NoPause);
    rows.Add(QStringLiteral("acknowledged"), Wire::Acknowledge, NoChange, NoPause);
    rows.AddFailures();
}

/// The pauses once the function is prepared, after a prepare error that is not new, and in any other state.
void AddStateRows(const StepRows& rows, int kind, const QString& preparedOutcome, const QString& prepared,
                  const QString& prepareError, const QString& waiting)
{
    for (const bool isNew : {false, true}) {
        for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
            const bool isPrepared = state == 4;
            const bool isPrepareError = state == 3;
            if (isPrepareError && isNew) {
                continue; // The object is checked.
            }
            rows.Add(QStringLiteral("function state %1, %2").arg(state).arg(Text(isNew ? "new" : "not new")),
                     StatusOf(kind, state, isNew), isPrepared ? preparedOutcome : NoChange,
                     isPrepared       ? prepared
                     : isPrepareError ? prepareError
                                      : waiting);
        }
    }
}

} // namespace

/// What the four runs do until the instrument has prepared the function.
class TestRCDPreparedPhase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void StatusDecidesTheStep_data()
    {
        StepRows::AddColumns();
        const QString starting = QStringLiteral("MeasurementStatus=3");
        const QString cleared = QStringLiteral("MeasurementStatus=3 ErrorCode=15");
        const auto rows = [](int kind, const QString& preparedOutcome, const QString& prepared,
                             const QString& prepareError, const QString& waiting) {
            const StepRows stepRows(kind, Prepared, Wire::ReadStatus);
            AddStateRows(stepRows, kind, preparedOutcome, prepared, prepareError, waiting);
            AddStatusRows(stepRows, kind);
            if (kind == IECIaTa || kind == CleanUp) {
                stepRows.Add(QStringLiteral("function 27"), WithChecksum(Wire::Bytes("1bf4")),
                             preparedOutcome, prepared);
            }
        };
        rows(UbRe, starting, Pause, NoPause, NoPause);
        rows(IaTa, starting, NoPause, Pause, Pause);
        rows(IECIaTa, starting, NoPause, Pause, Pause);
        rows(CleanUp, cleared, Pause, Pause, NoPause);
    }

    void StatusDecidesTheStep()
    {
        QFETCH(const int, kind);
        StepWithOneRequest(kind == IECIaTa || kind == CleanUp ? EarlierError : Wire::NoError);
    }

    void PrepareErrorLeadsToACheckOfTheObject_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QString>("pauses");
        const auto rows = [](int kind, const QString& clean, const QString& wrong, const QString& failed) {
            const auto row = [kind](const QString& name, const QByteArray& answer, const QString& outcome,
                                    const QString& pauses) {
                QTest::addRow("%s, %s", Of(kind).name, qPrintable(name))
                    << kind << answer << outcome << pauses;
            };
            row(QStringLiteral("clean"), RCDWire::ObjectCheck(0), clean, NoPause);
            for (const int code : {1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 255}) {
                if (kind != IECIaTa || code != 10) {
                    row(QStringLiteral("code %1").arg(code), RCDWire::ObjectCheck(code), NoChange, wrong);
                }
            }
            row(QStringLiteral("acknowledged"), Wire::Acknowledge, NoChange, wrong);
            row(QStringLiteral("refused"), Wire::Refusal, NoChange, failed);
            row(QStringLiteral("damaged"), Wire::DamagedStatus, NoChange, failed);
        };
        const QString starting = QStringLiteral("MeasurementStatus=3");
        const QString cleared = QStringLiteral("ErrorCode=15 MeasurementStatus=3");
        rows(UbRe, starting, NoPause, Pause);
        rows(IaTa, starting, NoPause, Pause);
        rows(IECIaTa, cleared, Pause, Pause);
        rows(CleanUp, cleared, NoPause, NoPause);
    }

    void PrepareErrorLeadsToACheckOfTheObject()
    {
        QFETCH(const int, kind);
        QFETCH(const QByteArray, answer);
        QFETCH(const QString, outcome);
        QFETCH(const QString, pauses);
        Run run(kind);
        run.AnswerCheck(answer);
        run.SetError(kind == IECIaTa || kind == CleanUp ? EarlierError : Wire::NoError);
        QCOMPARE(run.StepIn(Prepared), outcome);
        QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
        QCOMPARE(run.Pauses(), pauses);
    }

    void ObjectCheckWaitsHalfASecond_data() { AddRuns({UbRe, IaTa, IECIaTa, CleanUp}); }
    void ObjectCheckWaitsHalfASecond()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.transciever.SetMaxRetransmissions(2);
        run.AnswerCheck(Wire::Silence);
        QElapsedTimer time;
        time.start();
        QCOMPARE(run.StepIn(Prepared), NoChange);
        constexpr qint64 Ms = 14 + 10 + 500 + 200; // The status, then the check with the pauses around it.
        QCOMPARE(time.elapsed(), Ms + run.Pauses().toInt());
        QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
    }

    void GivesUpAfterFiveStatuses_data() { AddRuns({UbRe, IaTa, IECIaTa, CleanUp}); }
    void GivesUpAfterFiveStatuses()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.peer.AnswerAlways(run.Status(2));
        run.SetPhase(Prepared);
        QVERIFY(run.StepsInVain(5, "s"));
        QCOMPARE(run.Step(), Text(Ended401));
        QCOMPARE(run.Commands(), QByteArray());
        QCOMPARE(run.Pauses(), NoPause);
    }

    void FailedPollsCountToo_data() { AddRuns({UbRe, IaTa, IECIaTa, CleanUp}); }
    void FailedPollsCountToo()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.peer.AnswerInTurn({Wire::Acknowledge, Wire::Refusal, run.Status(3), Wire::DamagedStatus,
                               Wire::Acknowledge, run.Status(4)});
        run.SetPhase(Prepared);
        QVERIFY(run.StepsInVain(5, "s"));
        QCOMPARE(run.Step(), Text(Ended401));
    }

    void PlainRunForgetsARequestToPrepare_data() { AddRuns({UbRe, IaTa}); }
    /// Even when the polls are used up.
    void PlainRunForgetsARequestToPrepare()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.peer.AnswerAlways(Wire::Acknowledge);
        for (int poll = 0; poll < 5; ++poll) {
            run.context.PrepareMeasurementRequested.Set(true);
            QCOMPARE(run.StepIn(Prepared), QStringLiteral("PrepareMeasurementRequested=0"));
        }
        run.context.PrepareMeasurementRequested.Set(true);
        QCOMPARE(run.Step(), QStringLiteral("PrepareMeasurementRequested=0 ") + Text(Ended401));
    }

    void PlainRunGivesUpWith401WhateverIsWrongWithTheObject_data() { AddRuns({UbRe, IaTa}); }
    void PlainRunGivesUpWith401WhateverIsWrongWithTheObject()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.AnswerCheck(RCDWire::ObjectCheck(10));
        run.SetPhase(Prepared);
        QVERIFY(run.StepsInVain(5, "se"));
        QCOMPARE(run.Step(), Text(Ended401));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void IECRunGivesUpWithTheErrorOfTheLastCheck_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("check");
        QTest::addColumn<int>("error");
        for (const int kind : {IECIaTa, CleanUp}) {
            const QMap<int, int> errors = {{1, 500}, {2, 501}, {3, 502}, {4, 503},
                                           {7, 504}, {8, 505}, {9, 506}};
            for (auto row = errors.cbegin(); row != errors.cend(); ++row) {
                QTest::addRow("%s, code %d", Of(kind).name, row.key())
                    << kind << RCDWire::ObjectCheck(row.key()) << row.value();
            }
            QTest::addRow("%s, acknowledged", Of(kind).name) << kind << Wire::Acknowledge << 500;
            QTest::addRow("%s, refused", Of(kind).name) << kind << Wire::Refusal << 500;
            QTest::addRow("%s, damaged", Of(kind).name) << kind << Wire::DamagedStatus << 500;
            QTest::addRow("%s, silence", Of(kind).name) << kind << Wire::Silence << 500;
        }
        QTest::newRow("clean-up, code 10") << int(CleanUp) << RCDWire::ObjectCheck(10) << 507;
    }

    void IECRunGivesUpWithTheErrorOfTheLastCheck()
    {
        QFETCH(const int, kind);
        QFETCH(const QByteArray, check);
        QFETCH(const int, error);
        Run run(kind);
        QVERIFY(UsesUpThePolls(run, check));
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=%1 MeasurementStatus=7").arg(error));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void IECRunForgetsTheErrorOfAnEarlierCheck_data() { AddRuns({IECIaTa}); }
    void IECRunForgetsTheErrorOfAnEarlierCheck()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.SetPhase(Prepared);
        run.AnswerCheck(RCDWire::ObjectCheck(3));
        QVERIFY(run.StepsInVain(4, "se"));
        run.peer.AnswerAlways(run.Status(2));
        QVERIFY(run.StepsInVain(1, "s"));
        QCOMPARE(run.Step(), Text(Ended401));
    }

    void EntryForgetsTheErrorOfTheObject_data() { AddRuns({IECIaTa, CleanUp}); }
    void EntryForgetsTheErrorOfTheObject()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.SetPhase(Prepared);
        run.AnswerCheck(RCDWire::ObjectCheck(10));
        run.Step();
        run.SetError(Wire::NoError);
        run.state->OnEntry();
        run.peer.AnswerAlways(run.Status(2));
        run.SetPhase(Prepared);
        QVERIFY(run.StepsInVain(5, "s")); // The first one is counted.
        QCOMPARE(run.Step(), Text(Ended401));
    }

    void PreparationRestoresThePolls_data() { AddRuns({IECIaTa, CleanUp}); }
    /// A preparation that succeeds gives the polls back, and forgets what was wrong with the object.
    void PreparationRestoresThePolls()
    {
        QFETCH(const int, kind);
        Run run(kind);
        QVERIFY(UsesUpThePolls(run, RCDWire::ObjectCheck(3)));
        run.peer.AnswerInTurn({Wire::StartTest0Status, Wire::Acknowledge});
        QCOMPARE(run.StepIn(Preparing), NoChange);
        QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=2"));
        run.peer.AnswerAlways(run.Status(2));
        QVERIFY(run.StepsInVain(5, "s"));
        QCOMPARE(run.Step(), Text(Ended401));
    }

    void FailedPreparationKeepsTheErrorOfTheObject_data() { AddRuns({IECIaTa, CleanUp}); }
    void FailedPreparationKeepsTheErrorOfTheObject()
    {
        QFETCH(const int, kind);
        Run run(kind);
        QVERIFY(UsesUpThePolls(run, RCDWire::ObjectCheck(3)));
        run.peer.AnswerAlways(Wire::StartTest0Status);
        QCOMPARE(run.StepIn(Preparing), NoChange);
        QCOMPARE(run.StepIn(Prepared), QStringLiteral("ErrorCode=502 MeasurementStatus=7"));
    }

    void PollsAfterAnErrorOfTheObjectAreNotCounted_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("check");
        QTest::newRow("IEC Ia/Ta, code 10") << int(IECIaTa) << RCDWire::ObjectCheck(10);
        QTest::newRow("clean-up, code 3") << int(CleanUp) << RCDWire::ObjectCheck(3);
        QTest::newRow("clean-up, code 10") << int(CleanUp) << RCDWire::ObjectCheck(10);
        QTest::newRow("clean-up, code 11") << int(CleanUp) << RCDWire::ObjectCheck(11);
        QTest::newRow("clean-up, acknowledged") << int(CleanUp) << Wire::Acknowledge;
    }

    void PollsAfterAnErrorOfTheObjectAreNotCounted()
    {
        QFETCH(const int, kind);
        QFETCH(const QByteArray, check);
        Run run(kind);
        run.SetPhase(Prepared);
        run.SetError(kind == IECIaTa ? 507 : Wire::NoError);
        run.AnswerCheck(check);
        QVERIFY(run.StepsInVain(20, "se")); // The first one alone is counted.
        run.peer.AnswerAlways(run.Status(2));
        QVERIFY(run.StepsInVain(5, "s")); // And the last four of these.
        QCOMPARE(run.Step(), Text(Ended401));
    }

    void FailedPollAfterAnErrorOfTheObjectForgetsIt_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("code");
        QTest::newRow("IEC Ia/Ta") << int(IECIaTa) << 10;
        QTest::newRow("clean-up") << int(CleanUp) << 3;
    }

    /// The failed poll itself is not counted.
    void FailedPollAfterAnErrorOfTheObjectForgetsIt()
    {
        QFETCH(const int, kind);
        QFETCH(const int, code);
        Run run(kind);
        run.SetPhase(Prepared);
        run.SetError(kind == IECIaTa ? 507 : Wire::NoError);
        run.AnswerCheck(RCDWire::ObjectCheck(code));
        QVERIFY(run.StepsInVain(1, "se"));
        run.peer.AnswerAlways(Wire::Acknowledge);
        QVERIFY(run.StepsInVain(5, "s"));
        QCOMPARE(run.Step(), Text(Ended401));
    }

    void IECIaTaReportsAndLogsCode10()
    {
        Run run(IECIaTa);
        run.AnswerCheck(RCDWire::ObjectCheck(10));
        QCOMPARE(run.StepIn(Prepared), QStringLiteral("ErrorCode=507"));
        QCOMPARE(run.Pauses(), NoPause);
        QVERIFY(run.log.Texts().contains(InvalidVoltage));
        QCOMPARE(run.Step(), NoChange); // It is stored already.
        QVERIFY(run.log.Texts().contains(InvalidVoltage));
        run.SetError(Wire::NoError);
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=507"));
    }

    void IECIaTaLeavesCode10BehindWhenItIsPreparedAfterAll()
    {
        Run run(IECIaTa);
        run.AnswerCheck(RCDWire::ObjectCheck(10));
        run.StepIn(Prepared);
        run.peer.AnswerAlways(run.Status(4));
        QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=3"));
        QCOMPARE(static_cast<int>(run.context.ErrorCode.Get()), 507);
    }

    void IECIaTaKeepsAnEarlierErrorBesideCode10()
    {
        Run run(IECIaTa);
        run.AnswerCheck(RCDWire::ObjectCheck(10));
        run.SetError(521);
        QCOMPARE(run.StepIn(Prepared), NoChange);
        QVERIFY(run.log.Texts().contains(InvalidVoltage));
    }

    void IECIaTaLogsNoOtherCode()
    {
        Run run(IECIaTa);
        run.AnswerCheck(RCDWire::ObjectCheck(3));
        run.StepIn(Prepared);
        QVERIFY(!run.log.Contains(QStringLiteral("RCD_CheckObject_ULNIECInvalid")));
    }

    void IECIaTaMayEndWithCode10()
    {
        Run run(IECIaTa);
        run.SetPhase(Prepared);
        run.peer.AnswerAlways(run.Status(2));
        QVERIFY(run.StepsInVain(4, "s"));
        run.AnswerCheck(RCDWire::ObjectCheck(10));
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=507"));
        QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=7"));
        QCOMPARE(static_cast<int>(run.context.ErrorCode.Get()), 507);
    }

    void IECIaTaCountsPollsAfterOtherCodes()
    {
        Run run(IECIaTa);
        run.SetPhase(Prepared);
        run.AnswerCheck(RCDWire::ObjectCheck(3));
        QVERIFY(run.StepsInVain(5, "se"));
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=502 MeasurementStatus=7"));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void CleanUpTreatsCode10LikeAnyOther()
    {
        Run run(CleanUp);
        run.AnswerCheck(RCDWire::ObjectCheck(10));
        QCOMPARE(run.StepIn(Prepared), NoChange);
        QCOMPARE(run.Pauses(), NoPause);
        QVERIFY(!run.log.Contains(QStringLiteral("RCD_CheckObject_ULNIECInvalid")));
    }

    void CleanUpTellsTheNumberOfThePoll()
    {
        const auto line = [](const char* text) {
            return QStringLiteral("<<< MeasurementState::Prepared: ") + Text(text);
        };
        const QString clean = line("_savedCheckObjectError==Error::NoErrors");
        Run run(CleanUp);
        run.SetPhase(Prepared);
        run.AnswerCheck(RCDWire::ObjectCheck(3));
        run.Step();
        QCOMPARE(PollLines(run.log),
                 (QStringList{line("_lsaapCounter=0 _lsaap=5"), line("operationResult=0"), clean}));
        run.Step();
        QCOMPARE(PollLines(run.log),
                 (QStringList{line("_lsaapCounter=1 _lsaap=5"), line("operationResult=0")}));
        run.peer.AnswerAlways(Wire::Refusal);
        run.Step();
        QCOMPARE(PollLines(run.log),
                 (QStringList{line("_lsaapCounter=1 _lsaap=5"), line("operationResult=2")}));
        run.Step();
        QCOMPARE(PollLines(run.log),
                 (QStringList{line("_lsaapCounter=1 _lsaap=5"), line("operationResult=2"), clean}));
    }
};

QTEST_GUILESS_MAIN(TestRCDPreparedPhase)
#include "tst_rcdpreparedphase.moc"
