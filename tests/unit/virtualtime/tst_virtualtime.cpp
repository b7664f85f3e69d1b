#include "virtualtime/virtualtime.h"

#include <fcntl.h>
#include <linux/futex.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include <QElapsedTimer>
#include <QMutex>
#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWaitCondition>

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

using Action = std::function<void()>;
using Look = std::function<qint64()>;

Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Look)

namespace
{

constexpr char DeadlockArgument[] = "deadlock";
constexpr qint64 PerSecond = 1000;
constexpr qint64 PerMillisecond = 1000000;
constexpr nanoseconds Glance = microseconds(1); ///< What a look takes that waits for nothing.

/// How long the action lasts.
nanoseconds DurationOf(const Action& action)
{
    const nanoseconds start = VirtualTime::Now();
    action();
    return VirtualTime::Now() - start;
}

/// Compares to the nanosecond, and prints numbers.
#define VERIFY_LASTS(duration, action) QCOMPARE(DurationOf(action).count(), nanoseconds(duration).count())

/// Runs the action on a thread of its own, so much later.
std::thread Later(milliseconds delay, const Action& action)
{
    return std::thread([delay, action] {
        VirtualTime::Sleep(delay);
        action();
    });
}

/// A pair of descriptors that are closed at the end.
struct Ends {
    Ends() = default;
    ~Ends()
    {
        close(reading);
        close(writing);
    }
    Ends(const Ends&) = delete;
    Ends& operator=(const Ends&) = delete;

    int reading = -1;
    int writing = -1;
};

struct Pipe : Ends {
    Pipe()
    {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) == 0) {
            reading = ends[0];
            writing = ends[1];
        }
    }
};

/// A raw pseudo-terminal, with the master at the writing end or at the reading end.
struct PseudoTerminal : Ends {
    explicit PseudoTerminal(bool isMasterWriting = true)
    {
        const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        std::array<char, 128> path{};
        grantpt(master);
        unlockpt(master);
        ptsname_r(master, path.data(), path.size());
        const int slave = open(path.data(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
        termios settings{};
        cfmakeraw(&settings);
        tcsetattr(slave, TCSANOW, &settings);
        reading = isMasterWriting ? slave : master;
        writing = isMasterWriting ? master : slave;
    }
};

QByteArray ReadFrom(int descriptor)
{
    std::array<char, 4000> buffer{};
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    return count < 0 ? QByteArray("nothing") : QByteArray(buffer.data(), static_cast<int>(count));
}

bool WriteTo(int descriptor, const QByteArray& bytes)
{
    return write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
}

int PollFor(int descriptor, int limitMs)
{
    pollfd source{descriptor, POLLIN, 0};
    return poll(&source, 1, limitMs);
}

timespec TimeOf(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return time;
}

qint64 MillisecondsOf(const timespec& time)
{
    return time.tv_sec * PerSecond + time.tv_nsec / PerMillisecond;
}

/// Waits for what nobody does.
void Deadlock()
{
    QSemaphore semaphore;
    std::thread thread([&semaphore] { semaphore.acquire(); });
    thread.join();
}

/// What a program prints that waits for ever.
QByteArray OutputOfADeadlock()
{
    const QByteArray command = "ulimit -c 0; exec '" + QCoreApplication::applicationFilePath().toLocal8Bit() +
                               "' " + DeadlockArgument + " 2>&1";
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.constData(), "r"), &pclose);
    QByteArray text;
    for (int character = std::fgetc(output.get()); character != EOF; character = std::fgetc(output.get())) {
        text.append(static_cast<char>(character));
    }
    return text;
}

} // namespace

