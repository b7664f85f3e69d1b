#include "support/eventschema.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <string>

#include <valijson/adapters/qtjson_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/utils/qtjson_utils.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

namespace
{

using valijson::adapters::QtJsonAdapter;

class EventSchema
{
public:
    EventSchema()
    {
        QJsonValue document;
        if (!valijson::utils::loadDocument(EVENTS_SCHEMA, document)) {
            qFatal("cannot read " EVENTS_SCHEMA);
        }
        valijson::SchemaParser(valijson::SchemaParser::kDraft7)
            .populateSchema(QtJsonAdapter(document), _schema);
    }

    QString ProblemOf(const QJsonObject& event) const
    {
        valijson::ValidationResults results;
        valijson::Validator validator;
        if (validator.validate(_schema, QtJsonAdapter(QJsonValue(event)), &results)) {
            return {};
        }
        QString problem = QStringLiteral("not as documented:");
        for (const auto& error : results) {
            problem += QLatin1Char('\n');
            for (const std::string& part : error.context) {
                problem += QString::fromStdString(part);
            }
            problem += QStringLiteral(": ") + QString::fromStdString(error.description);
        }
        return problem;
    }

private:
    valijson::Schema _schema;
};

bool IsResult(const QByteArray& line)
{
    return QJsonDocument::fromJson(line).object().value(QLatin1String("event")) == QLatin1String("result");
}

QString ProblemOfEnd(const QByteArrayList& lines, int exitStatus)
{
    for (int i = 0; i < lines.size(); ++i) {
        if (IsResult(lines.at(i)) != (i == lines.size() - 1)) {
            return QStringLiteral("the result is not the last line, or there is none");
        }
    }
    const int told = QJsonDocument::fromJson(lines.last()).object().value(QLatin1String("status")).toInt(-1);
    return told == exitStatus
               ? QString()
               : QStringLiteral("the result tells the status %1, and it is %2").arg(told).arg(exitStatus);
}

} // namespace

QString ProblemOfEvent(const QByteArray& line)
{
    static const EventSchema schema;
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject()) {
        return QStringLiteral("no JSON object: ") + QString::fromUtf8(line);
    }
    const QString problem = schema.ProblemOf(document.object());
    return problem.isEmpty() ? problem : QString::fromUtf8(line) + QLatin1Char(' ') + problem;
}

QString ProblemOfRun(const QByteArray& output, int exitStatus)
{
    constexpr int BadUsage = 1;
    if (exitStatus == BadUsage && output.isEmpty()) {
        return {};
    }
    if (!output.endsWith('\n')) {
        return QStringLiteral("there is no output, or its last line is not whole");
    }
    const QByteArrayList lines = output.chopped(1).split('\n');
    for (const QByteArray& line : lines) {
        const QString problem = ProblemOfEvent(line);
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    return ProblemOfEnd(lines, exitStatus);
}

void CheckRun(const QByteArray& output, int exitStatus)
{
    const QString problem = ProblemOfRun(output, exitStatus);
    if (!problem.isEmpty()) {
        QTest::qFail(qPrintable(problem), __FILE__, __LINE__);
    }
}
