#include <QtTest>

#include "cli/verbs/calibrationverb.h"
#include "cli/verbs/clockverb.h"
#include "cli/verbs/monitorverb.h"
#include "cli/verbs/restartverb.h"
#include "cli/verbs/updateverb.h"
#include "unit/cli/program/parsedline.h"

using std::chrono::milliseconds;

namespace
{

QStringList Words(const char* words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

constexpr char ProgramUsage[] = "Usage: vesmar VERB [OPTIONS]\n       vesmar VERB --help\n";
constexpr char InfoUsage[] = "Usage: vesmar info [--json] [--timeout TIME] [--trace]\n";
constexpr char MonitorUsage[] = "Usage: vesmar monitor [--for TIME] [--json] [--timeout TIME] [--trace]\n";
constexpr char ClockUsage[] = "Usage: vesmar clock [OPTIONS]\n"
                              "       vesmar clock set [DATETIME|now] [OPTIONS]\n";
constexpr char CalibrationUsage[] = "Usage: vesmar calibration [OPTIONS]\n"
                                    "       vesmar calibration set DATE [OPTIONS]\n";
constexpr char RestartUsage[] = "Usage: vesmar restart [OPTIONS]\n";
constexpr char DoctorUsage[] = "Usage: vesmar doctor [--json]\n";
constexpr char DecodeUsage[] = "Usage: vesmar decode FILE [--scenario OUT] [--json]\n";
constexpr char UpdateUsage[] = "Usage: vesmar update IMAGE --confirmation FILE [OPTIONS]\n";

} // namespace

class TestCliProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void InfoWithItsDefaults();
    void InfoWithEveryOption();
    void MonitorWithItsDefaults();
    void MonitorWithEveryOption();
    void ClockToBeShownOrSet();
    void CalibrationToBeShownOrSet();
    void RestartWithItsOptions();
    void UpdateWithItsDefaults();
    void UpdateWithEveryOption();
    void JsonBeforeTheVerb();
    void Seconds_data();
    void Seconds();
    void BadUsage_data();
    void BadUsage();
    void ErrorIsOneLine();
    void Version();
    void Help_data();
    void Help();
};

void TestCliProgram::InfoWithItsDefaults()
{
    const ParsedLine line(Words("info"));
    QVERIFY(line.verb != nullptr);
    QVERIFY(!line.verb->Options().isJson);
    QVERIFY(!line.verb->Options().isTraceWanted);
    QVERIFY(line.verb->Options().timeout == milliseconds(10000));
    QCOMPARE(line.Output() + line.Errors(), QByteArray());
}

void TestCliProgram::InfoWithEveryOption()
{
    const ParsedLine line(Words("info --json --trace --timeout 2.5"));
    QVERIFY(line.verb != nullptr);
    QVERIFY(line.verb->Options().isJson);
    QVERIFY(line.verb->Options().isTraceWanted);
    QVERIFY(line.verb->Options().timeout == milliseconds(2500));
}

void TestCliProgram::MonitorWithItsDefaults()
{
    const ParsedLine line(Words("monitor"));
    const auto* monitor = dynamic_cast<Cli::MonitorVerb*>(line.verb);
    QVERIFY(monitor != nullptr);
    QVERIFY(!monitor->Duration().has_value());
    QVERIFY(monitor->Options().timeout == milliseconds(10000));
}

void TestCliProgram::MonitorWithEveryOption()
{
    const ParsedLine line(Words("monitor --for=14 --json --timeout=1 --trace"));
    const auto* monitor = dynamic_cast<Cli::MonitorVerb*>(line.verb);
    QVERIFY(monitor != nullptr);
    QVERIFY(monitor->Duration() == milliseconds(14000));
    QVERIFY(monitor->Options().isJson);
    QVERIFY(monitor->Options().isTraceWanted);
    QVERIFY(monitor->Options().timeout == milliseconds(1000));
}

