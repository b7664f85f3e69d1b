#pragma once

#include <QString>

#include "cli/kit/verb.h"

namespace Cli
{

/// What `vesmar update` takes beside the options of the link.
struct UpdateOptions {
    QString image;
    QString confirmation;
    bool isOffline = false;
    std::chrono::milliseconds confirmTimeout = UsualConfirmTimeout;
};

/// `vesmar update`: sends the instrument new firmware.
class UpdateVerb : public Verb
{
public:
    explicit UpdateVerb(CLI::App& program);

    const UpdateOptions& Update() const { return _update; }

    int Run() override;

private:
    UpdateOptions _update;
};

} // namespace Cli
