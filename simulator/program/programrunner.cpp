#include "simulator/program/programrunner.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "simulator/program/preloadinterface.h"

namespace Simulator
{

namespace
{

constexpr int KilledBySignal = 128;

/// Finds the library next to this program in a build, and in the library folder in an installation.
QString FindPreloadLibrary()
{
    const QDir here = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).dir();
    const QString name = QStringLiteral(VESMAR_PRELOAD_NAME);
    const QString built = here.filePath(name);
    const QString installed =
        QDir::cleanPath(here.filePath(QStringLiteral(VESMAR_PRELOAD_FOLDER "/") + name));
    QString found = QFileInfo::exists(built) ? built : installed;
    if (!QFileInfo::exists(found)) {
        throw std::runtime_error(QStringLiteral("the library to preload is missing: neither %1 nor %2")
                                     .arg(built, installed)
                                     .toStdString());
    }
    if (found.contains(QLatin1Char(' ')) || found.contains(QLatin1Char(':'))) {
        throw std::runtime_error(QStringLiteral("%1 cannot be preloaded: its path holds a blank or a colon")
                                     .arg(found)
                                     .toStdString());
    }
    return found;
}

std::map<std::string, std::string> CurrentEnvironment()
{
    std::map<std::string, std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos) {
            environment[text.substr(0, equals)] = text.substr(equals + 1);
        }
    }
    return environment;
}

/// The terminal stops its whole foreground, but an instrument does not stop with the program. Returns the
/// signals that the program handles as usual all the same.
sigset_t KeepRunning()
{
    sigset_t usual;
    ::sigemptyset(&usual);
    if (std::signal(SIGTSTP, SIG_IGN) != SIG_IGN) {
        ::sigaddset(&usual, SIGTSTP);
    }
    return usual;
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

void Append(std::string& list, const std::string& entry)
{
    list += (list.empty() ? "" : ":") + entry;
}

} // namespace

ProgramRunner::ProgramRunner(const QString& devicePath) : _environment(CurrentEnvironment())
{
    std::string preload = QFile::encodeName(FindPreloadLibrary()).toStdString();
    if (!_environment["LD_PRELOAD"].empty()) {
        Append(preload, _environment["LD_PRELOAD"]);
    }
    _environment["LD_PRELOAD"] = preload;
    // A program built with AddressSanitizer accepts no library in front of its runtime unless told to.
    Append(_environment["ASAN_OPTIONS"], "verify_asan_link_order=0");
    _environment[DeviceVariable] = QFile::encodeName(devicePath).toStdString();
}

QString ProgramRunner::Start(const std::vector<std::string>& program, const sigset_t& signalMask)
{
    std::vector<std::string> arguments = program;
    std::vector<std::string> variables;
    for (const auto& [name, value] : _environment) {
        std::string& variable = variables.emplace_back(name);
        variable.append("=").append(value);
    }
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    const sigset_t usual = KeepRunning();
    ::posix_spawnattr_setsigdefault(&attributes, &usual);
    ::posix_spawnattr_setsigmask(&attributes, &signalMask);
    const int failure = ::posix_spawnp(&_process, program.front().c_str(), nullptr, &attributes,
                                       Pointers(arguments).data(), Pointers(variables).data());
    ::posix_spawnattr_destroy(&attributes);
    return failure == 0 ? QString() : QString::fromLocal8Bit(std::strerror(failure));
}

void ProgramRunner::Forward(int signalNumber) const
{
    if (_process > 0) {
        ::kill(_process, signalNumber);
    }
}

std::optional<int> ProgramRunner::ExitStatus()
{
    int status = 0;
    if (::waitpid(_process, &status, WNOHANG | WUNTRACED) != _process) {
        return std::nullopt;
    }
    if (WIFSTOPPED(status)) {
        if (WSTOPSIG(status) == SIGTSTP) {
            ::kill(0, SIGCONT); // Everything in the foreground was stopped.
        }
        return std::nullopt;
    }
    _process = -1;
    return WIFSIGNALED(status) ? KilledBySignal + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace Simulator
