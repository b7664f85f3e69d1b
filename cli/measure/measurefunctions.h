#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <Vesmar/continuousmeasurementsettings.h>

namespace CLI
{
class App;
}

namespace Cli
{

/// A function that can be measured: its part of the command line, and the settings that the options fill.
struct MeasureFunction {
    QString name;
    CLI::App* command;
    std::unique_ptr<Vesmar::MeasurementSettings> settings;
    Vesmar::ContinuousMeasurementSettings*
        continuous;          ///< The same settings, or null for a single measurement.
    float secondsBefore = 0; ///< How much longer the first second of the measurement time lasts, in seconds.
    bool isReMeasured = false; ///< Whether a Ub/Re test runs first, and gives the Re of this RCD test.

    /// The measurement time in seconds; none where it is not known in advance.
    std::optional<int> Seconds() const;
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
    template <typename Settings>
    Settings& Add(const char* name, const char* description);
    void AddSingle();
    void AddContinuous();
    void AddRcd();
    CLI::App& Command() { return *_functions.back().command; }

    CLI::App& _measure;
    std::vector<MeasureFunction> _functions;
    QString _csvFile;
};

} // namespace Cli
