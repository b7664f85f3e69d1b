#pragma once

#include "panel/session/session.h"

namespace Panel
{

/// The keys that end a measurement, whatever has the keyboard: Escape any, the space bar whatever has a
/// dangerous voltage. Both ask an instrument to stop that runs without a measurement, or is not known to have
/// stopped.
class StopKeys : public QObject
{
    Q_OBJECT

public:
    explicit StopKeys(Session& session);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isStop(const QEvent& event) const;

    Session& _session;
};

} // namespace Panel
