#include "cli/output/liveoutput.h"

#include <QSignalSpy>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

using namespace std::chrono_literals;

class TestCliLiveOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void WritesAtOnce();
    void NeverWaitsForTheReader();
    void ReaderThatIsGone();
    void FarTooMuchKept();

private:
    QByteArray ReadAll();

    std::array<int, 2> _pipe{-1, -1};
};

void TestCliLiveOutput::init()
{
    std::signal(SIGPIPE, SIG_IGN);
    QCOMPARE(::pipe(_pipe.data()), 0);
    ::fcntl(_pipe[0], F_SETFL, O_NONBLOCK);
}

void TestCliLiveOutput::cleanup()
{
    ::close(_pipe[0]);
    ::close(_pipe[1]);
}

QByteArray TestCliLiveOutput::ReadAll()
{
    QByteArray all;
    std::array<char, 4096> part{};
    for (auto size = ::read(_pipe[0], part.data(), part.size()); size > 0;
         size = ::read(_pipe[0], part.data(), part.size())) {
        all.append(part.data(), static_cast<int>(size));
    }
    return all;
}

void TestCliLiveOutput::WritesAtOnce()
{
    Cli::LiveOutput output(_pipe[1]);
    output.Write("one\n");
    output.Write(QByteArray(500, 'x'));
    QCOMPARE(ReadAll(), "one\n" + QByteArray(500, 'x'));
    QVERIFY(output.Flush(0ms));
}

void TestCliLiveOutput::NeverWaitsForTheReader()
{
    const QByteArray much(300000, 'x'); // a pipe takes less than that
    Cli::LiveOutput output(_pipe[1]);
    const QSignalSpy lost(&output, &Cli::LiveOutput::Lost);
    output.Write(much);
    QVERIFY(!output.Flush(0ms));
    QByteArray read;
    QTRY_VERIFY((read += ReadAll()).size() == much.size());
    QCOMPARE(read, much);
    QVERIFY(output.Flush(0ms));
    QCOMPARE(lost.count(), 0);
}

void TestCliLiveOutput::ReaderThatIsGone()
{
    Cli::LiveOutput output(_pipe[1]);
    const QSignalSpy lost(&output, &Cli::LiveOutput::Lost);
    ::close(_pipe[0]);
    _pipe[0] = -1;
    output.Write("one\n");
    output.Write("two\n");
    QCOMPARE(lost.count(), 1);
    QVERIFY(!output.Flush(0ms));
}

void TestCliLiveOutput::FarTooMuchKept()
{
    Cli::LiveOutput output(_pipe[1]);
    const QSignalSpy lost(&output, &Cli::LiveOutput::Lost);
    output.Write(QByteArray(2000000, 'x'));
    QCOMPARE(lost.count(), 1);
}

QTEST_GUILESS_MAIN(TestCliLiveOutput)
#include "tst_cliliveoutput.moc"
