#include <QtTest>

#include <QProcess>

#include "integration/patience.h"

/// The program as it is started.
class TestPanelProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RunsAtASimulatorOfItsOwn();
    void WhatIsWrongIsSaid();
};

namespace
{

/// The only child of a process; 0 where it has none.
qint64 ChildOf(qint64 process)
{
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(process));
    return children.open(QIODevice::ReadOnly) ? children.readAll().trimmed().toLongLong() : 0;
}

/// Whether the process has become the panel, and has opened its line. Until then it has the simulator's
/// descriptors.
bool HasOpenedTheLine(qint64 process)
{
    if (QFileInfo(QStringLiteral("/proc/%1/exe").arg(process)).symLinkTarget() !=
        QStringLiteral(PANEL_PROGRAM)) {
        return false;
    }
    const QDir files(QStringLiteral("/proc/%1/fd").arg(process));
    const QFileInfoList links = files.entryInfoList(QDir::Files | QDir::System);
    return std::any_of(links.cbegin(), links.cend(), [](const QFileInfo& link) {
        return link.symLinkTarget().startsWith(QStringLiteral("/dev/pts/"));
    });
}

} // namespace

/// The program becomes the simulator, which runs it.
void TestPanelProgram::RunsAtASimulatorOfItsOwn()
{
    QProcess program;
    program.start(QStringLiteral(PANEL_PROGRAM), {QStringLiteral("--simulator")});
    AWAIT(ChildOf(program.processId()) > 0 && HasOpenedTheLine(ChildOf(program.processId())));
    program.terminate(); // which the simulator passes on, and which closes the window
    QVERIFY(program.waitForFinished(Patience));
    QCOMPARE(program.exitCode(), 0);
}

void TestPanelProgram::WhatIsWrongIsSaid()
{
    QProcess program;
    program.start(QStringLiteral(PANEL_PROGRAM), {QStringLiteral("--page"), QStringLiteral("attic")});
    QVERIFY(program.waitForFinished(Patience));
    QCOMPARE(program.exitCode(), 1);
    QVERIFY(program.readAllStandardError().contains(
        "there is no page \"attic\"; it is one of connection, measure"));
}

QTEST_GUILESS_MAIN(TestPanelProgram)

#include "tst_panelprogram.moc"
