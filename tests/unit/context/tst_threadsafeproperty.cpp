#include <atomic>
#include <cstdlib>
#include <memory>
#include <thread>
#include <type_traits>
#include <vector>

#include <QDateTime>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementresults.h>
#include <Vesmar/measurementsettings.h>
#include <Vesmar/measurementstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/operationstate.h>
#include <Vesmar/starttestresult.h>
#include <Vesmar/testerinformation.h>

#include "context/threadsafeproperty.h"

using Vesmar::Notifible;
using Vesmar::ThreadSafeProperty;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VESMAR_ALLOCATOR_IS_THE_SANITIZERS
#else

namespace
{

std::atomic<int> allocations{0};

} // namespace

// Counts every allocation of the program: those of `new` and those of Qt's containers both come here.
extern "C" {

void* __libc_malloc(std::size_t size); // NOLINT(bugprone-reserved-identifier): the C library's own name.

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept
{
    ++allocations;
    return __libc_malloc(size);
}

} // extern "C"

#endif

class TestThreadSafeProperty : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AnnouncesThroughOneSignal();
    void HasNoMetaDataOfItsOwn();
    void BeginsValueInitialised();
    void HasAnOptionalParent();
    void CannotBeCopied();
    void SetStoresAndAnnouncesAChange();
    void SetOfThePresentValueAnnouncesNothing();
    void SetOfThePresentValueAllocatesNothing();
    void APointerCellNeverOwns();
    void PointersAreComparedByAddress();
    void OneNullDateOverAnotherAnnouncesNothing();
    void AValidDateOverANullOneIsAnnounced();
    void DatesAreComparedByTheirInstant();
    void AReceiverConnectedDirectlyReadsTheNewValue();
    void AReceiverConnectedDirectlyMayWrite();
    void AReceiverRunsOnTheWritingThread();
    void AReceiverOfAnotherThreadReadsTheLatestValue();
    void EveryWritersChangeIsAnnouncedOnce();
    void OfManyWritersOfOneValueOneAnnouncesIt();
    void TestAndClearTellsAndAnnouncesOnlyAChange();
    void OnlyOneOfManyThreadsClearsARequest();
};

void TestThreadSafeProperty::AnnouncesThroughOneSignal()
{
    const QMetaObject& metaData = Notifible::staticMetaObject;
    QCOMPARE(metaData.className(), "Vesmar::Notifible");
    QCOMPARE(metaData.methodCount() - metaData.methodOffset(), 1);
    QCOMPARE(metaData.method(metaData.methodOffset()).methodSignature(), QByteArray("ValueChanged()"));
    QCOMPARE(metaData.method(metaData.methodOffset()).methodType(), QMetaMethod::Signal);
    QCOMPARE(metaData.propertyCount(), QObject::staticMetaObject.propertyCount());
}

void TestThreadSafeProperty::HasNoMetaDataOfItsOwn()
{
    const ThreadSafeProperty<int> cell;
    QCOMPARE(cell.metaObject(), &Notifible::staticMetaObject);
}

void TestThreadSafeProperty::BeginsValueInitialised()
{
    QCOMPARE(ThreadSafeProperty<int>().Get(), 0);
    QCOMPARE(ThreadSafeProperty<bool>().Get(), false);
    QVERIFY(ThreadSafeProperty<QDateTime>().Get().isNull());
    QVERIFY(ThreadSafeProperty<Vesmar::TesterInformation*>().Get() == nullptr);
    QVERIFY(ThreadSafeProperty<Vesmar::MeasurementResults*>().Get() == nullptr);
    QVERIFY(ThreadSafeProperty<Vesmar::MeasurementSettings*>().Get() == nullptr);
    QCOMPARE(static_cast<int>(ThreadSafeProperty<Vesmar::OperationMode>().Get()), 0);
    QCOMPARE(static_cast<int>(ThreadSafeProperty<Vesmar::MeasurementType>().Get()), 0);
    QCOMPARE(static_cast<int>(ThreadSafeProperty<Vesmar::StartTestResult>().Get()), 0);
    QCOMPARE(static_cast<int>(ThreadSafeProperty<Vesmar::FunctionState>().Get()), 0);
    QCOMPARE(static_cast<int>(ThreadSafeProperty<Vesmar::Error>().Get()), 0);
    QCOMPARE(static_cast<int>(ThreadSafeProperty<Vesmar::OperationState>().Get()), 0);
    QCOMPARE(static_cast<int>(ThreadSafeProperty<Vesmar::MeasurementState>().Get()), 0);
}

void TestThreadSafeProperty::HasAnOptionalParent()
{
    QObject parent;
    const ThreadSafeProperty<int> child(&parent);
    const ThreadSafeProperty<int> orphan;
    QCOMPARE(child.parent(), &parent);
    QVERIFY(orphan.parent() == nullptr);
}

