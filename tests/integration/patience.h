#pragma once

#include <QtTest>

/// How long a test waits for what is sure to happen on a machine that has much else to do. In milliseconds.
constexpr int Patience = 90000;

/// Waits until the value is as it shall be, and returns the last one. Qt's macros look at it again after
/// that, when it may have changed.
template <typename Read, typename IsRight>
auto AwaitedValue(const Read& read, const IsRight& isRight)
{
    constexpr int Step = 50;
    auto value = read();
    for (int waited = 0; waited < Patience && !isRight(value); waited += Step) {
        QTest::qWait(Step);
        value = read();
    }
    return value;
}

#define AWAIT(condition)                                                                                     \
    do {                                                                                                     \
        const bool awaited =                                                                                 \
            AwaitedValue([&] { return static_cast<bool>(condition); }, [](bool holds) { return holds; });    \
        if (!QTest::qVerify(awaited, #condition, "", __FILE__, __LINE__)) {                                  \
            return;                                                                                          \
        }                                                                                                    \
    } while (false)
#define AWAIT_EQUAL(actual, expected)                                                                        \
    do {                                                                                                     \
        const auto awaited =                                                                                 \
            AwaitedValue([&] { return actual; }, [&](const auto& value) { return value == (expected); });    \
        if (!QTest::qCompare(awaited, expected, #actual, #expected, __FILE__, __LINE__)) {                   \
            return;                                                                                          \
        }                                                                                                    \
    } while (false)
