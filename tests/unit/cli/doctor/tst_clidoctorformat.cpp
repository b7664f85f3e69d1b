#include "cli/doctor/doctorformat.h"

#include <QJsonArray>
#include <QtTest>

#include <cerrno>

using Cli::LineRecord;
using VesmarClient::DeviceFindings;
using VesmarClient::DeviceHolders;

namespace
{

DeviceFindings GoodDevice()
{
    DeviceFindings device;
    device.target = QStringLiteral("/dev/ttyS4");
    device.identity.st_mode = S_IFCHR | 0640;
    device.identity.st_gid = 20;
    device.owner = QStringLiteral("root");
    device.group = QStringLiteral("dialout");
    device.isReadable = true;
    device.isWritable = true;
    device.isTerminal = true;
    return device;
}

LineRecord MixedRecord()
{
    LineRecord record;
    const auto add = [&record](const char* answer, int micros) {
        record.Add({QByteArray::fromHex(answer), std::chrono::microseconds(micros), 0});
    };
    add("00F01FEF", 1499);
    add("00F01FEF", 1651);
    add("214334", 12000);
    add("FFFF", 1700);
    add("", 0);
    add("00F01FEF", 4000100);
    return record;
}

QString Text(const QJsonObject& json, const char* field)
{
    return json.value(QLatin1String(field)).toString();
}

} // namespace

class TestCliDoctorFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DeviceThatIsThere();
    void DeviceUnderItsOwnName();
    void DeviceThatCannotBeOpened();
    void DeviceOfAnotherKind_data();
    void DeviceOfAnotherKind();
    void DeviceThatIsMissing();
    void Permissions();
    void PermissionsThatAreMissing();
    void Holders();
    void NoHolders();
    void Answers();
    void AnswersAsJson();
    void NoAnswers();
    void BrokenLine();
    void BarsFitIntoTheLine();
    void ConditionWithoutAFunction();
    void ConditionWithAnError();
    void ConditionAsJson();
};

void TestCliDoctorFormat::DeviceThatIsThere()
{
    QCOMPARE(Cli::DeviceText(GoodDevice()),
             QByteArray("Device:           /dev/ttycommunication leads to /dev/ttyS4, a terminal\n"));
    const QJsonObject json = Cli::DeviceJson(GoodDevice());
    QCOMPARE(json, (QJsonObject{{QStringLiteral("path"), QStringLiteral("/dev/ttycommunication")},
                                {QStringLiteral("target"), QStringLiteral("/dev/ttyS4")},
                                {QStringLiteral("exists"), true},
                                {QStringLiteral("characterDevice"), true},
                                {QStringLiteral("terminal"), true},
                                {QStringLiteral("problem"), QJsonValue()}}));
}

void TestCliDoctorFormat::DeviceUnderItsOwnName()
{
    DeviceFindings device = GoodDevice();
    device.target = QStringLiteral("/dev/ttycommunication");
    QCOMPARE(Cli::DeviceText(device), QByteArray("Device:           /dev/ttycommunication, a terminal\n"));
}

void TestCliDoctorFormat::DeviceThatCannotBeOpened()
{
    DeviceFindings device = GoodDevice();
    device.openError = EBUSY;
    device.isTerminal = false;
    QVERIFY(Cli::DeviceText(device).contains(
        "a character device that cannot be opened: Device or resource busy"));
    const QJsonObject json = Cli::DeviceJson(device);
    QVERIFY(json.value(QLatin1String("terminal")).isNull());
    QCOMPARE(Text(json, "problem"), QStringLiteral("Device or resource busy"));
}

void TestCliDoctorFormat::DeviceOfAnotherKind_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("words");
    QTest::newRow("no terminal") << S_IFCHR << QByteArray(", a character device, but no terminal\n");
    QTest::newRow("file") << S_IFREG << QByteArray(", no character device\n");
}

void TestCliDoctorFormat::DeviceOfAnotherKind()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, words);
    DeviceFindings device = GoodDevice();
    device.identity.st_mode = static_cast<mode_t>(kind);
    device.isTerminal = false;
    QVERIFY(Cli::DeviceText(device).endsWith(words));
    QCOMPARE(Cli::DeviceJson(device).value(QLatin1String("characterDevice")).toBool(), kind == S_IFCHR);
}