void TestThreadSafeProperty::CannotBeCopied()
{
    QVERIFY(!std::is_copy_constructible_v<ThreadSafeProperty<int>>);
    QVERIFY(!std::is_copy_assignable_v<ThreadSafeProperty<int>>);
}

void TestThreadSafeProperty::SetStoresAndAnnouncesAChange()
{
    ThreadSafeProperty<int> cell;
    QSignalSpy changes(&cell, &Notifible::ValueChanged);
    cell.Set(7);
    QCOMPARE(cell.Get(), 7);
    QCOMPARE(changes.count(), 1);
    cell.Set(-7);
    QCOMPARE(cell.Get(), -7);
    QCOMPARE(changes.count(), 2);
}

void TestThreadSafeProperty::SetOfThePresentValueAnnouncesNothing()
{
    ThreadSafeProperty<int> cell;
    QSignalSpy changes(&cell, &Notifible::ValueChanged);
    cell.Set(0);
    QCOMPARE(changes.count(), 0);
    cell.Set(7);
    cell.Set(7);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(cell.Get(), 7);
}

void TestThreadSafeProperty::SetOfThePresentValueAllocatesNothing()
{
#ifdef VESMAR_ALLOCATOR_IS_THE_SANITIZERS
    QSKIP("The sanitizer has the allocator to itself.");
#else
    ThreadSafeProperty<int> number;
    ThreadSafeProperty<QDateTime> date;
    Vesmar::TesterInformation information(nullptr);
    ThreadSafeProperty<Vesmar::TesterInformation*> pointer;
    const QDateTime present(QDate(2024, 3, 7), QTime(14, 5, 9));
    QSignalSpy changes(&number, &Notifible::ValueChanged);
    number.Set(7);
    date.Set(present);
    pointer.Set(&information);
    QCOMPARE(changes.count(), 1);

    const int before = allocations;
    number.Set(7);
    date.Set(present);
    pointer.Set(&information);
    const int after = allocations;
    const auto counted = std::make_unique<int>(1);
    const int afterNew = allocations;

    QCOMPARE(after, before);
    QVERIFY(afterNew > after);
    QCOMPARE(changes.count(), *counted);
#endif
}

void TestThreadSafeProperty::APointerCellNeverOwns()
{
    Vesmar::TesterInformation first(nullptr);
    Vesmar::TesterInformation second(nullptr);
    QSignalSpy firstDestroyed(&first, &QObject::destroyed);
    QSignalSpy secondDestroyed(&second, &QObject::destroyed);
    {
        ThreadSafeProperty<Vesmar::TesterInformation*> cell;
        cell.Set(&first);
        QSignalSpy changes(&cell, &Notifible::ValueChanged);
        cell.Set(&second);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(cell.Get(), &second);
    }
    QCOMPARE(firstDestroyed.count(), 0);
    QCOMPARE(secondDestroyed.count(), 0);
    QCOMPARE(first.DeviceName, second.DeviceName);
}

void TestThreadSafeProperty::PointersAreComparedByAddress()
{
    Vesmar::TesterInformation information(nullptr);
    Vesmar::TesterInformation equal(nullptr);
    ThreadSafeProperty<Vesmar::TesterInformation*> cell;
    cell.Set(&information);
    QSignalSpy changes(&cell, &Notifible::ValueChanged);
    cell.Set(&information);
    QCOMPARE(changes.count(), 0);
    cell.Set(&equal);
    QCOMPARE(changes.count(), 1);
}

void TestThreadSafeProperty::OneNullDateOverAnotherAnnouncesNothing()
{
    ThreadSafeProperty<QDateTime> cell;
    QSignalSpy changes(&cell, &Notifible::ValueChanged);
    cell.Set(QDateTime());
    QCOMPARE(changes.count(), 0);
}

void TestThreadSafeProperty::AValidDateOverANullOneIsAnnounced()
{
    const QDateTime date(QDate(2024, 3, 7), QTime(14, 5, 9));
    ThreadSafeProperty<QDateTime> cell;
    QSignalSpy changes(&cell, &Notifible::ValueChanged);
    cell.Set(date);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(cell.Get(), date);
    cell.Set(QDateTime());
    QCOMPARE(changes.count(), 2);
    QVERIFY(cell.Get().isNull());
}

