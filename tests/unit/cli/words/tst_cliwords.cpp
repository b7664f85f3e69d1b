#include <QTimeZone>
#include <QtTest>

#include <sstream>

#include "cli/output/event.h"
#include "cli/program/program.h"
#include "cli/words/advice.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "cli/words/info.h"

using VesmarClient::Error;
using VesmarClient::Mode;
namespace ExitStatus = Cli::ExitStatus;

namespace
{

const QDateTime Moment(QDate(2024, 2, 29), QTime(13, 5, 9, 7), Qt::OffsetFromUTC, 2 * 3600);

QByteArray TextOf(const Cli::Shown& shown)
{
    return Cli::ChangeText(Moment, QStringLiteral("P"), shown);
}

QByteArray JsonOf(const Cli::Shown& shown)
{
    return Cli::EventLine(Moment, QStringLiteral("change"), Cli::ChangeFields(QStringLiteral("P"), shown));
}

QByteArray InfoJson(const VesmarClient::Identity& identity, const Cli::Condition& condition)
{
    return Cli::EventLine(Moment, QStringLiteral("info"), Cli::InfoFields(identity, condition));
}

/// The lines of a property P that has this value.
QByteArray TextLine(const char* value)
{
    return QByteArray("2024-02-29 13:05:09.007  P                          ") + value + '\n';
}

QByteArray JsonLineOf(const char* value)
{
    return QByteArray(R"({"event":"change","property":"P","time":"2024-02-29T11:05:09.007Z","value":)") +
           value + "}\n";
}

VesmarClient::Identity GoodIdentity()
{
    return {QStringLiteral("ABC"), QStringLiteral("410"), QStringLiteral("204815"), QStringLiteral("1.05"),
            QStringLiteral("03"),  QStringLiteral("02"),  QStringLiteral("2016")};
}

Cli::Condition GoodCondition()
{
    return {Cli::Clocks{QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58)),
                        QDateTime(QDate(2023, 1, 2), QTime(0, 0))},
            Mode::Normal, Error::NoErrors};
}

} // namespace

class TestCliWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LongestPropertyKeepsItsColumn();
    void TimeIsInUtc();
    void Enumeration();
    void UnnamedEnumeration();
    void ErrorWithItsMeaning();
    void TruthAndNumber();
    void DateAndTime();
    void InvalidDate();
    void Identity();
    void IdentityWithControlCharacters();
    void Readings();
    void Info();
    void InfoWithoutClocks();
    void InfoWithDatesThatDoNotExist();
    void AdviceAsText();
    void SentenceWithAdvice();
    void EveryStatusIsExplainedOnce();
    void HelpShowsEveryStatus();
    void DocumentShowsEveryStatus();
};

void TestCliWords::LongestPropertyKeepsItsColumn()
{
    QCOMPARE(Cli::ChangeText(Moment, QStringLiteral("MeasurementFunctionStatus"), Cli::Show(1)),
             QByteArray("2024-02-29 13:05:09.007  MeasurementFunctionStatus  1\n"));
}

void TestCliWords::TimeIsInUtc()
{
    const QDateTime local(QDate(2024, 7, 1), QTime(12, 0), QTimeZone("Asia/Kolkata"));
    QVERIFY(local.isValid());
    QCOMPARE(
        Cli::EventLine(local, QStringLiteral("change"), Cli::ChangeFields(QStringLiteral("P"), Cli::Show(1))),
        QByteArray(R"({"event":"change","property":"P","time":"2024-07-01T06:30:00.000Z","value":1})"
                   "\n"));
}

void TestCliWords::Enumeration()
{
    const Cli::Shown shown = Cli::Show(Mode::Update);
    QCOMPARE(TextOf(shown), TextLine("Update (3)"));
    QCOMPARE(JsonOf(shown), JsonLineOf(R"({"name":"Update","number":3})"));
}

void TestCliWords::UnnamedEnumeration()
{
    const Cli::Shown shown = Cli::Show(static_cast<VesmarClient::FunctionState>(12));
    QCOMPARE(TextOf(shown), TextLine("12"));
    QCOMPARE(JsonOf(shown), JsonLineOf(R"({"name":null,"number":12})"));
}

