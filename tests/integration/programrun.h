#pragma once

#include <csignal>

#include <QByteArrayList>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QtTest>

#include "integration/patience.h"

/// A program that runs on its own, with all that it prints.
class ProgramRun
{
public:
    ProgramRun(const QString& program, const QStringList& arguments,
               const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
    {
        _process.setProcessEnvironment(environment);
        _process.start(program, arguments);
    }

    ~ProgramRun()
    {
        _process.terminate(); // which a simulator passes on
        _process.waitForFinished(Patience);
    }

    ProgramRun(const ProgramRun&) = delete;
    ProgramRun(ProgramRun&&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;
    ProgramRun& operator=(ProgramRun&&) = delete;

    /// The exit status; -1 for a program that was killed or does not end.
    int Finish()
    {
        const bool hasEnded = _process.state() == QProcess::NotRunning || _process.waitForFinished(Patience);
        const bool isNormal = hasEnded && _process.exitStatus() == QProcess::NormalExit &&
                              _process.error() == QProcess::UnknownError;
        return isNormal ? _process.exitCode() : -1;
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

    void Tell(const QByteArray& line) { _process.write(line + '\n'); }
    void CloseInput() { _process.closeWriteChannel(); }

    bool Signal(int signalNumber) const
    {
        return ::kill(static_cast<pid_t>(_process.processId()), signalNumber) == 0;
    }

private:
    QProcess _process;
    QByteArray _output;
    QByteArray _errors;
};
