#include <QtTest>

#include "integration/programrun.h"

namespace
{

/// What `monitor --json` has shown, a word for each change that matters here: the error's number, or the name
/// of the property.
QByteArrayList Story(const QByteArrayList& lines)
{
    QByteArrayList story;
    for (const QByteArray& line : lines) {
        const QJsonObject change = ObjectOf(line);
        if (change.value(QLatin1String("event")) != QLatin1String("change")) {
            continue;
        }
        const QJsonObject value = change.value(QLatin1String("value")).toObject();
        QByteArray word = change.value(QLatin1String("property")).toString().toLatin1();
        if (word == "ErrorCode") {
            word = QByteArray::number(value.value(QLatin1String("number")).toInt());
        }
        if (!story.endsWith(word)) {
            story.append(word);
        }
    }
    return story;
}

/// The parts of the picture that every connection brings: identity, clock, readings.
bool HasPictureSince(const QByteArrayList& story, int position)
{
    const QByteArrayList since = story.mid(position);
    return since.contains("DeviceInformation") && since.contains("CurrentDateTime") &&
           since.contains("TestResults");
}

} // namespace

class TestProgramRecovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void MonitorShowsTheLossAndTheReturn();
};

void TestProgramRecovery::MonitorShowsTheLossAndTheReturn()
{
    const QStringList arguments{
        QStringLiteral("run"),          QStringLiteral("--at"),    QStringLiteral("3:unplug"),
        QStringLiteral("--at"),         QStringLiteral("36:plug"), QStringLiteral("--"),
        QStringLiteral(VESMAR_PROGRAM), QStringLiteral("monitor"), QStringLiteral("--json")};
    ProgramRun run(QStringLiteral(SIMULATOR_PROGRAM), arguments);
    AWAIT(Story(run.Lines()).contains("103"));
    QVERIFY(HasPictureSince(Story(run.Lines()), 0));
    AWAIT(Story(run.Lines()).contains("100"));
    const int lost = Story(run.Lines()).indexOf("100");
    AWAIT(HasPictureSince(Story(run.Lines()), lost));
    QVERIFY(run.Signal(SIGINT));
    QCOMPARE(run.Finish(), 0);
    QCOMPARE(run.Errors(), QByteArray());

    const QByteArrayList story = Story(run.Lines());
    QVERIFY(story.indexOf("103") < lost);
    QCOMPARE(story.at(lost + 1), QByteArray("15"));
    QCOMPARE(story.count("103"), 1);
    QCOMPARE(story.count("DeviceInformation"), 2);
}

QTEST_GUILESS_MAIN(TestProgramRecovery)
#include "tst_programrecovery.moc"
