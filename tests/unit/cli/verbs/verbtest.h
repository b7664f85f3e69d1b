#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QTemporaryFile>
#include <QtTest>

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <sstream>

#include "cli/program/program.h"
#include "support/eventschema.h"
#include "support/logcapture.h"
#include "support/redirection.h"
#include "support/scriptedpeer.h"
#include "support/wire.h"

/// What a verb did.
struct Outcome {
    int status;
    QByteArray output;
    QByteArray errors;
    QList<QByteArray> requests = {}; ///< What came to the instrument.

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
    /// A field of the first event.
    QJsonValue First(const char* field) const { return Objects().value(0).value(QLatin1String(field)); }
    /// A field of the result.
    QJsonValue Result(const char* field) const
    {
        const QJsonObject last = Objects().isEmpty() ? QJsonObject() : Objects().last();
        return last.value(QLatin1String(field));
    }
    int CountOf(const char* event) const { return output.count(QByteArray("\"event\":\"") + event + '"'); }
    /// The requests that begin with one of these commands, in hexadecimal digits.
    QByteArrayList Sent(const char* commands) const
    {
        QByteArrayList sent;
        for (const QByteArray& request : requests) {
            if (QByteArray(commands).contains(request.at(0))) {
                sent.append(request.toHex());
            }
        }
        return sent;
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

/// The same with the output kept. JSON is checked against the schema.
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
    QByteArray status = Wire::IdleStatus;
    QByteArray version = Wire::Version;
    QByteArray currentDate = Wire::CurrentDate;
    QByteArray calibrationDate = Wire::CalibrationDate;

    QByteArray To(const QByteArray& request) const
    {
        switch (request.at(0)) {
        case 's':
            return status;
        case 'W':
            return version;
        case 'R':
            return currentDate;
        case 'T':
            return calibrationDate;
        default:
            return Wire::Acknowledge;
        }
    }
};

/// An instrument: its answer to each request.
using Instrument = ScriptedPeer::Responder;
Q_DECLARE_METATYPE(Instrument)

inline Instrument Answering(const Answers& answers = {})
{
    return [answers](const QByteArray& request) { return answers.To(request); };
}

inline Instrument InUpdateMode()
{
    Answers answers;
    answers.status = Wire::UpdateModeStatus;
    return Answering(answers);
}

inline Instrument Silent()
{
    return [](const QByteArray&) { return Wire::Silence; };
}

inline Instrument Refusing(char command, const Instrument& instrument = Answering())
{
    return [command, instrument](const QByteArray& request) {
        return request.at(0) == command ? Wire::Refusal : instrument(request);
    };
}

/// An instrument that refuses everything after this command.
inline Instrument LostAfter(char command, const Instrument& instrument = Answering())
{
    return [command, instrument, isLost = false](const QByteArray& request) mutable {
        const QByteArray answer = isLost ? Wire::Refusal : instrument(request);
        isLost = isLost || request.at(0) == command;
        return answer;
    };
}

/// An instrument that sends this process a signal when the command comes for the given time.
inline Instrument SignalAt(char command, int signalNumber, const Instrument& instrument = Answering(),
                           int time = 1)
{
    return [command, signalNumber, instrument, left = time](const QByteArray& request) mutable {
        if (request.at(0) == command && --left == 0) {
            ::kill(::getpid(), signalNumber);
        }
        return instrument(request);
    };
}

/// Runs a command line, whose words are parted by blanks, with this instrument at the line. Unless the
/// command line says something else, the link may need longer to come up than any test lasts.
inline Outcome RunWith(const Instrument& instrument, const QByteArray& line)
{
    ScriptedPeer peer;
    peer.Answer(
        [&instrument](const QByteArray& request) { return instrument(request); }); // not a copy each time
    QByteArrayList words = ("vesmar " + line).simplified().split(' ');
    if (!line.contains(" --timeout")) {
        words.append("--timeout=3600");
    }
    Outcome outcome = RunVerb({words.cbegin(), words.cend()});
    outcome.requests = peer.RequestBytes();
    return outcome;
}

inline void AddEndColumns()
{
    QTest::addColumn<Instrument>("instrument");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QByteArray>("errors");
}

/// A row for a verb that does not come to its proper end. `errors` is a part of its error output; empty for a
/// verb that says nothing.
inline QTestData& AddEnd(const char* name, const Instrument& instrument, const QByteArray& line, int status,
                         const char* outcome, const char* reason, const char* errors)
{
    return QTest::newRow(name) << instrument << line << status << QString::fromLatin1(outcome)
                               << QString::fromLatin1(reason) << QByteArray(errors);
}

/// Runs the row's verb. It must show how it ended, and nothing that it was asked for.
inline void CheckEnd(Outcome* ended)
{
    QFETCH(const Instrument, instrument);
    QFETCH(const QByteArray, line);
    QFETCH(const QByteArray, errors);
    *ended = RunWith(instrument, line + " --json");
    QTEST(ended->status, "status");
    QTEST(ended->Result("outcome").toString(), "outcome");
    QTEST(ended->Result("reason").toString(), "reason");
    QVERIFY(ended->Result("error").isNull());
    QCOMPARE(ended->CountOf(line.left(line.indexOf(' ')).constData()), 0);
    QVERIFY2(errors.isEmpty() ? ended->errors.isEmpty() : ended->errors.contains(errors),
             ended->errors.constData());
}