void TestCliProgram::ClockToBeShownOrSet()
{
    const auto clock = [](const ParsedLine& line) { return dynamic_cast<Cli::ClockVerb*>(line.verb); };
    const ParsedLine shown(Words("clock --json"));
    QVERIFY(clock(shown) != nullptr && !clock(shown)->IsSetting());
    QVERIFY(clock(shown)->ConfirmTimeout() == milliseconds(30000));
    for (const char* now : {"clock set", "clock set now", "clock --timeout 3 set --confirm-timeout 2"}) {
        const ParsedLine set(Words(now));
        QVERIFY(clock(set) != nullptr && clock(set)->IsSetting());
        QVERIFY(!clock(set)->Wanted().isValid());
    }
    const QDateTime wanted(QDate(2026, 11, 21), QTime(18, 0, 1), Qt::UTC);
    for (const QStringList& given : {Words("clock set 2026-11-21T18:00:01 --json"),
                                     Words("clock set 2026-11-21 18:00:01 --json"),
                                     {QStringLiteral("clock"), QStringLiteral("set"),
                                      QStringLiteral("2026-11-21 18:00:01"), QStringLiteral("--json")}}) {
        const ParsedLine set(given);
        QVERIFY2(clock(set) != nullptr, set.Errors().constData());
        QCOMPARE(clock(set)->Wanted(), wanted);
        QVERIFY(set.verb->Options().isJson);
    }
}

void TestCliProgram::CalibrationToBeShownOrSet()
{
    const ParsedLine shown(Words("calibration"));
    const auto* calibration = dynamic_cast<Cli::CalibrationVerb*>(shown.verb);
    QVERIFY(calibration != nullptr && !calibration->Wanted().isValid());
    const ParsedLine set(Words("calibration set 2026-11-21 --confirm-timeout 12.5 --trace"));
    calibration = dynamic_cast<Cli::CalibrationVerb*>(set.verb);
    QVERIFY(calibration != nullptr);
    QCOMPARE(calibration->Wanted(), QDate(2026, 11, 21));
    QVERIFY(calibration->ConfirmTimeout() == milliseconds(12500));
    QVERIFY(calibration->Options().isTraceWanted);
}

void TestCliProgram::RestartWithItsOptions()
{
    const ParsedLine line(Words("restart --confirm-timeout 5 --json"));
    const auto* restart = dynamic_cast<Cli::RestartVerb*>(line.verb);
    QVERIFY(restart != nullptr);
    QVERIFY(restart->ConfirmTimeout() == milliseconds(5000));
    QVERIFY(restart->Options().isJson);
}

void TestCliProgram::UpdateWithItsDefaults()
{
    const ParsedLine line(Words("update image --confirmation file"));
    const auto* update = dynamic_cast<Cli::UpdateVerb*>(line.verb);
    QVERIFY(update != nullptr);
    QCOMPARE(update->Update().image, QStringLiteral("image"));
    QCOMPARE(update->Update().confirmation, QStringLiteral("file"));
    QVERIFY(!update->Update().isOffline);
    QVERIFY(update->Update().confirmTimeout == milliseconds(30000));
}

void TestCliProgram::UpdateWithEveryOption()
{
    const ParsedLine line(
        Words("update --offline --confirm-timeout 9 --json --timeout 2 --trace --confirmation=file image"));
    const auto* update = dynamic_cast<Cli::UpdateVerb*>(line.verb);
    QVERIFY(update != nullptr);
    QCOMPARE(update->Update().image, QStringLiteral("image"));
    QVERIFY(update->Update().isOffline);
    QVERIFY(update->Update().confirmTimeout == milliseconds(9000));
    QVERIFY(update->Options().isJson && update->Options().isTraceWanted);
    QVERIFY(update->Options().timeout == milliseconds(2000));
}

void TestCliProgram::JsonBeforeTheVerb()
{
    QVERIFY(ParsedLine(Words("--json info")).verb->Options().isJson);
    QVERIFY(!ParsedLine(Words("info")).verb->Options().isJson);
}

