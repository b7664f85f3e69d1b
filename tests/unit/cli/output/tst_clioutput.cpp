#include "cli/output/output.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

using Result = Cli::Output::Result;

namespace
{

/// A pipe, with a descriptor that becomes readable when the writer shall give up.
class Pipe
{
public:
    Pipe() : _giveUp(::eventfd(0, EFD_CLOEXEC)) { _isOpen = ::pipe2(_ends.data(), O_CLOEXEC) == 0; }
    ~Pipe()
    {
        CloseReader();
        ::close(_ends[1]);
        ::close(_giveUp);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    bool IsOpen() const { return _isOpen && _giveUp >= 0; }
    int Writer() const { return _ends[1]; }
    int GiveUp() const { return _giveUp; }

    void CloseReader()
    {
        if (_ends[0] >= 0) {
            ::close(_ends[0]);
            _ends[0] = -1;
        }
    }

    bool AskToGiveUp() const { return ::eventfd_write(_giveUp, 1) == 0; }

    QByteArray ReadAvailable() const
    {
        QByteArray buffer(1 << 20, '\0');
        const auto size = ::read(_ends[0], buffer.data(), static_cast<size_t>(buffer.size()));
        return buffer.left(static_cast<int>(size));
    }

private:
    std::array<int, 2> _ends{-1, -1};
    int _giveUp;
    bool _isOpen = false;
};

} // namespace

class TestCliOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void LinesArriveAtOnce();
    void LineLongerThanAPipeTakesAtOnce();
    void SignalDoesNotDisturbAReaderThatReads();
    void SignalFreesFromAReaderThatDoesNotRead();
    void ReaderThatWentAway();
    void OutputThatCannotBeWritten();
    void NothingIsWrittenAfterAFailure();
};

void TestCliOutput::initTestCase()
{
    std::signal(SIGPIPE, SIG_IGN);
}

void TestCliOutput::LinesArriveAtOnce()
{
    const Pipe pipe;
    QVERIFY(pipe.IsOpen());
    Cli::Output output(pipe.Writer(), pipe.GiveUp());
    QVERIFY(output.Write("one\ntwo\n") == Result::Written);
    QCOMPARE(pipe.ReadAvailable(), QByteArray("one\ntwo\n"));
    QVERIFY(output.Write("three\n") == Result::Written);
    QCOMPARE(pipe.ReadAvailable(), QByteArray("three\n"));
}

void TestCliOutput::LineLongerThanAPipeTakesAtOnce()
{
    const Pipe pipe;
    QVERIFY(pipe.IsOpen());
    Cli::Output output(pipe.Writer(), pipe.GiveUp());
    const QByteArray line = QByteArray(20000, 'x') + "end\n";
    QVERIFY(output.Write(line) == Result::Written);
    QCOMPARE(pipe.ReadAvailable(), line);
}

void TestCliOutput::SignalDoesNotDisturbAReaderThatReads()
{
    const Pipe pipe;
    QVERIFY(pipe.IsOpen());
    Cli::Output output(pipe.Writer(), pipe.GiveUp());
    QVERIFY(pipe.AskToGiveUp());
    QVERIFY(output.Write("last words\n") == Result::Written);
    QCOMPARE(pipe.ReadAvailable(), QByteArray("last words\n"));
}

void TestCliOutput::SignalFreesFromAReaderThatDoesNotRead()
{
    const Pipe pipe;
    QVERIFY(pipe.IsOpen());
    Cli::Output output(pipe.Writer(), pipe.GiveUp());
    QVERIFY(pipe.AskToGiveUp());
    const QByteArray moreThanAPipeHolds(1 << 21, 'x');
    QVERIFY(output.Write(moreThanAPipeHolds) == Result::GivenUp);
}

void TestCliOutput::ReaderThatWentAway()
{
    Pipe pipe;
    QVERIFY(pipe.IsOpen());
    Cli::Output output(pipe.Writer(), pipe.GiveUp());
    pipe.CloseReader();
    QVERIFY(output.Write("line\n") == Result::ReaderGone);
}

void TestCliOutput::OutputThatCannotBeWritten()
{
    const Pipe pipe;
    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    QVERIFY(full >= 0);
    Cli::Output output(full, pipe.GiveUp());
    QVERIFY(output.Write("line\n") == Result::Failed);
    QCOMPARE(output.LastError(), ENOSPC);
    ::close(full);

    Cli::Output closed(full, pipe.GiveUp());
    QVERIFY(closed.Write("line\n") == Result::Failed);
    QCOMPARE(closed.LastError(), EBADF);
}

void TestCliOutput::NothingIsWrittenAfterAFailure()
{
    const Pipe pipe;
    QVERIFY(pipe.IsOpen());
    Cli::Output output(pipe.Writer(), pipe.GiveUp());
    QVERIFY(pipe.AskToGiveUp());
    QVERIFY(output.Write(QByteArray(1 << 21, 'x')) == Result::GivenUp);
    QVERIFY(!pipe.ReadAvailable().isEmpty());
    QVERIFY(output.Write("half a line before this one\n") == Result::GivenUp);
    QVERIFY(pipe.AskToGiveUp());
    Cli::Output another(pipe.Writer(), pipe.GiveUp());
    QVERIFY(another.Write("sentinel\n") == Result::Written);
    QCOMPARE(pipe.ReadAvailable(), QByteArray("sentinel\n"));
}

QTEST_GUILESS_MAIN(TestCliOutput)
#include "tst_clioutput.moc"
