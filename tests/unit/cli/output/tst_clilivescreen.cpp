#include "cli/output/livescreen.h"

#include <QSignalSpy>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

#include "support/redirection.h"

namespace
{

QByteArray ReadAll(int descriptor)
{
    QByteArray all;
    std::array<char, 4096> part{};
    for (auto size = ::read(descriptor, part.data(), part.size()); size > 0;
         size = ::read(descriptor, part.data(), part.size())) {
        all.append(part.data(), static_cast<int>(size));
    }
    return all;
}

} // namespace

class TestCliLiveScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void NoLiveLineWithoutATerminal();
    void LiveLineGivesWayToOtherLines();
    void NoLiveLineForPrograms();
    void ReaderThatIsGone();

private:
    std::array<int, 2> _output{-1, -1};
    std::array<int, 2> _errors{-1, -1};
    int _controller = -1; ///< of a terminal
    int _terminal = -1;
};

void TestCliLiveScreen::init()
{
    std::signal(SIGPIPE, SIG_IGN);
    QCOMPARE(::pipe2(_output.data(), O_CLOEXEC | O_NONBLOCK), 0);
    QCOMPARE(::pipe2(_errors.data(), O_CLOEXEC | O_NONBLOCK), 0);
    _controller = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    QVERIFY(_controller >= 0 && ::grantpt(_controller) == 0 && ::unlockpt(_controller) == 0);
    _terminal = ::open(::ptsname(_controller), O_RDWR | O_NOCTTY);
    QVERIFY(_terminal >= 0);
}

void TestCliLiveScreen::cleanup()
{
    for (const int descriptor : {_output[0], _output[1], _errors[0], _errors[1], _terminal, _controller}) {
        ::close(descriptor);
    }
}

void TestCliLiveScreen::NoLiveLineWithoutATerminal()
{
    bool hasLiveLine = true;
    bool isWhole = false;
    {
        const Redirection output(STDOUT_FILENO, _output[1]);
        const Redirection errors(STDERR_FILENO, _errors[1]);
        Cli::LiveScreen screen(true);
        hasLiveLine = screen.HasLiveLine();
        screen.Write("one\ntwo\n");
        screen.Say(QStringLiteral("Three."));
        isWhole = screen.Finish();
    }
    QVERIFY(!hasLiveLine);
    QVERIFY(isWhole);
    QCOMPARE(ReadAll(_output[0]), QByteArray("one\ntwo\n"));
    QCOMPARE(ReadAll(_errors[0]), QByteArray("vesmar: Three.\n"));
}

void TestCliLiveScreen::LiveLineGivesWayToOtherLines()
{
    bool hasLiveLine = false;
    {
        const Redirection output(STDOUT_FILENO, _terminal);
        const Redirection errors(STDERR_FILENO, _errors[1]);
        Cli::LiveScreen screen(true);
        hasLiveLine = screen.HasLiveLine();
        screen.Draw(QStringLiteral("10 %"));
        screen.Draw(QStringLiteral("20 %"));
        screen.Write("one\n");
        screen.Write("two\n");
        screen.Draw(QStringLiteral("30 %"));
        screen.Say(QStringLiteral("Three."));
        screen.Finish();
    }
    QVERIFY(hasLiveLine);
    QCOMPARE(ReadAll(_controller),
             QByteArray("\r10 %\033[K\r20 %\033[K\r\033[Kone\r\ntwo\r\n\r30 %\033[K\r\033[K"));
    QCOMPARE(ReadAll(_errors[0]), QByteArray("vesmar: Three.\n"));
}

void TestCliLiveScreen::NoLiveLineForPrograms()
{
    bool hasLiveLine = true;
    {
        const Redirection output(STDOUT_FILENO, _terminal);
        hasLiveLine = Cli::LiveScreen(false).HasLiveLine();
    }
    QVERIFY(!hasLiveLine);
}

void TestCliLiveScreen::ReaderThatIsGone()
{
    bool isLostAtOnce = true;
    bool isLost = false;
    bool isWhole = true;
    {
        const Redirection output(STDOUT_FILENO, _output[1]);
        const Redirection errors(STDERR_FILENO, _errors[1]);
        Cli::LiveScreen screen(true);
        QSignalSpy lost(&screen, &Cli::LiveScreen::Lost);
        ::close(_output[0]);
        _output[0] = -1;
        screen.Write("one\n");
        isLostAtOnce = !lost.isEmpty();
        isLost = !lost.isEmpty() || lost.wait();
        isWhole = screen.Finish();
    }
    QVERIFY(!isLostAtOnce);
    QVERIFY(isLost);
    QVERIFY(!isWhole);
    QCOMPARE(ReadAll(_errors[0]), QByteArray("vesmar: cannot write the output\n"));
}

QTEST_GUILESS_MAIN(TestCliLiveScreen)
#include "tst_clilivescreen.moc"