void TestCliProgram::Seconds_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<int>("timeout");
    QTest::newRow("least") << QStringLiteral("0.1") << 100;
    QTest::newRow("most") << QStringLiteral("86400") << 86400000;
    QTest::newRow("exponent") << QStringLiteral("1e1") << 10000;
    QTest::newRow("milliseconds") << QStringLiteral("500ms") << 500;
    QTest::newRow("seconds") << QStringLiteral("5 s") << 5000;
    QTest::newRow("minutes") << QStringLiteral("1.5min") << 90000;
    QTest::newRow("hours") << QStringLiteral("24h") << 86400000;
    QTest::newRow("rounded") << QStringLiteral("0.1236") << 124;
}

void TestCliProgram::Seconds()
{
    QFETCH(QString, given);
    QFETCH(int, timeout);
    const ParsedLine line({QStringLiteral("info"), QStringLiteral("--timeout"), given});
    QVERIFY(line.verb != nullptr);
    QVERIFY(line.verb->Options().timeout == milliseconds(timeout));
}

void TestCliProgram::BadUsage_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("errors");
    const auto row = [](const char* arguments, const char* complaint, const char* usage) {
        QTest::addRow("<%s>", arguments)
            << QString::fromLatin1(arguments) << "vesmar: " + QByteArray(complaint) + '\n' + usage;
    };
    row("", "no verb given; vesmar --help lists them", ProgramUsage);
    row("measured", "there is no verb measured; did you mean measure?", ProgramUsage);
    row("xyzzy", "there is no verb xyzzy; vesmar --help lists them", ProgramUsage);
    row("info --tiemout 5", "there is no option --tiemout; did you mean --timeout?", InfoUsage);
    row("clock set --timout 5", "there is no option --timout; did you mean --timeout?", ClockUsage);
    row("infoo --json", "there is no verb infoo; did you mean info?", ProgramUsage);
    row("decode", "FILE is required", DecodeUsage);
    row("--bad", "there is no option --bad; --help lists them", ProgramUsage);
    row("info more", "The following argument was not expected: more", InfoUsage);
    row("info monitor", "The following argument was not expected: monitor", InfoUsage);
    row("info --bad", "there is no option --bad; --help lists them", InfoUsage);
    row("info --timeout", "--timeout: 1 required TIME missing", InfoUsage);
    row("info --json=perhaps", "Could not convert: --json = perhaps", InfoUsage);
    row("clock now", "The following argument was not expected: now", ClockUsage);
    row("clock set soon",
        "set: \"soon\" is not a date and time from 2001-01-01T00:00:00 to 2099-12-31T23:59:59, nor now",
        ClockUsage);
    row("clock set 1 2 3", "DATETIME: At Most 2 required but received 3", ClockUsage);
    row("clock set --confirm-timeout 0",
        "--confirm-timeout: \"0\" is not a time from 0.1 to 86400 seconds, such as 90, 1.5min or 500ms",
        ClockUsage);
    row("calibration set", "DATE is required", CalibrationUsage);
    row("calibration set 2000-12-31", "set: \"2000-12-31\" is not a date from 2001-01-01 to 2099-12-31",
        CalibrationUsage);
    row("calibration set 2026-11-21 --confirm-timeout 4.9",
        "--confirm-timeout: \"4.9\" is not a time from 5 to 86400 seconds, such as 90, 1.5min or 500ms",
        CalibrationUsage);
    row("calibration set 2026-11-21 more", "The following argument was not expected: more", CalibrationUsage);
    row("restart now", "The following argument was not expected: now", RestartUsage);
    row("update --confirmation file", "IMAGE is required", UpdateUsage);
    row("update image", "--confirmation is required", UpdateUsage);
    row("update image more --confirmation file", "The following argument was not expected: more",
        UpdateUsage);
    const char* const timeouts[] = {"0", "0.09", "-1", "nan", "inf", "1e99", "86401", "ten", "1x", "0x10"};
    for (const char* timeout : timeouts) {
        const QByteArray complaint =
            "--timeout: \"" + QByteArray(timeout) +
            "\" is not a time from 0.1 to 86400 seconds, such as 90, 1.5min or 500ms";
        row(("info --timeout " + QByteArray(timeout)).constData(), complaint.constData(), InfoUsage);
    }
    const char* const durations[] = {"-1", "-0.001", "nan", "-inf", "1e99", "86401", "long"};
    for (const char* duration : durations) {
        const QByteArray complaint = "--for: \"" + QByteArray(duration) +
                                     "\" is not a time from 0 to 86400 seconds, such as 90, 1.5min or 500ms";
        row(("monitor --for " + QByteArray(duration)).constData(), complaint.constData(), MonitorUsage);
    }
}