void TestThreadSafeProperty::DatesAreComparedByTheirInstant()
{
    ThreadSafeProperty<QDateTime> cell;
    cell.Set(QDateTime(QDate(2024, 3, 7), QTime(12, 0), Qt::UTC));
    QSignalSpy changes(&cell, &Notifible::ValueChanged);
    cell.Set(QDateTime(QDate(2024, 3, 7), QTime(14, 0), Qt::OffsetFromUTC, 2 * 3600));
    QCOMPARE(changes.count(), 0);
    QCOMPARE(cell.Get().timeSpec(), Qt::UTC);
    cell.Set(QDateTime(QDate(2024, 3, 7), QTime(12, 0), Qt::OffsetFromUTC, 2 * 3600));
    QCOMPARE(changes.count(), 1);
}

void TestThreadSafeProperty::AReceiverConnectedDirectlyReadsTheNewValue()
{
    ThreadSafeProperty<int> cell;
    int seen = 0;
    connect(
        &cell, &Notifible::ValueChanged, this, [&] { seen = cell.Get(); }, Qt::DirectConnection);
    cell.Set(7);
    QCOMPARE(seen, 7);
}

void TestThreadSafeProperty::AReceiverConnectedDirectlyMayWrite()
{
    ThreadSafeProperty<int> cell;
    QSignalSpy changes(&cell, &Notifible::ValueChanged);
    connect(
        &cell, &Notifible::ValueChanged, this, [&] { cell.Set(8); }, Qt::DirectConnection);
    cell.Set(7);
    QCOMPARE(cell.Get(), 8);
    QCOMPARE(changes.count(), 2);
}

void TestThreadSafeProperty::AReceiverRunsOnTheWritingThread()
{
    ThreadSafeProperty<int> cell;
    std::thread::id announcedOn;
    connect(
        &cell, &Notifible::ValueChanged, this, [&] { announcedOn = std::this_thread::get_id(); },
        Qt::DirectConnection);
    std::thread writer([&] { cell.Set(7); });
    const std::thread::id writtenOn = writer.get_id();
    writer.join();
    QVERIFY(announcedOn == writtenOn);
    QCOMPARE(cell.Get(), 7);
}

void TestThreadSafeProperty::AReceiverOfAnotherThreadReadsTheLatestValue()
{
    ThreadSafeProperty<int> cell;
    std::vector<int> seen;
    connect(&cell, &Notifible::ValueChanged, this, [&] { seen.push_back(cell.Get()); });
    std::thread writer([&] {
        cell.Set(1);
        cell.Set(2);
    });
    writer.join();
    QVERIFY(seen.empty());
    QTRY_COMPARE(seen.size(), std::size_t(2));
    QCOMPARE(seen, std::vector<int>({2, 2}));
}

void TestThreadSafeProperty::EveryWritersChangeIsAnnouncedOnce()
{
    constexpr int WriterCount = 4;
    constexpr int Changes = 2000;
    ThreadSafeProperty<int> cell;
    std::atomic<int> announced{0};
    connect(
        &cell, &Notifible::ValueChanged, this, [&] { ++announced; }, Qt::DirectConnection);
    std::vector<std::thread> writers;
    for (int writer = 0; writer < WriterCount; ++writer) {
        writers.emplace_back([&cell, writer] {
            for (int change = 1; change <= Changes; ++change) {
                cell.Set(writer * Changes + change);
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    QCOMPARE(announced.load(), WriterCount * Changes);
}

void TestThreadSafeProperty::OfManyWritersOfOneValueOneAnnouncesIt()
{
    ThreadSafeProperty<int> cell;
    std::atomic<int> announced{0};
    connect(
        &cell, &Notifible::ValueChanged, this, [&] { ++announced; }, Qt::DirectConnection);
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 8; ++writer) {
        writers.emplace_back([&cell] { cell.Set(7); });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    QCOMPARE(announced.load(), 1);
}

void TestThreadSafeProperty::TestAndClearTellsAndAnnouncesOnlyAChange()
{
    ThreadSafeProperty<bool> cell;
    cell.Set(true);
    int announced = 0;
    bool seen = true;
    connect(
        &cell, &Notifible::ValueChanged, this,
        [&] {
            ++announced;
            seen = cell.Get();
        },
        Qt::DirectConnection);
    QCOMPARE(cell.TestAndClear(), true);
    QCOMPARE(cell.Get(), false);
    QCOMPARE(announced, 1);
    QCOMPARE(seen, false);
    QCOMPARE(cell.TestAndClear(), false);
    QCOMPARE(announced, 1);
}

void TestThreadSafeProperty::OnlyOneOfManyThreadsClearsARequest()
{
    ThreadSafeProperty<bool> cell;
    cell.Set(true);
    std::atomic<int> cleared{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&] { cleared += cell.TestAndClear() ? 1 : 0; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(cleared.load(), 1);
}

QTEST_GUILESS_MAIN(TestThreadSafeProperty)
#include "tst_threadsafeproperty.moc"
