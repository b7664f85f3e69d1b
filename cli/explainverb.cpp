#include "cli/explainverb.h"

#include <QJsonArray>
#include <QJsonObject>

#include <unistd.h>

#include "cli/errorguide.h"
#include "cli/format.h"
#include "cli/output.h"

namespace Cli
{

namespace
{

using Vesmar::Error;

constexpr VerbTexts Texts{
    "explain", "Tell what an error means and what to do", "Usage: vesmar explain [CODE|NAME] [--json]\n",
    "Tells what has happened when ErrorCode is CODE (or has that NAME), what is likely to\n"
    "have caused it, and the next step. Without one, lists every error. No instrument is\n"
    "needed.\n"
    "\n"
    "JSON fields: name, number, meaning, causes (an array), nextStep; one object for each\n"
    "error.\n"
    "\n"
    "Exit status: 0 told; 1 bad usage, an unknown error included; 3 the output cannot be\n"
    "written.\n"
    "\n"
    "Examples:\n"
    "  vesmar explain 303\n"
    "  vesmar explain CommunicationRecovery\n"};

constexpr int LabelWidth = 16;

QByteArray Line(const QString& label, const QString& text)
{
    return (QStringLiteral("  ") + label.leftJustified(LabelWidth) + text + QLatin1Char('\n')).toUtf8();
}

QByteArray ExplanationText(Error error)
{
    const ErrorAdvice advice = Advice(error);
    QByteArray text = (NameAndNumber(error) + QLatin1Char('\n')).toUtf8();
    text += Line(QStringLiteral("What happened"), Meaning(error));
    QString label = QStringLiteral("Likely causes");
    for (const QString& cause : advice.causes) {
        text += Line(label, cause);
        label.clear();
    }
    return text + Line(QStringLiteral("Next step"), advice.nextStep);
}

QByteArray ExplanationJson(Error error)
{
    const ErrorAdvice advice = Advice(error);
    return JsonLine({{QStringLiteral("name"), Name(error)},
                     {QStringLiteral("number"), static_cast<int>(error)},
                     {QStringLiteral("meaning"), Meaning(error)},
                     {QStringLiteral("causes"), QJsonArray::fromStringList(advice.causes)},
                     {QStringLiteral("nextStep"), advice.nextStep}});
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
            "error", [this](const std::string& text) { TakeError(text); }, "The error's number or name")
        ->type_name("CODE|NAME");
}

void ExplainVerb::TakeError(const std::string& numberOrName)
{
    const QString given = QString::fromLocal8Bit(numberOrName.c_str());
    _wanted = FindError(given);
    if (!_wanted) {
        const QString complaint =
            QStringLiteral("there is no error \"%1\"; vesmar explain lists them").arg(Printable(given));
        throw CLI::ValidationError(complaint.toStdString());
    }
}

int ExplainVerb::Run()
{
    QByteArray text;
    for (const Error error : _wanted ? QVector<Error>{*_wanted} : AllErrors()) {
        if (Options().isJson) {
            text += ExplanationJson(error);
        } else {
            text += _wanted ? ExplanationText(error) : ListLine(error);
        }
    }
    constexpr int Nothing = -1;
    Output output(STDOUT_FILENO, Nothing);
    return PrintingStatus(output, output.Write(text));
}

} // namespace Cli
