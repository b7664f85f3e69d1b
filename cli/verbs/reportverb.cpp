#include "cli/verbs/reportverb.h"

#include <CLI/CLI.hpp>

#include <QDateTime>
#include <QFile>

#include <unistd.h>

#include "cli/output/event.h"
#include "cli/output/output.h"
#include "cli/verbs/reportsections.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "client/words/printable.h"

namespace Cli
{

namespace
{

constexpr VerbTexts Texts{
    "report", QT_TRANSLATE_NOOP("Cli::Text", "Write one file for a report of a bug"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar report [FILE] [--log LOG] [--overwrite] [--json]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text",
        "Writes a text with the versions, with what vesmar doctor finds, with the instrument's\n"
        "identity and with the latest trace, decoded. What cannot be found out, without an\n"
        "instrument for example, stands in the file in so many words. The report is in English.\n"
        "\n"
        "FILE is vesmar-report-DATE-TIME.txt unless it is given; - is the standard output. The\n"
        "trace is the end of LOG, which is kept by a field unit or by vesmar VERB --trace 2> LOG;\n"
        "without --log, it is that of a connection that is made for it.\n"
        "\n"
        "JSON: see docs/events.md; event result.\n"
        "\n"
        "Exit status: 0 written; 1 bad usage, or a file that is there already or cannot be\n"
        "written; 3 the output cannot be written.\n"
        "\n"
        "Example, without an instrument:\n"
        "  vesmar-simulator run -- vesmar report -\n")};

} // namespace

ReportVerb::ReportVerb(CLI::App& program) : Verb(program, Texts, Reach::ProgramOnly)
{
    Command()
        .add_option("FILE", _file, Text::tr("Where to write it; - for the standard output").toStdString())
        ->type_name("");
    Command().add_option("--log", _log, Text::tr("The log with the trace").toStdString())->type_name("LOG");
    Command().add_flag("--overwrite", _isOverwritten,
                       Text::tr("Overwrite the file if it is there already").toStdString());
    Command().final_callback([this] {
        if (_file == "-" && Options().isJson) {
            throw CLI::ValidationError(
                "--json",
                Text::tr("the standard output is either JSON or the report; name a file").toStdString());
        }
    });
}

QString ReportVerb::Path() const
{
    return _file.empty() ? QDateTime::currentDateTime().toString(
                               QStringLiteral("'vesmar-report-'yyyy-MM-dd-HHmmss'.txt'"))
                         : QFile::decodeName(_file.c_str());
}

/// Why the report cannot be written; empty where it is.
QString ReportVerb::Problem(const QString& path) const
{
    const QString shown = VesmarClient::Printable(path);
    if (QFile::exists(path) && !_isOverwritten) {
        return Text::tr("%1 is there already; name another file, or add --overwrite").arg(shown);
    }
    const QByteArray text = ReportText(QFile::decodeName(_log.c_str()));
    QFile file(path);
    const QIODevice::OpenMode mode = _isOverwritten ? QIODevice::Truncate : QIODevice::NewOnly;
    const bool isWritten =
        file.open(QIODevice::WriteOnly | mode) && file.write(text) == text.size() && file.flush();
    return isWritten ? QString() : Text::tr("cannot write the file %1: %2").arg(shown, file.errorString());
}

int ReportVerb::Run()
{
    constexpr int Nothing = -1;
    Output output(STDOUT_FILENO, Nothing);
    const QString path = Path();
    if (path == QLatin1String("-")) {
        return PrintingStatus(output, output.Write(ReportText(QFile::decodeName(_log.c_str()))));
    }
    const QString problem = Problem(path);
    Ending ending = DoneWith(Text::tr("The report is in %1.").arg(VesmarClient::Printable(path)));
    if (!problem.isEmpty()) {
        ending = {ExitStatus::BadUsage, Ending::Outcome::Failed, problem, QStringLiteral("cannot-write")};
        WriteError(problem);
    }
    const bool isShown = Options().isJson || problem.isEmpty();
    const QByteArray line =
        Options().isJson ? ResultLine(QDateTime::currentDateTime(), ending) : ending.message.toUtf8() + '\n';
    const int status = isShown ? PrintingStatus(output, output.Write(line)) : ExitStatus::Done;
    return status != ExitStatus::Done ? status : ending.status;
}

} // namespace Cli
