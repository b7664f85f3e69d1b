#pragma once

#include "panel/session/session.h"
#include "panel/window/curtain.h"

namespace Panel
{

/// How the panel is ended: what is measured is stopped, and the line is given back, before the window closes.
/// Where the stop is not confirmed, the person is told, and decides.
class Closing : public QObject
{
    Q_OBJECT

public:
    Closing(Session& session, Curtain& curtain);

    /// Begins it; nothing where it is under way.
    void begin();
    /// Whether the window may close.
    bool isDone() const { return _step == Step::Done; }

Q_SIGNALS:
    void done();

private:
    enum class Step { None, Stopping, Asking, GivingBack, Done };

    void goOn();
    void ask();
    void receiveAnswer(int answer);

    Session& _session;
    Curtain& _curtain;
    Step _step = Step::None;
};

} // namespace Panel
