#pragma once

#include <QLabel>

#include "panel/kit/overlay.h"

namespace Panel
{

/// A message over the whole window.
class Curtain : public Overlay
{
    Q_OBJECT

public:
    explicit Curtain(QWidget* parent);

    /// Shows the message with a button for each answer, of which the first one is the one to press. Without
    /// an answer it stays until it is hidden.
    void show(const char* look, const QString& title, const QString& text, const QStringList& answers = {});

Q_SIGNALS:
    /// The curtain is hidden, and this was the answer.
    void answered(int answer);

private:
    QLabel* _title;
    QLabel* _text;
    QWidget* _answers;
};

} // namespace Panel
