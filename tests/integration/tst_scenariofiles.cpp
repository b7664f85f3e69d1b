#include <algorithm>
#include <map>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

#include "integration/scenariofiles.h"

namespace
{

QString TextOf(const char* path)
{
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The errors that have names.
std::map<int, QString> NamedErrors()
{
    const QRegularExpression enumerator(QStringLiteral("^ +(\\w+) = (\\d+)"),
                                        QRegularExpression::MultilineOption);
    std::map<int, QString> names;
    auto matches = enumerator.globalMatch(TextOf(ERROR_HEADER));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        names[match.captured(2).toInt()] = match.captured(1);
    }
    return names;
}

QString CommentOf(const QString& file)
{
    const QJsonDocument document = QJsonDocument::fromJson(ScenarioFiles::Content(file));
    return document.object().value(QLatin1String("comment")).toString();
}

} // namespace

/// Whether there is a file for each error and an error for each file. What the files do is played elsewhere.
class TestScenarioFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ThereIsOneForEachExpectedError();
    void EveryNamedErrorIsExpected();
    void TellHowTheyAreShown_data();
    void TellHowTheyAreShown();
};

void TestScenarioFiles::ThereIsOneForEachExpectedError()
{
    QList<int> expected;
    for (const auto& [error, occasion] : ScenarioFiles::Expected()) {
        expected.append(error);
    }
    QList<int> found;
    for (const QString& name : ScenarioFiles::Names()) {
        QVERIFY2(QRegularExpression(QStringLiteral("^\\d{3}(-[a-z0-9]+)+\\.json$")).match(name).hasMatch(),
                 qPrintable(name));
        found.append(ScenarioFiles::ErrorOf(name));
    }
    QCOMPARE(found, expected);
}

void TestScenarioFiles::EveryNamedErrorIsExpected()
{
    QList<int> expected{15, 301, 302}; // No instrument can cause these.
    for (const auto& [error, occasion] : ScenarioFiles::Expected()) {
        expected.append(error);
    }
    std::sort(expected.begin(), expected.end());
    QList<int> named;
    for (const auto& [error, name] : NamedErrors()) {
        named.append(error);
    }
    QCOMPARE(expected, named);
}

void TestScenarioFiles::TellHowTheyAreShown_data()
{
    QTest::addColumn<QString>("file");
    for (const QString& name : ScenarioFiles::Names()) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

/// The comment names the error and the command that shows it, and the document has both.
void TestScenarioFiles::TellHowTheyAreShown()
{
    QFETCH(const QString, file);
    const QString comment = CommentOf(file);
    const int number = ScenarioFiles::ErrorOf(file);
    const QString name = NamedErrors()[number];
    QVERIFY2(comment.startsWith(QStringLiteral("Error %1, %2").arg(number).arg(name)), qPrintable(comment));
    const QString start =
        QStringLiteral("vesmar-simulator run --faults simulator/scenarios/%1 -- vesmar ").arg(file);
    const QString command = comment.mid(comment.indexOf(start));
    QVERIFY2(command.startsWith(start), qPrintable(comment));

    const QString document = TextOf(SCENARIOS_DOCUMENT);
    QVERIFY(document.contains(QStringLiteral("\n| `%1` | %2 `%3` | ").arg(file).arg(number).arg(name)));
    const QRegularExpression line(
        QStringLiteral("^%1(  # status \\d)?$").arg(QRegularExpression::escape(command)),
        QRegularExpression::MultilineOption);
    QVERIFY2(line.match(document).hasMatch(), qPrintable(command));
}

QTEST_GUILESS_MAIN(TestScenarioFiles)
#include "tst_scenariofiles.moc"
