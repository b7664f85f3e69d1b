#include "cli/words/exitstatus.h"

namespace Cli::ExitStatus
{

const std::vector<Explained>& All()
{
    static const std::vector<Explained> all{
        {Done, "what was asked for was done"},
        {BadUsage, "bad usage, or a file that cannot be used; nothing was sent"},
        {NoLink, "the link did not come up in time"},
        {NotDone, "not done: update mode, or the output cannot be written in full"},
        {Failed, "the instrument failed; a measurement has stopped"},
        {Aborted, "a measurement was aborted, and has stopped"},
        {StopNotConfirmed, "a measurement may still be running: switch the instrument off"},
        {LinkLost, "the link was lost in the middle of it"},
        {Interrupted, "a measurement is done, but for a while no reading came"},
        {Signalled, "and a signal's number: ended by it; 141: nobody reads the output"},
    };
    return all;
}

} // namespace Cli::ExitStatus
