#include "cli/program/tracefilter.h"

#include <QLoggingCategory>
#include <QTemporaryFile>
#include <QtTest>

#include <unistd.h>

#include <cstdio>

namespace
{

Q_LOGGING_CATEGORY(OtherCategory, "other")

/// What the filter lets through of one message of each kind.
QByteArray Passed(bool isTraceWanted)
{
    QTemporaryFile file;
    if (!file.open()) {
        return "no temporary file";
    }
    const int errorOutput = ::dup(STDERR_FILENO);
    ::dup2(file.handle(), STDERR_FILENO);
    Cli::InstallTraceFilter(isTraceWanted);
    qDebug("debug");
    qInfo("info");
    qWarning("warning");
    qCritical("critical");
    qCWarning(OtherCategory, "warning");
    qInstallMessageHandler(nullptr);
    ::dup2(errorOutput, STDERR_FILENO);
    ::close(errorOutput);
    file.seek(0);
    return file.readAll();
}

} // namespace

class TestCliTraceFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TraceIsDropped();
    void TraceIsShownWhenWanted();
};

void TestCliTraceFilter::TraceIsDropped()
{
    QCOMPARE(Passed(false), QByteArray("critical\nother: warning\n"));
}

void TestCliTraceFilter::TraceIsShownWhenWanted()
{
    QCOMPARE(Passed(true), QByteArray("debug\ninfo\nwarning\ncritical\nother: warning\n"));
}

QTEST_GUILESS_MAIN(TestCliTraceFilter)
#include "tst_clitracefilter.moc"