class TestVirtualTime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SleepLastsExactlyAsLongAsItShould_data();
    void SleepLastsExactlyAsLongAsItShould();
    void ClockGoesOnWithTheSleeps_data();
    void ClockGoesOnWithTheSleeps();
    void DateLooksLikeOne();
    void TimeStandsStillWhileAThreadRuns();
    void SleepersWakeInTheOrderOfTheirMoments();
    void SleepersOfOneMomentWakeInTheOrderOfTheirSleep();

    void ConditionVariableWaitsForItsTimeLimit();
    void ConditionVariableIsNotifiedBeforeItsTimeLimit();
    void NotificationWakesOneOrAll();
    void NotificationWithoutAWaiterIsLost();

    void FutexOfAnotherValueIsNotAwaited();
    void MutexIsTriedForItsTimeLimit();
    void MutexIsHandedOnWhenItIsUnlocked();
    void SemaphoreIsTriedForItsTimeLimit();
    void SemaphoreIsAcquiredWhenThereIsEnough();
    void WaitConditionWaitsForItsTimeLimitOrForBeingWoken();

    void ThreadIsAwaitedForItsTimeLimit();
    void JoinLastsUntilTheThreadsEnd();
    void JoinOfAThreadThatHasEndedLastsNoTime();
    void ThreadsThatRunAreCounted();

    void TimersFireInTheirOrder();
    void SlotOnAnotherThreadIsAwaited();

    void PollWaitsForItsTimeLimit();
    void PollEndsWithTheBytes();
    void PollThatOnlyLooksLetsTimeGoOn();

    void BytesArriveAtOnceAndInOnePiece_data();
    void BytesArriveAtOnceAndInOnePiece();
    void PollEndsWithTheBytesOfAPseudoTerminal();
    void FlushDropsTheBytesThatAreUnderWay();
    void NothingIsAwaitedThatWasNotWritten();

    void DeadlockIsTold();
};

void TestVirtualTime::SleepLastsExactlyAsLongAsItShould_data()
{
    QTest::addColumn<Action>("sleep");
    QTest::newRow("the clock's own") << Action([] { VirtualTime::Sleep(milliseconds(1234)); });
    QTest::newRow("usleep") << Action([] { usleep(1234000); });
    QTest::newRow("nanosleep") << Action([] {
        const timespec duration{1, 234 * PerMillisecond};
        nanosleep(&duration, nullptr);
    });
    for (const clockid_t clock : {CLOCK_MONOTONIC, CLOCK_REALTIME}) {
        QTest::addRow("until a moment of clock %d", clock) << Action([clock] {
            timespec moment = TimeOf(clock);
            moment.tv_sec += 1;
            moment.tv_nsec += 234 * PerMillisecond;
            clock_nanosleep(clock, TIMER_ABSTIME, &moment, nullptr);
        });
    }
    QTest::newRow("standard library") << Action([] { std::this_thread::sleep_for(milliseconds(1234)); });
    QTest::newRow("QThread") << Action([] { QThread::msleep(1234); });
    QTest::newRow("qSleep") << Action([] { QTest::qSleep(1234); });
    QTest::newRow("poll of nothing") << Action([] { poll(nullptr, 0, 1234); });
}

void TestVirtualTime::SleepLastsExactlyAsLongAsItShould()
{
    QFETCH(const Action, sleep);
    VERIFY_LASTS(milliseconds(1234), sleep);
}

void TestVirtualTime::ClockGoesOnWithTheSleeps_data()
{
    QTest::addColumn<Look>("look");
    QTest::newRow("monotonic") << Look([] { return MillisecondsOf(TimeOf(CLOCK_MONOTONIC)); });
    QTest::newRow("date") << Look([] { return MillisecondsOf(TimeOf(CLOCK_REALTIME)); });
    QTest::newRow("gettimeofday") << Look([] {
        timeval time{};
        gettimeofday(&time, nullptr);
        return time.tv_sec * PerSecond + time.tv_usec / PerSecond;
    });
    QTest::newRow("steady clock") << Look(
        [] { return std::chrono::steady_clock::now().time_since_epoch() / milliseconds(1); });
    QTest::newRow("system clock") << Look(
        [] { return std::chrono::system_clock::now().time_since_epoch() / milliseconds(1); });
    QTest::newRow("QElapsedTimer") << Look([] {
        QElapsedTimer timer;
        timer.start();
        return timer.msecsSinceReference();
    });
    QTest::newRow("QDateTime") << Look(&QDateTime::currentMSecsSinceEpoch);
    QTest::newRow("time") << Look([] { return std::time(nullptr) * PerSecond; });
}

void TestVirtualTime::ClockGoesOnWithTheSleeps()
{
    QFETCH(const Look, look);
    const qint64 start = look();
    QThread::sleep(86400);
    QCOMPARE(look() - start, 86400 * PerSecond);
}

void TestVirtualTime::DateLooksLikeOne()
{
    QVERIFY(QDateTime::currentDateTimeUtc() >= QDateTime({2026, 1, 1}, {0, 0}, Qt::UTC));
}

