#pragma once

#include <QObject>

namespace Panel
{

/// The lines of the driver's trace, which a `TraceRouter` sends to the application's log. All other messages
/// go where they went before. Create one before the router, and one only.
class TraceLines : public QObject
{
    Q_OBJECT

public:
    TraceLines();
    ~TraceLines() override;

Q_SIGNALS:
    /// Emitted on the thread of the driver, and received on that of the receiver.
    void line(const QByteArray& text);
};

} // namespace Panel
