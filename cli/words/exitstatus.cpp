#include "cli/words/exitstatus.h"

#include "cli/words/text.h"

namespace Cli::ExitStatus
{

const std::vector<Explained>& All()
{
    static const std::vector<Explained> all{
        {Done, Text::tr("what was asked for was done").toStdString()},
        {BadUsage, Text::tr("bad usage, or a file that cannot be used; nothing was sent").toStdString()},
        {NoLink, Text::tr("the link did not come up in time").toStdString()},
        {NotDone, Text::tr("not done: update mode, or the output cannot be written in full").toStdString()},
        {Failed, Text::tr("the instrument failed; a measurement has stopped").toStdString()},
        {Aborted, Text::tr("a measurement was aborted, and has stopped").toStdString()},
        {StopNotConfirmed,
         Text::tr("a measurement may still be running: switch the instrument off").toStdString()},
        {LinkLost, Text::tr("the link was lost in the middle of it").toStdString()},
        {Interrupted, Text::tr("a measurement is done, but for a while no reading came").toStdString()},
        {Signalled,
         Text::tr("and a signal's number: ended by it; 141: nobody reads the output").toStdString()},
    };
    return all;
}

} // namespace Cli::ExitStatus
