#include <functional>
#include <map>
#include <vector>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <Vesmar/rpesettings.h>

#include "integration/rcdmeasuring.h"
#include "integration/updating.h"
#include "simulator/faults/faultfile.h"

namespace
{

/// The errors that the files in simulator/scenarios bring about: each file's name begins with the number of
/// its error.
const QList<int> ErrorsOfTheStatus{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
const QList<int> ErrorsOfSilence{100};
const QList<int> ErrorsOfDamage{101, 102};
const QList<int> ErrorsOfARecoveredLink{103};
const QList<int> ErrorsOfAMeasurement{200, 201, 202};
const QList<int> ErrorsOfAnUpdate{300, 303, 304};
const QList<int> ErrorsOfAnRcdTest{398, 400, 401};
const QList<int> ErrorsOfAnRcdCheck{500, 501, 502, 503, 504, 505, 506, 507};
const QList<int> ErrorsInAnRcdTest{520, 521, 522, 523, 524, 525, 526, 527, 528, 529, 530, 531, 532, 533, 534};
const QList<int> AllErrors = ErrorsOfTheStatus + ErrorsOfSilence + ErrorsOfDamage + ErrorsOfARecoveredLink +
                             ErrorsOfAMeasurement + ErrorsOfAnUpdate + ErrorsOfAnRcdTest +
                             ErrorsOfAnRcdCheck + ErrorsInAnRcdTest;

QDir Folder()
{
    return {QStringLiteral(SCENARIO_FOLDER)};
}

QStringList Names()
{
    return Folder().entryList(QDir::Files, QDir::Name);
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int ErrorOf(const QString& name)
{
    constexpr int Digits = 3;
    bool isNumber = false;
    const int error = name.left(Digits).toInt(&isNumber);
    return isNumber ? error : -1;
}

std::vector<Simulator::FaultEntry> FaultsOf(const QString& name)
{
    return Simulator::ParseFaults(ContentOf(Folder().filePath(name)));
}

/// A row for the file of each of these errors; the column is "file".
void AddRows(const QList<int>& errors)
{
    QTest::addColumn<QString>("file");
    int rows = 0;
    for (const QString& name : Names()) {
        if (errors.contains(ErrorOf(name))) {
            QTest::newRow(qPrintable(name)) << name;
            ++rows;
        }
    }
    QCOMPARE(rows, errors.size());
}

/// The errors that have names.
std::map<int, QString> NamedErrors()
{
    const QRegularExpression enumerator(QStringLiteral("^ +(\\w+) = (\\d+)"),
                                        QRegularExpression::MultilineOption);
    std::map<int, QString> names;
    auto matches = enumerator.globalMatch(QString::fromUtf8(ContentOf(QStringLiteral(ERROR_HEADER))));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        names[match.captured(2).toInt()] = match.captured(1);
    }
    return names;
}

QString CommentOf(const QString& file)
{
    const QJsonDocument document = QJsonDocument::fromJson(ContentOf(Folder().filePath(file)));
    return document.object().value(QLatin1String("comment")).toString();
}

/// The errors signalled until this one was, or until there is none any more, or until the play is over.
QByteArrayList SignalledUntil(
    const WatchedTester& tester, int error, const std::function<bool()>& isOver = [] { return false; })
{
    const auto isSignalled = [&tester](int number) {
        return tester.Errors().contains(QByteArray::number(number));
    };
    [&] { AWAIT(isSignalled(error) || isSignalled(Wire::NoError) || isOver()); }();
    QCoreApplication::processEvents(); // A signal may still be on its way.
    return tester.Errors();
}

/// Brings about an error with these faults. It returns the errors that were signalled until this one came, or
/// was sure not to come any more.
using Play = std::function<QByteArrayList(const std::vector<Simulator::FaultEntry>& faults, int error)>;

/// Plays the file of the present row and expects that its error comes.
void VerifyArrival(const Play& play)
{
    QFETCH(const QString, file);
    const int error = ErrorOf(file);
    const QByteArrayList signalled = play(FaultsOf(file), error);
    QVERIFY2(signalled.contains(QByteArray::number(error)), signalled.join(' ').constData());
}

void VerifyArrivalDuring(const RcdKind& kind)
{
    VerifyArrival([&kind](const auto& faults, int error) {
        RcdMeasuring rcd;
        rcd.instrument.AddFaults(faults);
        rcd.Start(kind);
        return SignalledUntil(rcd.tester, error, [&rcd] { return rcd.EndedRuns() > 0; });
    });
}

/// Plays the file of the present row and expects that the link is lost and stays so.
void VerifyLoss()
{
    QFETCH(const QString, file);
    const QByteArrayList expected{"103", QByteArray::number(ErrorOf(file))};
    Bench bench;
    bench.instrument.AddFaults(FaultsOf(file));
    bench.tester->Enable();
    bench.AwaitErrors(expected);

    constexpr int SomeMore = 5;
    const int requests = bench.instrument.Sent().size();
    AWAIT(bench.instrument.Sent().size() > requests + SomeMore);
    QCOMPARE(bench.tester.Errors(), expected);
}

} // namespace

/// There is a file for each error and an error for each file, and every file brings its error about.
class TestScenarioFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ThereIsAFileForEachError();
    void EveryNamedErrorHasAFile();
    void CommentNamesTheCommandThatShowsTheError_data();
    void CommentNamesTheCommandThatShowsTheError();
    void StatusReportsTheError_data() { AddRows(ErrorsOfTheStatus); }
    void StatusReportsTheError();
    void SilenceLosesTheLink_data() { AddRows(ErrorsOfSilence); }
    void SilenceLosesTheLink() { VerifyLoss(); }
    void DamageLosesTheLink_data() { AddRows(ErrorsOfDamage); }
    void DamageLosesTheLink() { VerifyLoss(); }
    void LinkIsLostAndFoundAgain_data() { AddRows(ErrorsOfARecoveredLink); }
    void LinkIsLostAndFoundAgain();
    void MeasurementFails_data() { AddRows(ErrorsOfAMeasurement); }
    void MeasurementFails();
    void UpdateFails_data() { AddRows(ErrorsOfAnUpdate); }
    void UpdateFails();
    void RcdTestFails_data() { AddRows(ErrorsOfAnRcdTest); }
    void RcdTestFails() { VerifyArrivalDuring(RcdKinds::IaTa1()); }
    void RcdCheckFindsAFault_data() { AddRows(ErrorsOfAnRcdCheck); }
    void RcdCheckFindsAFault() { VerifyArrivalDuring(RcdKinds::IecIaTa1()); }
    void InstrumentHasAnErrorInAnRcdTest_data() { AddRows(ErrorsInAnRcdTest); }
    void InstrumentHasAnErrorInAnRcdTest() { VerifyArrivalDuring(RcdKinds::UbRe()); }
};

