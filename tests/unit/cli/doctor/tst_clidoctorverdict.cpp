#include "cli/doctor/doctorverdict.h"

#include <QtTest>

#include <cerrno>

using Cli::Ending;
using Cli::LineExchange;
using Cli::LineRecord;
using Vesmar::Error;
using VesmarClient::DeviceFindings;
using VesmarClient::DeviceHolders;

namespace
{

const QByteArray Sound = QByteArray::fromHex("00FED10E");
const QByteArray InstrumentError = QByteArray::fromHex("004E0AA9");
const QByteArray Update = QByteArray::fromHex("60FEFB05");
const QByteArray Calibration = QByteArray::fromHex("20FE3708");
const QByteArray CalibrationWithError = QByteArray::fromHex("A3529A32");
const QByteArray RcdError = QByteArray::fromHex("0A274EBB");
const QByteArray Refusal = QByteArray::fromHex("214334");
const QByteArray Noise = "noise";
const QByteArray Nothing;

/// A terminal that this user may read and write, and that can be opened.
DeviceFindings GoodDevice()
{
    DeviceFindings device;
    device.target = QStringLiteral("/dev/ttyS4");
    device.identity.st_mode = S_IFCHR | 0660;
    device.identity.st_gid = 20;
    device.owner = QStringLiteral("root");
    device.group = QStringLiteral("dialout");
    device.isReadable = true;
    device.isWritable = true;
    device.isTerminal = true;
    return device;
}

DeviceHolders HeldBy(const QVector<VesmarClient::DeviceHolder>& programs)
{
    DeviceHolders holders;
    holders.programs = programs;
    return holders;
}

/// 50 answers of this kind, at once, after these others.
LineRecord Record(const QByteArray& answer, const QVector<LineExchange>& others = {})
{
    LineRecord record;
    for (const LineExchange& other : others) {
        record.Add(other);
    }
    while (record.Asked() < 50 && !record.IsHopeless()) {
        record.Add({answer, std::chrono::microseconds(200), 0});
    }
    return record;
}

LineExchange Once(const QByteArray& answer, int milliseconds = 1)
{
    return {answer, std::chrono::milliseconds(milliseconds), 0};
}

} // namespace

Q_DECLARE_METATYPE(VesmarClient::DeviceFindings)
Q_DECLARE_METATYPE(VesmarClient::DeviceHolders)
Q_DECLARE_METATYPE(Cli::LineRecord)

class TestCliDoctorVerdict : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NothingInTheWay();
    void Obstacles_data();
    void Obstacles();
    void Groups_data();
    void Groups();
    void GroupOfRoot();
    void Verdicts_data();
    void Verdicts();
    void SilenceTellsHowLongItLasted();
};

void TestCliDoctorVerdict::NothingInTheWay()
{
    QVERIFY(!Cli::FindObstacle(GoodDevice(), {}).has_value());
}

