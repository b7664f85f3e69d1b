#include "cli/kit/signalwatcher.h"

#include <QSignalSpy>
#include <QtTest>

#include <poll.h>
#include <unistd.h>

#include <csignal>

#include "signaltest.h"

namespace
{

bool IsReadable(int descriptor)
{
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, 0) == 1;
}

} // namespace

class TestCliSignalWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SignalIsEmitted_data();
    void SignalIsEmitted();
    void DescriptorIsReadableUntilTheSignalIsEmitted();
    void EverySignalIsEmitted();
    void PendingSignalsAreEmittedWithoutAnEventLoop();
    void HaltingSignalsAreIgnored();
};

void TestCliSignalWatcher::SignalIsEmitted_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestCliSignalWatcher::SignalIsEmitted()
{
    QFETCH(int, signalNumber);
    std::signal(signalNumber, SIG_DFL);
    const Cli::SignalWatcher watcher;
    QSignalSpy received(&watcher, &Cli::SignalWatcher::Received);
    QCOMPARE(::kill(::getpid(), signalNumber), 0);
    QTRY_COMPARE(received.count(), 1);
    QCOMPARE(received.first().first().toInt(), signalNumber);
}

void TestCliSignalWatcher::DescriptorIsReadableUntilTheSignalIsEmitted()
{
    const Cli::SignalWatcher watcher;
    QSignalSpy received(&watcher, &Cli::SignalWatcher::Received);
    QVERIFY(!IsReadable(watcher.Descriptor()));
    QCOMPARE(::kill(::getpid(), SIGTERM), 0);
    QVERIFY(IsReadable(watcher.Descriptor()));
    QTRY_COMPARE(received.count(), 1);
    QVERIFY(!IsReadable(watcher.Descriptor()));
}

void TestCliSignalWatcher::EverySignalIsEmitted()
{
    const Cli::SignalWatcher watcher;
    QSignalSpy received(&watcher, &Cli::SignalWatcher::Received);
    QCOMPARE(::kill(::getpid(), SIGINT), 0);
    QCOMPARE(::kill(::getpid(), SIGTERM), 0);
    QTRY_COMPARE(received.count(), 2);
    QCOMPARE(received.at(0).first().toInt(), SIGINT);
    QCOMPARE(received.at(1).first().toInt(), SIGTERM);
}

void TestCliSignalWatcher::PendingSignalsAreEmittedWithoutAnEventLoop()
{
    Cli::SignalWatcher watcher;
    QSignalSpy received(&watcher, &Cli::SignalWatcher::Received);
    watcher.EmitPending();
    QCOMPARE(received.count(), 0);
    QCOMPARE(::kill(::getpid(), SIGINT), 0);
    QCOMPARE(::kill(::getpid(), SIGTERM), 0);
    watcher.EmitPending();
    QCOMPARE(received.count(), 2);
    watcher.EmitPending();
    QCOMPARE(received.count(), 2);
}

void TestCliSignalWatcher::HaltingSignalsAreIgnored()
{
    Cli::IgnoreHaltingSignals();
    for (const int halting : {SIGTSTP, SIGTTIN, SIGTTOU, SIGQUIT}) {
        QVERIFY2(std::signal(halting, SIG_DFL) == SIG_IGN, qPrintable(QString::number(halting)));
    }
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliSignalWatcher>(argc, argv);
}

#include "tst_clisignalwatcher.moc"
