
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include "instrumentbench.h"
#include "support/wire.h"

using namespace Wire;
using namespace std::chrono_literals;
using Simulator::Exchange;
using Simulator::Fault;
using Simulator::Instrument;
using Simulator::InstrumentOptions;
using std::chrono::milliseconds;

namespace
{

const QByteArray PrepareUbRe = Bytes("500a000005ffffffffc327");
const QByteArray Sector = 'F' + QByteArray(512, '\x11') + Bytes("093e");
const QByteArray ConfirmSector = Bytes("5a8038cc35");

} // namespace

class TestInstrument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AnswersOnTheLine()
    {
        const AskedInstrument instrument;
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        QCOMPARE(instrument.Ask(StopMeasurement, 3), Acknowledge);
    }

    void RefusesNoise()
    {
        const AskedInstrument instrument;
        QCOMPARE(instrument.Ask(Bytes("73f44f"), 3), Refusal);
        QCOMPARE(instrument.Ask(Bytes("00"), 3), Refusal);
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
    }

    void RemembersExchanges()
    {
        const AskedInstrument instrument;
        const auto before = Simulator::Clock::now();
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        QCOMPARE(instrument.Ask(StopMeasurement, 3), Acknowledge);
        QCOMPARE(instrument.Requests(), (QVector<QByteArray>{ReadVersion, StopMeasurement}));

        const std::vector<Exchange> exchanges = instrument.Exchanges();
        QCOMPARE(exchanges.at(0).answer, Version);
        QCOMPARE(exchanges.at(1).answer, Acknowledge);
        QVERIFY(before <= exchanges.at(0).receivedAt);
        QVERIFY(exchanges.at(0).receivedAt <= exchanges.at(0).answeredAt);
        QVERIFY(exchanges.at(0).answeredAt <= exchanges.at(1).receivedAt);
    }

    void ForgetsExchanges()
    {
        AskedInstrument instrument;
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        instrument.ClearRequests();
        QCOMPARE(instrument.Requests(), QVector<QByteArray>());
    }

    void KeepsNoExchangesWhenToldSo()
    {
        InstrumentOptions options;
        options.keepsExchanges = false;
        const AskedInstrument instrument(options);
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        QCOMPARE(instrument.Requests(), QVector<QByteArray>());
    }

    void ScriptedAnswersComeFirst()
    {
        AskedInstrument instrument;
        instrument.SetFault(Fault::Refuse);
        instrument.AnswerNextWith(Bytes("0001020304"));
        instrument.AnswerNextWith(Bytes("ff"));
        QCOMPARE(instrument.Ask(ReadStatus, 5).toHex(), QByteArray("0001020304"));
        QCOMPARE(instrument.Ask(ReadStatus, 1).toHex(), QByteArray("ff"));
        QCOMPARE(instrument.Ask(ReadStatus, 3), Refusal);
    }

    void ScriptedSilence()
    {
        AskedInstrument instrument;
        instrument.AnswerNextWith(QByteArray());
        QVERIFY(instrument.client.Write(ReadStatus));
        QTRY_COMPARE(instrument.Requests().size(), 1);
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version); // Nothing came before the version.
    }

    void UnaskedBytes()
    {
        AskedInstrument instrument;
        instrument.Send(Bytes("8af7"));
        QCOMPARE(instrument.client.Read(2).toHex(), QByteArray("8af7"));
        QCOMPARE(instrument.Requests(), QVector<QByteArray>());
    }

    void Silent()
    {
        AskedInstrument instrument;
        instrument.Unplug();
        QVERIFY(instrument.client.Write(ReadStatus));
        QTRY_COMPARE(instrument.Requests(), QVector<QByteArray>{ReadStatus});
        QCOMPARE(instrument.Exchanges().at(0).answer, QByteArray());
        instrument.Plug();
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
    }

    void Slow()
    {
        AskedInstrument instrument;
        instrument.SetFault(Fault::Slow, 80ms);
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        QVERIFY(instrument.AnswerTime() >= 80ms);
    }

    void AnswerAfter()
    {
        InstrumentOptions options;
        options.answerAfter = 60ms;
        AskedInstrument instrument(options);
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        QVERIFY(instrument.AnswerTime() >= 60ms);
    }

    void HangUpAndComeBack()
    {
        Instrument instrument;
        {
            LineClient client(instrument.DevicePath());
            QCOMPARE(client.Ask(ReadVersion, 25), Version);
            instrument.SetFault(Fault::HangUp);
            QCOMPARE(client.Read(1), QByteArray());
            QVERIFY(!client.Write(ReadVersion));
        }
        QCOMPARE(instrument.DevicePath(), QString());
        instrument.Send("into the void");
        instrument.SetFault(Fault::HangUp);

        instrument.Plug();
        LineClient client(instrument.DevicePath());
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
    }

    void CommandsByText()
    {
        AskedInstrument instrument;
        instrument.Execute(Command("mode 2"));
        instrument.Execute(Command("error 4"));
        instrument.Execute(Command("function 9"));
        QCOMPARE(instrument.AskStatus(), QByteArray("4947"));
        instrument.Execute(Command("function 0"));
        instrument.Execute(Command("mode 0"));
        instrument.Execute(Command("scenario refuses-prepare"));
        QCOMPARE(instrument.Ask(PrepareRln, 3), Refusal);
        instrument.Execute(Command("scenario none"));
        QCOMPARE(instrument.Ask(PrepareRln, 3), Acknowledge);
        instrument.Execute(Command("fault refuse"));
        QCOMPARE(instrument.Ask(ReadStatus, 3), Refusal);
    }

    void RestartLeavesTheLine()
    {
        InstrumentOptions options;
        options.model.restartTime = 300ms;
        const AskedInstrument instrument(options);
        QCOMPARE(instrument.Ask(ChangeToCalibrationMode, 3), Acknowledge);
        QVERIFY(instrument.client.Write(ReadStatus));
        QTRY_COMPARE(instrument.Requests().size(), 2);
        const Simulator::TimePoint acknowledgedAt = instrument.Exchanges().at(0).answeredAt;

        const auto answered = [&instrument] { return !instrument.Exchanges().back().answer.isEmpty(); };
        QTRY_VERIFY(answered() || !instrument.client.Write(ReadStatus));
        const Exchange first = instrument.Exchanges().back();
        QCOMPARE(first.answer.left(2).toHex(), QByteArray("20fe"));
        QVERIFY(first.answeredAt - acknowledgedAt > 250ms);
    }

    void ClockIsTheLocalOne()
    {
        const QDateTime before = QDateTime::currentDateTime();
        const Instrument instrument;
        const QDateTime shown = instrument.Date();
        QVERIFY(shown >= QDateTime(before.date(), before.time(), Qt::UTC));
        QVERIFY(shown < QDateTime(before.date(), before.time(), Qt::UTC).addSecs(60));
        QCOMPARE(instrument.CalibrationDate().date(), QDate(2024, 2, 15));
    }

    void MeasuresOnTheLine()
    {
        InstrumentOptions options;
        options.model.functionTimings.singleRun = 100ms;
        AskedInstrument instrument(options);
        const auto status = [&instrument] { return instrument.AskStatus(); };
        QCOMPARE(instrument.Ask(PrepareRln, 3), Acknowledge);
        QTRY_COMPARE(status(), QByteArray("01f4"));
        QCOMPARE(instrument.Ask(StartMeasurement, 3), Acknowledge);
        QTRY_COMPARE(status(), QByteArray("81f2"));
        const QByteArray result = instrument.Ask(ReadMeasurement, 26);
        QCOMPARE(result.size(), 26);
        QVERIFY(result.left(4) != QByteArray(4, '\0'));
        QCOMPARE(status(), QByteArray("01f2"));
        QCOMPARE(instrument.Status().functionState, 2);
        QCOMPARE(instrument.Ask(StopMeasurement, 3), Acknowledge);
        QCOMPARE(instrument.Status().function, 0);
    }

    void LogsChangesThatNobodyAsksFor()
    {
        const LogFile log;
        InstrumentOptions options;
        options.logPath = log.Path();
        const AskedInstrument instrument(options);
        QCOMPARE(instrument.Ask(PrepareHvTest, 3), Acknowledge);
        QTRY_COMPARE(
            log.Lines(),
            QByteArray("5009050200ffffffff063e 06c660\nfunction 9 preparing\nfunction 9 prepared\n"));
        QCOMPARE(instrument.Ask(StartMeasurement, 3), Acknowledge);
        QTRY_VERIFY2(log.Lines().endsWith("\n53966a 06c660\nfunction 9 starting\nfunction 9 running\n"),
                     log.Lines().constData());
        QCOMPARE(instrument.Ask(StopMeasurement, 3), Acknowledge);
        QTRY_VERIFY2(
            log.Lines().endsWith("\n68aeed 06c660\nfunction 9 stopping\nfunction 9 stopped by request\n"),
            log.Lines().constData());
    }

    void RcdTestOnTheLine()
    {
        AskedInstrument instrument(RcdOptions(50ms, 120ms));
        QVERIFY(instrument.StartRcdTest());
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
        const QByteArray result = instrument.client.Read(26);
        QCOMPARE(result.size(), 26);
        QCOMPARE(result.mid(4, 20), QByteArray(20, '\0'));
        QCOMPARE(instrument.Ask(ReadStatus, 4).toHex(), QByteArray("0af29620"));
        QVERIFY(!instrument.client.IsReadable(100));
        QTRY_COMPARE(instrument.Requests(), (QVector<QByteArray>{PrepareUbRe, StartMeasurement, ReadStatus}));
    }

    /// Five status frames and a result are due at once. They are nevertheless sent 20 ms apart from each
    /// other and from the answer.
    void LineIsQuietBeforeWhatNobodyAskedFor()
    {
        const AskedInstrument instrument(RcdOptions(1ms, 6ms));
        QVERIFY(instrument.StartRcdTest());
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
        const Simulator::TimePoint firstReadAt = Simulator::Clock::now();
        QCOMPARE(instrument.client.Read(4 * 4 + 26).size(), 4 * 4 + 26);
        const Simulator::TimePoint lastReadAt = Simulator::Clock::now();
        const Simulator::TimePoint acknowledgedAt = instrument.Exchanges().back().answeredAt;
        QVERIFY(firstReadAt - acknowledgedAt >= 20ms);
        QVERIFY(lastReadAt - acknowledgedAt >= milliseconds(6 * 20));
    }

    void NothingUnaskedBehindAStop()
    {
        AskedInstrument instrument(RcdOptions(30ms, Long));
        QVERIFY(instrument.StartRcdTest());
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
        QVERIFY(instrument.client.Write(StopMeasurement));
        QByteArray received = instrument.client.Read(3);
        while (!received.endsWith(Acknowledge)) { // A frame may have been on its way.
            const QByteArray next = instrument.client.Read(1);
            QCOMPARE(next.size(), 1);
            received += next;
        }
        QVERIFY(!instrument.client.IsReadable(200));
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        QCOMPARE(instrument.Status().function, 0);
    }

    void NothingUnaskedWhileUnplugged()
    {
        AskedInstrument instrument(RcdOptions(Long, 1000ms));
        QVERIFY(instrument.StartRcdTest());
        instrument.Unplug();
        QTRY_COMPARE(instrument.Status().functionState, 2);
        instrument.Plug();
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
    }

    void PiecesOfAFrame()
    {
        AskedInstrument instrument(RcdOptions(1ms, Long));
        instrument.SetScenario(Simulator::Scenario::RcdPieces, 30000);
        QVERIFY(instrument.StartRcdTest());
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
        QVERIFY(Simulator::Clock::now() - instrument.Exchanges().back().answeredAt >=
                milliseconds(20 + 2 * 30));
    }

    void AnswerWaitsForThePiecesOfAFrame()
    {
        AskedInstrument instrument(RcdOptions(200ms, 300ms));
        instrument.SetScenario(Simulator::Scenario::RcdPieces, 50000);
        QVERIFY(instrument.StartRcdTest());
        QCOMPARE(instrument.client.Read(1).toHex(), QByteArray("0a"));
        QVERIFY(instrument.client.Write(ReadVersion));
        const QByteArray received = instrument.client.Read(3 + 25 + 26);
        QCOMPARE(received.left(3).toHex(), QByteArray("f73370"));
        QVERIFY2(received.mid(3, 25) == Version || received.right(25) == Version,
                 received.toHex().constData());
    }

    void LogOfAnRcdTest()
    {
        const LogFile log;
        InstrumentOptions options = RcdOptions(40ms, 60ms);
        options.logPath = log.Path();
        const AskedInstrument instrument(options);
        QVERIFY(instrument.StartRcdTest());
        const QByteArray frames = instrument.client.Read(4 + 26);
        QCOMPARE(frames.left(4), RcdRunningStatus);
        QTRY_COMPARE(log.Lines(), "500a000005ffffffffc327 06c660\nfunction 10 preparing\n"
                                  "function 10 prepared\n53966a 06c660\nfunction 10 running\n"
                                  "unasked 0af73370\nunasked " +
                                      frames.mid(4).toHex() + "\nfunction 10 completed\n");
    }

    void FirmwareIsSavedBeforeItIsAcknowledged()
    {
        const QTemporaryDir folder;
        InstrumentOptions options;
        options.firmwarePath = folder.filePath(QStringLiteral("firmware"));
        AskedInstrument instrument(options);
        instrument.SetMode(3);
        QCOMPARE(instrument.Ask(InitializeUpdate, 4), UpdateInitialized);
        QCOMPARE(instrument.Ask(Sector, 3), Acknowledge);
        QCOMPARE(instrument.Firmware(), QByteArray());
        QVERIFY(!QFileInfo::exists(options.firmwarePath));
        QCOMPARE(instrument.Ask(ConfirmSector, 3), Acknowledge);
        QFile file(options.firmwarePath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray(512, '\x11'));
        QCOMPARE(instrument.Firmware(), QByteArray(512, '\x11'));
    }

    /// With 11 bits a byte and 19200 bits per second, 3 bytes take 1.7 ms, 25 take 14.3 ms and 515 take 295
    /// ms.
    void BytesTakeTheirTime()
    {
        InstrumentOptions options;
        options.baud = 19200;
        AskedInstrument instrument(options);
        instrument.SetMode(3);
        QCOMPARE(instrument.Ask(ReadVersion, 25), Version);
        QCOMPARE(instrument.Ask(InitializeUpdate, 4), UpdateInitialized);
        QCOMPARE(instrument.Ask(Sector, 3), Acknowledge);
        QTRY_COMPARE(instrument.Requests().size(), 3);
        const std::vector<Exchange> exchanges = instrument.Exchanges();
        QVERIFY(exchanges.at(0).answeredAt - exchanges.at(0).receivedAt >= milliseconds(1 + 14));
        QVERIFY(exchanges.at(2).answeredAt - exchanges.at(2).receivedAt >= milliseconds(295 + 1));
    }

    /// The line is quiet for 20 ms, and then 4 bytes take 36.7 ms.
    void FramesTakeTheirTime()
    {
        InstrumentOptions options = RcdOptions(1ms, Long);
        options.baud = 1200;
        const AskedInstrument instrument(options);
        QVERIFY(instrument.StartRcdTest());
        QCOMPARE(instrument.client.Read(4), RcdRunningStatus);
        QVERIFY(Simulator::Clock::now() - instrument.Exchanges().back().answeredAt >= milliseconds(20 + 36));
    }

    void PacedNoise()
    {
        InstrumentOptions options;
        options.baud = 300;
        const AskedInstrument instrument(options);
        QCOMPARE(instrument.Ask(Bytes("0102"), 3), Refusal);
        QTRY_COMPARE(instrument.Requests().size(), 1);
        QVERIFY(instrument.AnswerTime() >= milliseconds(73 + 110));
    }

    void PacedAnswersKeepTheOrderOfTheLog()
    {
        const LogFile log;
        InstrumentOptions options;
        options.baud = 1200;
        options.logPath = log.Path();
        options.model.functionTimings.preparing = 5ms;
        const AskedInstrument instrument(options);
        QCOMPARE(instrument.Ask(PrepareHvTest, 3), Acknowledge);
        QTRY_COMPARE(
            log.Lines(),
            QByteArray("5009050200ffffffff063e 06c660\nfunction 9 preparing\nfunction 9 prepared\n"));
    }

    void PacedAnswersGoWithTheirLine()
    {
        InstrumentOptions options;
        options.baud = 300;
        AskedInstrument instrument(options);
        {
            LineClient client(instrument.DevicePath());
            QTRY_VERIFY(instrument.Status().newMeasurement);
            QVERIFY(client.Write(ReadMeasurement));
            QTRY_VERIFY(!instrument.Status().newMeasurement); // The answer takes 953 ms.
            instrument.SetFault(Fault::HangUp);
            instrument.Plug();
        }
        LineClient client(instrument.DevicePath());
        QCOMPARE(client.Ask(StopMeasurement, 3), Acknowledge);
        QTRY_COMPARE(instrument.Requests(), QVector<QByteArray>{StopMeasurement});
    }
};

QTEST_GUILESS_MAIN(TestInstrument)
#include "tst_instrument.moc"
