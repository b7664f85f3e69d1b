#pragma once

#include <sys/types.h>

#include <csignal>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QString>

namespace Simulator
{

/// Runs a program with the preloaded library that shows it the instrument as its serial device. The program
/// inherits standard input, output, error and the process group. Ctrl-Z stops neither: the shell behind them
/// waits for the instrument.
class ProgramRunner
{
public:
    /// Throws std::runtime_error when the preloaded library is missing.
    explicit ProgramRunner(const QString& devicePath);

    /// Returns an empty text when the program runs, otherwise the reason why it does not.
    QString Start(const std::vector<std::string>& program, const sigset_t& signalMask);

    void Forward(int signalNumber) const;

    /// Returns the exit status, as a shell would tell it, once the program has ended.
    std::optional<int> ExitStatus();

private:
    std::map<std::string, std::string> _environment;
    pid_t _process = -1;
};

} // namespace Simulator