void TestCliProgram::BadUsage()
{
    QFETCH(QString, arguments);
    const ParsedLine line(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QVERIFY(line.verb == nullptr);
    QCOMPARE(line.status, 1);
    QCOMPARE(line.Output(), QByteArray());
    QTEST(line.Errors(), "errors");
}

void TestCliProgram::ErrorIsOneLine()
{
    const ParsedLine line({QStringLiteral("info"), QStringLiteral("--timeout"), QStringLiteral("1\n2")});
    QCOMPARE(line.status, 1);
    QCOMPARE(line.Errors(), QByteArray("vesmar: --timeout: \"1\\x0a2\" is not a time from "
                                       "0.1 to 86400 seconds, such as 90, 1.5min or 500ms\n") +
                                InfoUsage);
}

void TestCliProgram::Version()
{
    const ParsedLine line(Words("--version"));
    QCOMPARE(line.status, 0);
    const QRegularExpression version(QStringLiteral(R"(\Avesmar \d+\.\d+\.\d+\n\z)"));
    QVERIFY(version.match(QString::fromLatin1(line.Output())).hasMatch());
    QCOMPARE(line.Errors(), QByteArray());
}

void TestCliProgram::Help_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("usage");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("program")
        << QStringLiteral("--help") << QByteArray(ProgramUsage)
        << Words("info monitor measure clock calibration restart update doctor decode explain --version "
                 "status "
                 "Example");
    QTest::newRow("info") << QStringLiteral("info --help") << QByteArray(InfoUsage)
                          << Words("--json --timeout --trace docs/events.md result status Example");
    QTest::newRow("monitor") << QStringLiteral("monitor --help") << QByteArray(MonitorUsage)
                             << Words("--for --json --timeout --trace change result status Example");
    QTest::newRow("clock")
        << QStringLiteral("clock --help") << QByteArray(ClockUsage)
        << Words("set --confirm-timeout --json --timeout --trace clock result status Example");
    QTest::newRow("clock set") << QStringLiteral("clock set --help") << QByteArray(ClockUsage)
                               << Words("DATETIME now");
    QTest::newRow("calibration") << QStringLiteral("calibration --help") << QByteArray(CalibrationUsage)
                                 << Words("set --confirm-timeout docs/events.md result status Example");
    QTest::newRow("calibration set") << QStringLiteral("calibration set --help")
                                     << QByteArray(CalibrationUsage) << Words("DATE REQUIRED");
    QTest::newRow("restart") << QStringLiteral("restart --help") << QByteArray(RestartUsage)
                             << Words("--confirm-timeout docs/events.md result status Example");
    QTest::newRow("doctor") << QStringLiteral("doctor --help") << QByteArray(DoctorUsage)
                            << Words("--json holders status Example");
    QTest::newRow("update")
        << QStringLiteral("update --help") << QByteArray(UpdateUsage)
        << Words("IMAGE --confirmation --offline --confirm-timeout progress result status Example");
}

void TestCliProgram::Help()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, usage);
    QFETCH(QStringList, parts);
    const ParsedLine line(arguments.split(QLatin1Char(' ')));
    QVERIFY(line.verb == nullptr);
    QCOMPARE(line.status, 0);
    QVERIFY(line.Output().contains(usage));
    for (const QString& part : parts) {
        QVERIFY2(line.Output().contains(part.toLatin1()), qPrintable(part));
    }
    QCOMPARE(line.Errors(), QByteArray());
}

QTEST_GUILESS_MAIN(TestCliProgram)
#include "tst_cliprogram.moc"
