// vesmar-guard: waits beside an application, and stops the instrument when the application ends in the middle
// of a measurement.

#include <sys/resource.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <csignal>
#include <iostream>
#include <memory>

#include <QCoreApplication>
#include <QLoggingCategory>

#include "client/guard/channel.h"
#include "client/guard/report.h"
#include "client/guard/takeover.h"

namespace
{

using VesmarClient::Application;
using VesmarClient::Takeover;

bool HasChannel()
{
    struct stat channel = {};
    return ::fstat(VesmarClient::GuardChannel, &channel) == 0 && S_ISSOCK(channel.st_mode);
}

/// Whatever ends the application, or everything around it, must not end its guard.
void IgnoreSignals()
{
    for (const int ending :
         {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGTSTP, SIGTTIN, SIGTTOU, SIGUSR1, SIGUSR2, SIGALRM}) {
        std::signal(ending, SIG_IGN);
    }
}

/// Where it may, the guard goes first: a computer that is overloaded is one on which programs are killed.
void AskForPriority()
{
    constexpr int Highest = -20;
    ::setpriority(PRIO_PROCESS, 0, Highest);
}

int Guard(int argc, char** argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false")); // nobody reads the trace
    const QCoreApplication program(argc, argv);
    const std::unique_ptr<Vesmar::Tester> tester(Vesmar::Tester::Instance());
    const Application application;
    Takeover takeover(*tester, application);
    QObject::connect(&application, &Application::Left, &program, &QCoreApplication::quit);
    QObject::connect(&application, &Application::Lost, &takeover, &Takeover::Begin);
    QObject::connect(&takeover, &Takeover::Finished, &program, [&](Takeover::Outcome outcome) {
        const VesmarClient::Report report = VesmarClient::ReportOf(
            application.Program(), application.Process(), outcome, takeover.StoppedFunction());
        ::syslog(report.priority, "%s", report.text.constData());
        QCoreApplication::quit();
    });
    const int exitStatus = QCoreApplication::exec();
    tester->Disable(); // before the line is free again
    return exitStatus;
}

} // namespace

int main(int argc, char** argv)
{
    if (!HasChannel()) {
        std::cerr << "vesmar-guard: an application that measures starts this program, and nobody else\n";
        return 1;
    }
    // The application waits for the process that it has started, and for none after that.
    if (::fork() != 0) {
        ::_exit(0);
    }
    IgnoreSignals();
    AskForPriority();
    [[maybe_unused]] const int result = ::chdir("/"); // keeps no file system from being unmounted
    return Guard(argc, argv);
}