void TestCliDoctorFormat::DeviceThatIsMissing()
{
    DeviceFindings device;
    device.pathError = ENOENT;
    QCOMPARE(Cli::DeviceText(device),
             QByteArray("Device:           /dev/ttycommunication: No such file or directory\n"));
    QVERIFY(Cli::DeviceJson(device).value(QLatin1String("target")).isNull());
    QCOMPARE(Cli::DeviceJson(device).value(QLatin1String("exists")), QJsonValue(false));
    device.target = QStringLiteral("/dev/tty\nUSB7");
    QCOMPARE(Cli::DeviceText(device), QByteArray("Device:           /dev/ttycommunication is a link to "
                                                 "/dev/tty\\x0aUSB7: No such file or directory\n"));
    QCOMPARE(Text(Cli::DeviceJson(device), "problem"), QStringLiteral("No such file or directory"));
}

void TestCliDoctorFormat::Permissions()
{
    QCOMPARE(Cli::PermissionsText(GoodDevice()),
             QByteArray("Permissions:      owner root: read and write; group dialout: read; others: nothing\n"
                        "This user:        may read and write\n"));
    QCOMPARE(Cli::PermissionsJson(GoodDevice()),
             (QJsonObject{{QStringLiteral("mode"), QStringLiteral("0640")},
                          {QStringLiteral("owner"), QStringLiteral("root")},
                          {QStringLiteral("group"), QStringLiteral("dialout")},
                          {QStringLiteral("readable"), true},
                          {QStringLiteral("writable"), true},
                          {QStringLiteral("join"), QJsonValue()}}));
}

void TestCliDoctorFormat::PermissionsThatAreMissing()
{
    DeviceFindings device = GoodDevice();
    device.identity.st_mode = S_IFCHR | 0662;
    device.isReadable = false;
    QVERIFY(Cli::PermissionsText(device).contains("others: write\n"));
    QVERIFY(Cli::PermissionsText(device).endsWith("may only write; members of dialout may\n"));
    QCOMPARE(Text(Cli::PermissionsJson(device), "join"), QStringLiteral("dialout"));
    device.isWritable = false;
    QVERIFY(Cli::PermissionsText(device).contains("may neither read nor write;"));
    device.isReadable = true;
    QVERIFY(Cli::PermissionsText(device).contains("may only read;"));
}

void TestCliDoctorFormat::Holders()
{
    DeviceHolders holders;
    holders.programs = {{4711, QStringLiteral("minicom")}, {12, QStringLiteral("vesmar")}};
    QCOMPARE(Cli::HoldersText(holders), QByteArray("Held by:          minicom (process 4711)\n"
                                                   "Held by:          vesmar (process 12)\n"));
    const QJsonObject json = Cli::HoldersJson(holders);
    QCOMPARE(json.value(QLatin1String("complete")), QJsonValue(false));
    const QJsonArray programs = json.value(QLatin1String("programs")).toArray();
    QCOMPARE(programs.size(), 2);
    QCOMPARE(programs.first().toObject(),
             (QJsonObject{{QStringLiteral("process"), 4711},
                          {QStringLiteral("program"), QStringLiteral("minicom")}}));
}

void TestCliDoctorFormat::NoHolders()
{
    DeviceHolders holders;
    QCOMPARE(Cli::HoldersText(holders),
             QByteArray("Held by:          nobody else that can be seen; programs of "
                        "other users show to root only\n"));
    holders.isComplete = true;
    QCOMPARE(Cli::HoldersText(holders), QByteArray("Held by:          nobody else\n"));
    QCOMPARE(Cli::HoldersJson(holders).value(QLatin1String("complete")), QJsonValue(true));
}

void TestCliDoctorFormat::Answers()
{
    QCOMPARE(Cli::AnswersText(MixedRecord()),
             QByteArray("Answers:          of 6 requests 3 proper, 1 refused, 1 damaged, 1 silent\n"
                        "Answer times:     fastest 1.5 ms, median 1.7 ms, slowest 4000.1 ms\n"
                        "  below    2 ms   3  ###\n"
                        "  below    5 ms   0\n"
                        "  below   10 ms   0\n"
                        "  below   20 ms   1  #\n"
                        "  below   50 ms   0\n"
                        "  below  100 ms   0\n"
                        "  below  200 ms   0\n"
                        "  below  500 ms   0\n"
                        "  below 1000 ms   0\n"
                        "  below 2000 ms   0\n"
                        "  below 4000 ms   0\n"
                        "  later           1  #\n"
                        "Too late:         1 later than 500 ms; a lost link does not return with them\n"));
}

