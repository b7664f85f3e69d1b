#pragma once

#include "cli/output/liveoutput.h"

namespace Cli
{

/// The output and the error output of a verb that shows how something goes on. It never waits for a reader.
/// On a terminal it has a live line, which is drawn over and over again, below itself where the terminal is
/// narrow.
class LiveScreen : public QObject
{
    Q_OBJECT

public:
    /// Only a text for people, on a terminal, has a live line.
    explicit LiveScreen(bool isText);

    bool HasLiveLine() const { return _hasLiveLine; }
    /// Draws the live line, on as many lines of the terminal as it needs. See `Wrapped`.
    void Draw(const QString& text);

    /// Erases the live line, and writes the lines.
    void Write(const QByteArray& lines);
    /// Erases the live line, and writes a sentence for the person who watches to the error output.
    void Say(const QString& text);

    /// Why the output is lost, to be said to whoever still sees the error output.
    QString Loss() const;

    /// Writes what is left, and says so if not all of the output could be written. Returns the exit status of
    /// a run that has ended with this one otherwise.
    int Finish(int exitStatus);

Q_SIGNALS:
    /// The output is lost: nobody sees any more what goes on.
    void Lost();

private:
    void Erase();

    LiveOutput _output;
    LiveOutput _errors;
    bool _hasLiveLine;
    bool _isDrawn = false;
};

} // namespace Cli
