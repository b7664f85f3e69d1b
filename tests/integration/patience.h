#pragma once

#include <QtTest>

/// How long a test waits for what is sure to happen on a machine that has much else to do. In milliseconds.
constexpr int Patience = 90000;

#define AWAIT(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, Patience)
#define AWAIT_EQUAL(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, Patience)
