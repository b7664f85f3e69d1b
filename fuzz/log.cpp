#include <sys/mman.h>
#include <unistd.h>

#include <iostream>
#include <sstream>

#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "cli/decode/decodesession.h"
#include "fuzz/finding.h"
#include "simulator/line/recordingfile.h"

namespace
{

/// A file in memory, which takes one text after the other.
class MemoryFile
{
public:
    void Fill(const QByteArray& text) const
    {
        const auto size = static_cast<size_t>(text.size());
        Require(::ftruncate(_descriptor, 0) == 0 && Rewind() &&
                    ::write(_descriptor, text.constData(), size) == static_cast<ssize_t>(size) && Rewind(),
                "there is room in memory");
    }

    QByteArray Content() const
    {
        QFile file;
        Require(Rewind() && file.open(_descriptor, QIODevice::ReadOnly), "what is in memory can be read");
        return file.readAll();
    }

    int Descriptor() const { return _descriptor; }

private:
    bool Rewind() const { return ::lseek(_descriptor, 0, SEEK_SET) == 0; }

    int _descriptor = ::memfd_create("log", MFD_CLOEXEC); // Open until the program ends.
};

struct Decoded {
    int status;
    QByteArray printed;
    QByteArray errors;
};

Decoded DecodeLog(const QByteArray& text, const QString& recording, bool isJson)
{
    constexpr int Nothing = -1;
    static const MemoryFile log;
    static const MemoryFile printed;
    log.Fill(text);
    printed.Fill({});
    std::ostringstream errors;
    std::streambuf* const ownErrors = std::cerr.rdbuf(errors.rdbuf());
    Cli::Output output(printed.Descriptor(), Nothing);
    const int status =
        Cli::DecodeSession({QStringLiteral("LOG"), log.Descriptor(), 0, recording, isJson}, output).Run();
    std::cerr.rdbuf(ownErrors);
    return {status, printed.Content(), QByteArray::fromStdString(errors.str())};
}

/// A failure tells its place in the log, or why there is none.
void RequireReason(const QByteArray& text, const QByteArray& errors)
{
    static const QRegularExpression place(QStringLiteral("^vesmar: LOG, line (\\d+): .{15,}$"),
                                          QRegularExpression::MultilineOption);
    const auto found = place.match(QString::fromUtf8(errors));
    const int line = found.captured(1).toInt();
    const bool hasPlace = found.hasMatch() && line >= 1 && line <= text.count('\n') + 1;
    Require(hasPlace || errors.contains("LOG is empty") || errors.contains("LOG has no exchange") ||
                errors.contains("there is no exchange to record"),
            "a failure has a place or a reason");
}

void RequireEnding(const Decoded& decoded, const QByteArray& text)
{
    for (const char byte : decoded.printed) {
        Require(byte == '\n' || static_cast<uchar>(byte) >= ' ', "no control character is printed");
    }
    if (decoded.status == 0) {
        Require(decoded.errors.isEmpty() && !decoded.printed.isEmpty(),
                "a success prints, and has no errors");
    } else {
        Require(decoded.status == 1, "there is one other status");
        RequireReason(text, decoded.errors);
    }
}

void CheckJson(const QByteArray& text)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/vesmar-XXXXXX"));
    const QString path = folder.filePath(QStringLiteral("recording"));
    const Decoded decoded = DecodeLog(text, path, true);
    RequireEnding(decoded, text);
    for (const QByteArray& line : decoded.printed.split('\n')) {
        Require(line.isEmpty() || QJsonDocument::fromJson(line).isObject(), "each line is a JSON object");
    }
    Require(QFile::exists(path) == (decoded.status == 0), "there is a recording of a success, and no other");
    if (decoded.status == 0) {
        Require(!Simulator::LoadRecording(path).empty(), "the simulated instrument reads the recording");
        QFile::remove(path);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text = Input(data, size).Rest();
    if (text.size() % 2 == 0) { // both forms of each input would take twice as long
        RequireEnding(DecodeLog(text, QString(), false), text);
    } else {
        CheckJson(text);
    }
    return 0;
}
