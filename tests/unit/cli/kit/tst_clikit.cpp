#include <CLI/CLI.hpp>

#include <QTemporaryFile>
#include <QtTest>

#include "cli/kit/connection.h"
#include "cli/kit/dates.h"
#include "cli/kit/failure.h"
#include "support/eventschema.h"
#include "support/logcapture.h"
#include "support/redirection.h"

using VesmarClient::Error;
using VesmarClient::Mode;

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
        Cli::Connection connection(options);
        work(connection);
    }
    file.seek(0);
    return file.readAll();
}

} // namespace

class TestCliKit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LinksThatAreNotUp_data();
    void LinksThatAreNotUp();
    void InUpdateMode();
    void LostLink();
    void initTestCase();
    void DateTimes_data();
    void DateTimes();
    void BadDateTimes_data();
    void BadDateTimes();
    void Dates();
    void BadDates_data();
    void BadDates();
    void WallClockHasTheFieldsOfTheLocalTime();
    void ResultIsTheLastLine();
    void FirstEndCounts();
    void VerbMayShowTheEndItself();
    void TextHasNoResult();
};

void TestCliKit::LinksThatAreNotUp_data()
{
    QTest::addColumn<bool>("hasAnswer");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("reported");
    const auto row = [](const char* name, bool hasAnswer, int mode, int error, const char* kind,
                        const char* words, int reported = 15) {
        QTest::newRow(name) << hasAnswer << mode << error << QString::fromLatin1(kind)
                            << QString::fromLatin1(words) << reported;
    };
    row("refused", false, 0, 101, "refused", "refuses every request", 101);
    row("damaged", false, 0, 102, "damaged", "arrive damaged", 102);
    row("silent", false, 0, 15, "no-answer", "did not answer within 2.5 s");
    row("given up", false, 0, 100, "no-answer", "did not answer within 2.5 s", 100);
    row("still trying", false, 0, 103, "no-proper-answer", "no proper answer within 2.5 s");
    row("clocks missing", true, 0, 15, "incomplete", "clocks could not be read within 2.5 s");
    row("clocks refused", true, 0, 103, "incomplete", "clocks could not be read within 2.5 s");
    row("fell silent", true, 0, 100, "no-answer", "fell silent", 100);
    row("update mode", false, 3, 103, "update-mode", "vesmar update IMAGE --confirmation FILE");
    row("other mode", true, 2, 15, "wrong-mode", "does not leave its mode Mode2 (2)");
}

void TestCliKit::LinksThatAreNotUp()
{
    QFETCH(bool, hasAnswer);
    QFETCH(int, mode);
    QFETCH(int, error);
    QFETCH(QString, words);
    const Cli::Failure failure = Cli::LinkNotUp(
        {hasAnswer, static_cast<Mode>(mode), static_cast<Error>(error)}, std::chrono::milliseconds(2500));
    QTEST(failure.kind, "kind");
    QTEST(static_cast<int>(failure.error), "reported");
    QVERIFY2(failure.message.contains(words), qPrintable(failure.message));
    QVERIFY(!failure.message.contains(QLatin1Char('\n')));
}

void TestCliKit::InUpdateMode()
{
    QVERIFY(Cli::InUpdateMode().outcome == Cli::Ending::Outcome::UpdateMode);
    QCOMPARE(
        Cli::InUpdateMode().message,
        QStringLiteral("The instrument is in update mode (3) and waits for firmware; run vesmar update IMAGE "
                       "--confirmation FILE."));
}

void TestCliKit::LostLink()
{
    const Cli::Failure lost = Cli::LinkLost(VesmarClient::Failure::ofError(Error::NoResponse));
    QVERIFY(lost.outcome == Cli::Ending::Outcome::LinkLost);
    QVERIFY(lost.error == Error::NoResponse);
    QCOMPARE(lost.kind, QStringLiteral("link-lost"));
    QVERIFY2(Cli::LinkLost(QStringLiteral("Not done."))
                 .message.startsWith(QStringLiteral("Not done. The link to it was lost;")),
             qPrintable(lost.message));
}

/// Uses a time zone in which the hour after two is missing once a year.
void TestCliKit::initTestCase()
{
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
}

void TestCliKit::DateTimes_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("taken");
    QTest::newRow("as ISO has it") << "2026-11-21T18:00:01"
                                   << "2026-11-21T18:00:01Z";
    QTest::newRow("with a blank") << "2026-11-21 18:00:01"
                                  << "2026-11-21T18:00:01Z";
    QTest::newRow("first") << "2001-01-01T00:00:00"
                           << "2001-01-01T00:00:00Z";
    QTest::newRow("last") << "2099-12-31T23:59:59"
                          << "2099-12-31T23:59:59Z";
    QTest::newRow("leap day") << "2028-02-29T00:00:00"
                              << "2028-02-29T00:00:00Z";
    QTest::newRow("hour that is missing here") << "2026-03-29T02:30:00"
                                               << "2026-03-29T02:30:00Z";
}

