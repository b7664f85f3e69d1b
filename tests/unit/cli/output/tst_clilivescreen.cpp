#include "cli/output/livescreen.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

#include "cli/output/wrapped.h"
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

/// What a terminal shows, as far as the live line uses one.
class Shown
{
public:
    void Write(const QString& bytes)
    {
        const QRegularExpression tokens(QStringLiteral("\r|\n|\033\\[(\\d*)([KJA])|[^\r\n\033]+"));
        for (auto token = tokens.globalMatch(bytes); token.hasNext();) {
            Obey(token.next());
        }
    }

    /// Most terminals break their lines anew, and the cursor stays where it was in the text.
    void Narrow(int width)
    {
        QStringList broken;
        int row = 0;
        for (int i = 0; i < lines.size(); ++i) {
            row = i == _row ? broken.size() : row;
            QString left = lines.at(i);
            do {
                broken.append(left.left(width));
                left = left.mid(width);
            } while (!left.isEmpty());
        }
        lines = broken;
        _row = row;
    }

    QStringList lines{QString()};

private:
    void Obey(const QRegularExpressionMatch& token)
    {
        const QString text = token.captured();
        const QString command = token.captured(2);
        if (text == QLatin1String("\r")) {
            _column = 0;
        } else if (text == QLatin1String("\n")) {
            ++_row;
        } else if (command == QLatin1String("A")) {
            _row -= token.captured(1).toInt();
        } else if (!command.isEmpty()) {
            lines[_row].truncate(_column);
            lines = command == QLatin1String("J") ? lines.mid(0, _row + 1) : lines;
        } else {
            lines[_row].replace(_column, text.size(), text);
            _column += text.size();
        }
        while (lines.size() <= _row) {
            lines.append(QString());
        }
    }

    int _row = 0;
    int _column = 0;
};

const QString LongText = QStringLiteral("1.3 s of 5 s [==  ] maximum%1voltage%11000.25, current%10.5, "
                                        "primary%1voltage%1230.125, PWM%1-")
                             .arg(QChar(QChar::Nbsp));

} // namespace

class TestCliLiveScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void NoLiveLineWithoutATerminal();
    void LiveLineGivesWayToOtherLines();
    void LinesAreBroken();
    void NarrowTerminalLosesNothing_data();
    void NarrowTerminalLosesNothing();
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
        isWhole = screen.Finish(0) == 0;
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
        screen.Finish(0);
    }
    QVERIFY(hasLiveLine);
    QCOMPARE(ReadAll(_controller),
             QByteArray("\r10 %\033[J\r\r20 %\033[J\r\r\033[Jone\r\ntwo\r\n\r30 %\033[J\r\r\033[J"));
    QCOMPARE(ReadAll(_errors[0]), QByteArray("vesmar: Three.\n"));
}

void TestCliLiveScreen::LinesAreBroken()
{
    using Lines = QStringList;
    QCOMPARE(Cli::Wrapped(QString(), 5), Lines({QString()}));
    QCOMPARE(Cli::Wrapped(QStringLiteral("  1 s  on"), 9), Lines({QStringLiteral("  1 s  on")}));
    QCOMPARE(Cli::Wrapped(QStringLiteral("one two  three"), 7),
             Lines({QStringLiteral("one two"), QStringLiteral("three")}));
    QCOMPARE(Cli::Wrapped(QStringLiteral("a b%1c").arg(QChar(QChar::Nbsp)), 4),
             Lines({QStringLiteral("a"), QStringLiteral("b c")}));
    QCOMPARE(Cli::Wrapped(QStringLiteral("a bb%1ccccc").arg(QChar(QChar::Nbsp)), 4),
             Lines({QStringLiteral("a bb"), QStringLiteral("cccc"), QStringLiteral("c")}));
}

void TestCliLiveScreen::NarrowTerminalLosesNothing_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("narrower") << 100 << 30;
    QTest::newRow("narrower and narrower") << 60 << 30;
    QTest::newRow("wider") << 30 << 100;
}

void TestCliLiveScreen::NarrowTerminalLosesNothing()
{
    QFETCH(int, from);
    QFETCH(int, to);
    Shown shown;
    {
        const Redirection output(STDOUT_FILENO, _terminal);
        Cli::LiveScreen screen(true);
        for (const int width : {from, to}) {
            const winsize size{24, static_cast<unsigned short>(width), 0, 0};
            QCOMPARE(::ioctl(_controller, TIOCSWINSZ, &size), 0);
            shown.Narrow(width);
            if (width == from) {
                screen.Write("before\n");
            }
            screen.Draw(LongText);
            screen.Draw(LongText);
            shown.Write(QString::fromUtf8(ReadAll(_controller)));
            QCOMPARE(shown.lines, QStringList(QStringLiteral("before")) + Cli::Wrapped(LongText, width - 1));
        }
        screen.Finish(0);
    }
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
        isWhole = screen.Finish(0) == 0;
    }
    QVERIFY(!isLostAtOnce);
    QVERIFY(isLost);
    QVERIFY(!isWhole);
    QCOMPARE(ReadAll(_errors[0]), QByteArray("vesmar: nobody reads the output\n"));
}

QTEST_GUILESS_MAIN(TestCliLiveScreen)
#include "tst_clilivescreen.moc"
