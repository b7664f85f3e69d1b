#include "cli/output/event.h"

#include <QtTest>

#include "support/eventschema.h"

namespace
{

const QDateTime Noon(QDate(2026, 11, 21), QTime(12, 0, 0, 250), Qt::OffsetFromUTC, 3600);

Cli::Ending Failure()
{
    return {4, Cli::Ending::Outcome::Failed, QStringLiteral("It did not work."), QStringLiteral("not-set"),
            VesmarClient::Error::UpdateConfirmationFailed};
}

QByteArray ContentOf(const char* path)
{
    QFile file(QString::fromLocal8Bit(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Every event with the fields of its kind.
QMap<QString, QStringList> EventsOfTheSchema()
{
    QMap<QString, QStringList> events;
    const QJsonObject schema = QJsonDocument::fromJson(ContentOf(EVENTS_SCHEMA)).object();
    for (const QJsonValue& definition : schema.value(QLatin1String("definitions")).toObject()) {
        QJsonObject fields = definition.toObject().value(QLatin1String("properties")).toObject();
        const QString event =
            fields.take(QLatin1String("event")).toObject().value(QLatin1String("const")).toString();
        fields.remove(QLatin1String("time"));
        if (!event.isEmpty()) {
            events.insert(event, fields.keys());
        }
    }
    return events;
}

} // namespace

class TestCliEvent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EventHasItsKindAndTimeInUtc();
    void ResultOfSuccess();
    void ResultOfFailure();
    void ResultOfASignal();
    void OutcomesHaveWords_data();
    void OutcomesHaveWords();
    void DocumentedEventsAreAccepted();
    void OtherEventsAreNot_data();
    void OtherEventsAreNot();
    void EveryDefinitionIsInForce();
    void ExamplesAreAsDocumented();
    void EveryFieldIsDocumented();
    void RunEndsWithItsResult();
    void RunsWithoutAProperEnd_data();
    void RunsWithoutAProperEnd();
};

void TestCliEvent::EventHasItsKindAndTimeInUtc()
{
    QCOMPARE(Cli::EventLine(Noon, QStringLiteral("restart"), {{QStringLiteral("seconds"), 2.5}}),
             QByteArray(R"({"event":"restart","seconds":2.5,"time":"2026-11-21T11:00:00.250Z"})"
                        "\n"));
}

void TestCliEvent::ResultOfSuccess()
{
    const QByteArray line = Cli::ResultLine(Noon, Cli::DoneWith(QStringLiteral("It worked.")));
    QCOMPARE(line, QByteArray(R"({"error":null,"event":"result","message":"It worked.","outcome":"done",)"
                              R"("reason":null,"status":0,"time":"2026-11-21T11:00:00.250Z"})"
                              "\n"));
    QCOMPARE(ProblemOfRun(line, 0), QString());
}

void TestCliEvent::ResultOfFailure()
{
    const QByteArray line = Cli::ResultLine(Noon, Failure());
    QCOMPARE(line,
             QByteArray(R"({"error":{"causes":["the confirmation file belongs to another image",)"
                        R"("the image arrived damaged"],)"
                        R"("meaning":"the instrument refused the closing confirmation of the update",)"
                        R"("name":"UpdateConfirmationFailed",)"
                        R"("nextStep":"The instrument waits in update mode: update it again with the image )"
                        R"(and the confirmation that belong together.","number":304},)"
                        R"("event":"result","message":"It did not work.","outcome":"failed",)"
                        R"("reason":"not-set","status":4,"time":"2026-11-21T11:00:00.250Z"})"
                        "\n"));
    QCOMPARE(ProblemOfRun(line, 4), QString());
}

void TestCliEvent::ResultOfASignal()
{
    const QByteArray line = Cli::ResultLine(Noon, Cli::EndedBySignal(15));
    QVERIFY2(line.contains(R"("message":"Ended by signal 15.","outcome":"interrupted","reason":"signal")"),
             line.constData());
    QCOMPARE(ProblemOfRun(line, 128 + 15), QString());
}

