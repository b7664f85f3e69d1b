#pragma once

#include <random>

#include <QtTest>

#include "simulator/text/jsonerror.h"
#include "support/textmutator.h"

/// What there is of JSON, and what there is not.
inline const QByteArrayList JsonWords{"{",
                                      "}",
                                      "[",
                                      "]",
                                      ",",
                                      ":",
                                      "\"",
                                      "\\",
                                      "\n",
                                      QByteArray(1, '\0'),
                                      "null",
                                      "-1",
                                      "1e308",
                                      "1e999",
                                      "99999999999999999999",
                                      "0.5",
                                      "\\u0000",
                                      "\xFF",
                                      "\xEF\xBB\xBF",
                                      "[[[[[[[[",
                                      "{\"a\":",
                                      "true"};

/// Empty when an error tells its place inside the text, in one line that is not too long.
inline QByteArray ObjectionTo(const Simulator::JsonError& error, const QByteArray& text)
{
    const QByteArray sentence(error.what());
    const bool hasPlace = error.Line() >= 1 && error.Line() <= text.count('\n') + 1 &&
                          sentence.startsWith("line " + QByteArray::number(error.Line()) + ": ");
    const bool isShort = sentence.size() < 1500 && !sentence.contains('\n') && sentence.size() > 15;
    return hasPlace && isShort ? QByteArray() : "the error \"" + sentence + '"';
}

/// The same texts for everything that is read from JSON.
namespace JsonFuzz
{

/// What a text is read into is within its limits, or the error tells its place: empty then. Counts those that
/// are valid.
using Objection = QByteArray (*)(const QByteArray& text, int* validCount);

inline void VerifySeeds(const QByteArrayList& seeds, Objection objectionTo)
{
    for (const QByteArray& seed : seeds) {
        int validCount = 0;
        QCOMPARE(objectionTo(seed, &validCount), QByteArray());
        QCOMPARE(validCount, 1);
    }
}

inline void AddRows(const QByteArrayList& seeds)
{
    QTest::addColumn<QByteArray>("text");
    for (int i = 0; i < seeds.size(); ++i) {
        QTest::addRow("file %d", i) << seeds.at(i);
    }
}

inline void VerifyMutations(const QByteArray& text, const QByteArrayList& words, Objection objectionTo)
{
    constexpr int Inputs = 4000;
    int validCount = 0;
    for (int i = 0; i < Inputs; ++i) {
        const QByteArray mutated = TextMutator(static_cast<quint32>(i), words).Mutated(text);
        const QByteArray objection = objectionTo(mutated, &validCount);
        QVERIFY2(objection.isEmpty(), (objection + " for " + mutated).constData());
    }
    // Both ways are taken often, or the mutations are no good.
    QVERIFY2(validCount > Inputs / 100 && validCount < Inputs / 2,
             QByteArray::number(validCount).constData());
}

inline void VerifyBeginnings(const QByteArrayList& seeds, Objection objectionTo)
{
    for (const QByteArray& seed : seeds) {
        int validCount = 0;
        for (int size = 0; size < seed.size(); ++size) {
            const QByteArray objection = objectionTo(seed.left(size), &validCount);
            QVERIFY2(objection.isEmpty(), (objection + " for " + seed.left(size)).constData());
        }
        QCOMPARE(validCount, 0);
    }
}

inline void VerifyNoise(Objection objectionTo)
{
    std::mt19937 random(1);
    int validCount = 0;
    for (int i = 0; i < 1000; ++i) {
        QByteArray noise;
        const int size = static_cast<int>(random() % 300);
        for (int j = 0; j < size; ++j) {
            noise.append(static_cast<char>(random() & 0xFF));
        }
        QCOMPARE(objectionTo(noise, &validCount), QByteArray());
    }
    QCOMPARE(validCount, 0);
}

} // namespace JsonFuzz
