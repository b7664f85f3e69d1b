#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "instrumentbench.h"
#include "lineclient.h"
#include "simulator/faults/faultfile.h"
#include "simulator/line/instrument.h"
#include "simulator/line/recordingfile.h"

using Simulator::Fault;
using Simulator::Instrument;
using Simulator::InstrumentOptions;

namespace
{

const QByteArray Acknowledge = QByteArray::fromHex("06c660");
const QByteArray Refusal = QByteArray::fromHex("214334");
const QByteArray ReadStatus = QByteArray::fromHex("73f44e");
const QByteArray StartMeasurement = QByteArray::fromHex("53966a");
const QByteArray StopMeasurement = QByteArray::fromHex("68aeed");
const QByteArray Status = QByteArray::fromHex("00fed10e");
const QByteArray Progress = QByteArray::fromHex("0af73370");
const QByteArray Result = QByteArray::fromHex("05024741d600f300000000000000000000000000000000005731");

InstrumentOptions Playing(const char* exchanges)
{
    InstrumentOptions options;
    options.recording = Simulator::ParseRecording(QByteArray("{\"exchanges\": [") + exchanges + "]}");
    return options;
}

/// A start and what comes of it.
const char Test[] = "{\"request\": \"73f44e\", \"answer\": \"00fed10e\"},"
                    "{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                    "{\"unasked\": \"0af73370\", \"after\": 100},"
                    "{\"unasked\": \"05024741d600f300000000000000000000000000000000005731\", \"after\": 100},"
                    "{\"request\": \"68aeed\", \"answer\": \"06c660\"}";

} // namespace

class TestInstrumentPlayback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AnswersAndWhatComesUnasked();
    void WhatIsNotRecordedIsTheModels();
    void SilenceIsSilence();
    void UnaskedIsCancelled();
    void NothingIsLeftOfTheModel();
    void FaultsWorkOnTop();
    void RefusedRequestIsNotPlayed();
    void UnaskedIsLostWhileUnplugged();
    void Log();
};

void TestInstrumentPlayback::AnswersAndWhatComesUnasked()
{
    Instrument instrument(Playing(Test));
    const LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(ReadStatus, 4), Status);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(client.Ask(StartMeasurement, 3), Acknowledge);
    QCOMPARE(client.Read(4), Progress);
    QVERIFY(timer.elapsed() >= 99);
    QCOMPARE(client.Read(26), Result);
    QVERIFY(timer.elapsed() >= 199);
    QCOMPARE(client.Ask(ReadStatus, 4), Status);
    QCOMPARE(client.Ask(StopMeasurement, 3), Acknowledge);
}

/// A log may begin in the middle, without the identity that every program reads first.
void TestInstrumentPlayback::WhatIsNotRecordedIsTheModels()
{
    Instrument instrument(Playing(Test));
    const LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(QByteArray::fromHex("57122a"), 25).left(6), QByteArray("PAT410"));
    QCOMPARE(client.Ask(ReadStatus, 4), Status);
}

void TestInstrumentPlayback::SilenceIsSilence()
{
    Instrument instrument(
        Playing("{\"request\": \"73f44e\"}, {\"request\": \"68aeed\", \"answer\": \"06\"}"));
    const LineClient client(instrument.DevicePath());
    QVERIFY(client.Write(ReadStatus));
    QTRY_COMPARE(RequestsOf(instrument).size(), 1);
    QCOMPARE(client.Ask(StopMeasurement, 1).toHex(), QByteArray("06"));
    QVERIFY(instrument.Exchanges().front().answer.isEmpty());
}

void TestInstrumentPlayback::UnaskedIsCancelled()
{
    Instrument instrument(Playing("{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                                  "{\"unasked\": \"0af73370\", \"after\": 600000},"
                                  "{\"request\": \"68aeed\", \"answer\": \"06c660\"},"
                                  "{\"unasked\": \"77\"}"));
    const LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(StartMeasurement, 3), Acknowledge);
    QCOMPARE(client.Ask(StopMeasurement, 4), Acknowledge + QByteArray("w"));
}

