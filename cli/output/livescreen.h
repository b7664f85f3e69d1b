#pragma once

#include "cli/output/liveoutput.h"

namespace Cli
{

/// The output and the error output of a verb that shows how something goes on. It never waits for a reader.
/// On a terminal it has one line that is drawn anew again and again.
class LiveScreen : public QObject
{
    Q_OBJECT

public:
    /// Only a text for people has a live line.
    explicit LiveScreen(bool isText);

    bool HasLiveLine() const { return _hasLiveLine; }
    /// The widest live line that does not wrap.
    static int Width();
    void Draw(const QString& line);

    /// What is written and said goes onto lines of its own, and the live line away.
    void Write(const QByteArray& lines);
    /// A sentence for the person who watches, on the error output.
    void Say(const QString& text);

    /// Writes what is left. False if not all of the output could be written, which it says.
    bool Finish();

Q_SIGNALS:
    /// Nobody sees any more what goes on.
    void Lost();

private:
    void Erase();

    LiveOutput _output;
    LiveOutput _errors;
    bool _hasLiveLine;
    bool _isDrawn = false;
};

} // namespace Cli
