#pragma once

#include <QPushButton>
#include <QTimer>

namespace Panel
{

/// A button for what is allowed only as long as somebody holds it, with a finger, the mouse or the Enter key.
/// Whatever takes the finger away ends it: sliding off the button, another window, the button being disabled.
class HoldButton : public QPushButton
{
    Q_OBJECT

public:
    HoldButton(const QString& text, const char* name);

    bool isHeld() const { return _tick.isActive(); }

Q_SIGNALS:
    void holdBegan();
    /// Emitted every `TimeBetweenTicks` while it is held.
    void stillHeld();
    void holdEnded();

protected:
    bool event(QEvent* event) override;

private:
    static constexpr int TimeBetweenTicks = 200; ///< In milliseconds.

    bool keyEvent(QKeyEvent* event);
    void begin();
    void end();

    QTimer _tick;
};

} // namespace Panel
