#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include <fcntl.h>
#include <sys/wait.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "client/guard/guard.h"
#include "client/guard/guardprogram.h"
#include "client/guard/report.h"
#include "support/guards.h"

using VesmarClient::Failure;
using VesmarClient::Guard;
using VesmarClient::Takeover;

Q_DECLARE_METATYPE(VesmarClient::Takeover::Outcome)
Q_DECLARE_METATYPE(Vesmar::MeasurementType)

namespace
{

constexpr int Patience = 90000;

int OpenDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size();
}

} // namespace

class TestClientGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void IsNobodysChildAndInheritsNothing();
    void OneGuardWatchesManyMeasurements();
    void GuardThatHasGoneIsReplaced();
    void GuardThatIsGivenUpDoesNotWatch();
    void CannotBeStarted_data();
    void CannotBeStarted();
    void Reports_data();
    void Reports();

private:
    QVector<pid_t> Guards() const { return GuardsWith(_mark); }

    QByteArray _mark;
};

void TestClientGuard::init()
{
    static int number = 0;
    _mark = "GUARD_TEST=" + QByteArray::number(::getpid()) + '-' + QByteArray::number(++number);
    ::setenv("GUARD_TEST", _mark.mid(11).constData(), 1);
    ::setenv(VesmarClient::GuardVariable, GUARD_PROGRAM, 1);
}

/// No guard outlives the object that it belongs to.
void TestClientGuard::cleanup()
{
    QTRY_VERIFY_WITH_TIMEOUT(Guards().isEmpty(), Patience);
}

void TestClientGuard::IsNobodysChildAndInheritsNothing()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    const int inheritable = ::open(QFile::encodeName(file.fileName()).constData(), O_RDWR); // NOLINT
    QVERIFY(inheritable >= 0);
    Guard guard;
    QCOMPARE(guard.Watch().whatHappened, QString());
    guard.Release();
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
    QCOMPARE(Guards().size(), 1);
    const QString folder = QStringLiteral("/proc/%1/fd").arg(Guards().first());
    for (const QString& descriptor : QDir(folder).entryList(QDir::AllEntries | QDir::System)) {
        QVERIFY(QFile::symLinkTarget(folder + QLatin1Char('/') + descriptor) != file.fileName());
    }
    ::close(inheritable);
}

void TestClientGuard::OneGuardWatchesManyMeasurements()
{
    Guard guard;
    QVERIFY(!guard.IsWatching());
    QVERIFY(!guard.Watch().isFailure());
    QVERIFY(guard.IsWatching());
    const QVector<pid_t> guards = Guards();
    guard.Release();
    QVERIFY(!guard.IsWatching());
    QVERIFY(!guard.Watch().isFailure());
    QCOMPARE(Guards(), guards);
    guard.Release();
}

void TestClientGuard::GuardThatHasGoneIsReplaced()
{
    Guard guard;
    QVERIFY(!guard.Watch().isFailure());
    guard.Release();
    const pid_t first = Guards().value(0);
    QVERIFY(first > 0 && ::kill(first, SIGKILL) == 0);
    QTRY_VERIFY_WITH_TIMEOUT(Guards().isEmpty(), Patience);
    QVERIFY(!guard.Watch().isFailure());
    QVERIFY(guard.IsWatching());
    QCOMPARE(Guards().size(), 1);
    guard.Release();
}

/// It may only be late, and would take over a line that the application has merely given back.
void TestClientGuard::GuardThatIsGivenUpDoesNotWatch()
{
    const QTemporaryDir folder;
    const QString told = folder.filePath(QStringLiteral("told"));
    QFile program(folder.filePath(QStringLiteral("guard")));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\nexec 3<&0\n{ printf x >&3; cat <&3 > '" + QFile::encodeName(told) + "'; } &\n");
    QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    program.close();
    ::setenv(VesmarClient::GuardVariable, QFile::encodeName(program.fileName()).constData(), 1);
    Guard guard;
    QCOMPARE(guard.Watch().name, QStringLiteral("guard-missing"));
    const auto messages = [&told] {
        QFile file(told);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QTRY_COMPARE_WITH_TIMEOUT(messages(), QByteArray("wr"), Patience);
}

void TestClientGuard::CannotBeStarted_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::newRow("missing") << QByteArray("/nowhere/vesmar-guard");
    QTest::newRow("not to be run") << QByteArray("/etc/passwd");
    QTest::newRow("ends without an answer") << QByteArray("/bin/true");
}

void TestClientGuard::CannotBeStarted()
{
    QFETCH(QByteArray, program);
    ::setenv(VesmarClient::GuardVariable, program.constData(), 1);
    const int before = OpenDescriptors();
    Guard guard;
    const Failure failure = guard.Watch();
    QCOMPARE(failure.name, QStringLiteral("guard-missing"));
    QVERIFY(!failure.whatHappened.isEmpty() && !failure.nextStep.isEmpty());
    QVERIFY(!guard.IsWatching());
    QCOMPARE(OpenDescriptors(), before);
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
}

void TestClientGuard::Reports_data()
{
    using Outcome = Takeover::Outcome;
    using Vesmar::MeasurementType;
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<MeasurementType>("stopped");
    QTest::addColumn<int>("priority");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("stopped") << Outcome::Stopped << MeasurementType::HVTest << LOG_NOTICE
                             << QByteArray("HVTest was stopped, and the instrument confirms that.");
    QTest::newRow("nothing ran") << Outcome::Stopped << MeasurementType::None << LOG_NOTICE
                                 << QByteArray("The instrument confirms that nothing runs.");
    QTest::newRow("update mode") << Outcome::UpdateMode << MeasurementType::None << LOG_NOTICE
                                 << QByteArray("The instrument is in update mode, where it measures "
                                               "nothing.");
    QTest::newRow("not confirmed") << Outcome::NotConfirmed << MeasurementType::HVTest << LOG_CRIT
                                   << QByteArray("It is not confirmed that the instrument has stopped: a "
                                                 "dangerous voltage may be present. Switch the instrument "
                                                 "off.");
}

void TestClientGuard::Reports()
{
    QFETCH(Takeover::Outcome, outcome);
    QFETCH(Vesmar::MeasurementType, stopped);
    const VesmarClient::Report report = ReportOf(QStringLiteral("station"), 7, outcome, stopped);
    QTEST(report.priority, "priority");
    QFETCH(QByteArray, text);
    QCOMPARE(report.text, "station (process 7) ended in the middle of a measurement. " + text);
}

QTEST_GUILESS_MAIN(TestClientGuard)
#include "tst_clientguard.moc"
