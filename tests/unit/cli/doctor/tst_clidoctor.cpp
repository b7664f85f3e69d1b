#include <QJsonDocument>
#include <QtTest>

#include <cerrno>

#include "cli/doctor/doctorformat.h"
#include "cli/doctor/doctorverdict.h"

using Cli::Ending;
using Cli::LineExchange;
using Cli::LineRecord;
using Vesmar::Error;
using VesmarClient::DeviceFindings;
using VesmarClient::DeviceHolders;

Q_DECLARE_METATYPE(VesmarClient::DeviceFindings)
Q_DECLARE_METATYPE(VesmarClient::DeviceHolders)
Q_DECLARE_METATYPE(Cli::LineRecord)

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

/// A device of this mode, such as the lines that others may not read.
DeviceFindings DeviceOf(mode_t mode, bool isReadable, bool isWritable)
{
    DeviceFindings device = GoodDevice();
    device.identity.st_mode = mode;
    device.isReadable = isReadable;
    device.isWritable = isWritable;
    return device;
}

DeviceFindings NotOpen(const DeviceFindings& findings, int error)
{
    DeviceFindings device = findings;
    device.openError = error;
    device.isTerminal = false;
    return device;
}

DeviceFindings Missing(const char* target, int error = ENOENT)
{
    DeviceFindings device;
    device.pathError = error;
    device.target = QString::fromLatin1(target);
    return device;
}

LineRecord MixedRecord()
{
    LineRecord record;
    for (const auto& [answer, micros] :
         {std::pair(Sound, 1499), std::pair(Sound, 1651), std::pair(Refusal, 12000), std::pair(Noise, 1700),
          std::pair(Nothing, 0), std::pair(Sound, 4000100)}) {
        record.Add({answer, std::chrono::microseconds(micros), 0});
    }
    return record;
}

QByteArray Compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

void AddForms()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("json");
}

} // namespace

class TestCliDoctor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DescribesTheDevice_data();
    void DescribesTheDevice();
    void DescribesThePermissions_data();
    void DescribesThePermissions();
    void DescribesTheHolders_data();
    void DescribesTheHolders();
    void DescribesTheAnswers_data();
    void DescribesTheAnswers();
    void BarsFitIntoTheLine();
    void DescribesTheCondition_data();
    void DescribesTheCondition();
    void FindsNothingInTheWay();
    void FindsObstacles_data();
    void FindsObstacles();
    void FindsTheGroupToJoin_data();
    void FindsTheGroupToJoin();
    void DoesNotJoinTheGroupOfRoot();
    void DecidesOnTheEnding_data();
    void DecidesOnTheEnding();
    void SaysHowLongASilenceLasted();
};

void TestCliDoctor::DescribesTheDevice_data()
{
    QTest::addColumn<DeviceFindings>("device");
    AddForms();
    const auto row = [](const char* name, const DeviceFindings& device, const char* text, const char* json) {
        QTest::newRow(name) << device << QByteArray("Device:           /dev/ttycommunication") + text + '\n'
                            << QByteArray(json).replace("PATH", R"("path":"/dev/ttycommunication")");
    };
    row("there", GoodDevice(), " leads to /dev/ttyS4, a terminal",
        R"({"characterDevice":true,"exists":true,PATH,"problem":null,"target":"/dev/ttyS4","terminal":true})");
    DeviceFindings direct = GoodDevice();
    direct.target = QStringLiteral("/dev/ttycommunication");
    row("under its own name", direct, ", a terminal",
        R"({"characterDevice":true,"exists":true,PATH,"problem":null,"target":"/dev/ttycommunication",)"
        R"("terminal":true})");
    row("cannot be opened", NotOpen(GoodDevice(), EBUSY),
        " leads to /dev/ttyS4, a character device that cannot be opened: Device or resource busy",
        R"({"characterDevice":true,"exists":true,PATH,"problem":"Device or resource busy",)"
        R"("target":"/dev/ttyS4","terminal":null})");
    row("no terminal", NotOpen(GoodDevice(), 0), " leads to /dev/ttyS4, a character device, but no terminal",
        R"({"characterDevice":true,"exists":true,PATH,"problem":null,"target":"/dev/ttyS4","terminal":false})");
    row("file", DeviceOf(S_IFREG, true, true), " leads to /dev/ttyS4, no character device",
        R"({"characterDevice":false,"exists":true,PATH,"problem":null,"target":"/dev/ttyS4","terminal":null})");
    row("missing", Missing(""), ": No such file or directory",
        R"({"characterDevice":false,"exists":false,PATH,"problem":"No such file or directory",)"
        R"("target":null,"terminal":null})");
    row("link that leads nowhere", Missing("/dev/tty\nUSB7"),
        " is a link to /dev/tty\\x0aUSB7: No such file or directory",
        R"({"characterDevice":false,"exists":false,PATH,"problem":"No such file or directory",)"
        R"("target":"/dev/tty\nUSB7","terminal":null})");
}

