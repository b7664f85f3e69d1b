#include "client/line/deviceholders.h"

#include <QProcess>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

using VesmarClient::DeviceHolders;
using VesmarClient::FindHolders;

namespace
{

constexpr int Patience = 90000;

/// A pseudo-terminal with both ends open in this process. Without `O_CLOEXEC`, what it starts inherits its
/// far end.
class Line
{
public:
    explicit Line(int inheritance = O_CLOEXEC) : _master(::posix_openpt(O_RDWR | O_NOCTTY | inheritance))
    {
        ::grantpt(_master);
        ::unlockpt(_master);
        _path = ::ptsname(_master);
        _slave = ::open(_path.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    ~Line()
    {
        ::close(_slave);
        ::close(_master);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    QString Path() const { return QString::fromLatin1(_path); }

    struct stat Identity() const
    {
        struct stat identity = {};
        ::fstat(_slave, &identity);
        return identity;
    }

private:
    int _master;
    int _slave = -1;
    QByteArray _path;
};

/// Another program that has the path open once it has started.
class Holder
{
public:
    explicit Holder(const QString& path)
    {
        const QString script = QStringLiteral("exec 0<>\"$0\"; echo open; exec sleep 600");
        _process.start(QStringLiteral("sh"), {QStringLiteral("-c"), script, path});
    }
    ~Holder()
    {
        _process.kill();
        _process.waitForFinished(Patience);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    /// Until it has taken its last name, too.
    bool WaitUntilItHolds()
    {
        while (!_process.canReadLine()) {
            if (!_process.waitForReadyRead(Patience)) {
                return false;
            }
        }
        QFile name(QStringLiteral("/proc/%1/comm").arg(_process.processId()));
        return QTest::qWaitFor(
            [&name] {
                QFile file(name.fileName());
                return file.open(QIODevice::ReadOnly) && file.readAll() == "sleep\n";
            },
            Patience);
    }
    pid_t Process() const { return static_cast<pid_t>(_process.processId()); }

private:
    QProcess _process;
};

} // namespace

class TestClientDeviceHolders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void OnlyThisProgram();
    void AnotherProgram();
    void AnotherLine();
    void TheOtherEnd();
};

void TestClientDeviceHolders::OnlyThisProgram()
{
    const Line line;
    const DeviceHolders holders = FindHolders(line.Identity());
    QVERIFY(holders.programs.isEmpty());
    QVERIFY(::geteuid() == 0 || !holders.isComplete);
}

void TestClientDeviceHolders::AnotherProgram()
{
    const Line line;
    Holder holder(line.Path());
    QVERIFY(holder.WaitUntilItHolds());
    const DeviceHolders holders = FindHolders(line.Identity());
    QCOMPARE(holders.programs.size(), 1);
    QCOMPARE(holders.programs.first().process, holder.Process());
    QCOMPARE(holders.programs.first().program, QStringLiteral("sleep"));
}

void TestClientDeviceHolders::AnotherLine()
{
    const Line line;
    const Line other;
    Holder holder(other.Path());
    QVERIFY(holder.WaitUntilItHolds());
    QVERIFY(FindHolders(line.Identity()).programs.isEmpty());
}

void TestClientDeviceHolders::TheOtherEnd()
{
    const Line line(0);
    Holder holder(line.Path());
    QVERIFY(holder.WaitUntilItHolds());
    QVERIFY(FindHolders(line.Identity()).programs.isEmpty());
}

QTEST_GUILESS_MAIN(TestClientDeviceHolders)
#include "tst_clientdeviceholders.moc"