void TestVirtualTime::TimeStandsStillWhileAThreadRuns()
{
    volatile int sum = 0;
    VERIFY_LASTS(nanoseconds(0), [&sum] {
        for (int count = 0; count < 1000000; ++count) {
            sum = sum + count % 2;
        }
    });
    QCOMPARE(sum, 500000);
}

void TestVirtualTime::SleepersWakeInTheOrderOfTheirMoments()
{
    std::vector<int> woken;
    std::vector<std::thread> threads;
    for (const int delay : {30, 10, 20, 25, 15}) {
        threads.push_back(Later(milliseconds(delay), [&woken, delay] { woken.push_back(delay); }));
    }
    VERIFY_LASTS(milliseconds(30), [&threads] {
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    QCOMPARE(woken, (std::vector<int>{10, 15, 20, 25, 30}));
}

void TestVirtualTime::SleepersOfOneMomentWakeInTheOrderOfTheirSleep()
{
    std::vector<int> woken;
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        threads.push_back(Later(milliseconds(5), [&woken, number] { woken.push_back(number); }));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(woken, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
}

namespace
{

/// A flag behind a mutex and a condition variable.
struct Gate {
    std::mutex mutex;
    std::condition_variable condition;
    int tickets = 0;

    bool Enter(milliseconds limit)
    {
        std::unique_lock<std::mutex> lock(mutex);
        return condition.wait_for(lock, limit, [this] { return tickets > 0 && tickets-- > 0; });
    }

    void Admit(int count)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        tickets += count;
    }
};

} // namespace

void TestVirtualTime::ConditionVariableWaitsForItsTimeLimit()
{
    Gate gate;
    VERIFY_LASTS(milliseconds(70), [&gate] { QVERIFY(!gate.Enter(milliseconds(70))); });
}

void TestVirtualTime::ConditionVariableIsNotifiedBeforeItsTimeLimit()
{
    Gate gate;
    std::thread thread = Later(milliseconds(40), [&gate] {
        gate.Admit(1);
        gate.condition.notify_one();
    });
    VERIFY_LASTS(milliseconds(40), [&gate] { QVERIFY(gate.Enter(milliseconds(70))); });
    thread.join();
}

void TestVirtualTime::NotificationWakesOneOrAll()
{
    Gate gate;
    int entered = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.push_back(
            Later(milliseconds(number), [&] { entered += gate.Enter(milliseconds(90)) ? 1 : 0; }));
    }
    QThread::msleep(10);
    gate.Admit(4);
    gate.condition.notify_one();
    QThread::msleep(10);
    QCOMPARE(entered, 1);
    gate.condition.notify_all();
    QThread::msleep(10);
    QCOMPARE(entered, 4);
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void TestVirtualTime::NotificationWithoutAWaiterIsLost()
{
    Gate gate;
    gate.condition.notify_all();
    VERIFY_LASTS(milliseconds(15), [&gate] { QVERIFY(!gate.Enter(milliseconds(15))); });
}

void TestVirtualTime::FutexOfAnotherValueIsNotAwaited()
{
    int word = 1;
    QCOMPARE(syscall(SYS_futex, &word, FUTEX_WAIT, 2, nullptr), -1L);
    QCOMPARE(errno, EAGAIN);
}

void TestVirtualTime::MutexIsTriedForItsTimeLimit()
{
    QMutex mutex;
    std::thread holder([&mutex] {
        const QMutexLocker lock(&mutex);
        QThread::msleep(100);
    });
    QThread::msleep(1);
    VERIFY_LASTS(milliseconds(20), [&mutex] { QVERIFY(!mutex.tryLock(20)); });
    VERIFY_LASTS(milliseconds(79), [&mutex] { QVERIFY(mutex.tryLock(200)); });
    mutex.unlock();
    holder.join();
}

void TestVirtualTime::MutexIsHandedOnWhenItIsUnlocked()
{
    QMutex mutex;
    std::vector<std::thread> threads;
    for (int number = 0; number < 5; ++number) {
        threads.emplace_back([&mutex] {
            const QMutexLocker lock(&mutex);
            QThread::msleep(10);
        });
    }
    VERIFY_LASTS(milliseconds(50), [&threads] {
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
}

void TestVirtualTime::SemaphoreIsTriedForItsTimeLimit()
{
    QSemaphore semaphore(2);
    VERIFY_LASTS(milliseconds(30), [&semaphore] { QVERIFY(!semaphore.tryAcquire(3, 30)); });
    VERIFY_LASTS(milliseconds(0), [&semaphore] { QVERIFY(semaphore.tryAcquire(2, 30)); });
}

void TestVirtualTime::SemaphoreIsAcquiredWhenThereIsEnough()
{
    QSemaphore semaphore;
    std::vector<qint64> acquired;
    const nanoseconds start = VirtualTime::Now();
    std::vector<std::thread> threads;
    for (const int count : {3, 1}) { // Those that want one and those that want more wait in two places.
        threads.emplace_back([&, count] {
            semaphore.acquire(count);
            acquired.push_back((VirtualTime::Now() - start) / milliseconds(1));
        });
    }
    for (int released = 0; released < 4; ++released) {
        QThread::msleep(10);
        semaphore.release();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(acquired, (std::vector<qint64>{10, 40}));
}

void TestVirtualTime::WaitConditionWaitsForItsTimeLimitOrForBeingWoken()
{
    QMutex mutex;
    QWaitCondition condition;
    const QMutexLocker lock(&mutex);
    VERIFY_LASTS(milliseconds(25), [&] { QVERIFY(!condition.wait(&mutex, 25)); });
    std::thread thread = Later(milliseconds(5), [&condition] { condition.wakeAll(); });
    VERIFY_LASTS(milliseconds(5), [&] { QVERIFY(condition.wait(&mutex, 25)); });
    thread.join();
}

void TestVirtualTime::ThreadIsAwaitedForItsTimeLimit()
{
    const std::unique_ptr<QThread> thread(QThread::create([] { QThread::msleep(100); }));
    thread->start();
    VERIFY_LASTS(milliseconds(30), [&thread] { QVERIFY(!thread->wait(30)); });
    VERIFY_LASTS(milliseconds(70), [&thread] { QVERIFY(thread->wait(300)); });
}

void TestVirtualTime::JoinLastsUntilTheThreadsEnd()
{
    for (int delay = 0; delay < 50; ++delay) {
        std::thread([] {}).detach(); // The system uses the identities of ended threads again.
        QThread::msleep(1);
        std::thread thread = Later(milliseconds(delay), [] {});
        VERIFY_LASTS(milliseconds(delay), [&thread] { thread.join(); });
    }
}

void TestVirtualTime::JoinOfAThreadThatHasEndedLastsNoTime()
{
    std::thread thread([] {});
    QThread::msleep(5);
    VERIFY_LASTS(milliseconds(0), [&thread] { thread.join(); });
}

void TestVirtualTime::ThreadsThatRunAreCounted()
{
    const int before = VirtualTime::ThreadCount();
    std::thread joined = Later(milliseconds(10), [] {});
    Later(milliseconds(20), [] {}).detach();
    QCOMPARE(VirtualTime::ThreadCount(), before + 2);
    joined.join();
    QCOMPARE(VirtualTime::ThreadCount(), before + 1);
    QThread::msleep(10);
    QCOMPARE(VirtualTime::ThreadCount(), before);
}

void TestVirtualTime::TimersFireInTheirOrder()
{
    std::vector<qint64> fired;
    QElapsedTimer elapsed;
    elapsed.start();
    for (const int delay : {300, 100, 200}) {
        QTimer::singleShot(delay, Qt::PreciseTimer, this, [&] { fired.push_back(elapsed.elapsed()); });
    }
    QTimer repeated;
    connect(&repeated, &QTimer::timeout, this, [&] { fired.push_back(-elapsed.elapsed()); });
    repeated.setTimerType(Qt::PreciseTimer);
    repeated.start(140);
    QTRY_COMPARE(fired.size(), size_t(5));
    QCOMPARE(fired, (std::vector<qint64>{100, -140, 200, -280, 300}));
}

void TestVirtualTime::SlotOnAnotherThreadIsAwaited()
{
    QThread thread;
    QObject object;
    object.moveToThread(&thread);
    thread.start();
    VERIFY_LASTS(milliseconds(60), [&object] {
        QMetaObject::invokeMethod(
            &object, [] { QThread::msleep(60); }, Qt::BlockingQueuedConnection);
    });
    thread.quit();
    QVERIFY(thread.wait());
}

void TestVirtualTime::PollWaitsForItsTimeLimit()
{
    const Pipe pipe;
    VERIFY_LASTS(milliseconds(80), [&pipe] { QCOMPARE(PollFor(pipe.reading, 80), 0); });
}

void TestVirtualTime::PollEndsWithTheBytes()
{
    const Pipe pipe;
    std::thread thread = Later(milliseconds(35), [&pipe] { WriteTo(pipe.writing, "late"); });
    VERIFY_LASTS(milliseconds(35), [&pipe] { QCOMPARE(PollFor(pipe.reading, 80), 1); });
    thread.join();
    VERIFY_LASTS(milliseconds(0), [&pipe] { QCOMPARE(PollFor(pipe.reading, 80), 1); });
    QCOMPARE(ReadFrom(pipe.reading), QByteArray("late"));
}

void TestVirtualTime::PollThatOnlyLooksLetsTimeGoOn()
{
    const Pipe pipe;
    VERIFY_LASTS(Glance, [&pipe] { QCOMPARE(PollFor(pipe.reading, 0), 0); });
}

void TestVirtualTime::BytesArriveAtOnceAndInOnePiece_data()
{
    QTest::addColumn<bool>("isMasterWriting");
    QTest::addColumn<int>("size");
    for (const int size : {1, 26, 515, 4000}) {
        QTest::addRow("%d from the master", size) << true << size;
        QTest::addRow("%d to the master", size) << false << size;
    }
}

/// The system is late now and then only: often enough here to be seen.
void TestVirtualTime::BytesArriveAtOnceAndInOnePiece()
{
    QFETCH(const bool, isMasterWriting);
    QFETCH(const int, size);
    const PseudoTerminal line(isMasterWriting);
    const QByteArray bytes(size, 'b');
    VERIFY_LASTS(nanoseconds(0), [&] {
        for (int round = 0; round < 300; ++round) {
            int waiting = size;
            QVERIFY(WriteTo(line.writing, bytes));
            QCOMPARE(round % 2 == 0 ? ioctl(line.reading, FIONREAD, &waiting) : 0, 0);
            QCOMPARE(waiting, size);
            QCOMPARE(ReadFrom(line.reading), bytes);
        }
    });
}

void TestVirtualTime::PollEndsWithTheBytesOfAPseudoTerminal()
{
    const PseudoTerminal line;
    for (int round = 0; round < 300; ++round) {
        std::thread thread = Later(milliseconds(7), [&line] { WriteTo(line.writing, "frame"); });
        VERIFY_LASTS(milliseconds(7), [&line] { QCOMPARE(PollFor(line.reading, 80), 1); });
        QCOMPARE(ReadFrom(line.reading), QByteArray("frame"));
        thread.join();
        QVERIFY(WriteTo(line.writing, "another"));
        VERIFY_LASTS(milliseconds(0), [&line] { QCOMPARE(PollFor(line.reading, 80), 1); });
        QCOMPARE(ReadFrom(line.reading), QByteArray("another"));
    }
}

void TestVirtualTime::FlushDropsTheBytesThatAreUnderWay()
{
    const PseudoTerminal line;
    for (int round = 0; round < 300; ++round) {
        QVERIFY(WriteTo(line.writing, QByteArray(3000, 'o')));
        QCOMPARE(tcflush(line.reading, TCIFLUSH), 0);
        QVERIFY(WriteTo(line.writing, "new"));
        QCOMPARE(ReadFrom(line.reading), QByteArray("new"));
    }
}

void TestVirtualTime::NothingIsAwaitedThatWasNotWritten()
{
    const PseudoTerminal line;
    VERIFY_LASTS(milliseconds(50), [&line] { QCOMPARE(PollFor(line.reading, 50), 0); });
    QCOMPARE(ReadFrom(line.reading), QByteArray("nothing"));
}

void TestVirtualTime::DeadlockIsTold()
{
    const QByteArray output = OutputOfADeadlock(); // An emulator adds what it saw.
    QVERIFY2(output.startsWith("VirtualTime: all threads wait, and nobody wakes them.\n"),
             output.constData());
}

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], DeadlockArgument) == 0) {
        Deadlock();
    }
    const QCoreApplication application(argc, argv);
    TestVirtualTime test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_virtualtime.moc"
