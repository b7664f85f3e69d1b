#pragma once

#include <csignal>
#include <iterator>
#include <memory>
#include <vector>

#include <QByteArrayList>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QtTest>

#include "integration/patience.h"
#include "support/eventschema.h"

// Each shows the text where the check fails.
#define VERIFY_CONTAINS(text, part) QVERIFY2((text).contains(part), (text).constData())
#define VERIFY_BEGINS(text, part) QVERIFY2((text).startsWith(part), (text).constData())
#define VERIFY_ENDS(text, part) QVERIFY2((text).endsWith(part), (text).constData())

inline QStringList Words(const QString& text)
{
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The simulator's options for a command at the very beginning; none for an empty one.
inline QStringList AtOnce(const char* command)
{
    if (qstrlen(command) == 0) {
        return {};
    }
    return {QStringLiteral("--at"), QStringLiteral("0:") + QString::fromLatin1(command)};
}

/// The simulator's options for a scenario; its number stands behind its name.
inline QStringList InScenario(const char* scenario)
{
    return {QStringLiteral("--scenario"), QString::fromLatin1(scenario)};
}

inline QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A simulator's log without the times: requests, answers, and what the instrument did.
inline QByteArrayList LogIn(const QString& path)
{
    QByteArrayList log;
    for (const QByteArray& line : ContentOf(path).split('\n')) {
        if (!line.isEmpty()) {
            log.append(line.mid(line.indexOf(' ') + 1));
        }
    }
    return log;
}

inline QJsonObject ObjectOf(const QByteArray& line)
{
    return QJsonDocument::fromJson(line).object();
}

inline QJsonValue ValueOf(const QJsonObject& object, const char* field)
{
    return object.value(QLatin1String(field));
}

inline QByteArray TextOf(const QJsonObject& object, const char* field)
{
    return ValueOf(object, field).toString().toUtf8();
}

/// -1 where there is no such number.
inline int NumberOf(const QJsonObject& object, const char* field)
{
    return ValueOf(object, field).toInt(-1);
}

inline QJsonObject PartOf(const QJsonObject& object, const char* field)
{
    return ValueOf(object, field).toObject();
}

/// A program that runs on its own, with all that it prints.
class ProgramRun
{
public:
    ProgramRun(const QString& program, const QStringList& arguments,
               const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
        : _isJson(arguments.join(QLatin1Char(' ')).contains(QLatin1String("--json")))
    {
        _process.setProcessEnvironment(environment);
        _process.start(program, arguments);
    }

    ~ProgramRun()
    {
        _process.terminate(); // A simulator passes this on.
        _process.waitForFinished(Patience);
    }

    ProgramRun(const ProgramRun&) = delete;
    ProgramRun(ProgramRun&&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;
    ProgramRun& operator=(ProgramRun&&) = delete;

    /// The exit status; -1 for a program that was killed or does not end. The JSON of one that was not is
    /// checked.
    int Finish()
    {
        const bool hasEnded = _process.state() == QProcess::NotRunning || _process.waitForFinished(Patience);
        const bool isNormal = hasEnded && _process.exitStatus() == QProcess::NormalExit &&
                              _process.error() == QProcess::UnknownError;
        if (isNormal && _isJson) {
            CheckRun(Output(), _process.exitCode());
        }
        return isNormal ? _process.exitCode() : -1;
    }

    /// The program ends with success and has no complaint.
    void VerifySuccess()
    {
        QCOMPARE(Finish(), 0);
        QCOMPARE(Errors(), QByteArray());
    }

    bool IsRunning() const { return _process.state() == QProcess::Running; }

    QByteArray Output() { return _output += _process.readAllStandardOutput(); }
    QByteArray Errors() { return _errors += _process.readAllStandardError(); }

    /// The whole lines of the output.
    QByteArrayList Lines()
    {
        QByteArrayList lines = Output().split('\n');
        lines.removeLast();
        return lines;
    }

    void WriteLine(const QByteArray& line)
    {
        _process.write(line + '\n');
        _process.waitForBytesWritten(Patience);
    }
    void CloseInput() { _process.closeWriteChannel(); }

    bool Signal(int signalNumber) const
    {
        const auto process = static_cast<pid_t>(_process.processId()); // 0 when it has ended
        return process > 0 && ::kill(process, signalNumber) == 0;
    }

private:
    bool _isJson;
    QProcess _process;
    QByteArray _output;
    QByteArray _errors;
};

/// Starts a run for each row, all side by side, then checks one after the other with its row. `name` tells a
/// row whose check fails.
template <typename Rows, typename Start, typename Check, typename Name>
void CheckSideBySide(const Rows& rows, const Start& start, const Check& check, const Name& name)
{
    std::vector<decltype(start(*std::begin(rows)))> runs;
    for (const auto& row : rows) {
        runs.push_back(start(row));
    }
    auto run = runs.begin();
    for (const auto& row : rows) {
        check(**run++, row);
        if (QTest::currentTestFailed()) {
            QFAIL(QByteArray(name(row)).constData());
        }
    }
}

/// A run in virtual time is over at once. One that a test watches or sends a signal needs real time.
enum class Time { Virtual, Real };

/// The simulator's program for such a run.
inline QString SimulatorIn(Time time)
{
    return time == Time::Virtual ? QStringLiteral(VIRTUAL_PROGRAMS) : QStringLiteral(SIMULATOR_PROGRAM);
}

/// `vesmar`, with a simulated instrument of its own that keeps a log. The arguments go through a shell.
class VesmarRun
{
public:
    explicit VesmarRun(const QString& arguments, const QStringList& simulatorOptions = {},
                       Time time = Time::Virtual)
        : _run(QStringLiteral("sh"),
               QStringList{QStringLiteral("-c"), QStringLiteral("exec \"$0\" \"$@\" ") + arguments,
                           SimulatorIn(time), QStringLiteral("run"), QStringLiteral("--log"), LogPath()} +
                   simulatorOptions + QStringList{QStringLiteral("--"), QStringLiteral(VESMAR_PROGRAM)})
    {
    }

    ProgramRun* operator->() { return &_run; }

    QByteArrayList Log() const { return LogIn(LogPath()); }

private:
    QString LogPath() const { return _folder.filePath(QStringLiteral("log")); }

    const QTemporaryDir _folder; // First: the log is in it.
    ProgramRun _run;
};
