#include "cli/decode/logreader.h"

#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "unit/cli/decode/logfiles.h"

using Cli::LogLine;
using Cli::LogReader;

class TestCliLogReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void GivesOutLines_data();
    void GivesOutLines();
    void NumbersLines();
    void FindsDamage_data();
    void FindsDamage();
    void GoesOnBehindALineThatIsTooLong();
    void ReadsLinesAcrossPieces();
    void GivesOutALineBeforeTheNextIsThere();
    void StopsInTheMiddleOfALine();
    void StopsInTheMiddleOfAFile();
    void TellsWhyItCannotRead();
};

void TestCliLogReader::GivesOutLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArrayList>("lines");
    QTest::newRow("empty") << QByteArray() << QByteArrayList();
    QTest::newRow("one") << QByteArray("one\n") << QByteArrayList{"one"};
    QTest::newRow("carriage returns") << QByteArray("one\r\ntwo\r\n") << QByteArrayList{"one", "two"};
    QTest::newRow("empty lines") << QByteArray("\n\r\n\n") << QByteArrayList{"", "", ""};
}

void TestCliLogReader::GivesOutLines()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArrayList, lines);
    const LogText file(text);
    QVERIFY(file.IsThere());
    LogReader reader(file.Descriptor());
    for (const QByteArray& line : lines) {
        const auto found = reader.Next();
        QVERIFY(found);
        QCOMPARE(found->text, line);
        QCOMPARE(found->damage, QString());
    }
    QVERIFY(!reader.Next());
    QCOMPARE(reader.LastError(), 0);
}

void TestCliLogReader::NumbersLines()
{
    const LogText file("one\n\nthree\n");
    LogReader reader(file.Descriptor());
    QCOMPARE(reader.Next()->number, qint64(1));
    QCOMPARE(reader.Next()->number, qint64(2));
    QCOMPARE(reader.Next()->number, qint64(3));
}

void TestCliLogReader::FindsDamage_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("damage");
    QTest::newRow("no end") << QByteArray("cut") << "the line has no end";
    QTest::newRow("zero byte") << QByteArray("a\0b\n", 4) << "bytes that are no text";
    QTest::newRow("the longest") << QByteArray(65536, 'x') + '\n' << "";
    QTest::newRow("too long") << QByteArray(65537, 'x') + '\n' << "more than 65536 bytes";
    QTest::newRow("far too long, without an end") << QByteArray(500000, 'x') << "more than 65536 bytes";
}

void TestCliLogReader::FindsDamage()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QString, damage);
    const LogText file(text);
    LogReader reader(file.Descriptor());
    const auto line = reader.Next();
    QVERIFY(line);
    QCOMPARE(line->damage.isEmpty(), damage.isEmpty());
    QVERIFY2(line->damage.contains(damage), qPrintable(line->damage));
    QVERIFY(line->text.size() <= LogReader::LongestLine + 1);
    QVERIFY(!reader.Next());
}

void TestCliLogReader::GoesOnBehindALineThatIsTooLong()
{
    const LogText file(QByteArray(200000, 'x') + "\nnext\n");
    LogReader reader(file.Descriptor());
    QVERIFY(!reader.Next()->damage.isEmpty());
    const auto line = reader.Next();
    QVERIFY(line);
    QCOMPARE(line->number, qint64(2));
    QCOMPARE(line->text, QByteArray("next"));
    QCOMPARE(line->damage, QString());
}

void TestCliLogReader::ReadsLinesAcrossPieces()
{
    const QByteArray line(1000, 'y');
    const LogText file((line + '\n').repeated(200));
    LogReader reader(file.Descriptor());
    for (int i = 0; i < 200; ++i) {
        const auto found = reader.Next();
        QVERIFY(found);
        QCOMPARE(found->text, line);
    }
    QVERIFY(!reader.Next());
}

void TestCliLogReader::GivesOutALineBeforeTheNextIsThere()
{
    std::array<int, 2> ends{};
    QCOMPARE(::pipe(ends.data()), 0);
    LogReader reader(ends[0]);
    QCOMPARE(::write(ends[1], "first\n", 6), ssize_t(6));
    QCOMPARE(reader.Next()->text, QByteArray("first"));
    ::close(ends[1]);
    QVERIFY(!reader.Next());
    ::close(ends[0]);
}

void TestCliLogReader::StopsInTheMiddleOfALine()
{
    std::array<int, 2> ends{};
    std::array<int, 2> stop{};
    QCOMPARE(::pipe(ends.data()), 0);
    QCOMPARE(::pipe(stop.data()), 0);
    LogReader reader(ends[0], stop[0]);
    QCOMPARE(::write(ends[1], "first\nsec", 9), ssize_t(9));
    QCOMPARE(reader.Next()->text, QByteArray("first"));
    QVERIFY(!reader.IsStopped());
    QCOMPARE(::write(stop[1], "!", 1), ssize_t(1));
    QVERIFY(!reader.Next());
    QVERIFY(reader.IsStopped());
    QCOMPARE(reader.LastError(), 0);
    for (const int descriptor : {ends[0], ends[1], stop[0], stop[1]}) {
        ::close(descriptor);
    }
}

/// Lines that were read already are given out.
void TestCliLogReader::StopsInTheMiddleOfAFile()
{
    const QByteArray line(1000, 'z');
    const LogText file((line + '\n').repeated(200));
    std::array<int, 2> stop{};
    QCOMPARE(::pipe(stop.data()), 0);
    LogReader reader(file.Descriptor(), stop[0]);
    int lines = 0;
    while (const auto found = reader.Next()) {
        QCOMPARE(found->text, line);
        QCOMPARE(::write(stop[1], "!", 1), ssize_t(1));
        ++lines;
    }
    QVERIFY(reader.IsStopped());
    QVERIFY2(lines > 1 && lines < 200, QByteArray::number(lines).constData());
    ::close(stop[0]);
    ::close(stop[1]);
}

void TestCliLogReader::TellsWhyItCannotRead()
{
    const int folder = ::open("/", O_RDONLY);
    QVERIFY(folder >= 0);
    LogReader reader(folder);
    QVERIFY(!reader.Next());
    QCOMPARE(reader.LastError(), EISDIR);
    ::close(folder);
}

QTEST_APPLESS_MAIN(TestCliLogReader)
#include "tst_clilogreader.moc"
