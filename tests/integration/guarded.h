#pragma once

#include <QFileInfo>

#include "integration/programrun.h"
#include "support/guards.h"

/// An instrument that outlives the programs that use it, and what the guards of those programs do.
class LastingInstrument
{
public:
    /// The simulator is given these options.
    explicit LastingInstrument(const QStringList& options = {})
        : _simulator(QStringLiteral(SIMULATOR_PROGRAM), QStringList{QStringLiteral("--link"), Path("line"),
                                                                    QStringLiteral("--log"), Path("log")} +
                                                            options)
    {
    }

    /// Whether programs can use it.
    bool IsThere() const { return QFileInfo::exists(Path("line")); }

    /// A command of the simulator.
    void Command(const QByteArray& command) { _simulator.WriteLine(command); }

    /// Sends bytes over the line, behind whatever programs have sent.
    void Send(const QByteArray& bytes) const
    {
        QFile line(Path("line"));
        QVERIFY(line.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && line.write(bytes) == bytes.size());
    }

    /// The environment of a program that uses it.
    QProcessEnvironment Environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LD_PRELOAD"),
                           QStringLiteral(SIMULATOR_PRELOAD ":" SYSTEM_LOG_PRELOAD));
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
        environment.insert(QStringLiteral("VESMAR_SIMULATOR_DEVICE"), QFile::symLinkTarget(Path("line")));
        environment.insert(QStringLiteral("VESMAR_TEST_SYSTEM_LOG"), Path("system"));
        return environment;
    }

    /// Each line with its time.
    QByteArrayList Log() const
    {
        QByteArrayList lines = ContentOf(Path("log")).split('\n');
        lines.removeLast();
        return lines;
    }

    /// The states that the high-voltage test went through, such as "running".
    QByteArrayList States() const
    {
        QByteArrayList states;
        for (const QByteArray& line : Log()) {
            const int place = line.indexOf(Function);
            if (place >= 0) {
                states.append(line.mid(place + static_cast<int>(sizeof(Function)) - 1));
            }
        }
        return states;
    }

    QByteArray State() const { return States().isEmpty() ? QByteArray() : States().last(); }

    /// The lines of the system log.
    QByteArrayList SystemLog() const
    {
        QByteArrayList lines = ContentOf(Path("system")).split('\n');
        lines.removeLast();
        return lines;
    }

    /// The processes of all guards of programs that use it.
    QVector<pid_t> Guards() const { return GuardsWith(QFile::encodeName(Path("system"))); }

private:
    static constexpr char Function[] = "Z function 9 ";

    QString Path(const char* name) const { return _folder.filePath(QString::fromLatin1(name)); }

    QTemporaryDir _folder; // first: everything is in it
    ProgramRun _simulator;
};

/// Holds a process up, and lets it go on at the end.
class HeldUp
{
public:
    explicit HeldUp(pid_t process) : _process(process) {}
    ~HeldUp() { LetGoOn(); }
    HeldUp(const HeldUp&) = delete;
    HeldUp& operator=(const HeldUp&) = delete;

    bool IsHeld() const { return _isHeld; }
    bool LetGoOn() const { return _isHeld && ::kill(_process, SIGCONT) == 0; }

private:
    pid_t _process;
    bool _isHeld = _process > 0 && ::kill(_process, SIGSTOP) == 0;
};

/// `vesmar measure hv` with further options, at such an instrument.
class GuardedRun : public ProgramRun
{
public:
    explicit GuardedRun(const LastingInstrument& instrument,
                        const QString& options = QStringLiteral("--time 600"))
        : ProgramRun(QStringLiteral(VESMAR_PROGRAM), Words(QStringLiteral("measure hv ") + options),
                     instrument.Environment())
    {
    }
};
