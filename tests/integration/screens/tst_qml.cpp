#include <QtQuickTest>

QUICK_TEST_MAIN(qml)
