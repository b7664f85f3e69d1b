#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <sstream>

#include <VesmarClient/tracerouter.h>

#include "cli/output/event.h"
#include "cli/output/output.h"
#include "cli/program/language.h"
#include "cli/program/program.h"
#include "cli/words/exitstatus.h"
#include "decode/lines/colours.h"

namespace
{

/// The serial line must never get the number of a standard stream that was closed: the program's output would
/// go to the instrument. The descriptors that are opened here cannot be written to, so that a closed output
/// stays an error.
void OccupyStandardStreams()
{
    int descriptor = STDIN_FILENO;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = ::open("/dev/null", O_RDONLY);
    }
    ::close(descriptor);
}

/// Whether the reader of the error output can and wants to see colours.
bool HasColours()
{
    static const bool hasColours = ::isatty(STDERR_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR");
    return hasColours;
}

/// Writes the message log to the error output. The lines of the trace look as the driver has written them.
void WriteMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isTrace = qstrcmp(context.category, VesmarClient::TraceRouter::Category) == 0;
    const QMessageLogContext shown(context.file, context.line, context.function,
                                   isTrace ? "default" : context.category);
    const QByteArray line = qFormatLogMessage(type, shown, text).toLocal8Bit() + '\n';
    std::fputs((HasColours() ? line : Decode::WithoutColours(line)).constData(), stderr);
}

int FailUnexpectedly(const Cli::Verb& verb, const QString& message)
{
    constexpr int Nothing = -1;
    const Cli::Ending ending{Cli::ExitStatus::NotDone, Cli::Ending::Outcome::Failed, message,
                             QStringLiteral("unexpected")};
    if (verb.Options().isJson) {
        Cli::Output(STDOUT_FILENO, Nothing).Write(Cli::ResultLine(QDateTime::currentDateTime(), ending));
    }
    Cli::WriteError(message);
    return ending.status;
}

/// Help and version count only if they are written.
int Print(const std::string& text)
{
    constexpr int Nothing = -1;
    Cli::Output output(STDOUT_FILENO, Nothing);
    return Cli::PrintingStatus(output, output.Write(QByteArray::fromStdString(text)));
}

} // namespace

int main(int argc, char** argv)
{
    OccupyStandardStreams();
    int ownArgumentCount = 1; // the other arguments are not for Qt
    const QCoreApplication application(ownArgumentCount, argv);
    Cli::ChooseLanguage(argc, argv);
    Cli::Program program;
    int exitStatus = Cli::ExitStatus::Done;
    std::ostringstream help;
    Cli::Verb* verb = program.Parse(argc, argv, help, std::cerr, &exitStatus);
    if (verb == nullptr) {
        return exitStatus == Cli::ExitStatus::Done ? Print(help.str()) : exitStatus;
    }
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone away shows as a failed write
    qInstallMessageHandler(WriteMessage);
    VesmarClient::TraceRouter trace;
    if (verb->Options().isTraceWanted) {
        trace.toCategory();
    }
    try {
        return verb->Run();
    } catch (const std::exception& error) {
        return FailUnexpectedly(*verb, QString::fromLocal8Bit(error.what()));
    }
}