void TestCliKit::DateTimes()
{
    QFETCH(QString, given);
    const QDateTime value = Cli::ParseDateTime(given.toStdString());
    QTEST(value.toString(Qt::ISODate), "taken");
}

void TestCliKit::BadDateTimes_data()
{
    QTest::addColumn<QString>("given");
    for (const char* given :
         {"", "soon", "2000-12-31T23:59:59", "2100-01-01T00:00:00", "2026-02-29T00:00:00",
          "2026-13-01T00:00:00", "2026-11-21", "2026-11-21T", "2026-11-21T18:00", "2026-11-21T24:00:00",
          "2026-11-21T18:00:60", "2026-11-21T18:00:00Z", "2026-11-21T18:00:00+01:00", "2026-11-21T18:00:00.5",
          "2026-11-21T18:00:00T", "26-11-21T18:00:00", "21.11.2026 18:00:00", " 2026-11-21T18:00:00"}) {
        QTest::addRow("<%s>", given) << QString::fromLatin1(given);
    }
}

void TestCliKit::BadDateTimes()
{
    QFETCH(QString, given);
    try {
        Cli::ParseDateTime(given.toStdString());
        QFAIL("taken");
    } catch (const CLI::ValidationError& error) {
        QCOMPARE(QString::fromLatin1(error.what()),
                 QStringLiteral("set: \"%1\" is not a date and time from 2001-01-01T00:00:00 to "
                                "2099-12-31T23:59:59, nor now")
                     .arg(given));
    }
}

void TestCliKit::Dates()
{
    QCOMPARE(Cli::ParseDate("2026-11-21"), QDate(2026, 11, 21));
    QCOMPARE(Cli::ParseDate("2001-01-01"), QDate(2001, 1, 1));
    QCOMPARE(Cli::ParseDate("2099-12-31"), QDate(2099, 12, 31));
}

void TestCliKit::BadDates_data()
{
    QTest::addColumn<QString>("given");
    for (const char* given : {"", "now", "2000-12-31", "2100-01-01", "2026-02-29", "2026-11-21T00:00:00",
                              "2026-1-2", "20261121", "-2026-11-21"}) {
        QTest::addRow("<%s>", given) << QString::fromLatin1(given);
    }
}

void TestCliKit::BadDates()
{
    QFETCH(QString, given);
    try {
        Cli::ParseDate(given.toStdString());
        QFAIL("taken");
    } catch (const CLI::ValidationError& error) {
        QCOMPARE(QString::fromLatin1(error.what()),
                 QStringLiteral("set: \"%1\" is not a date from 2001-01-01 to 2099-12-31").arg(given));
    }
}

void TestCliKit::WallClockHasTheFieldsOfTheLocalTime()
{
    const QDateTime local(QDate(2026, 7, 1), QTime(12, 0), Qt::LocalTime);
    QCOMPARE(Cli::AsWallClock(local).toString(Qt::ISODate), QStringLiteral("2026-07-01T12:00:00Z"));
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime shown = Cli::WallClock();
    QVERIFY(Cli::AsWallClock(before) <= shown);
    QVERIFY(shown <= Cli::AsWallClock(QDateTime::currentDateTime()));
}

void TestCliKit::ResultIsTheLastLine()
{
    const QByteArray printed = Printed(Json(), [](Cli::Connection& connection) {
        const QByteArray event = Cli::EventLine(QDateTime::currentDateTime(), QStringLiteral("restart"),
                                                {{QStringLiteral("seconds"), 2}});
        connection.Print(event);
        connection.Finish(Cli::DoneWith(QStringLiteral("Done.")));
        connection.Print(event);
    });
    QCOMPARE(printed.count('\n'), 2);
    QCOMPARE(ProblemOfRun(printed, 0), QString());
}

void TestCliKit::FirstEndCounts()
{
    const QByteArray printed = Printed(Json(), [](Cli::Connection& connection) {
        connection.Finish(Cli::EndedBySignal(2));
        connection.Finish(Cli::DoneWith(QStringLiteral("Done.")));
        connection.Fail(4, {QStringLiteral("not-set"), QStringLiteral("Not set.")});
    });
    QCOMPARE(printed.count('\n'), 1);
    QCOMPARE(ProblemOfRun(printed, 130), QString());
}

void TestCliKit::VerbMayShowTheEndItself()
{
    const QByteArray printed = Printed(Json(), [](Cli::Connection& connection) {
        connection.EndWork(0);
        connection.Finish(Cli::DoneWith(QStringLiteral("Done.")));
    });
    QCOMPARE(printed, QByteArray());
}

void TestCliKit::TextHasNoResult()
{
    const QByteArray printed = Printed({}, [](Cli::Connection& connection) {
        connection.Print("It is done.\n");
        connection.Finish(Cli::DoneWith(QStringLiteral("Done.")));
    });
    QCOMPARE(printed, QByteArray("It is done.\n"));
}

QTEST_GUILESS_MAIN(TestCliKit)
#include "tst_clikit.moc"
