#pragma once

#include <QByteArray>
#include <QString>

namespace Cli
{

/// Writes whole lines at once, unbuffered. A reader that does not read holds the program up, but a signal
/// still ends it.
class Output
{
public:
    enum class Result {
        Written,
        ReaderGone, ///< The reader has gone away.
        GivenUp,    ///< The other descriptor became readable while the reader held everything up.
        Failed      ///< `LastError()` says why.
    };

    /// Writes to the first descriptor. Gives up a line that a reader holds up when the other becomes
    /// readable.
    Output(int descriptor, int giveUpDescriptor);

    /// After a result other than `Written`, nothing more is written.
    Result Write(const QByteArray& lines);

    int LastError() const { return _error; }

private:
    Result WriteAll(const QByteArray& lines);
    Result WaitForReader();
    Result FailWith(int error);

    int _descriptor;
    int _giveUpDescriptor;
    int _error = 0;
    Result _state = Result::Written;
};

/// The exit status of a program that only prints, given the result of its last output. Says why the output
/// failed.
int PrintingStatus(const Output& output, Output::Result result);

/// Says that the output cannot be written, and why: the system's error number.
QString CannotWrite(int error);

/// Writes a line of the program's own to the error output.
void WriteError(const QString& text);

/// The same for somebody who watches and waits: only where the error output is a terminal. A file, a pipe or
/// a journal that is read later has the outcome anyway, and a job that runs by itself shall not complain of a
/// slow link.
void SayToTerminal(const QString& text);

} // namespace Cli