void TestScenarioFiles::ThereIsAFileForEachError()
{
    QList<int> found;
    for (const QString& name : Names()) {
        QVERIFY2(QRegularExpression(QStringLiteral("^\\d{3}(-[a-z0-9]+)+\\.json$")).match(name).hasMatch(),
                 qPrintable(name));
        found.append(ErrorOf(name));
    }
    QCOMPARE(found, AllErrors);
}

void TestScenarioFiles::EveryNamedErrorHasAFile()
{
    for (const auto& [error, name] : NamedErrors()) {
        const bool canBeCaused = error != 15 && error != 301 && error != 302;
        QVERIFY2(AllErrors.contains(error) == canBeCaused, qPrintable(name));
    }
    QCOMPARE(static_cast<int>(NamedErrors().size()), AllErrors.size() + 3);
}

void TestScenarioFiles::CommentNamesTheCommandThatShowsTheError_data()
{
    AddRows(AllErrors);
}

/// The comment names the error and the command that shows it, and the document has both.
void TestScenarioFiles::CommentNamesTheCommandThatShowsTheError()
{
    QFETCH(const QString, file);
    const QString comment = CommentOf(file);
    const int number = ErrorOf(file);
    const QString name = NamedErrors()[number];
    QVERIFY2(comment.startsWith(QStringLiteral("Error %1, %2").arg(number).arg(name)), qPrintable(comment));
    const QString start =
        QStringLiteral("vesmar-simulator run --faults simulator/scenarios/%1 -- vesmar ").arg(file);
    const QString command = comment.mid(comment.indexOf(start));
    QVERIFY2(command.startsWith(start), qPrintable(comment));

    const QString document = QString::fromUtf8(ContentOf(QStringLiteral(SCENARIOS_DOCUMENT)));
    QVERIFY(document.contains(QStringLiteral("\n| `%1` | %2 `%3` | ").arg(file).arg(number).arg(name)));
    const QRegularExpression line(
        QStringLiteral("^%1(  # status \\d)?$").arg(QRegularExpression::escape(command)),
        QRegularExpression::MultilineOption);
    QVERIFY2(line.match(document).hasMatch(), qPrintable(command));
}

void TestScenarioFiles::StatusReportsTheError()
{
    VerifyArrival([](const auto& faults, int error) {
        Bench bench;
        bench.instrument.AddFaults(faults);
        bench.tester->Enable();
        return SignalledUntil(bench.tester, error);
    });
}

void TestScenarioFiles::LinkIsLostAndFoundAgain()
{
    QFETCH(const QString, file);
    Bench bench;
    bench.instrument.AddFaults(FaultsOf(file));
    bench.tester->Enable();
    bench.AwaitIdentity(2);
    bench.AwaitMoreReadings();
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{QByteArray::number(ErrorOf(file)), "15"}));
}

void TestScenarioFiles::MeasurementFails()
{
    VerifyArrival([](const auto& faults, int error) {
        constexpr int LongTime = 600;
        Measuring measuring;
        measuring.instrument.AddFaults(faults);
        measuring.Prepare(*ForSeconds<Vesmar::RPESettings>(LongTime));
        measuring.tester->StartMeasurement();
        return SignalledUntil(measuring.tester, error);
    });
}

void TestScenarioFiles::UpdateFails()
{
    VerifyArrival([](const auto& faults, int error) {
        UpdateBench bench;
        bench.instrument.AddFaults(faults);
        bench.Connect();
        bench.Update(ImageOf(3));
        return SignalledUntil(bench.tester, error);
    });
}

QTEST_GUILESS_MAIN(TestScenarioFiles)
#include "tst_scenariofiles.moc"
