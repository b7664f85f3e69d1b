#pragma once

#include <chrono>
#include <initializer_list>

#include <QByteArray>
#include <QByteArrayList>
#include <QDateTime>
#include <QtTest>

#include "simulator/model/instrumentmodel.h"
#include "support/wire.h"

/// A request, its time in milliseconds after the start, and its answer.
struct TimedExchange {
    int time;
    QByteArray request;
    QByteArray answer;
};

/// The model of an instrument, and a program that asks it. Times are milliseconds after the start.
class AskedModel
{
public:
    static Simulator::ModelOptions Options()
    {
        Simulator::ModelOptions options;
        options.date = QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC);
        return options;
    }

    explicit AskedModel(const Simulator::ModelOptions& options = Options()) : model(options, At(0)) {}
    explicit AskedModel(Simulator::Scenario scenario, int number = 1) : AskedModel()
    {
        model.SetScenario(scenario, number);
    }

    static Simulator::TimePoint At(int time)
    {
        return Simulator::TimePoint() + std::chrono::milliseconds(time);
    }

    QByteArray Ask(const QByteArray& request, int time = 0) { return model.Answer(request, At(time)); }

    /// Sends these requests. The test fails at the first other answer.
    void Converse(std::initializer_list<TimedExchange> exchanges)
    {
        for (const TimedExchange& exchange : exchanges) {
            const QByteArray answer = Ask(exchange.request, exchange.time);
            QVERIFY2(answer == exchange.answer,
                     ("at " + QByteArray::number(exchange.time) + " ms " + exchange.request.toHex() +
                      " was answered by " + answer.toHex() + ", not by " + exchange.answer.toHex())
                         .constData());
        }
    }

    /// Returns what the model has sent unasked since the last call.
    QByteArrayList FramesUntil(int time)
    {
        model.Advance(At(time));
        QByteArrayList frames;
        for (const Simulator::FramePiece& piece : model.CollectFrames()) {
            frames.append(piece.bytes);
        }
        return frames;
    }

    Simulator::InstrumentModel model;
};

/// Returns the data, given in hexadecimal, and its checksum.
inline QByteArray Sealed(const char* data)
{
    return WithChecksum(Wire::Bytes(data));
}
