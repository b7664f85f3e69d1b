#include "lineclient.h"

#include "simulator/instrument.h"

#include <QFileInfo>
#include <QtTest>

#include <atomic>
#include <thread>

using Simulator::Exchange;
using Simulator::Fault;
using Simulator::Instrument;
using Simulator::InstrumentOptions;
using std::chrono::milliseconds;

namespace
{

const QByteArray Acknowledge = QByteArray::fromHex("06c660");
const QByteArray Refusal = QByteArray::fromHex("214334");
const QByteArray ReadStatus = QByteArray::fromHex("73f44e");
const QByteArray ReadVersion = QByteArray::fromHex("57122a");
const QByteArray StopMeasurement = QByteArray::fromHex("68aeed");
const QByteArray ModeCalibration = QByteArray::fromHex("7801d191");
const QByteArray Version = QByteArray::fromHex("5041543431303230343831353130353033303232303136f923");

} // namespace

class TestInstrument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AnswersOnTheLine();
    void RefusesNoise();
    void RemembersExchanges();
    void ForgetsExchanges();
    void KeepsNoExchangesWhenToldSo();
    void ScriptedAnswersComeFirst();
    void ScriptedSilence();
    void UnaskedBytes();
    void Silent();
    void RefuseHasNoEffect();
    void DamagedAnswer();
    void Slow();
    void AnswerAfter();
    void HangUpAndComeBack();
    void CommandsByText();
    void RestartLeavesTheLine();
    void ClockIsTheLocalOne();
    void CallsFromManyThreads();
};

void TestInstrument::AnswersOnTheLine()
{
    const Instrument instrument;
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
    QCOMPARE(client.Ask(StopMeasurement, 3), Acknowledge);
}

void TestInstrument::RefusesNoise()
{
    const Instrument instrument;
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(QByteArray::fromHex("73f44f"), 3), Refusal);
    QCOMPARE(client.Ask(QByteArray::fromHex("00"), 3), Refusal);
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
}

void TestInstrument::RemembersExchanges()
{
    const Instrument instrument;
    LineClient client(instrument.DevicePath());
    const auto before = Simulator::Clock::now();
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
    QCOMPARE(client.Ask(StopMeasurement, 3), Acknowledge);
    QCOMPARE(instrument.Requests(), (QVector<QByteArray>{ReadVersion, StopMeasurement}));

    const std::vector<Exchange> exchanges = instrument.Exchanges();
    QCOMPARE(exchanges.at(0).answer, Version);
    QCOMPARE(exchanges.at(1).answer, Acknowledge);
    QVERIFY(before <= exchanges.at(0).receivedAt);
    QVERIFY(exchanges.at(0).receivedAt <= exchanges.at(0).answeredAt);
    QVERIFY(exchanges.at(0).answeredAt <= exchanges.at(1).receivedAt);
}

void TestInstrument::ForgetsExchanges()
{
    Instrument instrument;
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
    instrument.ClearRequests();
    QCOMPARE(instrument.Requests(), QVector<QByteArray>());
}

void TestInstrument::KeepsNoExchangesWhenToldSo()
{
    InstrumentOptions options;
    options.keepsExchanges = false;
    const Instrument instrument(options);
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
    QCOMPARE(instrument.Requests(), QVector<QByteArray>());
}

void TestInstrument::ScriptedAnswersComeFirst()
{
    Instrument instrument;
    instrument.SetFault(Fault::Refuse);
    instrument.AnswerNextWith(QByteArray::fromHex("0001020304"));
    instrument.AnswerNextWith(QByteArray::fromHex("ff"));
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadStatus, 5).toHex(), QByteArray("0001020304"));
    QCOMPARE(client.Ask(ReadStatus, 1).toHex(), QByteArray("ff"));
    QCOMPARE(client.Ask(ReadStatus, 3), Refusal);
}

void TestInstrument::ScriptedSilence()
{
    Instrument instrument;
    instrument.AnswerNextWith(QByteArray());
    LineClient client(instrument.DevicePath());
    QVERIFY(client.Write(ReadStatus));
    QTRY_COMPARE(instrument.Requests().size(), 1);
    QCOMPARE(client.Ask(ReadVersion, 25), Version); // nothing came before it
}

void TestInstrument::UnaskedBytes()
{
    Instrument instrument;
    LineClient client(instrument.DevicePath());
    instrument.Send(QByteArray::fromHex("8af7"));
    QCOMPARE(client.Read(2).toHex(), QByteArray("8af7"));
    QCOMPARE(instrument.Requests(), QVector<QByteArray>());
}

void TestInstrument::Silent()
{
    Instrument instrument;
    instrument.Unplug();
    LineClient client(instrument.DevicePath());
    QVERIFY(client.Write(ReadStatus));
    QTRY_COMPARE(instrument.Requests(), QVector<QByteArray>{ReadStatus});
    QCOMPARE(instrument.Exchanges().at(0).answer, QByteArray());
    instrument.Plug();
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
}

