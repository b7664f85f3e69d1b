#pragma once

#include <QByteArray>

namespace Cli
{

/// Writes whole lines at once, unbuffered. A reader that does not read holds the program up, but not against
/// a signal to end.
class Output
{
public:
    enum class Result {
        Written,
        ReaderGone, ///< Nobody reads any more.
        GivenUp,    ///< The descriptor given became readable while the reader held everything up.
        Failed      ///< `LastError()` says why.
    };

    /// Writes to the one descriptor and gives up a held up line when the other becomes readable.
    Output(int descriptor, int giveUpDescriptor);

    /// After anything but `Written`, nothing more is written.
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

/// What a program that only prints ends with, when its last output has come to this. Says why it failed.
int PrintingStatus(const Output& output, Output::Result result);

/// A line of the program's own on the error output.
void WriteError(const QString& text);

} // namespace Cli
