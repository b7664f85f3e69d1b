#pragma once

#include <QByteArray>
#include <QString>

/// The JSON of the program is checked against docs/events.schema.json.

/// What is wrong with one line, without its end; empty where nothing is.
QString ProblemOfEvent(const QByteArray& line);

/// The same for all that a run has written with `--json`, and for its end: the last line is the only result,
/// and it names the exit status. A run of bad usage may write nothing.
QString ProblemOfRun(const QByteArray& output, int exitStatus);

/// Lets the present test fail where there is a problem.
void CheckRun(const QByteArray& output, int exitStatus);
