#pragma once

#include <Vesmar/operationmode.h>

namespace Cli
{

/// Finds out when identity and both clocks have really been read from the instrument.
///
/// A clock that reads the same as the library's initial value signals no change, but every identity that is
/// read does. After the first one the library reads both clocks before it takes up anything else, so an
/// identity that is asked for then and arrives without a loss of the link or a change of the mode in between
/// tells that the clocks have been read. A loss of the link always shows as a change of the error code, and
/// so may other things: each makes it start over. In update mode the library does not read the clocks.
class Readiness
{
public:
    enum class Progress {
        Waiting,
        AskForIdentity, ///< Still waiting, and the identity is to be asked for.
        Complete,
        InUpdateMode ///< The identity has been read, the clocks cannot be.
    };

    Progress IdentityRead(Vesmar::OperationMode mode);
    Progress ModeChanged(Vesmar::OperationMode mode);
    void ErrorChanged();

private:
    bool _hasIdentity = false;
    bool _areClocksDue = false; ///< An identity was read, and nothing has come in between since.
};

} // namespace Cli
