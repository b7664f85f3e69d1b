#pragma once

#include <QString>

#include <string>
#include <vector>

#include <VesmarClient/settings.h>

namespace CLI
{
class App;
}

namespace Cli
{

/// A function that can be measured: what the catalogue knows of it, its part of the command line, and what is
/// given there.
struct MeasureFunction {
    VesmarClient::FunctionInfo info;
    CLI::App* command;
    VesmarClient::Settings settings;
};

/// The functions of `vesmar measure`, each a command of its own below it.
class MeasureFunctions
{
public:
    explicit MeasureFunctions(CLI::App& measure);

    /// The function given on the command line, or null.
    const MeasureFunction* Chosen() const;
    /// "rln, iec, rpe, ..."
    std::string Names() const;
    const QString& CsvFile() const { return _csvFile; }

private:
    void Add(CLI::App& measure, const VesmarClient::FunctionInfo& info);
    void AddCsv(const MeasureFunction& function);

    std::vector<MeasureFunction> _functions;
    QString _csvFile;
};

} // namespace Cli
