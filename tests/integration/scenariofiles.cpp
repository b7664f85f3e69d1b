#include "integration/scenariofiles.h"

#include <QDir>
#include <QFile>

#include "simulator/faults/faultfile.h"

namespace
{

constexpr int NoError = 15;

QDir Folder()
{
    return {QStringLiteral(SCENARIO_FOLDER)};
}

} // namespace

const std::map<int, ScenarioFiles::Occasion>& ScenarioFiles::Expected()
{
    static const std::map<int, Occasion> expected = [] {
        const std::map<Occasion, std::vector<int>> errors{
            {Occasion::Status, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
            {Occasion::Silence, {100}},
            {Occasion::Damage, {101, 102}},
            {Occasion::Recovery, {103}},
            {Occasion::Measurement, {200, 201, 202}},
            {Occasion::Update, {300, 303, 304}},
            {Occasion::Rcd, {398, 400, 401}},
            {Occasion::RcdCheck, {500, 501, 502, 503, 504, 505, 506, 507}},
            {Occasion::RcdError,
             {520, 521, 522, 523, 524, 525, 526, 527, 528, 529, 530, 531, 532, 533, 534}}};
        std::map<int, Occasion> occasions;
        for (const auto& [occasion, numbers] : errors) {
            for (const int number : numbers) {
                occasions[number] = occasion;
            }
        }
        return occasions;
    }();
    return expected;
}

QStringList ScenarioFiles::Names()
{
    return Folder().entryList(QDir::Files, QDir::Name);
}

QByteArray ScenarioFiles::Content(const QString& name)
{
    QFile file(Folder().filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int ScenarioFiles::ErrorOf(const QString& name)
{
    constexpr int Digits = 3;
    bool isNumber = false;
    const int error = name.left(Digits).toInt(&isNumber);
    return isNumber ? error : -1;
}

void ScenarioFiles::AddRows(Occasion occasion)
{
    QTest::addColumn<QString>("file");
    int rows = 0;
    for (const QString& name : Names()) {
        const auto expected = Expected().find(ErrorOf(name));
        if (expected != Expected().end() && expected->second == occasion) {
            QTest::newRow(qPrintable(name)) << name;
            ++rows;
        }
    }
    QVERIFY(rows > 0);
}

/// An error of the library's own is over with the next status, and an RCD test does not wait long for an
/// answer: on a busy machine an error can be missed, so that only one that stays away counts.
void ScenarioFiles::VerifyArrival(const QString& name, const Play& play)
{
    constexpr int Tries = 4;
    const int error = ErrorOf(name);
    const auto faults = Simulator::ParseFaults(Content(name));
    QByteArrayList told;
    const auto isMissing = [&] { return !told.contains(QByteArray::number(error)); };
    for (int tries = 0; tries < Tries && isMissing() && !QTest::currentTestFailed(); ++tries) {
        told = play(faults, error);
    }
    QVERIFY2(!isMissing(), told.join(' ').constData());
}

QByteArrayList ScenarioFiles::ToldUntil(const WatchedTester& tester, int error,
                                        const std::function<bool()>& isOver)
{
    const auto isTold = [&tester](int number) {
        return tester.Signalled("ErrorCode").contains(QByteArray::number(number));
    };
    const auto isDecided = [&] { return isTold(error) || isTold(NoError) || isOver(); };
    [&] { QVERIFY(QTest::qWaitFor(isDecided, Patience)); }();
    QCoreApplication::processEvents(); // A signal may still be on its way.
    return tester.Signalled("ErrorCode");
}

void ScenarioFiles::VerifyLoss(const QString& name)
{
    const QByteArrayList expected{"103", QByteArray::number(ErrorOf(name))};
    LineInstrument instrument;
    instrument.AddFaults(Simulator::ParseFaults(Content(name)));
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), expected, Patience);

    constexpr int SomeMore = 5;
    const int requests = instrument.Sent().size();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.Sent().size() > requests + SomeMore, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), expected);
}

void ScenarioFiles::VerifyRcd(const QString& name, const RcdKind& kind)
{
    VerifyArrival(name, [&kind](const auto& faults, int error) {
        RcdMeasuring rcd;
        rcd.instrument.AddFaults(faults);
        rcd.Start(kind);
        return ToldUntil(rcd.tester, error, [&rcd] { return rcd.EndedRuns() > 0; });
    });
}
