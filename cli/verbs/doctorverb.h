#pragma once

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar doctor`: looks at the serial device, asks the instrument for its status many times, and says what
/// is wrong and what to do.
class DoctorVerb : public Verb
{
public:
    explicit DoctorVerb(CLI::App& program);

    int Run() override;
};

} // namespace Cli