void TestCliDoctor::DescribesTheDevice()
{
    QFETCH(const DeviceFindings, device);
    QTEST(Cli::DeviceText(device), "text");
    QTEST(Compact(Cli::DeviceJson(device)), "json");
}

void TestCliDoctor::DescribesThePermissions_data()
{
    QTest::addColumn<DeviceFindings>("device");
    AddForms();
    QTest::newRow("may")
        << DeviceOf(S_IFCHR | 0640, true, true)
        << QByteArray("Permissions:      owner root: read and write; group dialout: read; others: nothing\n"
                      "This user:        may read and write\n")
        << QByteArray(R"({"group":"dialout","join":null,"mode":"0640","owner":"root","readable":true,)"
                      R"("writable":true})");
    const auto row = [](const char* name, bool isReadable, bool isWritable, const char* rights,
                        const char* json) {
        QTest::newRow(name)
            << DeviceOf(S_IFCHR | 0662, isReadable, isWritable)
            << QByteArray(
                   "Permissions:      owner root: read and write; group dialout: read and write; others: "
                   "write\nThis user:        ") +
                   rights + "; members of dialout may\n"
            << QByteArray(R"({"group":"dialout","join":"dialout","mode":"0662","owner":"root",)") + json;
    };
    row("may only write", false, true, "may only write", R"("readable":false,"writable":true})");
    row("may only read", true, false, "may only read", R"("readable":true,"writable":false})");
    row("may nothing", false, false, "may neither read nor write", R"("readable":false,"writable":false})");
}

void TestCliDoctor::DescribesThePermissions()
{
    QFETCH(const DeviceFindings, device);
    QTEST(Cli::PermissionsText(device), "text");
    QTEST(Compact(Cli::PermissionsJson(device)), "json");
}

void TestCliDoctor::DescribesTheHolders_data()
{
    QTest::addColumn<DeviceHolders>("holders");
    AddForms();
    QTest::newRow("two") << HeldBy({{4711, QStringLiteral("minicom")}, {12, QStringLiteral("vesmar")}})
                         << QByteArray("Held by:          minicom (process 4711)\n"
                                       "Held by:          vesmar (process 12)\n")
                         << QByteArray(
                                R"({"complete":false,"programs":[{"process":4711,"program":"minicom"},)"
                                R"({"process":12,"program":"vesmar"}]})");
    QTest::newRow("nobody that can be seen")
        << HeldBy({})
        << QByteArray(
               "Held by:          nobody else that can be seen; programs of other users show to root only\n")
        << QByteArray(R"({"complete":false,"programs":[]})");
    DeviceHolders nobody;
    nobody.isComplete = true;
    QTest::newRow("nobody") << nobody << QByteArray("Held by:          nobody else\n")
                            << QByteArray(R"({"complete":true,"programs":[]})");
}

void TestCliDoctor::DescribesTheHolders()
{
    QFETCH(const DeviceHolders, holders);
    QTEST(Cli::HoldersText(holders), "text");
    QTEST(Compact(Cli::HoldersJson(holders)), "json");
}

void TestCliDoctor::DescribesTheAnswers_data()
{
    QTest::addColumn<LineRecord>("line");
    AddForms();
    QTest::newRow("of all kinds")
        << MixedRecord()
        << QByteArray("Answers:          of 6 requests 3 proper, 1 refused, 1 damaged, 1 silent\n"
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
                      "Too late:         1 later than 500 ms; a lost link does not return with them\n")
        << QByteArray(
               R"({"asked":6,"damaged":1,"fastest":1.5,"histogram":[{"below":1,"count":0},)"
               R"({"below":2,"count":3},{"below":5,"count":0},{"below":10,"count":0},)"
               R"({"below":20,"count":1},{"below":50,"count":0},{"below":100,"count":0},)"
               R"({"below":200,"count":0},{"below":500,"count":0},{"below":1000,"count":0},)"
               R"({"below":2000,"count":0},{"below":4000,"count":0},{"below":null,"count":1}],)"
               R"("late":1,"median":1.7,"problem":null,"proper":3,"refused":1,"silent":1,"slowest":4000.1})");
    LineRecord silent;
    silent.Add({});
    const QByteArray none =
        R"("histogram":[{"below":1,"count":0},{"below":2,"count":0},{"below":5,"count":0},)"
        R"({"below":10,"count":0},{"below":20,"count":0},{"below":50,"count":0},{"below":100,"count":0},)"
        R"({"below":200,"count":0},{"below":500,"count":0},{"below":1000,"count":0},)"
        R"({"below":2000,"count":0},{"below":4000,"count":0},{"below":null,"count":0}],)"
        R"("late":0,"median":null,)";
    QTest::newRow("none") << silent
                          << QByteArray(
                                 "Answers:          of 1 requests 0 proper, 0 refused, 0 damaged, 1 silent\n")
                          << R"({"asked":1,"damaged":0,"fastest":null,)" + none +
                                 R"("problem":null,"proper":0,"refused":0,"silent":1,"slowest":null})";
    LineRecord broken;
    broken.Add({{}, {}, EIO});
    QTest::newRow("broken line")
        << broken
        << QByteArray("Answers:          of 0 requests 0 proper, 0 refused, 0 damaged, 0 silent\n"
                      "Line:             broken: Input/output error\n")
        << R"({"asked":0,"damaged":0,"fastest":null,)" + none +
               R"("problem":"Input/output error","proper":0,"refused":0,"silent":0,"slowest":null})";
}