void TestCliEvent::OutcomesHaveWords_data()
{
    using Outcome = Cli::Ending::Outcome;
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QByteArray>("word");
    const auto row = [](Outcome outcome, const char* word) {
        QTest::newRow(word) << static_cast<int>(outcome) << QByteArray(word);
    };
    row(Outcome::Failed, "failed");
    row(Outcome::Aborted, "aborted");
    row(Outcome::Interrupted, "interrupted");
    row(Outcome::LinkLost, "link-lost");
    row(Outcome::UpdateMode, "update-mode");
}

void TestCliEvent::OutcomesHaveWords()
{
    QFETCH(const int, outcome);
    QFETCH(const QByteArray, word);
    Cli::Ending ending = Failure();
    ending.outcome = static_cast<Cli::Ending::Outcome>(outcome);
    const QByteArray line = Cli::ResultLine(Noon, ending);
    QVERIFY2(line.contains(R"("outcome":")" + word + '"'), line.constData());
    QCOMPARE(ProblemOfRun(line, 4), QString());
}

void TestCliEvent::DocumentedEventsAreAccepted()
{
    const QByteArrayList lines{
        R"({"event":"restart","time":"2026-11-21T11:00:00.250Z","seconds":0})",
        R"({"event":"clock","time":"2026-11-21T11:00:00.250Z","CurrentDateTime":null,"difference":null})",
        R"({"event":"change","time":"2026-11-21T11:00:00.250Z","property":"MeasurementTime","value":7})",
        R"({"event":"change","time":"2026-11-21T11:00:00.250Z","property":"IsMeasurementRunning","value":true})",
        R"({"event":"reading","time":"2026-11-21T11:00:00.250Z","elapsed":1.5,"readings":{"power factor":null}})",
    };
    for (const QByteArray& line : lines) {
        QCOMPARE(ProblemOfEvent(line), QString());
    }
}

void TestCliEvent::OtherEventsAreNot_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << QByteArray("Clock: none");
    QTest::newRow("array") << QByteArray("[]");
    QTest::newRow("no event") << QByteArray(R"({"time":"2026-11-21T11:00:00.250Z","seconds":2})");
    QTest::newRow("unknown event") << QByteArray(
        R"({"event":"coffee","time":"2026-11-21T11:00:00.250Z","seconds":2})");
    QTest::newRow("field too many") << QByteArray(
        R"({"event":"restart","time":"2026-11-21T11:00:00.250Z","seconds":2,"minutes":0})");
    QTest::newRow("field missing") << QByteArray(R"({"event":"restart","time":"2026-11-21T11:00:00.250Z"})");
    QTest::newRow("wrong type") << QByteArray(
        R"({"event":"restart","time":"2026-11-21T11:00:00.250Z","seconds":"2"})");
    QTest::newRow("time with an offset")
        << QByteArray(R"({"event":"restart","time":"2026-11-21T12:00:00.250+01:00","seconds":2})");
    QTest::newRow("time without milliseconds")
        << QByteArray(R"({"event":"restart","time":"2026-11-21T11:00:00Z","seconds":2})");
    QTest::newRow("instrument's clock with a zone")
        << QByteArray(R"({"event":"calibration","time":"2026-11-21T11:00:00.250Z",)"
                      R"("CalibrationDateTime":"2023-01-02T00:00:00Z"})");
    QTest::newRow("value of another property")
        << QByteArray(R"({"event":"change","time":"2026-11-21T11:00:00.250Z","property":"TesterMode",)"
                      R"("value":7})");
    QTest::newRow("error without its causes")
        << QByteArray(R"({"event":"error","time":"2026-11-21T11:00:00.250Z",)"
                      R"("value":{"name":"NoErrors","number":15,"meaning":"no error","nextStep":"None."}})");
    QTest::newRow("done with a status")
        << QByteArray(R"({"event":"result","time":"2026-11-21T11:00:00.250Z","status":4,"outcome":"done",)"
                      R"("message":"It.","reason":null,"error":null})");
    QTest::newRow("half a measurement's result")
        << QByteArray(R"({"event":"result","time":"2026-11-21T11:00:00.250Z","status":0,"outcome":"done",)"
                      R"("message":"It.","reason":null,"error":null,"stopped":true})");
}

