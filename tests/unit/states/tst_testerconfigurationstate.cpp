#include <QTest>

#include "states/configuration/testerconfigurationstate.h"
#include "unit/states/enginefixture.h"
#include "unit/states/pauselog.h"

using Vesmar::TesterConfigurationState;

namespace
{

const QByteArray VersionAnswer = Wire::Bytes("50415431323334353637383931303541424344323031361fe6");
const QByteArray SetCurrentDate = Wire::Bytes("72240307140509ab99");
const QByteArray SetCalibrationDate = Wire::Bytes("74240307000000f1c9");

QMap<char, QByteArray> Instrument()
{
    return {{'W', VersionAnswer},
            {'r', Wire::Acknowledge},
            {'x', Wire::Acknowledge},
            {'t', Wire::Acknowledge},
            {'R', Wire::Bytes("2412312359586199")},
            {'T', Wire::Bytes("200229000000b2b5")}};
}

void SetDates(Engine& engine)
{
    engine.context.CurrentDateTime.Set(QDateTime({2024, 3, 7}, {14, 5, 9}));
    engine.context.CalibrationDateTime.Set(QDateTime({2024, 3, 7}, {14, 5, 9}));
}

/// The flags in the order in which the state answers them.
QList<Vesmar::ThreadSafeProperty<bool>*> Requests(Engine& engine)
{
    return {&engine.context.DeviceInformationRequested, &engine.context.CurrentDateTimeConfigurationRequested,
            &engine.context.CalibrationDateTimeConfigurationRequested,
            &engine.context.CurrentDateTimeRequested, &engine.context.CalibrationDateTimeRequested};
}

void RequestEverything(Engine& engine)
{
    SetDates(engine);
    for (auto* request : Requests(engine)) {
        request->Set(true);
    }
    engine.cells.Clear();
}

/// A digit for each request in the order in which they are served: whether it is still pending.
QString Pending(Engine& engine)
{
    QString digits;
    for (const auto* request : Requests(engine)) {
        digits += QLatin1Char(request->Get() ? '1' : '0');
    }
    return digits;
}

} // namespace

