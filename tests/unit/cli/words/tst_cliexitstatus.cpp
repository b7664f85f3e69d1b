#include "cli/words/exitstatus.h"

#include <QtTest>

#include <sstream>

#include "cli/program/program.h"

namespace ExitStatus = Cli::ExitStatus;

class TestCliExitStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryStatusIsExplainedOnce();
    void HelpShowsTheSame();
    void DocumentShowsTheSame();
};

void TestCliExitStatus::EveryStatusIsExplainedOnce()
{
    QVector<int> statuses;
    for (const ExitStatus::Explained& each : ExitStatus::All()) {
        statuses.append(each.status);
        QVERIFY(!each.words.empty());
    }
    QCOMPARE(statuses, (QVector<int>{0, 1, 2, 3, 4, 5, 6, 7, 128}));
}

void TestCliExitStatus::HelpShowsTheSame()
{
    constexpr std::array<const char*, 2> Arguments{"vesmar", "--help"};
    std::ostringstream output;
    int status = -1;
    Cli::Program().Parse(Arguments.size(), Arguments.data(), output, output, &status);
    QCOMPARE(status, 0);
    const QString help = QString::fromStdString(output.str());
    for (const ExitStatus::Explained& each : ExitStatus::All()) {
        const QString line =
            QStringLiteral("\n  %1%2\n")
                .arg(QString::number(each.status).leftJustified(5), QString::fromStdString(each.words));
        QVERIFY2(help.contains(line), qPrintable(line));
    }
}

void TestCliExitStatus::DocumentShowsTheSame()
{
    QFile file(QStringLiteral(COMMANDLINE_DOCUMENT));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList rows;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("| ")) && line.at(2).isDigit()) {
            rows.append(line.section(QLatin1String(" | "), 0, 1));
        }
    }
    QStringList expected;
    for (const ExitStatus::Explained& each : ExitStatus::All()) {
        expected.append(QStringLiteral("| %1 | %2").arg(each.status).arg(QString::fromStdString(each.words)));
    }
    QCOMPARE(rows, expected);
}

QTEST_APPLESS_MAIN(TestCliExitStatus)
#include "tst_cliexitstatus.moc"