void TestCliEvent::OtherEventsAreNot()
{
    QFETCH(const QByteArray, line);
    QVERIFY(!ProblemOfEvent(line).isEmpty());
}

/// A definition has no effect until the schema allows its event and applies it.
void TestCliEvent::EveryDefinitionIsInForce()
{
    const QJsonObject schema = QJsonDocument::fromJson(ContentOf(EVENTS_SCHEMA)).object();
    const QJsonObject allowed =
        schema.value(QLatin1String("properties")).toObject().value(QLatin1String("event")).toObject();
    QStringList events = allowed.value(QLatin1String("enum")).toVariant().toStringList();
    events.sort();
    QCOMPARE(events, QStringList(EventsOfTheSchema().keys()));
    for (const QString& event : events) {
        const QByteArray line = Cli::EventLine(Noon, event, {{QStringLiteral("coffee"), 1}}).trimmed();
        QVERIFY2(ProblemOfEvent(line).contains(QLatin1String("'coffee'")), line.constData());
    }
}

void TestCliEvent::ExamplesAreAsDocumented()
{
    QMap<QString, int> examples;
    for (const QByteArray& line : ContentOf(EVENTS_DOCUMENT).split('\n')) {
        if (line.startsWith('{')) {
            QCOMPARE(ProblemOfEvent(line), QString());
            const QJsonObject event = QJsonDocument::fromJson(line).object();
            QCOMPARE(QJsonDocument(event).toJson(QJsonDocument::Compact), line); // the order of the fields
            ++examples[event.value(QLatin1String("event")).toString()];
        }
    }
    QCOMPARE(examples.keys(), EventsOfTheSchema().keys());
}

/// Each field is documented in the section of its event.
void TestCliEvent::EveryFieldIsDocumented()
{
    const QString document = QString::fromUtf8(ContentOf(EVENTS_DOCUMENT));
    const QMap<QString, QStringList> events = EventsOfTheSchema();
    for (auto event = events.cbegin(); event != events.cend(); ++event) {
        const QString section = document.section(QStringLiteral("\n## %1\n").arg(event.key()), 1)
                                    .section(QStringLiteral("\n## "), 0, 0);
        for (const QString& field : event.value()) {
            const bool isTold = section.contains(QStringLiteral("`%1`").arg(field)) ||
                                (event.key() == QLatin1String("explanation") &&
                                 section.contains(QStringLiteral("\"%1\":").arg(field)));
            QVERIFY2(isTold, qPrintable(event.key() + QLatin1Char(' ') + field));
        }
    }
}

void TestCliEvent::RunEndsWithItsResult()
{
    const QByteArray event =
        Cli::EventLine(Noon, QStringLiteral("restart"), {{QStringLiteral("seconds"), 2}});
    QCOMPARE(ProblemOfRun(event + event + Cli::ResultLine(Noon, Failure()), 4), QString());
    QCOMPARE(ProblemOfRun(QByteArray(), 1), QString());
}

void TestCliEvent::RunsWithoutAProperEnd_data()
{
    const QByteArray event =
        Cli::EventLine(Noon, QStringLiteral("restart"), {{QStringLiteral("seconds"), 2}});
    const QByteArray result = Cli::ResultLine(Noon, Failure());
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("status");
    QTest::newRow("no output") << QByteArray() << 4;
    QTest::newRow("no result") << event << 4;
    QTest::newRow("result that is not the last") << result + event << 4;
    QTest::newRow("two results") << result + result << 4;
    QTest::newRow("another status") << result << 5;
    QTest::newRow("line cut short") << result.chopped(1) << 4;
    QTest::newRow("line in between") << result + '\n' + result << 4;
    QTest::newRow("wrong event before it") << "{}\n" + result << 4;
    QTest::newRow("no result in spite of output") << event << 1;
}

void TestCliEvent::RunsWithoutAProperEnd()
{
    QFETCH(const QByteArray, output);
    QFETCH(const int, status);
    QVERIFY(!ProblemOfRun(output, status).isEmpty());
}

QTEST_APPLESS_MAIN(TestCliEvent)
#include "tst_clievent.moc"
