#include "decode/log/recording.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include "unit/decode/logfiles.h"

using Decode::Event;
using Decode::Recording;

class TestDecodeRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void WritesWhatWentOverTheLine();
    void LeavesOutWhatCannotBePlayed();
    void IsNotThereBeforeItIsWhole();
    void BoundsPauses_data();
    void BoundsPauses();
    void RefusesTooManyEntries();
    void RefusesTooManyBytes();
    void RefusesALongFrame();
    void RefusesToBeEmpty();
    void SaysWhyItCannotWrite();

private:
    QString Path() const { return _folder->filePath(QStringLiteral("recording")); }

    QByteArray Content() const
    {
        QFile file(Path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    std::unique_ptr<QTemporaryDir> _folder;
};

void TestDecodeRecording::init()
{
    _folder = std::make_unique<QTemporaryDir>();
    QVERIFY(_folder->isValid());
}

void TestDecodeRecording::WritesWhatWentOverTheLine()
{
    Recording recording(Path(), QStringLiteral("From \"a\" log"));
    for (const Event& event :
         EventsOf({"12:00:00.000 Transciever::Open", "12:00:00.100  73f44e 00f5babf[4b]",
                   "12:00:04.100  73f44e [0b] No response", "12:00:04.400  53966a 06c660[3b] ACK",
                   "12:00:04.600 ReadingBuffer: 0af73370", "12:00:04.700 ReadingBuffer: 0af7"})) {
        recording.Record(event);
    }
    QCOMPARE(recording.Entries(), 5);
    QVERIFY2(recording.Commit(), qPrintable(recording.Problem()));
    QCOMPARE(Content(), QByteArray("{\"comment\":\"From \\\"a\\\" log\", \"exchanges\": [\n"
                                   "{\"answer\":\"00f5babf\",\"request\":\"73f44e\"},\n"
                                   "{\"request\":\"73f44e\"},\n"
                                   "{\"answer\":\"06c660\",\"request\":\"53966a\"},\n"
                                   "{\"after\":200,\"unasked\":\"0af73370\"},\n"
                                   "{\"after\":100,\"unasked\":\"0af7\"}\n"
                                   "]}\n"));
}

void TestDecodeRecording::LeavesOutWhatCannotBePlayed()
{
    Recording recording(Path(), QString());
    for (const Event& event :
         EventsOf({"12:00:00.000 ReadingBuffer: 0af73370", "12:00:00.100  73f44e 00f5babf[4b]",
                   "12:00:00.200  73f44e [0b] No response", "12:00:00.200 Transciever::Close"})) {
        recording.Record(event);
    }
    QVERIFY(recording.Commit());
    QCOMPARE(
        Content(),
        QByteArray(
            "{\"comment\":\"\", \"exchanges\": [\n{\"answer\":\"00f5babf\",\"request\":\"73f44e\"}\n]}\n"));
}

void TestDecodeRecording::IsNotThereBeforeItIsWhole()
{
    QFile before(Path());
    QVERIFY(before.open(QIODevice::WriteOnly) && before.write("before") == 6);
    before.close();
    {
        Recording recording(Path(), QString());
        recording.Record(EventsOf({"12:00:00.100  73f44e 00f5babf[4b]"}).first());
    }
    QCOMPARE(Content(), QByteArray("before"));
    QCOMPARE(QDir(_folder->path()).entryList(QDir::Files).size(), 1);
}

void TestDecodeRecording::BoundsPauses_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("long") << QByteArray("12:00:00.000") << QByteArray("13:00:00.000") << QByteArray("600000");
    QTest::newRow("over midnight") << QByteArray("23:59:59.900") << QByteArray("00:00:00.100")
                                   << QByteArray("200");
    QTest::newRow("none") << QByteArray("12:00:00.000") << QByteArray("12:00:00.000") << QByteArray("0");
    QTest::newRow("clock set back") << QByteArray("12:00:00.000") << QByteArray("11:59:59.000")
                                    << QByteArray("0");
}

void TestDecodeRecording::BoundsPauses()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, time);
    QFETCH(const QByteArray, after);
    Recording recording(Path(), QString());
    for (const Event& event :
         EventsOf({before + "  73f44e 00f5babf[4b]", time + " ReadingBuffer: 0af73370"})) {
        recording.Record(event);
    }
    QVERIFY(recording.Commit());
    QVERIFY2(Content().contains("{\"after\":" + after + ",\"unasked\""), Content().constData());
}

void TestDecodeRecording::RefusesTooManyEntries()
{
    Recording recording(Path(), QString());
    const Event event = EventsOf({"12:00:00.000  73f44e 00f5babf[4b]"}).first();
    for (int i = 0; i < 100000; ++i) {
        recording.Record(event);
    }
    QCOMPARE(recording.Problem(), QString());
    recording.Record(event);
    QVERIFY2(recording.Problem().contains(QLatin1String("cut it into parts")),
             qPrintable(recording.Problem()));
    QVERIFY(!recording.Commit());
    QVERIFY(!QFile::exists(Path()));
}

void TestDecodeRecording::RefusesTooManyBytes()
{
    Recording recording(Path(), QString());
    Event event = EventsOf({"12:00:00.000  73f44e 00f5babf[4b]"}).first();
    event.request = QByteArray(2048, 'F');
    event.answer = QByteArray(2048, 'F');
    for (int i = 0; i < 2000; ++i) {
        recording.Record(event);
    }
    QCOMPARE(recording.Problem(), QString());
    for (int i = 0; i < 100; ++i) {
        recording.Record(event);
    }
    QVERIFY2(recording.Problem().contains(QLatin1String("16777216 bytes")), qPrintable(recording.Problem()));
    QVERIFY(!recording.Commit());
    QVERIFY(!QFile::exists(Path()));
}

void TestDecodeRecording::RefusesALongFrame()
{
    Recording recording(Path(), QString());
    Event event = EventsOf({"12:00:00.000  73f44e 00f5babf[4b]"}).first();
    event.line = 7;
    event.answer = QByteArray(2049, '\0');
    recording.Record(event);
    QVERIFY2(recording.Problem().startsWith(QLatin1String("line 7 has more than 2048 bytes")),
             qPrintable(recording.Problem()));
    QVERIFY(!recording.Commit());
}

void TestDecodeRecording::RefusesToBeEmpty()
{
    Recording recording(Path(), QString());
    QVERIFY(!recording.Commit());
    QCOMPARE(recording.Problem(), QStringLiteral("there is no exchange to record"));
    QVERIFY(!QFile::exists(Path()));
}

void TestDecodeRecording::SaysWhyItCannotWrite()
{
    const Recording nowhere(_folder->filePath(QStringLiteral("no/folder")), QString());
    QVERIFY2(nowhere.Problem().contains(QLatin1String("No such file or directory")),
             qPrintable(nowhere.Problem()));
    const Recording folder(_folder->path(), QString());
    QVERIFY2(folder.Problem().contains(QLatin1String("not a regular file")), qPrintable(folder.Problem()));
}

QTEST_APPLESS_MAIN(TestDecodeRecording)
#include "tst_decoderecording.moc"
