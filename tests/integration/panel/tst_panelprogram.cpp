#include <QtTest>

#include <QProcess>

#include "integration/patience.h"

/// The program as it is started.
class TestPanelProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RunsAtASimulatorOfItsOwn();
    void WhatIsWrongIsSaid_data();
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

void TestPanelProgram::WhatIsWrongIsSaid_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("page") << QStringList{QStringLiteral("--page"), QStringLiteral("attic")}
                          << QByteArray("there is no page \"attic\"; it is one of connection, measure");
    QTest::newRow("units") << QStringList{QStringLiteral("--units"), QStringLiteral("/nowhere.json")}
                           << QByteArray("/nowhere.json");
}

void TestPanelProgram::WhatIsWrongIsSaid()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, said);
    QProcess program;
    program.start(QStringLiteral(PANEL_PROGRAM), options);
    QVERIFY(program.waitForFinished(Patience));
    QCOMPARE(program.exitCode(), 1);
    const QByteArray error = program.readAllStandardError();
    QVERIFY2(error.contains(said), error.constData());
}

QTEST_GUILESS_MAIN(TestPanelProgram)

#include "tst_panelprogram.moc"