class TestTesterConfigurationState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SendsNothingWithoutARequest()
    {
        Engine engine;
        TesterConfigurationState state(&engine.context, nullptr);
        engine.log.Clear();
        state.OnRunning();
        QCOMPARE(engine.log.Texts(), QStringList{});
        QCOMPARE(engine.cells.Changes(), QStringList{});
        QCOMPARE(engine.Commands(), QByteArray{});
    }

    void AnswersEachRequest_data()
    {
        QTest::addColumn<int>("request");
        QTest::addColumn<QList<QByteArray>>("frames");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("device information") << 0 << QList<QByteArray>{Wire::ReadVersion}
                                            << QStringList{QStringLiteral("DeviceInformationRequested=0"),
                                                           QStringLiteral("DeviceInformation")};
        QTest::newRow("set the current date")
            << 1 << QList<QByteArray>{SetCurrentDate}
            << QStringList{QStringLiteral("CurrentDateTimeConfigurationRequested=0")};
        QTest::newRow("set the calibration date")
            << 2
            << QList<QByteArray>{Wire::ChangeToCalibrationMode, SetCalibrationDate, Wire::ChangeToNormalMode}
            << QStringList{QStringLiteral("CalibrationDateTimeConfigurationRequested=0")};
        QTest::newRow("read the current date")
            << 3 << QList<QByteArray>{Wire::ReadCurrentDate}
            << QStringList{QStringLiteral("CurrentDateTimeRequested=0"),
                           QStringLiteral("CurrentDateTime=2024-12-31 23:59:58")};
        QTest::newRow("read the calibration date")
            << 4 << QList<QByteArray>{Wire::ReadCalibrationDate}
            << QStringList{QStringLiteral("CalibrationDateTimeRequested=0"),
                           QStringLiteral("CalibrationDateTime=2020-02-29 00:00:00")};
    }

    void AnswersEachRequest()
    {
        QFETCH(const int, request);
        QFETCH(const QList<QByteArray>, frames);
        QFETCH(const QStringList, changes);
        Engine engine;
        SetDates(engine);
        Requests(engine).at(request)->Set(true);
        engine.cells.Clear();
        engine.AnswerByCommand(Instrument());
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(), frames);
        QCOMPARE(engine.cells.Changes(), changes);
        QCOMPARE(Banners(engine.log), QStringList{});
    }

    void ReadsInformationBeforeTheCurrentDateInOneStep()
    {
        Engine engine;
        engine.context.CurrentDateTimeRequested.Set(true);
        engine.context.DeviceInformationRequested.Set(true);
        engine.AnswerByCommand(Instrument());
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadVersion, Wire::ReadCurrentDate}));
    }

    void AnswersEveryRequestInTheFixedOrderInOneStep()
    {
        Engine engine;
        RequestEverything(engine);
        engine.AnswerByCommand(Instrument());
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadVersion, SetCurrentDate, Wire::ChangeToCalibrationMode,
                                    SetCalibrationDate, Wire::ChangeToNormalMode, Wire::ReadCurrentDate,
                                    Wire::ReadCalibrationDate}));
        QCOMPARE(
            engine.cells.Changes(),
            (QStringList{QStringLiteral("DeviceInformationRequested=0"), QStringLiteral("DeviceInformation"),
                         QStringLiteral("CurrentDateTimeConfigurationRequested=0"),
                         QStringLiteral("CalibrationDateTimeConfigurationRequested=0"),
                         QStringLiteral("CurrentDateTimeRequested=0"),
                         QStringLiteral("CurrentDateTime=2024-12-31 23:59:58"),
                         QStringLiteral("CalibrationDateTimeRequested=0"),
                         QStringLiteral("CalibrationDateTime=2020-02-29 00:00:00")}));
    }

    void ClearsEachFlagBeforeItsRequestGoesOut()
    {
        Engine engine;
        RequestEverything(engine);
        QStringList pending; // Written on the peer's thread, read after the last answer.
        const QMap<char, QByteArray> answers = Instrument();
        engine.peer.Answer([&](const QByteArray& request) {
            pending.append(Pending(engine));
            return answers.value(request.at(0));
        });
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("WrxtxRT"));
        QCOMPARE(
            pending,
            QString(QStringLiteral("01111 00111 00011 00011 00011 00001 00000")).split(QLatin1Char(' ')));
    }

    void CalibrationDatePausesAfterBothModeChanges()
    {
        Engine engine;
        SetDates(engine);
        engine.context.CalibrationDateTimeConfigurationRequested.Set(true);
        engine.context.CurrentDateTimeRequested.Set(true);
        engine.AnswerByCommand(Instrument());
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("xtxR"));
        QCOMPARE(engine.GapAfter(0).count(), 4 + 500);
        QCOMPARE(engine.GapAfter(2).count(), 4 + 2000);
    }

    void StepLastsUntilTheInstrumentIsBackInItsNormalMode()
    {
        Engine engine;
        const PauseLog pauses;
        SetDates(engine);
        engine.context.CalibrationDateTimeConfigurationRequested.Set(true);
        engine.AnswerByCommand(Instrument());
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(pauses.Text(), QStringLiteral("500 2000"));
    }

    void FailureEndsTheStepAndLeavesTheLaterRequests_data()
    {
        QTest::addColumn<QByteArray>("refused");
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<QString>("pending");
        QTest::newRow("version") << Wire::ReadVersion << QByteArray("W") << QStringLiteral("01111");
        QTest::newRow("set the current date")
            << SetCurrentDate << QByteArray("Wr") << QStringLiteral("00111");
        QTest::newRow("into calibration mode")
            << Wire::ChangeToCalibrationMode << QByteArray("Wrx") << QStringLiteral("00011");
        QTest::newRow("set the calibration date")
            << SetCalibrationDate << QByteArray("Wrxt") << QStringLiteral("00011");
        QTest::newRow("back to normal mode")
            << Wire::ChangeToNormalMode << QByteArray("Wrxtx") << QStringLiteral("00011");
        QTest::newRow("read the current date")
            << Wire::ReadCurrentDate << QByteArray("WrxtxR") << QStringLiteral("00001");
        QTest::newRow("read the calibration date")
            << Wire::ReadCalibrationDate << QByteArray("WrxtxRT") << QStringLiteral("00000");
    }

    void FailureEndsTheStepAndLeavesTheLaterRequests()
    {
        QFETCH(const QByteArray, refused);
        QFETCH(const QByteArray, sent);
        QFETCH(const QString, pending);
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        RequestEverything(engine);
        const QMap<char, QByteArray> answers = Instrument();
        engine.peer.Answer([answers, refused](const QByteArray& request) {
            return request == refused ? Wire::Refusal : answers.value(request.at(0));
        });
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), sent);
        QCOMPARE(Pending(engine), pending);
        QCOMPARE(engine.cells.Changes().constLast(), QStringLiteral("CommunicationError=1"));
    }

    void FailedVersionIsNotRetriedAndTheRestFollowsInALaterStep()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.context.DeviceInformationRequested.Set(true);
        engine.context.CurrentDateTimeRequested.Set(true);
        QMap<char, QByteArray> answers = Instrument();
        answers['W'] = Wire::Refusal;
        engine.AnswerByCommand(answers);
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        QVERIFY(!engine.context.DeviceInformationRequested.Get());
        QVERIFY(engine.context.CurrentDateTimeRequested.Get());
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("WR"));
        QVERIFY(!engine.context.CurrentDateTimeRequested.Get());
    }

    void DateConfiguredWhileItIsReadIsReplacedByTheOneThatIsRead()
    {
        Engine engine;
        engine.context.CurrentDateTimeRequested.Set(true);
        engine.peer.Answer([&engine](const QByteArray& request) {
            if (request == Wire::ReadCurrentDate) {
                engine.context.CurrentDateTime.Set(QDateTime({2031, 5, 6}, {7, 8, 9}));
                engine.context.CurrentDateTimeConfigurationRequested.Set(true);
            }
            return Wire::AnswerTo(request);
        });
        TesterConfigurationState state(&engine.context, nullptr);
        state.OnRunning();
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadCurrentDate, SetCurrentDate}));
        QCOMPARE(engine.context.CurrentDateTime.Get(), QDateTime({2024, 3, 7}, {14, 5, 9}));
    }
};

QTEST_GUILESS_MAIN(TestTesterConfigurationState)
#include "tst_testerconfigurationstate.moc"