void TestCliDoctor::DescribesTheAnswers()
{
    QFETCH(const LineRecord, line);
    QTEST(Cli::AnswersText(line), "text");
    QTEST(Compact(Cli::AnswersJson(line)), "json");
}

void TestCliDoctor::BarsFitIntoTheLine()
{
    LineRecord record;
    for (int i = 0; i < 50; ++i) {
        record.Add(Once(Sound, 600));
    }
    const QByteArray text = Cli::AnswersText(record);
    QVERIFY(text.contains("below 1000 ms  50  " + QByteArray(50, '#') + '\n'));
    for (const QByteArray& line : text.split('\n')) {
        QVERIFY2(line.size() <= 80, line.constData());
    }
}

void TestCliDoctor::DescribesTheCondition_data()
{
    AddForms();
    QTest::newRow("00 F5 BA BF")
        << QByteArray("Mode:             Normal (0)\n"
                      "Function:         Monitoring (0)\n"
                      "Start test:       Status5 (5)\n"
                      "Error:            NoErrors (15): no error\n")
        << QByteArray(
               R"({"CurrentMeasurementType":{"name":"Monitoring","number":0},"ErrorCode":{"causes":[],)"
               R"("meaning":"no error","name":"NoErrors","nextStep":"Nothing is to be done.","number":15},)"
               R"("MeasurementFunctionStatus":null,"StartTestStatus":{"name":"Status5","number":5},)"
               R"("TesterMode":{"name":"Normal","number":0}})");
    QTest::newRow("A3 52 9A 32")
        << QByteArray("Mode:             Calibration (1)\n"
                      "Function:         RISO (3)\n"
                      "Function state:   Completed (2)\n"
                      "Error:            DeviceError5 (5): the instrument reports its error 5\n"
                      "  Likely causes   ")
        << QByteArray(R"({"CurrentMeasurementType":{"name":"RISO","number":3},"ErrorCode":{"causes":[)");
}

/// The advice for an error, at the end, has a test of its own.
void TestCliDoctor::DescribesTheCondition()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, json);
    const Vesmar::Status status = Vesmar::DecodeStatus(QByteArray::fromHex(QTest::currentDataTag()));
    const bool hasError = status.error != Error::NoErrors;
    const QByteArray foundText = Cli::ConditionText(status);
    QCOMPARE(foundText.left(text.size()), text);
    QCOMPARE(foundText.contains("\n  Next step       "), hasError);
    const QByteArray foundJson = Compact(Cli::ConditionJson(status));
    QCOMPARE(foundJson.left(json.size()), json);
    QCOMPARE(foundJson.endsWith(R"("number":5},"MeasurementFunctionStatus":{"name":"Completed","number":2},)"
                                R"("StartTestStatus":null,"TesterMode":{"name":"Calibration","number":1}})"),
             hasError);
}

void TestCliDoctor::FindsNothingInTheWay()
{
    QVERIFY(!Cli::FindObstacle(GoodDevice(), {}).has_value());
}

