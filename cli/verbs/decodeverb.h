#pragma once

#include <QString>

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar decode`: tells in words what a log of the library has kept, and records it for the simulated
/// instrument. It talks to no instrument.
class DecodeVerb : public Verb
{
public:
    explicit DecodeVerb(CLI::App& program);

    /// The log; "-" is the standard input.
    QString LogPath() const { return QString::fromLocal8Bit(_log.c_str()); }
    /// The recording; empty for none.
    QString RecordingPath() const { return QString::fromLocal8Bit(_recording.c_str()); }

    int Run() override;

private:
    std::string _log;
    std::string _recording;
};

} // namespace Cli
