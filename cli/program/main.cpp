#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

#include <VesmarClient/tracerouter.h>

#include "cli/output/event.h"
#include "cli/output/output.h"
#include "cli/program/program.h"
#include "cli/words/exitstatus.h"

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

/// Writes the message log to the error output. The lines of the trace look as the driver has written them.
void WriteMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isTrace = qstrcmp(context.category, VesmarClient::TraceRouter::Category) == 0;
    const QMessageLogContext shown(context.file, context.line, context.function,
                                   isTrace ? "default" : context.category);
    std::fputs((qFormatLogMessage(type, shown, text).toLocal8Bit() + '\n').constData(), stderr);
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

} // namespace

int main(int argc, char** argv)
{
    OccupyStandardStreams();
    Cli::Program program;
    int exitStatus = Cli::ExitStatus::Done;
    Cli::Verb* verb = program.Parse(argc, argv, std::cout, std::cerr, &exitStatus);
    if (verb == nullptr) {
        return exitStatus;
    }
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone away shows as a failed write
    qInstallMessageHandler(WriteMessage);
    VesmarClient::TraceRouter trace;
    if (verb->Options().isTraceWanted) {
        trace.toCategory();
    }
    int ownArgumentCount = 1; // the other arguments are not for Qt
    const QCoreApplication application(ownArgumentCount, argv);
    try {
        return verb->Run();
    } catch (const std::exception& error) {
        return FailUnexpectedly(*verb, QString::fromLocal8Bit(error.what()));
    }
}