void TestCliDoctorVerdict::Obstacles_data()
{
    QTest::addColumn<DeviceFindings>("device");
    QTest::addColumn<DeviceHolders>("holders");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("part");
    const auto row = [](const char* name, const DeviceFindings& device, const DeviceHolders& holders,
                        const char* reason, const char* part) {
        QTest::newRow(name) << device << holders << QString::fromLatin1(reason) << QString::fromLatin1(part);
    };
    DeviceFindings missing;
    missing.pathError = ENOENT;
    row("missing", missing, {}, "device-missing", "/dev/ttycommunication does not exist");
    missing.target = QStringLiteral("/dev/ttyUSB7");
    row("link that leads nowhere", missing, {}, "device-missing",
        "a link to /dev/ttyUSB7, which does not exist");
    DeviceFindings hidden;
    hidden.pathError = EACCES;
    row("folder that may not be looked into", hidden, {}, "no-permission", "No permission");
    hidden.pathError = ELOOP;
    row("link to itself", hidden, {}, "device-unusable", "cannot be opened");

    DeviceFindings file = GoodDevice();
    file.identity.st_mode = S_IFREG | 0660;
    file.isTerminal = false;
    row("regular file", file, {}, "device-unusable", "it is no character device");
    DeviceFindings other = GoodDevice();
    other.isTerminal = false;
    row("no terminal", other, {}, "device-unusable", "it is no terminal");
    row("no terminal and held", other, HeldBy({{4711, QStringLiteral("minicom")}}), "device-unusable",
        "it is no terminal");

    DeviceFindings forbidden = GoodDevice();
    forbidden.isWritable = false;
    forbidden.openError = EACCES;
    const DeviceHolders held = HeldBy({{4711, QStringLiteral("minicom")}});
    row("may not be written", forbidden, {}, "no-permission", "sudo usermod -a -G dialout");
    row("may not be written and is held", forbidden, held, "no-permission", "Join the group dialout");
    forbidden.isReadable = false;
    forbidden.isWritable = true;
    row("may not be read", forbidden, {}, "no-permission", "Join the group dialout");
    forbidden.identity.st_mode = S_IFCHR | 0600;
    row("no group may", forbidden, {}, "no-permission", "Let the administrator");

    row("held", GoodDevice(), held, "held", "held by minicom (process 4711), so nothing was sent");
    row("held by two", GoodDevice(),
        HeldBy({{4711, QStringLiteral("minicom")}, {12, QStringLiteral("vesmar")}}), "held",
        "minicom (process 4711) and vesmar (process 12)");
    const VesmarClient::DeviceHolder shell{9, QStringLiteral("sh")};
    row("held by three", GoodDevice(), HeldBy({{4711, QStringLiteral("minicom")}, shell, shell}), "held",
        "held by minicom (process 4711), sh (process 9) and sh (process 9), so");
    row("held by many", GoodDevice(), HeldBy({shell, shell, shell, shell, shell}), "held",
        "held by sh (process 9), sh (process 9), sh (process 9) and 2 more, so");
    DeviceFindings busy = GoodDevice();
    busy.openError = EBUSY;
    busy.isTerminal = false;
    row("held for itself alone", busy, held, "held", "minicom");
    row("held by somebody unseen", busy, {}, "device-unusable", "whether another program holds");
}

void TestCliDoctorVerdict::Obstacles()
{
    QFETCH(DeviceFindings, device);
    QFETCH(DeviceHolders, holders);
    QFETCH(QString, part);
    const std::optional<Ending> obstacle = Cli::FindObstacle(device, holders);
    QVERIFY(obstacle.has_value());
    QCOMPARE(obstacle->status, 2);
    QCOMPARE(obstacle->outcome, Cli::Ending::Outcome::Failed);
    QTEST(obstacle->reason, "reason");
    QVERIFY2(obstacle->message.contains(part), qPrintable(obstacle->message));
    QVERIFY(obstacle->error == Error::NoErrors);
}

void TestCliDoctorVerdict::Groups_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("isReadable");
    QTest::addColumn<bool>("isWritable");
    QTest::addColumn<QString>("group");
    QTest::newRow("may already") << 0660 << true << true << QString();
    QTest::newRow("may only read") << 0664 << true << false << QStringLiteral("dialout");
    QTest::newRow("may only write") << 0662 << false << true << QStringLiteral("dialout");
    QTest::newRow("may nothing") << 0660 << false << false << QStringLiteral("dialout");
    QTest::newRow("the group may only write") << 0620 << false << false << QString();
    QTest::newRow("the group may only read") << 0640 << false << false << QString();
    QTest::newRow("the group may nothing") << 0606 << false << false << QString();
}

void TestCliDoctorVerdict::Groups()
{
    QFETCH(int, mode);
    QFETCH(bool, isReadable);
    QFETCH(bool, isWritable);
    DeviceFindings device = GoodDevice();
    device.identity.st_mode = S_IFCHR | static_cast<mode_t>(mode);
    device.isReadable = isReadable;
    device.isWritable = isWritable;
    QTEST(Cli::GroupToJoin(device), "group");
}

void TestCliDoctorVerdict::GroupOfRoot()
{
    DeviceFindings device = GoodDevice();
    device.isWritable = false;
    device.identity.st_gid = 0;
    QCOMPARE(Cli::GroupToJoin(device), QString());
}