void TestCliDoctorFormat::AnswersAsJson()
{
    QJsonObject json = Cli::AnswersJson(MixedRecord());
    const QJsonArray histogram = json.take(QStringLiteral("histogram")).toArray();
    QCOMPARE(json, (QJsonObject{{QStringLiteral("asked"), 6},
                                {QStringLiteral("proper"), 3},
                                {QStringLiteral("refused"), 1},
                                {QStringLiteral("damaged"), 1},
                                {QStringLiteral("silent"), 1},
                                {QStringLiteral("late"), 1},
                                {QStringLiteral("fastest"), 1.5},
                                {QStringLiteral("median"), 1.7},
                                {QStringLiteral("slowest"), 4000.1},
                                {QStringLiteral("problem"), QJsonValue()}}));
    QCOMPARE(histogram.size(), 13);
    QCOMPARE(histogram.at(1).toObject(),
             (QJsonObject{{QStringLiteral("below"), 2}, {QStringLiteral("count"), 3}}));
    QCOMPARE(histogram.last().toObject(),
             (QJsonObject{{QStringLiteral("below"), QJsonValue()}, {QStringLiteral("count"), 1}}));
}

void TestCliDoctorFormat::NoAnswers()
{
    LineRecord record;
    record.Add({});
    QCOMPARE(Cli::AnswersText(record),
             QByteArray("Answers:          of 1 requests 0 proper, 0 refused, 0 damaged, 1 silent\n"));
    const QJsonObject json = Cli::AnswersJson(record);
    QVERIFY(json.value(QLatin1String("fastest")).isNull());
    QVERIFY(json.value(QLatin1String("median")).isNull());
    QVERIFY(json.value(QLatin1String("slowest")).isNull());
}

void TestCliDoctorFormat::BrokenLine()
{
    LineRecord record;
    record.Add({{}, {}, EIO});
    QVERIFY(Cli::AnswersText(record).contains("Line:             broken: Input/output error\n"));
    QCOMPARE(Text(Cli::AnswersJson(record), "problem"), QStringLiteral("Input/output error"));
}

void TestCliDoctorFormat::BarsFitIntoTheLine()
{
    LineRecord record;
    for (int i = 0; i < 50; ++i) {
        record.Add({QByteArray::fromHex("00F01FEF"), std::chrono::milliseconds(600), 0});
    }
    const QByteArray text = Cli::AnswersText(record);
    QVERIFY(text.contains("below 1000 ms  50  " + QByteArray(50, '#') + '\n'));
    for (const QByteArray& line : text.split('\n')) {
        QVERIFY2(line.size() <= 80, line.constData());
    }
}

void TestCliDoctorFormat::ConditionWithoutAFunction()
{
    QCOMPARE(Cli::ConditionText(Vesmar::DecodeStatus(QByteArray::fromHex("00F5BABF"))),
             QByteArray("Mode:             Normal (0)\n"
                        "Function:         Monitoring (0)\n"
                        "Start test:       Status5 (5)\n"
                        "Error:            NoErrors (15): no error\n"));
}

void TestCliDoctorFormat::ConditionWithAnError()
{
    const QByteArray text = Cli::ConditionText(Vesmar::DecodeStatus(QByteArray::fromHex("A3529A32")));
    QVERIFY2(text.startsWith("Mode:             Calibration (1)\n"
                             "Function:         RISO (3)\n"
                             "Function state:   Completed (2)\n"
                             "Error:            DeviceError5 (5): the instrument reports its error 5\n"
                             "  Likely causes   "),
             text.constData());
    QVERIFY2(text.contains("\n  Next step       "), text.constData());
}

void TestCliDoctorFormat::ConditionAsJson()
{
    const QJsonObject sound = Cli::ConditionJson(Vesmar::DecodeStatus(QByteArray::fromHex("00F5BABF")));
    QCOMPARE(sound.keys(), (QStringList{QStringLiteral("CurrentMeasurementType"), QStringLiteral("ErrorCode"),
                                        QStringLiteral("MeasurementFunctionStatus"),
                                        QStringLiteral("StartTestStatus"), QStringLiteral("TesterMode")}));
    QVERIFY(sound.value(QLatin1String("MeasurementFunctionStatus")).isNull());
    QCOMPARE(sound.value(QLatin1String("StartTestStatus")).toObject().value(QLatin1String("number")).toInt(),
             5);

    const QJsonObject failing = Cli::ConditionJson(Vesmar::DecodeStatus(QByteArray::fromHex("A3529A32")));
    QVERIFY(failing.value(QLatin1String("StartTestStatus")).isNull());
    QCOMPARE(Text(failing.value(QLatin1String("MeasurementFunctionStatus")).toObject(), "name"),
             QStringLiteral("Completed"));
    QCOMPARE(failing.value(QLatin1String("ErrorCode")).toObject().value(QLatin1String("number")).toInt(), 5);
}

QTEST_GUILESS_MAIN(TestCliDoctorFormat)
#include "tst_clidoctorformat.moc"
