#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QTemporaryFile>

#include <algorithm>
#include <sstream>

#include "cli/program/program.h"
#include "support/eventschema.h"
#include "support/logcapture.h"
#include "support/redirection.h"
#include "support/scriptedpeer.h"

/// What a verb did.
struct Outcome {
    int status;
    QByteArray output;
    QByteArray errors;

    QList<QJsonObject> Objects() const
    {
        QList<QJsonObject> objects;
        for (const QByteArray& line : output.split('\n')) {
            if (!line.isEmpty()) {
                objects.append(QJsonDocument::fromJson(line).object());
            }
        }
        return objects;
    }
};

/// Runs the verb in this process, on the serial device of this process, with its output going to the
/// descriptor given.
inline Outcome RunVerb(const std::vector<const char*>& arguments, int outputDescriptor)
{
    QTemporaryFile errorFile;
    if (!errorFile.open()) {
        return {-1, QByteArray(), "no temporary file"};
    }
    const LogCapture log; // keeps the library's trace away from Qt Test, which writes to the output
    const Redirection output(STDOUT_FILENO, outputDescriptor);
    const Redirection errorOutput(STDERR_FILENO, errorFile.handle());
    std::ostringstream errors;

    int status = -1;
    Cli::Program program;
    if (Cli::Verb* verb =
            program.Parse(static_cast<int>(arguments.size()), arguments.data(), errors, errors, &status)) {
        status = verb->Run();
    }
    errorFile.seek(0);
    return {status, QByteArray(), QByteArray::fromStdString(errors.str()) + errorFile.readAll()};
}

/// The same with its output kept. What it writes as JSON is checked.
inline Outcome RunVerb(const std::vector<const char*>& arguments)
{
    QTemporaryFile file;
    if (!file.open()) {
        return {-1, QByteArray(), "no temporary file"};
    }
    Outcome outcome = RunVerb(arguments, file.handle());
    file.seek(0);
    outcome.output = file.readAll();
    const auto isJson = [](const char* argument) { return qstrcmp(argument, "--json") == 0; };
    if (std::any_of(arguments.cbegin(), arguments.cend(), isJson)) {
        CheckRun(outcome.output, outcome.status);
    }
    return outcome;
}

/// The answers of an instrument. Each may be changed before it is used.
struct Answers {
    QByteArray status = QByteArray::fromHex("00FE");
    QByteArray version = "ABC4102048151050302" + QByteArray("2016");
    QByteArray currentDateTime = QByteArray::fromHex("241231235958");
    QByteArray calibrationDateTime = QByteArray::fromHex("230102000000");

    QByteArray To(const QByteArray& request) const
    {
        switch (request.at(0)) {
        case 's':
            return WithChecksum(status);
        case 'W':
            return WithChecksum(version);
        case 'R':
            return WithChecksum(currentDateTime);
        case 'T':
            return WithChecksum(calibrationDateTime);
        default:
            return Acknowledge();
        }
    }

    static QByteArray Acknowledge() { return QByteArray::fromHex("06C660"); }
    static QByteArray Refusal() { return QByteArray::fromHex("214334"); }
};
