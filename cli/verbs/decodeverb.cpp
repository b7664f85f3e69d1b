#include "cli/verbs/decodeverb.h"

#include <CLI/CLI.hpp>

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "cli/decode/decodesession.h"
#include "cli/kit/signalwatcher.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

constexpr VerbTexts Texts{
    "decode", QT_TRANSLATE_NOOP("Cli::Text", "Tell in words what a log of the library has kept"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar decode FILE [--scenario OUT] [--json]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text",
        "Reads a log of the library, of a field unit or of vesmar VERB --trace 2> FILE; \"-\" is\n"
        "the standard input. Tells each exchange with the instrument in words, what was wrong\n"
        "with it and how long it took, and at the end what was found. Lines of others, their\n"
        "beginnings of lines and colours do not matter. No instrument is needed. Ctrl-C ends the\n"
        "reading of a log that still grows.\n"
        "\n"
        "--scenario records the exchanges for vesmar-simulator --playback OUT.\n"
        "\n"
        "JSON: see docs/events.md; events exchange, unasked, note and result.\n"
        "\n"
        "Exit status: 0 decoded; 1 bad usage, a file that cannot be read or written, or a damaged\n"
        "log: what is whole is told all the same, but not recorded; 3 the output cannot be\n"
        "written.\n"
        "\n"
        "Example:\n"
        "  vesmar-simulator run -- vesmar info --trace 2> log\n"
        "  vesmar decode log\n")};

/// A device is not read: /dev/zero has no end, and the bytes of a serial line are another program's.
bool IsDevice(const QString& path)
{
    struct stat file = {};
    return ::stat(QFile::encodeName(path).constData(), &file) == 0 &&
           (S_ISCHR(file.st_mode) || S_ISBLK(file.st_mode));
}

/// The descriptor of the log, which is closed in the end.
class LogFile
{
public:
    explicit LogFile(const QString& path) : _isOwn(path != QLatin1String("-"))
    {
        if (!_isOwn) {
            _descriptor = STDIN_FILENO;
        } else if (!IsDevice(path)) {
            _descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
            _openError = _descriptor < 0 ? errno : 0;
        }
    }

    ~LogFile()
    {
        if (_isOwn && _descriptor >= 0) {
            ::close(_descriptor);
        }
    }

    LogFile(const LogFile&) = delete;
    LogFile(LogFile&&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    LogFile& operator=(LogFile&&) = delete;

    /// Negative for a device, which is not opened, and for what cannot be opened.
    int Descriptor() const { return _descriptor; }
    int OpenError() const { return _openError; }

private:
    bool _isOwn;
    int _descriptor = -1;
    int _openError = 0;
};

QString LogName(const QString& path)
{
    return path == QLatin1String("-") ? Text::tr("the standard input") : Printable(path);
}

} // namespace

DecodeVerb::DecodeVerb(CLI::App& program) : Verb(program, Texts, Reach::ProgramOnly)
{
    Command()
        .add_option("FILE", _log, Text::tr("The log; - for the standard input").toStdString())
        ->type_name("")
        ->required();
    Command()
        .add_option("--scenario", _recording,
                    Text::tr("Record the exchanges for vesmar-simulator --playback").toStdString())
        ->type_name("OUT")
        ->check([](const std::string& path) {
            return path.empty() ? Text::tr("a file needs a name").toStdString() : std::string();
        });
}

int DecodeVerb::Run()
{
    const SignalWatcher signalWatcher;
    Output output(STDOUT_FILENO, signalWatcher.Descriptor());
    const LogFile log(LogPath());
    DecodeSession session({LogName(LogPath()), log.Descriptor(), log.OpenError(), RecordingPath(),
                           Options().isJson, signalWatcher.Descriptor()},
                          output);
    return session.Run();
}

} // namespace Cli
