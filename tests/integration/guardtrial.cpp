// Kills `vesmar measure hv` at random moments, beside an instrument that outlives it, and sees whether the
// instrument has stopped once the guard has ended.
//
//   guardtrial KILLS SEED    a line for each: the state at the kill, and the milliseconds to the stop
//
// Status 1, with the log of the instrument, when it has not stopped.

#include <algorithm>

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTextStream>
#include <QThread>

#include "integration/guarded.h"

namespace
{

/// What the instrument's log of a measurement comes to: moments are counted in it, so that they are as many
/// on a busy machine.
constexpr int LinesOfLog = 50;
/// Longer than from one line to the next, in milliseconds.
constexpr int LongestPause = 100;

bool HasEnded(pid_t process)
{
    return ::kill(process, 0) != 0;
}

/// Looks for guards seldom: there are many processes to look at.
bool WaitForTheEndOfGuards(const LastingInstrument& instrument)
{
    for (QVector<pid_t> guards = instrument.Guards(); !guards.isEmpty(); guards = instrument.Guards()) {
        if (!QTest::qWaitFor([&] { return std::all_of(guards.cbegin(), guards.cend(), HasEnded); },
                             Patience)) {
            return false;
        }
    }
    return true;
}

bool IsOff(const QByteArray& state)
{
    return state.isEmpty() || state == "deselected";
}

QDateTime TimeOf(const QByteArray& line)
{
    return QDateTime::fromString(QString::fromLatin1(line.left(line.indexOf(' '))), Qt::ISODateWithMs);
}

/// The first request to stop after the kill; not valid where there is none.
QDateTime StopAfter(const QByteArrayList& log, const QDateTime& kill)
{
    for (const QByteArray& line : log) {
        if (TimeOf(line) >= kill && line.mid(line.indexOf(' ') + 1).startsWith("68")) {
            return TimeOf(line);
        }
    }
    return {};
}

/// One kill. False if the instrument goes on.
bool Try(QRandomGenerator& random, QTextStream& out)
{
    LastingInstrument instrument;
    if (!QTest::qWaitFor([&] { return instrument.IsThere(); }, Patience)) {
        return false;
    }
    GuardedRun run(instrument, QStringLiteral("--time 1 --time-offset 0"));
    const int lines = random.bounded(LinesOfLog);
    const auto isMoment = [&] { return instrument.Log().size() >= lines || !run.IsRunning(); };
    if (!QTest::qWaitFor([&] { return run.IsRunning(); }, Patience) || !QTest::qWaitFor(isMoment, Patience)) {
        return false;
    }
    QThread::msleep(static_cast<unsigned long>(random.bounded(LongestPause)));
    const QByteArray state = instrument.State().replace(' ', '-'); // one word
    const QDateTime kill = QDateTime::currentDateTimeUtc();
    if (run.IsRunning()) {
        run.Signal(SIGKILL);
        run.Finish();
    }
    if (!WaitForTheEndOfGuards(instrument) || !IsOff(instrument.State())) {
        out << instrument.Log().join('\n') << '\n' << instrument.SystemLog().join('\n') << '\n';
        return false;
    }
    const QDateTime stop = StopAfter(instrument.Log(), kill);
    out << (state.isEmpty() ? QByteArray("nothing") : state) << ' '
        << (stop.isValid() ? QString::number(kill.msecsTo(stop)) : QStringLiteral("-")) << '\n';
    out.flush();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QRandomGenerator random(arguments.value(2).toUInt());
    QTextStream out(stdout);
    for (int kills = arguments.value(1).toInt(); kills > 0; --kills) {
        if (!Try(random, out)) {
            return 1;
        }
    }
    return 0;
}