void TestInstrument::RefuseHasNoEffect()
{
    Instrument instrument;
    instrument.SetFunction(5);
    instrument.SetFault(Fault::Refuse);
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(StopMeasurement, 3), Refusal);
    instrument.SetFault(Fault::None);
    QCOMPARE(client.Ask(ReadStatus, 4).left(2).toHex(), QByteArray("05f7"));
}

void TestInstrument::DamagedAnswer()
{
    Instrument instrument;
    instrument.SetFault(Fault::GarbageBefore);
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(StopMeasurement, 5).toHex(), QByteArray("55aa06c660"));
}

void TestInstrument::Slow()
{
    Instrument instrument;
    instrument.SetFault(Fault::Slow, milliseconds(80));
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
    const Exchange exchange = instrument.Exchanges().at(0);
    QVERIFY(exchange.answeredAt - exchange.receivedAt >= milliseconds(80));
}

void TestInstrument::AnswerAfter()
{
    InstrumentOptions options;
    options.answerAfter = milliseconds(60);
    Instrument instrument(options);
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
    const Exchange exchange = instrument.Exchanges().at(0);
    QVERIFY(exchange.answeredAt - exchange.receivedAt >= milliseconds(60));
}

void TestInstrument::HangUpAndComeBack()
{
    Instrument instrument;
    {
        LineClient client(instrument.DevicePath());
        QCOMPARE(client.Ask(ReadVersion, 25), Version);
        instrument.SetFault(Fault::HangUp);
        QCOMPARE(client.Read(1), QByteArray());
        QVERIFY(!client.Write(ReadVersion));
    }
    QVERIFY(!QFileInfo::exists(instrument.DevicePath()));
    instrument.Send("into the void");
    instrument.SetFault(Fault::HangUp);

    instrument.Plug();
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
}

void TestInstrument::CommandsByText()
{
    Instrument instrument;
    LineClient client(instrument.DevicePath());
    QVERIFY(instrument.Execute(QStringLiteral("mode 2")));
    QVERIFY(instrument.Execute(QStringLiteral("error 4")));
    QVERIFY(instrument.Execute(QStringLiteral("function 9")));
    QCOMPARE(client.Ask(ReadStatus, 4).left(2).toHex(), QByteArray("4947"));
    QVERIFY(instrument.Execute(QStringLiteral("fault refuse")));
    QCOMPARE(client.Ask(ReadStatus, 3), Refusal);

    QString error;
    QVERIFY(!instrument.Execute(QStringLiteral("mode 9"), &error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!instrument.Execute(QStringLiteral("mode 9")));
}

void TestInstrument::RestartLeavesTheLine()
{
    InstrumentOptions options;
    options.model.restartTime = milliseconds(300);
    const Instrument instrument(options);
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ModeCalibration, 3), Acknowledge);
    QVERIFY(client.Write(ReadStatus));
    QTRY_COMPARE(instrument.Requests().size(), 2);
    const Simulator::TimePoint acknowledgedAt = instrument.Exchanges().at(0).answeredAt;

    const auto answered = [&instrument] { return !instrument.Exchanges().back().answer.isEmpty(); };
    QTRY_VERIFY(answered() || !client.Write(ReadStatus));
    const Exchange first = instrument.Exchanges().back();
    QCOMPARE(first.answer.left(2).toHex(), QByteArray("20fe"));
    QVERIFY(first.answeredAt - acknowledgedAt > milliseconds(250));
}

void TestInstrument::ClockIsTheLocalOne()
{
    const QDateTime before = QDateTime::currentDateTime();
    const Instrument instrument;
    const QDateTime shown = instrument.Date();
    QVERIFY(shown >= QDateTime(before.date(), before.time(), Qt::UTC));
    QVERIFY(shown < QDateTime(before.date(), before.time(), Qt::UTC).addSecs(60));
    QCOMPARE(instrument.CalibrationDate().date(), QDate(2024, 2, 15));
}

void TestInstrument::CallsFromManyThreads()
{
    Instrument instrument;
    std::atomic<bool> isEnding{false};
    std::thread faults([&] {
        while (!isEnding) {
            instrument.SetFault(Fault::HangUp);
            instrument.SetFault(Fault::None);
            instrument.SetMode(1);
            instrument.SetError(2);
        }
    });
    std::thread observer([&] {
        while (!isEnding) {
            instrument.SetFault(Fault::None);
            instrument.Send("x");
            instrument.ClearRequests();
            instrument.Exchanges();
            instrument.Date();
        }
    });
    for (int round = 0; round < 200; ++round) {
        LineClient client(instrument.DevicePath());
        client.Write(ReadStatus);
    }
    isEnding = true;
    faults.join();
    observer.join();
    instrument.SetFault(Fault::HangUp); // a fresh line, without the answers of the rounds above
    instrument.Plug();
    LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadVersion, 25), Version);
}

QTEST_GUILESS_MAIN(TestInstrument)
#include "tst_instrument.moc"
