#pragma once

#include <QCoreApplication>
#include <QtTest>

#include <csignal>

/// Runs a test that sends signals to its own process. The signals are blocked before there is any second
/// thread, Qt Test's included, so that they wait for the thread that watches for them.
template <typename Test>
int RunSignalTest(int argumentCount, char** arguments)
{
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGINT);
    ::sigaddset(&signals, SIGTERM);
    ::sigaddset(&signals, SIGHUP);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    const QCoreApplication application(argumentCount, arguments);
    Test test;
    return QTest::qExec(&test, argumentCount, arguments);
}
