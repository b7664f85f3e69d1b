#pragma once

#include <QDate>

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar calibration`: shows the date of the last calibration, or sets it.
class CalibrationVerb : public Verb
{
public:
    explicit CalibrationVerb(CLI::App& program);

    /// The date to be set; invalid where the date is only to be shown.
    const QDate& Wanted() const { return _wanted; }
    std::chrono::milliseconds ConfirmTimeout() const { return _confirmTimeout; }

    int Run() override;

private:
    QDate _wanted;
    std::chrono::milliseconds _confirmTimeout = UsualConfirmTimeout;
};

} // namespace Cli
