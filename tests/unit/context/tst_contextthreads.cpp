#include <atomic>
#include <thread>

#include <QtTest>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "link/transciever.h"

using namespace Vesmar;

class TestContextThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void UpdateStaysInOnePieceBetweenTwoThreads();
};

void TestContextThreads::UpdateStaysInOnePieceBetweenTwoThreads()
{
    CRC16 crc16(nullptr);
    Transciever transciever(&crc16, nullptr);
    CommandBuilder commandBuilder(&crc16, nullptr);
    ResponseParser responseParser(&crc16, nullptr);
    StateMachineContext context(&crc16, &transciever, &commandBuilder, &responseParser, nullptr);
    std::atomic<bool> isWriting{true};
    std::thread application([&context, &isWriting] {
        for (int size = 1; size <= 20000; ++size) {
            context.SetUpdate(QByteArray(size % 512, 'i'), QByteArray(size % 512, 'c'));
        }
        isWriting = false;
    });
    int reads = 0;
    int mixed = 0;
    do {
        const FirmwareUpdate update = context.GetUpdate();
        const int size = update.image.size();
        const bool isOne =
            update.image == QByteArray(size, 'i') && update.confirmation == QByteArray(size, 'c');
        mixed += isOne ? 0 : 1;
        ++reads;
    } while (isWriting);
    application.join();
    QVERIFY2(mixed == 0, qPrintable(QStringLiteral("%1 of %2 reads").arg(mixed).arg(reads)));
}

QTEST_GUILESS_MAIN(TestContextThreads)
#include "tst_contextthreads.moc"
