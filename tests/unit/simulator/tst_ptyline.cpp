#include <memory>

#include <QtTest>

#include "lineclient.h"
#include "simulator/line/ptyline.h"

using Simulator::PtyLine;

class TestPtyLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryByteArrivesUnchanged();
    void ReadWithNothingThereReturnsAtOnce();
    void StaysUpBetweenPrograms();
    void LosesWhatNobodyReads();
    void BreaksWithItsEnd();
    void KeepsItsDescriptorsFromOtherPrograms();
};

namespace
{

QByteArray AllBytes()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value) {
        bytes.append(static_cast<char>(value));
    }
    return bytes;
}

} // namespace

void TestPtyLine::EveryByteArrivesUnchanged()
{
    PtyLine line;
    LineClient client(line.DevicePath());
    QVERIFY(client.IsOpen());

    line.Write(AllBytes());
    QCOMPARE(client.Read(256), AllBytes());

    QVERIFY(client.Write(AllBytes()));
    QByteArray received;
    QTRY_COMPARE((received += line.Read()).size(), 256);
    QCOMPARE(received, AllBytes());
}

void TestPtyLine::ReadWithNothingThereReturnsAtOnce()
{
    PtyLine line;
    QCOMPARE(line.Read(), QByteArray());
}

void TestPtyLine::StaysUpBetweenPrograms()
{
    PtyLine line;
    for (const char* text : {"first", "second"}) {
        LineClient client(line.DevicePath());
        QVERIFY(client.Write(text));
        QByteArray received;
        QTRY_COMPARE(received += line.Read(), QByteArray(text));
        line.Write("answer");
        QCOMPARE(client.Read(6), QByteArray("answer"));
    }
}

void TestPtyLine::LosesWhatNobodyReads()
{
    PtyLine line;
    for (int round = 0; round < 100; ++round) {
        line.Write(QByteArray(4096, 'x')); // would block for ever if the line waited
    }
    LineClient client(line.DevicePath());
    client.DropInput();
    QVERIFY(client.Write("y"));
    QByteArray received;
    QTRY_COMPARE(received += line.Read(), QByteArray("y"));
}

void TestPtyLine::BreaksWithItsEnd()
{
    auto line = std::make_unique<PtyLine>();
    LineClient client(line->DevicePath());
    line.reset();
    QCOMPARE(client.Read(1), QByteArray());
    QVERIFY(!client.Write("x"));
}

void TestPtyLine::KeepsItsDescriptorsFromOtherPrograms()
{
    const PtyLine line;
    QVERIFY((::fcntl(line.Handle(), F_GETFD) & FD_CLOEXEC) != 0);
}

QTEST_GUILESS_MAIN(TestPtyLine)
#include "tst_ptyline.moc"
