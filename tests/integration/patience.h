#pragma once

/// How long a test waits for what is sure to happen on a machine that has much else to do. In milliseconds.
constexpr int Patience = 90000;
