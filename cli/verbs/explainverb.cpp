#include "cli/verbs/explainverb.h"

#include <CLI/CLI.hpp>

#include <unistd.h>

#include "cli/output/event.h"
#include "cli/output/output.h"
#include "cli/words/advice.h"
#include "cli/words/format.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

using Vesmar::Error;
using VesmarClient::Meaning;
using VesmarClient::Name;
using VesmarClient::NameAndNumber;

constexpr VerbTexts Texts{
    "explain", QT_TRANSLATE_NOOP("Cli::Text", "Tell what an error means and what to do"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar explain [CODE|NAME] [--json]\n"),
    QT_TRANSLATE_NOOP("Cli::Text",
                      "Tells what has happened when ErrorCode is CODE (or has that NAME), what is likely to\n"
                      "have caused it, and the next step. Without one, lists every error. No instrument is\n"
                      "needed.\n"
                      "\n"
                      "JSON: see docs/events.md; events explanation, one for each error, and result.\n"
                      "\n"
                      "Exit status: 0 told; 1 bad usage, an unknown error included; 3 the output cannot be\n"
                      "written.\n"
                      "\n"
                      "Examples:\n"
                      "  vesmar explain 303\n"
                      "  vesmar explain CommunicationRecovery\n")};

QByteArray ExplanationText(Error error)
{
    return NameAndNumber(error).toUtf8() + '\n' + ExplanationLine(Text::tr("What happened"), Meaning(error)) +
           AdviceText(static_cast<VesmarClient::Error>(error));
}

QByteArray ExplanationJson(Error error)
{
    return EventLine(QDateTime::currentDateTime(), QStringLiteral("explanation"),
                     Show(error).json.toObject());
}

QByteArray ListLine(Error error)
{
    constexpr int NumberWidth = 3;
    constexpr int NameWidth = 33;
    return (QString::number(static_cast<int>(error)).rightJustified(NumberWidth) + QStringLiteral("  ") +
            Name(error).leftJustified(NameWidth) + QStringLiteral("  ") + Meaning(error) + QLatin1Char('\n'))
        .toUtf8();
}

} // namespace

ExplainVerb::ExplainVerb(CLI::App& program) : Verb(program, Texts, Reach::ProgramOnly)
{
    Command()
        .add_option_function<std::string>(
            "error", [this](const std::string& text) { ParseWanted(text); },
            Text::tr("The error's number or name").toStdString())
        ->type_name("CODE|NAME");
}

void ExplainVerb::ParseWanted(const std::string& numberOrName)
{
    const QString given = QString::fromLocal8Bit(numberOrName.c_str());
    _wanted = VesmarClient::FindError(given);
    if (!_wanted) {
        const QString complaint =
            Text::tr("there is no error \"%1\"; vesmar explain lists them").arg(Printable(given));
        throw CLI::ValidationError(complaint.toStdString());
    }
}

int ExplainVerb::Run()
{
    QByteArray text;
    for (const Error error : _wanted ? QVector<Error>{*_wanted} : VesmarClient::AllErrors()) {
        if (Options().isJson) {
            text += ExplanationJson(error);
        } else {
            text += _wanted ? ExplanationText(error) : ListLine(error);
        }
    }
    if (Options().isJson) {
        text += ResultLine(QDateTime::currentDateTime(), DoneWith(Text::tr("Everything was told.")));
    }
    constexpr int Nothing = -1;
    Output output(STDOUT_FILENO, Nothing);
    return PrintingStatus(output, output.Write(text));
}

} // namespace Cli
