#pragma once

#include <QDateTime>

#include <string>
#include <vector>

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar clock`: shows the instrument's clock, or sets it.
class ClockVerb : public Verb
{
public:
    explicit ClockVerb(CLI::App& program);

    /// Whether the clock is to be set.
    bool IsSetting() const;
    /// The time to be set; invalid for the present time.
    const QDateTime& Wanted() const { return _wanted; }
    std::chrono::milliseconds ConfirmTimeout() const { return _confirmTimeout; }

    int Run() override;

private:
    void ParseWanted(const std::vector<std::string>& words);

    CLI::App& _set;
    QDateTime _wanted;
    std::chrono::milliseconds _confirmTimeout = UsualConfirmTimeout;
};

} // namespace Cli
