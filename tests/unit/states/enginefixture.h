#pragma once

#include <chrono>
#include <functional>

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QStringList>
#include <QTest>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "link/transciever.h"
#include "support/logcapture.h"
#include "support/scriptedpeer.h"
#include "support/wire.h"
#include "unit/states/celllog.h"

/// The commands that have arrived, a letter each.
inline QByteArray CommandsOf(const ScriptedPeer& peer)
{
    QByteArray letters;
    for (const QByteArray& request : peer.RequestBytes()) {
        letters.append(request.at(0));
    }
    return letters;
}

/// Everything below the states, wired together, with an instrument at the other end of the open line and
/// every cell watched.
class Engine
{
public:
    Engine() { transciever.Open(); }

    /// Answers by the request's command letter; silence to all others.
    void AnswerByCommand(const QMap<char, QByteArray>& answers)
    {
        peer.Answer([answers](const QByteArray& request) { return answers.value(request.at(0)); });
    }

    /// Time from the arrival of a request to that of the next one.
    std::chrono::milliseconds GapAfter(int request) const
    {
        const QList<ScriptedPeer::Request> requests = peer.Requests();
        return std::chrono::duration_cast<std::chrono::milliseconds>(requests.at(request + 1).received -
                                                                     requests.at(request).received);
    }

    QByteArray Commands() const { return CommandsOf(peer); }

    ScriptedPeer peer; // First: the line is its pseudo-terminal.
    Vesmar::CRC16 crc16{nullptr};
    Vesmar::Transciever transciever{&crc16, nullptr};
    Vesmar::CommandBuilder commandBuilder{&crc16, nullptr};
    Vesmar::ResponseParser responseParser{&crc16, nullptr};
    Vesmar::StateMachineContext context{&crc16, &transciever, &commandBuilder, &responseParser, nullptr};
    LogCapture log;
    CellLog cells{context};
};

/// The line in which a state announces what it does.
inline QString Banner(const char* text)
{
    return QLatin1String("\033[0;34m<<<") + QString(30, QLatin1Char(' ')) + QLatin1String(text) +
           QLatin1String("\033[0m");
}

/// All such lines, out of everything that was logged.
inline QStringList Banners(const LogCapture& log)
{
    return log.Texts().filter(QStringLiteral("\033[0;34m<<<"));
}

/// A line in red.
inline QString Red(const QString& text)
{
    return QLatin1String("\033[0;31m") + text + QLatin1String("\033[0m");
}

/// Calls the hook and compares all that comes of it on the log, in the cells and on the line: one banner, as
/// a warning of the default category, and these changes of cells.
inline void CompareHook(Engine& engine, const std::function<void()>& hook, const char* banner,
                        const QStringList& changes = {})
{
    engine.log.Clear();
    engine.cells.Clear();
    hook();
    QCOMPARE(engine.log.Texts(), QStringList{Banner(banner)});
    QCOMPARE(engine.log.Messages().constFirst().type, QtWarningMsg);
    QCOMPARE(engine.log.Messages().constFirst().category, QByteArray("default"));
    QCOMPARE(engine.cells.Changes(), changes);
    QCOMPARE(engine.peer.RequestBytes(), QList<QByteArray>{});
}
