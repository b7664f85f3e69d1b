#include <QTest>

#include "states/connection/initializationstate.h"
#include "unit/states/enginefixture.h"

using Vesmar::InitializationState;

static QMap<char, QByteArray> Instrument()
{
    return {{'s', Wire::StartTest0Status},
            {'W', Wire::Bytes("50415431323334353637383931303541424344323031361fe6")},
            {'R', Wire::Bytes("2412312359586199")},
            {'T', Wire::Bytes("200229000000b2b5")}};
}

class TestInitializationState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ReadsIdentityAndClocksInTheNormalMode()
    {
        Engine engine;
        engine.AnswerByCommand(Instrument());
        InitializationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::ReadVersion, Wire::ReadCurrentDate,
                                    Wire::ReadCalibrationDate}));
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("CurrentMeasurementType=0"), QStringLiteral("StartTestStatus=0"),
                              QStringLiteral("DeviceInformation"),
                              QStringLiteral("CurrentDateTime=2024-12-31 23:59:58"),
                              QStringLiteral("CalibrationDateTime=2020-02-29 00:00:00")}));
        QCOMPARE(Banners(engine.log), QStringList{});
    }

    void PausesBetweenTheTwoDates()
    {
        Engine engine;
        engine.AnswerByCommand(Instrument());
        InitializationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.GapAfter(2).count(), 4 + 100);
    }

    void ReadsNoClocksInAnotherMode_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::newRow("calibration") << Wire::Bytes("20f0f9e9");
        QTest::newRow("mode 2") << Wire::Bytes("40f0d3e2");
        QTest::newRow("update") << Wire::Bytes("60f035e4");
    }

    void ReadsNoClocksInAnotherMode()
    {
        QFETCH(const QByteArray, status);
        Engine engine;
        QMap<char, QByteArray> answers = Instrument();
        answers['s'] = status;
        engine.AnswerByCommand(answers);
        InitializationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("sW"));
        QVERIFY(!engine.context.CommunicationError.Get());
    }

    void StopsAtTheFirstFailure_data()
    {
        QTest::addColumn<char>("refused");
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("status") << 's' << QByteArray("s");
        QTest::newRow("version") << 'W' << QByteArray("sW");
        QTest::newRow("current date") << 'R' << QByteArray("sWR");
        QTest::newRow("calibration date") << 'T' << QByteArray("sWRT");
    }

    void StopsAtTheFirstFailure()
    {
        QFETCH(const char, refused);
        QFETCH(const QByteArray, sent);
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        QMap<char, QByteArray> answers = Instrument();
        answers[refused] = Wire::Refusal;
        engine.AnswerByCommand(answers);
        InitializationState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), sent);
        QCOMPARE(engine.cells.Changes().constLast(), QStringLiteral("CommunicationError=1"));
    }
};

QTEST_GUILESS_MAIN(TestInitializationState)
#include "tst_initializationstate.moc"
