#include <memory>
#include <thread>

#include <QtTest>

#include <Vesmar/testerinformation.h>

#include "context/replaceowned.h"

using Vesmar::TesterInformation;

namespace
{

void ReplaceOnAnotherThread(Vesmar::ThreadSafeProperty<TesterInformation*>& cell, TesterInformation* object,
                            QObject* reader)
{
    std::thread writer([&] { Vesmar::ReplaceOwned(cell, object, reader); });
    writer.join();
}

} // namespace

class TestReplaceOwned : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void PublishesBeforeItDeletes();
    void DeletesAtOnceOnTheReadersOwnThread();
    void DeletesAtOnceWithoutAReader();
    void DeletesOnTheReadersThreadWhenAnotherWrites();
    void DeletesEvenWhenTheReaderGoesFirst();
    void ReplacesNothing();

private:
    Vesmar::ThreadSafeProperty<TesterInformation*> _cell;
    std::unique_ptr<QObject> _reader;
    std::unique_ptr<TesterInformation> _next;
    QStringList _events;
    std::thread::id _destroyedOn;
};

void TestReplaceOwned::init()
{
    _reader = std::make_unique<QObject>();
    _next = std::make_unique<TesterInformation>(nullptr);
    auto* previous = new TesterInformation(nullptr);
    _cell.Set(previous);
    _events.clear();
    _destroyedOn = {};
    connect(
        previous, &QObject::destroyed, this,
        [this] {
            _destroyedOn = std::this_thread::get_id();
            _events.append(QStringLiteral("destroyed"));
        },
        Qt::DirectConnection);
    connect(
        &_cell, &Vesmar::Notifible::ValueChanged, _reader.get(),
        [this] { _events.append(QStringLiteral("changed")); }, Qt::DirectConnection);
}

void TestReplaceOwned::cleanup()
{
    _cell.Set(nullptr);
}

void TestReplaceOwned::PublishesBeforeItDeletes()
{
    Vesmar::ReplaceOwned(_cell, _next.get(), _reader.get());
    QCOMPARE(_cell.Get(), _next.get());
    QCOMPARE(_events, QStringList({QStringLiteral("changed"), QStringLiteral("destroyed")}));
}

void TestReplaceOwned::DeletesAtOnceOnTheReadersOwnThread()
{
    Vesmar::ReplaceOwned(_cell, _next.get(), _reader.get());
    QVERIFY(_destroyedOn == std::this_thread::get_id());
}

void TestReplaceOwned::DeletesAtOnceWithoutAReader()
{
    ReplaceOnAnotherThread(_cell, _next.get(), nullptr);
    QVERIFY(_events.contains(QStringLiteral("destroyed")));
    QVERIFY(_destroyedOn != std::this_thread::get_id());
}

void TestReplaceOwned::DeletesOnTheReadersThreadWhenAnotherWrites()
{
    ReplaceOnAnotherThread(_cell, _next.get(), _reader.get());
    QCOMPARE(_events, QStringList(QStringLiteral("changed")));
    QCOMPARE(_cell.Get(), _next.get());
    QTRY_COMPARE(_events.size(), 2);
    QVERIFY(_destroyedOn == std::this_thread::get_id());
}

void TestReplaceOwned::DeletesEvenWhenTheReaderGoesFirst()
{
    ReplaceOnAnotherThread(_cell, _next.get(), _reader.get());
    QCOMPARE(_events, QStringList(QStringLiteral("changed")));
    _reader.reset();
    QCOMPARE(_events.size(), 2);
}

void TestReplaceOwned::ReplacesNothing()
{
    const std::unique_ptr<TesterInformation> previous(_cell.Get());
    _cell.Set(nullptr);
    Vesmar::ReplaceOwned(_cell, _next.get(), _reader.get());
    QCOMPARE(_cell.Get(), _next.get());
    QCOMPARE(_events.count(QStringLiteral("destroyed")), 0);
}

QTEST_GUILESS_MAIN(TestReplaceOwned)
#include "tst_replaceowned.moc"
