#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace Panel
{

/// A message over the whole window, which is part of it: a dialog would need a window manager.
class Curtain : public QWidget
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

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* _title;
    QLabel* _text;
    QWidget* _answers;
};

} // namespace Panel