void TestCliDoctor::FindsObstacles_data()
{
    QTest::addColumn<DeviceFindings>("device");
    QTest::addColumn<DeviceHolders>("holders");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("part");
    const auto row = [](const char* name, const DeviceFindings& device, const DeviceHolders& holders,
                        const char* reason, const char* part) {
        QTest::newRow(name) << device << holders << QString::fromLatin1(reason) << QString::fromLatin1(part);
    };
    row("missing", Missing(""), {}, "device-missing", "/dev/ttycommunication does not exist");
    row("link that leads nowhere", Missing("/dev/ttyUSB7"), {}, "device-missing",
        "a link to /dev/ttyUSB7, which does not exist");
    row("folder that may not be looked into", Missing("", EACCES), {}, "no-permission", "No permission");
    row("link to itself", Missing("", ELOOP), {}, "device-unusable", "cannot be opened");

    const DeviceHolders held = HeldBy({{4711, QStringLiteral("minicom")}});
    row("regular file", NotOpen(DeviceOf(S_IFREG | 0660, true, true), 0), {}, "device-unusable",
        "it is no character device");
    row("no terminal", NotOpen(GoodDevice(), 0), {}, "device-unusable", "it is no terminal");
    row("no terminal and held", NotOpen(GoodDevice(), 0), held, "device-unusable", "it is no terminal");

    const DeviceFindings readOnly = NotOpen(DeviceOf(S_IFCHR | 0660, true, false), EACCES);
    row("may not be written", readOnly, {}, "no-permission", "sudo usermod -a -G dialout");
    row("may not be written and is held", readOnly, held, "no-permission", "Join the group dialout");
    row("may not be read", NotOpen(DeviceOf(S_IFCHR | 0660, false, true), EACCES), {}, "no-permission",
        "Join the group dialout");
    row("no group may", NotOpen(DeviceOf(S_IFCHR | 0600, false, true), EACCES), {}, "no-permission",
        "Let the administrator");

    row("held", GoodDevice(), held, "held", "held by minicom (process 4711), so nothing was sent");
    row("held by two", GoodDevice(),
        HeldBy({{4711, QStringLiteral("minicom")}, {12, QStringLiteral("vesmar")}}), "held",
        "minicom (process 4711) and vesmar (process 12)");
    const VesmarClient::DeviceHolder shell{9, QStringLiteral("sh")};
    row("held by three", GoodDevice(), HeldBy({{4711, QStringLiteral("minicom")}, shell, shell}), "held",
        "held by minicom (process 4711), sh (process 9) and sh (process 9), so");
    row("held by many", GoodDevice(), HeldBy({shell, shell, shell, shell, shell}), "held",
        "held by sh (process 9), sh (process 9), sh (process 9) and 2 more, so");
    const DeviceFindings busy = NotOpen(GoodDevice(), EBUSY);
    row("held for itself alone", busy, held, "held", "minicom");
    row("held by somebody unseen", busy, {}, "device-unusable", "whether another program holds");
}

void TestCliDoctor::FindsObstacles()
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
    QVERIFY(obstacle->error == VesmarClient::Error::NoErrors);
}

void TestCliDoctor::FindsTheGroupToJoin_data()
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

void TestCliDoctor::FindsTheGroupToJoin()
{
    QFETCH(int, mode);
    QFETCH(bool, isReadable);
    QFETCH(bool, isWritable);
    const auto kindAndMode = S_IFCHR | static_cast<mode_t>(mode);
    QTEST(Cli::GroupToJoin(DeviceOf(kindAndMode, isReadable, isWritable)), "group");
}

void TestCliDoctor::DoesNotJoinTheGroupOfRoot()
{
    DeviceFindings device = GoodDevice();
    device.isWritable = false;
    device.identity.st_gid = 0;
    QCOMPARE(Cli::GroupToJoin(device), QString());
}

void TestCliDoctor::DecidesOnTheEnding_data()
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
    row("function in another mode", Record(CalibrationWithError), 6, "unattended", 5, "RISO (3) is active");
    row("another mode and unreliable", Record(Update, {Once(Noise)}), 4, "unreliable", 15, "unreliable");
    row("another mode and late", Record(Update, {Once(Update, 600)}), 4, "late", 15, "too slow");

    row("error", Record(InstrumentError), 4, "", 4, "reports DeviceError4 (4)");
    row("function that nobody attends", Record(RcdError), 6, "unattended", 2,
        "RCD (10) is active at the instrument");
    row("function that nobody attends, unreliable", Record(RcdError, {Once(Noise)}), 6, "unattended", 2,
        "Run vesmar stop, or switch the instrument off.");
    row("error and unreliable", Record(InstrumentError, {Once(Noise)}), 4, "unreliable", 4, "unreliable");
    row("error that has gone", Record(Sound, {Once(InstrumentError)}), 0, "", 15, "sound");
}

void TestCliDoctor::DecidesOnTheEnding()
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

void TestCliDoctor::SaysHowLongASilenceLasted()
{
    const Ending verdict = Cli::DecideEnding(Record(Nothing));
    QVERIFY2(verdict.message.contains(QLatin1String("within 12 s")), qPrintable(verdict.message));
}

QTEST_GUILESS_MAIN(TestCliDoctor)
#include "tst_clidoctor.moc"