void TestCliDoctorVerdict::Verdicts_data()
{
    QTest::addColumn<LineRecord>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("part");
    const auto row = [](const char* name, const LineRecord& line, int status, const char* reason, int error,
                        const char* part) {
        QTest::newRow(name) << line << status << QString::fromLatin1(reason) << error
                            << QString::fromLatin1(part);
    };
    row("sound", Record(Sound), 0, "", 15, "sound");

    row("silent", Record(Nothing), 2, "no-answer", 15, "switched on");
    row("refused", Record(Refusal), 2, "refused", 15, "refuses every request");
    row("damaged", Record(Noise), 2, "damaged", 15, "arrive damaged");
    row("nothing proper", Record(Noise, {Once(Refusal), Once(Nothing)}), 2, "no-proper-answer", 15,
        "None of 50 requests got a proper answer: 1 got a refusal, 48 a damaged answer and 1 none");
    row("broken at once", Record(Sound, {{Nothing, {}, EIO}}), 2, "line-broken", 15, "The line broke");

    row("broken later", Record(Sound, {Once(Sound), {Nothing, {}, EIO}}), 4, "line-broken", 15,
        "The line broke");
    row("one refused", Record(Sound, {Once(Refusal)}), 4, "unreliable", 15,
        "of 50 requests, 1 got a refusal, 0 a damaged answer and 0 none");
    row("one damaged", Record(Sound, {Once(Noise)}), 4, "unreliable", 15, "1 a damaged answer");
    row("one silent", Record(Sound, {Once(Nothing)}), 4, "unreliable", 15, "and 1 none");
    row("silent in the end", Record(Nothing, {Once(Sound)}), 4, "unreliable", 15, "of 4 requests");
    row("one late", Record(Sound, {Once(Sound, 501)}), 4, "late", 15,
        "1 of 50 answers came later than 500 ms");
    row("none late", Record(Sound, {Once(Sound, 500)}), 0, "", 15, "sound");
    row("one refused late", Record(Sound, {Once(Refusal, 700)}), 4, "unreliable", 15, "1 got a refusal");

    row("update mode", Record(Update), 3, "update-mode", 15, "waits for firmware");
    row("another mode", Record(Calibration), 3, "wrong-mode", 15, "Calibration (1)");
    row("another mode with an error", Record(CalibrationWithError), 3, "wrong-mode", 5, "Calibration (1)");
    row("another mode and unreliable", Record(Update, {Once(Noise)}), 4, "unreliable", 15, "unreliable");
    row("another mode and late", Record(Update, {Once(Update, 600)}), 4, "late", 15, "too slow");

    row("error", Record(InstrumentError), 4, "", 4, "reports DeviceError4 (4)");
    row("error of a function that tests", Record(RcdError), 4, "", 2, "reports DeviceError2 (2)");
    row("error and unreliable", Record(InstrumentError, {Once(Noise)}), 4, "unreliable", 4, "unreliable");
    row("error that has gone", Record(Sound, {Once(InstrumentError)}), 0, "", 15, "sound");
}

void TestCliDoctorVerdict::Verdicts()
{
    QFETCH(LineRecord, line);
    QFETCH(QString, part);
    const Ending verdict = Cli::DecideEnding(line);
    QTEST(verdict.status, "status");
    QCOMPARE(verdict.outcome,
             verdict.status == 0 ? Cli::Ending::Outcome::Done : Cli::Ending::Outcome::Failed);
    QTEST(verdict.reason, "reason");
    QTEST(static_cast<int>(verdict.error), "error");
    QVERIFY2(verdict.message.contains(part), qPrintable(verdict.message));
}

void TestCliDoctorVerdict::SilenceTellsHowLongItLasted()
{
    const Ending verdict = Cli::DecideEnding(Record(Nothing));
    QVERIFY2(verdict.message.contains(QLatin1String("within 12 s")), qPrintable(verdict.message));
}

QTEST_GUILESS_MAIN(TestCliDoctorVerdict)
#include "tst_clidoctorverdict.moc"