void TestCliWords::ErrorWithItsMeaning()
{
    const Cli::Shown shown = Cli::Show(Error::CommunicationRecovery);
    QCOMPARE(TextOf(shown), TextLine("CommunicationRecovery (103): the link is being re-established"));
    QCOMPARE(JsonOf(shown),
             JsonLineOf(R"({"causes":["a request has just failed, or the instrument is restarting"],)"
                        R"("meaning":"the link is being re-established",)"
                        R"("name":"CommunicationRecovery",)"
                        R"("nextStep":"Wait: within about half a minute the link is back, or one )"
                        R"(of 100 to 102 says what is wrong. A measurement that was running has )"
                        R"(to be started anew.","number":103})"));
}

void TestCliWords::TruthAndNumber()
{
    QCOMPARE(TextOf(Cli::Show(true)), TextLine("yes"));
    QCOMPARE(TextOf(Cli::Show(false)), TextLine("no"));
    QCOMPARE(JsonOf(Cli::Show(true)), JsonLineOf("true"));
    QCOMPARE(TextOf(Cli::Show(-3)), TextLine("-3"));
    QCOMPARE(JsonOf(Cli::Show(-3)), JsonLineOf("-3"));
}

void TestCliWords::DateAndTime()
{
    const Cli::Shown shown = Cli::Show(QDateTime(QDate(2031, 4, 5), QTime(6, 7, 8)));
    QCOMPARE(TextOf(shown), TextLine("2031-04-05 06:07:08"));
    QCOMPARE(JsonOf(shown), JsonLineOf(R"("2031-04-05T06:07:08")"));
}

void TestCliWords::InvalidDate()
{
    for (const QDateTime& date : {QDateTime(), QDateTime(QDate(2024, 2, 30), QTime(1, 0))}) {
        QCOMPARE(TextOf(Cli::Show(date)), TextLine("no valid date"));
        QCOMPARE(JsonOf(Cli::Show(date)), JsonLineOf("null"));
    }
}

void TestCliWords::Identity()
{
    const VesmarClient::Identity identity = GoodIdentity();
    const Cli::Shown shown = Cli::Show(identity);
    QCOMPARE(TextOf(shown),
             TextLine("device name ABC, device code 410, serial number 204815, version 1.05, version code "
                      "03, revision code 02, build number 2016"));
    QCOMPARE(JsonOf(shown), JsonLineOf(R"({"BuildNumber":"2016","DeviceCode":"410","DeviceName":"ABC",)"
                                       R"("RevisionCode":"02","SerialNumber":"204815","Version":"1.05",)"
                                       R"("VersionCode":"03"})"));
}

void TestCliWords::IdentityWithControlCharacters()
{
    VesmarClient::Identity identity = GoodIdentity();
    identity.deviceName = QStringLiteral("A\x1b\n");
    QVERIFY(TextOf(Cli::Show(identity)).contains("device name A\\x1b\\x0a, "));
    QVERIFY(Cli::InfoText(identity, GoodCondition()).startsWith("Device name:      A\\x1b\\x0a\n"));
    QVERIFY(JsonOf(Cli::Show(identity)).contains(R"("DeviceName":"A\u001b\n")"));
}

void TestCliWords::Readings()
{
    const auto reading = [](const char* name, double value, bool isPresent = true) {
        return VesmarClient::Reading{QString::fromLatin1(name), value, isPresent, QString(), -1};
    };
    const VesmarClient::Result results(
        VesmarClient::Function::Monitoring,
        {reading("ULN", 230.5), reading("UNPE", 0, false), reading("frequency", -3.4028235e+38)}, Moment);
    const Cli::Shown shown = Cli::Show(results);
    QCOMPARE(TextOf(shown), TextLine("Monitoring (0): ULN 230.5, UNPE -, frequency -3.4028235e+38"));
    QCOMPARE(JsonOf(shown), JsonLineOf(R"({"name":"Monitoring","number":0,"readings":)"
                                       R"({"ULN":230.5,"UNPE":null,"frequency":-3.4028235e+38}})"));
}

