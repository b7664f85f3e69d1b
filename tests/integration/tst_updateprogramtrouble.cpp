#include <QtTest>

#include <array>
#include <memory>
#include <vector>

#include "integration/updaterun.h"

namespace
{

struct Failure {
    const char* scenario;
    int error; ///< 0 for none.
    int sectors;
    const char* advice;
};

constexpr char Stays[] = "instrument stays in update mode; run the same command again.";
constexpr std::array<Failure, 6> Failures{{
    {"refuses-update-mode", 300, 0, "Nothing was sent, and the instrument keeps its firmware;"},
    {"refuses-initialize", 303, 0, "in update mode"},
    {"refuses-sector 1", 303, 0, Stays},
    {"refuses-sector 4", 303, 3, Stays},
    {"refuses-confirmation", 304, 5, Stays},
    {"stays-in-update-mode", 0, 5, Stays},
}};

void CheckFailure(UpdateRun& run, const Failure& failure)
{
    QCOMPARE(run->Finish(), 4);
    const QJsonObject result = run.Result();
    QCOMPARE(result.value(QLatin1String("status")).toInt(-1), 4);
    QCOMPARE(result.value(QLatin1String("error")).toObject().value(QLatin1String("number")).toInt(),
             failure.error);
    QCOMPARE(result.value(QLatin1String("sectors")).toInt(-1), failure.sectors);
    const QString message = result.value(QLatin1String("message")).toString();
    QVERIFY2(message.contains(QLatin1String(failure.advice)), qPrintable(message));
    QCOMPARE(run->Errors(), "vesmar: " + message.toUtf8() + '\n');
}

} // namespace

/// The verb `update` at an instrument, or with people, that do not let it do its work.
class TestUpdateProgramTrouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FailedByTheInstrument_data();
    void FailedByTheInstrument();
    void FailureIsFollowedByAdvice();
    void LostSector();
    void InterruptedWhileSectorsAreSent();
    void InterruptedBeforeTheFirstSector();
    void NoLink();
};

void TestUpdateProgramTrouble::FailedByTheInstrument_data()
{
    QTest::addColumn<QString>("options");
    QTest::newRow("online") << "--json";
    QTest::newRow("offline") << "--json --offline";
}

void TestUpdateProgramTrouble::FailedByTheInstrument()
{
    QFETCH(QString, options);
    std::vector<std::unique_ptr<UpdateRun>> runs; // side by side
    for (const Failure& failure : Failures) {
        runs.push_back(std::make_unique<UpdateRun>(
            options, QStringLiteral("--scenario '%1'").arg(QLatin1String(failure.scenario))));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        CheckFailure(*runs.at(i), Failures.at(i));
        if (QTest::currentTestFailed()) {
            QFAIL(Failures.at(i).scenario);
        }
    }
}

void TestUpdateProgramTrouble::FailureIsFollowedByAdvice()
{
    UpdateRun run(QString(), QStringLiteral("--scenario refuses-confirmation"));
    QCOMPARE(run->Finish(), 4);
    QVERIFY2(run->Errors().startsWith("vesmar: Firmware update failed: UpdateConfirmationFailed (304): "),
             run->Errors().constData());
    QVERIFY2(
        run->Errors().endsWith("  Likely causes   the confirmation file belongs to another image\n"
                               "                  the image arrived damaged\n"
                               "  Next step       The instrument waits in update mode: update it again with "
                               "the image and the confirmation that belong together.\n"),
        run->Errors().constData());
}

/// The library sends it three times and waits for an answer each time.
void TestUpdateProgramTrouble::LostSector()
{
    UpdateRun run(QStringLiteral("--json"), QStringLiteral("--scenario 'loses-sector 2'"));
    QCOMPARE(run->Finish(), 4);
    QCOMPARE(run.Requests(Sector), 4);
    QCOMPARE(run.Requests(Finish), 0);
    const QJsonObject result = run.Result();
    QCOMPARE(result.value(QLatin1String("sectors")).toInt(-1), 1);
    QCOMPARE(result.value(QLatin1String("error")).toObject().value(QLatin1String("number")).toInt(), 303);
}

void TestUpdateProgramTrouble::InterruptedWhileSectorsAreSent()
{
    const std::pair<int, const char*> interruptions[]{
        {SIGINT, ""}, {SIGTERM, ""}, {SIGHUP, ""}, {SIGINT, "--offline"}};
    std::vector<std::unique_ptr<UpdateRun>> runs; // side by side
    for (const auto& [signalNumber, option] : interruptions) {
        runs.push_back(std::make_unique<UpdateRun>(QLatin1String(option), QStringLiteral("--baud 4800")));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        AWAIT(runs.at(i)->Requests(Sector) > 0);
        QCOMPARE(runs.at(i)->Requests(Finish), 0);
        QVERIFY((*runs.at(i))->Signal(interruptions[i].first));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        UpdateRun& run = *runs.at(i);
        QCOMPARE(run->Finish(), 0);
        QCOMPARE(run->Errors(),
                 QStringLiteral("vesmar: Signal %1 does not end this: an image that is cut short "
                                "leaves the instrument without firmware. Sending it goes on.\n")
                     .arg(interruptions[i].first)
                     .toLatin1());
        QCOMPARE(run.Firmware(), Image());
    }
}

void TestUpdateProgramTrouble::InterruptedBeforeTheFirstSector()
{
    UpdateRun run(QStringLiteral("--json"));
    AWAIT(run.Requests("780393b1") == 1);
    QVERIFY(run->Signal(SIGTERM));
    QCOMPARE(run->Finish(), 128 + SIGTERM);
    QCOMPARE(run.Result().value(QLatin1String("outcome")).toString(), QStringLiteral("interrupted"));
    QVERIFY2(run->Errors().contains("vesmar restart brings it back"), run->Errors().constData());
    QCOMPARE(run.Requests(Initialize), 0);
}

void TestUpdateProgramTrouble::NoLink()
{
    UpdateRun run(QStringLiteral("--json --timeout 0.5"), QStringLiteral("--scenario silent"));
    QCOMPARE(run->Finish(), 2);
    QVERIFY2(run->Errors().contains("did not answer within 0.5 s"), run->Errors().constData());
}

QTEST_GUILESS_MAIN(TestUpdateProgramTrouble)
#include "tst_updateprogramtrouble.moc"
