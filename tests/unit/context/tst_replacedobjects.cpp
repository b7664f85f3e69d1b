#include <functional>
#include <memory>
#include <thread>

#include <QtTest>

#include <Vesmar/testerinformation.h>

#include "context/replacedobjects.h"
#include "context/replaceowned.h"

using Vesmar::ReplacedObjects;
using Vesmar::TesterInformation;

namespace
{

void OnAnotherThread(const std::function<void()>& call)
{
    std::thread(call).join();
}

} // namespace

class TestReplacedObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _replaced = std::make_unique<ReplacedObjects>();
        _object = std::make_unique<TesterInformation>(nullptr);
        _deletions = 0;
        _deletedOn = {};
        connect(
            _object.get(), &QObject::destroyed, this,
            [this] {
                _deletedOn = std::this_thread::get_id();
                ++_deletions;
            },
            Qt::DirectConnection);
    }

    void CellPublishesTheNextObjectAndHandsBackThePreviousOne()
    {
        TesterInformation next(nullptr);
        Vesmar::ThreadSafeProperty<TesterInformation*> cell;
        cell.Set(_object.get());
        const QSignalSpy changes(&cell, &Vesmar::Notifible::ValueChanged);
        const std::unique_ptr<TesterInformation> previous = Vesmar::ReplaceOwned(cell, &next);
        QCOMPARE(previous.get(), _object.release());
        QCOMPARE(cell.Get(), &next);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(_deletions, 0);
    }

    void CellThatWasEmptyHandsBackNothing()
    {
        Vesmar::ThreadSafeProperty<TesterInformation*> cell;
        QVERIFY(Vesmar::ReplaceOwned(cell, _object.get()) == nullptr);
        QCOMPARE(cell.Get(), _object.get());
    }

    void ReleasedOnItsOwnThreadItIsDeletedAtOnce()
    {
        _replaced->Release(std::move(_object));
        QCOMPARE(_deletions, 1);
    }

    void ReleasedOnAnotherThreadItIsDeletedHereBetweenTwoEvents()
    {
        OnAnotherThread([this] { _replaced->Release(std::move(_object)); });
        QCOMPARE(_deletions, 0);
        QTRY_COMPARE(_deletions, 1);
        QVERIFY(_deletedOn == std::this_thread::get_id());
    }

    void HeldItLivesUntilTheWorkerLetsGoAndIsDeletedHere()
    {
        _replaced->Hold(std::move(_object));
        QCoreApplication::processEvents();
        QCOMPARE(_deletions, 0);
        OnAnotherThread([this] { _replaced->ReleaseHeld(); });
        QCOMPARE(_deletions, 0);
        QTRY_COMPARE(_deletions, 1);
        QVERIFY(_deletedOn == std::this_thread::get_id());
    }

    void HeldItIsDeletedAtOnceWhenThisThreadLetsGo()
    {
        _replaced->Hold(std::move(_object));
        _replaced->ReleaseHeld();
        QCOMPARE(_deletions, 1);
    }

    void WhatIsLeftIsDeletedWithTheOwner()
    {
        OnAnotherThread([this] { _replaced->Release(std::move(_object)); });
        _replaced->Hold(std::make_unique<TesterInformation>(nullptr));
        QCOMPARE(_deletions, 0);
        _replaced.reset();
        QCOMPARE(_deletions, 1);
    }

private:
    std::unique_ptr<ReplacedObjects> _replaced;
    std::unique_ptr<TesterInformation> _object;
    int _deletions = 0;
    std::thread::id _deletedOn;
};

QTEST_GUILESS_MAIN(TestReplacedObjects)
#include "tst_replacedobjects.moc"
