#include "cli/kit/link.h"

#include <QTemporaryFile>
#include <QtTest>

#include "support/eventschema.h"
#include "support/logcapture.h"
#include "support/redirection.h"

namespace
{

Cli::LinkOptions Json()
{
    Cli::LinkOptions options;
    options.isJson = true;
    return options;
}

/// What a link with these options prints while it is worked with.
template <typename Work>
QByteArray Printed(const Cli::LinkOptions& options, const Work& work)
{
    QTemporaryFile file;
    QTemporaryFile errors;
    if (!file.open() || !errors.open()) {
        return "no temporary file";
    }
    {
        const LogCapture log; // keeps the library's trace away from Qt Test, which writes to the output
        const Redirection output(STDOUT_FILENO, file.handle());
        const Redirection errorOutput(STDERR_FILENO, errors.handle());
        Cli::Link link(options);
        work(link);
    }
    file.seek(0);
    return file.readAll();
}

} // namespace

class TestCliLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ResultIsTheLastLine();
    void FirstEndCounts();
    void VerbMayTellOfTheEndItself();
    void TextHasNoResult();
};

void TestCliLink::ResultIsTheLastLine()
{
    const QByteArray printed = Printed(Json(), [](Cli::Link& link) {
        const QByteArray event = Cli::EventLine(QDateTime::currentDateTime(), QStringLiteral("restart"),
                                                {{QStringLiteral("seconds"), 2}});
        link.Print(event);
        link.Finish(Cli::DoneWith(QStringLiteral("Done.")));
        link.Print(event);
    });
    QCOMPARE(printed.count('\n'), 2);
    QCOMPARE(ProblemOfRun(printed, 0), QString());
}

void TestCliLink::FirstEndCounts()
{
    const QByteArray printed = Printed(Json(), [](Cli::Link& link) {
        link.Finish(Cli::EndedBySignal(2));
        link.Finish(Cli::DoneWith(QStringLiteral("Done.")));
        link.Fail(4, {QStringLiteral("not-set"), QStringLiteral("Not set.")});
    });
    QCOMPARE(printed.count('\n'), 1);
    QCOMPARE(ProblemOfRun(printed, 130), QString());
}

void TestCliLink::VerbMayTellOfTheEndItself()
{
    const QByteArray printed = Printed(Json(), [](Cli::Link& link) {
        link.EndWork(0);
        link.Finish(Cli::DoneWith(QStringLiteral("Done.")));
    });
    QCOMPARE(printed, QByteArray());
}

void TestCliLink::TextHasNoResult()
{
    const QByteArray printed = Printed({}, [](Cli::Link& link) {
        link.Print("It is done.\n");
        link.Finish(Cli::DoneWith(QStringLiteral("Done.")));
    });
    QCOMPARE(printed, QByteArray("It is done.\n"));
}

QTEST_GUILESS_MAIN(TestCliLink)
#include "tst_clilink.moc"