void TestInstrumentPlayback::NothingIsLeftOfTheModel()
{
    const QTemporaryDir folder;
    InstrumentOptions options = Playing(Test);
    options.logPath = folder.filePath(QStringLiteral("log"));
    Instrument instrument(options);
    const LineClient client(instrument.DevicePath());
    instrument.SetMode(2);
    instrument.SetError(4);
    instrument.SetFunction(3);
    instrument.Execute(Command("restart 2"));
    instrument.Execute(Command("scenario refuses-prepare"));
    QCOMPARE(client.Ask(ReadStatus, 4), Status);
    QTRY_COMPARE(RequestsOf(instrument).size(), 1);
    QFile log(options.logPath);
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(log.readAll().mid(25), QByteArray("73f44e 00fed10e\n"));
}

void TestInstrumentPlayback::FaultsWorkOnTop()
{
    Instrument instrument(Playing(Test));
    const LineClient client(instrument.DevicePath());
    QVERIFY(instrument.AddFaults({Simulator::ParseFault(
        "{\"fault\": \"bad-crc\", \"when\": {\"request\": \"s\", \"from\": 2}, \"count\": 1}")}));
    QCOMPARE(client.Ask(ReadStatus, 4).toHex(), QByteArray("00fed10e"));
    QCOMPARE(client.Ask(ReadStatus, 4).toHex(), QByteArray("00fed1f1"));
    instrument.SetFault(Fault::Truncated);
    QCOMPARE(client.Ask(StopMeasurement, 2).toHex(), QByteArray("06c6"));
}

void TestInstrumentPlayback::RefusedRequestIsNotPlayed()
{
    Instrument instrument(Playing(Test));
    const LineClient client(instrument.DevicePath());
    instrument.SetFault(Fault::Refuse);
    QCOMPARE(client.Ask(StopMeasurement, 3), Refusal);
    instrument.Plug();
    QCOMPARE(client.Ask(StartMeasurement, 3), Acknowledge);
    QCOMPARE(client.Read(4), Progress);
}

/// Whatever is due before a request is dealt with before it. There is time enough to unplug it even on a busy
/// machine.
void TestInstrumentPlayback::UnaskedIsLostWhileUnplugged()
{
    Instrument instrument(Playing("{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                                  "{\"unasked\": \"0af73370\", \"after\": 2000},"
                                  "{\"request\": \"68aeed\", \"answer\": \"06c660\"}"));
    const LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(StartMeasurement, 3), Acknowledge);
    QElapsedTimer timer;
    timer.start();
    instrument.Unplug();
    QTRY_VERIFY(timer.elapsed() >= 2000);
    QVERIFY(client.Write(ReadStatus));
    QTRY_COMPARE(RequestsOf(instrument).size(), 2);
    instrument.Plug();
    QCOMPARE(client.Ask(StopMeasurement, 3), Acknowledge);
}

void TestInstrumentPlayback::Log()
{
    const QTemporaryDir folder;
    InstrumentOptions options = Playing("{\"request\": \"53966a\", \"answer\": \"06c660\"},"
                                        "{\"unasked\": \"0af73370\", \"after\": 1},"
                                        "{\"request\": \"73f44e\"}");
    options.logPath = folder.filePath(QStringLiteral("log"));
    Instrument instrument(options);
    const LineClient client(instrument.DevicePath());
    QCOMPARE(client.Ask(StartMeasurement, 7), Acknowledge + Progress);
    QVERIFY(client.Write(ReadStatus));
    QTRY_COMPARE(RequestsOf(instrument).size(), 2);
    QFile log(options.logPath);
    QVERIFY(log.open(QIODevice::ReadOnly));
    QByteArrayList lines = log.readAll().split('\n');
    for (QByteArray& line : lines) {
        line = line.mid(25);
    }
    QCOMPARE(lines, (QByteArrayList{"53966a 06c660", "unasked 0af73370", "73f44e -", ""}));
}

QTEST_GUILESS_MAIN(TestInstrumentPlayback)
#include "tst_instrumentplayback.moc"