void TestCliWords::Info()
{
    const VesmarClient::Identity identity = GoodIdentity();
    QCOMPARE(Cli::InfoText(identity, GoodCondition()),
             QByteArray("Device name:      ABC\n"
                        "Device code:      410\n"
                        "Serial number:    204815\n"
                        "Version:          1.05\n"
                        "Version code:     03\n"
                        "Revision code:    02\n"
                        "Build number:     2016\n"
                        "Clock:            2024-12-31 23:59:58\n"
                        "Last calibrated:  2023-01-02 00:00:00\n"
                        "Mode:             Normal (0)\n"
                        "Error:            NoErrors (15): no error\n"));
    QCOMPARE(InfoJson(identity, GoodCondition()),
             QByteArray(R"({"CalibrationDateTime":"2023-01-02T00:00:00",)"
                        R"("CurrentDateTime":"2024-12-31T23:59:58",)"
                        R"("DeviceInformation":{"BuildNumber":"2016","DeviceCode":"410","DeviceName":"ABC",)"
                        R"("RevisionCode":"02","SerialNumber":"204815","Version":"1.05",)"
                        R"("VersionCode":"03"},)"
                        R"("ErrorCode":{"causes":[],"meaning":"no error","name":"NoErrors",)"
                        R"("nextStep":"Nothing is to be done.","number":15},)"
                        R"("TesterMode":{"name":"Normal","number":0},)"
                        R"("event":"info","time":"2024-02-29T11:05:09.007Z"})"
                        "\n"));
}

void TestCliWords::InfoWithoutClocks()
{
    const VesmarClient::Identity identity = GoodIdentity();
    const Cli::Condition condition{std::nullopt, Mode::Update, Error::DeviceError3};
    const QByteArray text = Cli::InfoText(identity, condition);
    QVERIFY(
        text.endsWith("Clock:            cannot be read\n"
                      "Last calibrated:  cannot be read\n"
                      "Mode:             Update (3)\n"
                      "Error:            DeviceError3 (3): the instrument reports its error 3\n"
                      "  Likely causes   the instrument has found something wrong with itself, its supply or "
                      "the connected appliance\n"
                      "  Next step       Look the number up in the instrument's own manual; restart the "
                      "instrument (vesmar restart) and see whether it comes back.\n"));
    QVERIFY(
        InfoJson(identity, condition).startsWith(R"({"CalibrationDateTime":null,"CurrentDateTime":null,)"));
}

void TestCliWords::InfoWithDatesThatDoNotExist()
{
    const VesmarClient::Identity identity;
    Cli::Condition condition = GoodCondition();
    condition.clocks = Cli::Clocks{};
    QVERIFY(Cli::InfoText(identity, condition)
                .contains("Clock:            no valid date\nLast calibrated:  no valid date\n"));
    QVERIFY(
        InfoJson(identity, condition).startsWith(R"({"CalibrationDateTime":null,"CurrentDateTime":null,)"));
}

void TestCliWords::AdviceAsText()
{
    QCOMPARE(
        Cli::AdviceText(Error::UpdateConfirmationFailed),
        QByteArray("  Likely causes   the confirmation file belongs to another image\n"
                   "                  the image arrived damaged\n"
                   "  Next step       The instrument waits in update mode: update it again with the image "
                   "and the confirmation that belong together.\n"));
    QCOMPARE(Cli::AdviceText(Error::NoErrors), QByteArray("  Next step       Nothing is to be done.\n"));
    QCOMPARE(Cli::AdviceText(static_cast<Error>(16)), QByteArray());
}

void TestCliWords::SentenceWithAdvice()
{
    const QString sentence = QStringLiteral("It did not work.");
    QCOMPARE(Cli::WithAdvice(sentence, Error::NoErrors), sentence);
    QCOMPARE(Cli::WithAdvice(sentence, static_cast<Error>(16)), sentence);
    QCOMPARE(Cli::WithAdvice(sentence, Error::UpdateDataInvalid),
             sentence + QLatin1Char('\n') +
                 QString::fromUtf8(Cli::AdviceText(Error::UpdateDataInvalid)).chopped(1));
}

void TestCliWords::EveryStatusIsExplainedOnce()
{
    QVector<int> statuses;
    for (const ExitStatus::Explained& each : ExitStatus::All()) {
        statuses.append(each.status);
        QVERIFY(!each.words.empty());
    }
    QCOMPARE(statuses, (QVector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 128}));
}

void TestCliWords::HelpShowsEveryStatus()
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

void TestCliWords::DocumentShowsEveryStatus()
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

QTEST_GUILESS_MAIN(TestCliWords)
#include "tst_cliwords.moc"
