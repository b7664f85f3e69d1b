#include "cli/verbs/reportsections.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QSysInfo>

#include "cli/output/output.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

/// What this program has written when it was run with other arguments.
struct Outcome {
    QByteArray output;
    QByteArray errors;
    int status;
};

/// The report is in English, whoever writes it: others read it.
Outcome RunVesmar(const QStringList& arguments, const QByteArray& input = {})
{
    constexpr int Patience = 5 * 60 * 1000; // The doctor waits for minutes where answers are late.
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.remove(QStringLiteral("LANGUAGE"));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool hasEnded = process.waitForFinished(Patience);
    return {process.readAllStandardOutput(),
            hasEnded ? process.readAllStandardError() : process.errorString().toUtf8() + '\n',
            hasEnded ? process.exitCode() : -1};
}

QByteArray Section(const char* title, const QByteArray& text)
{
    return QByteArray("\n== ") + title + " ==\n" + (text.isEmpty() ? QByteArray("nothing\n") : text);
}

QByteArray Versions()
{
    return "vesmar " VESMAR_VERSION "\nQt " + QByteArray(qVersion()) + '\n' +
           QSysInfo::prettyProductName().toUtf8() + ", " + QSysInfo::kernelType().toUtf8() + ' ' +
           QSysInfo::kernelVersion().toUtf8() + ", " + QSysInfo::currentCpuArchitecture().toUtf8() +
           "\nWritten " + TimeStamp(QDateTime::currentDateTime()).toUtf8() + '\n';
}

/// What the program says itself, without the trace.
QByteArray Complaints(const QByteArray& errors)
{
    QByteArray complaints;
    for (const QByteArray& line : errors.split('\n')) {
        if (line.startsWith("vesmar: ")) {
            complaints += line + '\n';
        }
    }
    return complaints;
}

/// The last lines of the log, which may be that of weeks.
QByteArray EndOf(const QString& path, QByteArray& problem)
{
    constexpr qint64 Most = 1 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = "Not there: cannot read " + path.toUtf8() + ": " + file.errorString().toUtf8() + '\n';
        return {};
    }
    if (file.size() > Most) {
        file.seek(file.size() - Most);
        file.readLine();
    }
    return file.readAll();
}

QByteArray TraceInWords(const QByteArray& trace)
{
    if (trace.isEmpty()) {
        return {};
    }
    const Outcome decoded = RunVesmar({QStringLiteral("decode"), QStringLiteral("-")}, trace);
    return decoded.output + decoded.errors;
}

/// Connects as any verb does. That would end a function which runs unattended, and with it what the report is
/// about.
QByteArray Connection(bool isAllowed, QByteArray& trace)
{
    if (!isAllowed) {
        return "Not there: a function runs that no program attends, and connecting would stop it.\n";
    }
    const Outcome info = RunVesmar({QStringLiteral("info"), QStringLiteral("--trace")});
    trace = info.errors;
    return info.output + Complaints(info.errors) + "Exit status: " + QByteArray::number(info.status) + '\n';
}

} // namespace

QByteArray ReportText(const QString& logPath)
{
    QByteArray text = "Report of vesmar\n" + Section("Versions", Versions());
    SayToTerminal(Text::tr("Asking the doctor, which may take a minute."));
    const Outcome doctor = RunVesmar({QStringLiteral("doctor")});
    text += Section("Doctor", doctor.output + doctor.errors +
                                  "Exit status: " + QByteArray::number(doctor.status) + '\n');
    SayToTerminal(Text::tr("Connecting, which takes ten seconds without an answer."));
    QByteArray trace;
    text += Section("Instrument", Connection(doctor.status != ExitStatus::StopNotConfirmed, trace));
    QByteArray problem;
    if (!logPath.isEmpty()) {
        trace = EndOf(logPath, problem);
    }
    return text + Section("Trace", problem.isEmpty() ? TraceInWords(trace) : problem);
}

} // namespace Cli
