#include <QtTest>

#include "simulator/model/rcdtest.h"
#include "simulator/wire/frames.h"

using Simulator::FramePiece;
using Simulator::RcdKind;
using Simulator::RcdPreparation;
using Simulator::RcdTest;
using Simulator::RcdTimings;
using Simulator::Scenario;
using Simulator::TimePoint;
using std::chrono::microseconds;
using std::chrono::milliseconds;

namespace
{

// Preparing takes 150 ms; a run has a status frame every 200 ms and is over after 900 ms, a clean-up after
// 700.
constexpr milliseconds PreparedAt{150};
constexpr milliseconds StartedAt{200};
constexpr milliseconds TrippedAt{1100};
constexpr milliseconds CleanedAt{900};

constexpr RcdPreparation UbRe{10, RcdKind::UbRe};
constexpr RcdPreparation IaTa{10, RcdKind::IaTa};
constexpr RcdPreparation Iec{11, RcdKind::IaTa};
constexpr RcdPreparation CleanUp{11, RcdKind::CleanUp};

const QByteArray Running = QByteArray::fromHex("0af73370");
const QByteArray IecRunning = QByteArray::fromHex("0bf70243");

TimePoint At(milliseconds time)
{
    return TimePoint() + time;
}

/// A test at the instrument, and what it has sent.
class WatchedTest
{
public:
    explicit WatchedTest(Scenario scenario = Scenario::None, int number = 0)
    {
        _test.SetScenario(scenario, number);
    }

    RcdTest* operator->() { return &_test; }

    /// The two bytes of the status, in hexadecimal.
    QByteArray StatusAt(milliseconds time)
    {
        _test.Advance(At(time));
        return _test.Status().Data().toHex();
    }

    /// The frames that have been sent since the last call, pieces as they are.
    QByteArrayList FramesUntil(milliseconds time)
    {
        _test.Advance(At(time));
        QByteArrayList frames;
        for (const FramePiece& piece : _test.TakeFrames()) {
            frames.append(piece.bytes);
        }
        return frames;
    }

    /// Prepares at 0 ms and starts at 200 ms.
    bool BringToRun(const RcdPreparation& preparation)
    {
        if (!_test.Prepare(preparation, At(milliseconds(0)))) {
            return false;
        }
        _test.Advance(At(StartedAt));
        return _test.Start(At(StartedAt));
    }

    /// What the check has found, in hexadecimal; nothing when the answer gets lost.
    QByteArray ReadCheckObject()
    {
        const std::optional<QByteArray> data = _test.ReadCheckObject();
        return data ? data->toHex() : QByteArray();
    }

private:
    RcdTest _test{RcdTimings(), 1};
};

QByteArray CheckObject(const char* code)
{
    return QByteArray(code) + QByteArray(46, '0');
}

bool IsResult(const QByteArray& frame)
{
    return frame.size() == 26 && Simulator::IsIntact(frame) && frame.mid(8, 16) == QByteArray(16, '\0');
}

} // namespace

class TestRcdTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NothingIsSelectedAtFirst();
    void Prepares();
    void PreparesAgain();
    void UbReTellsProgressAndResult();
    void IaTaTellsProgressAndResult();
    void IecTellsProgressAndResult();
    void CleanUpHasNoResult();
    void StartWhenNothingIsPrepared();
    void NoPreparationDuringARun();
    void StopEndsItAnyTime_data();
    void StopEndsItAnyTime();
    void StopLeavesNothingToSend();
    void EndsForAReason();
    void LineIsQuietBeforeAFrame();
    void TellsWhenItGoesOn();
    void TellsItsChanges();
    void RefusesPrepare();
    void PrepareError();
    void NeverPrepared();
    void StartError();
    void EndsWithoutResult();
    void OtherFunction();
    void CleanCheck();
    void BadCheck();
    void CheckOnce();
    void CheckLost();
    void CheckIsForgottenByAPreparation();
    void ErrorAllTheTime();
    void ErrorOnce();
    void Silent();
    void SilentOnce();
    void SilentStartAfterACheck();
    void NoTa();
    void Glued();
    void Pieces();
    void Garbage();
};

void TestRcdTest::NothingIsSelectedAtFirst()
{
    WatchedTest test;
    QVERIFY(!test->IsSelected());
    QVERIFY(!test->IsUnderWay());
    QVERIFY(!test->NextChangeAt().has_value());
    QCOMPARE(test.FramesUntil(milliseconds(5000)), QByteArrayList());
    test->Stop();
    QCOMPARE(test->TakeChanges(), QStringList());
}

void TestRcdTest::Prepares()
{
    WatchedTest test;
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QVERIFY(test->IsSelected());
    QCOMPARE(test.StatusAt(milliseconds(149)), QByteArray("0af1"));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("0af4"));
    QCOMPARE(test.StatusAt(milliseconds(60000)), QByteArray("0af4"));
    QCOMPARE(test.ReadCheckObject(), CheckObject("00")); // nothing to be read, and nothing comes of it
    QCOMPARE(test.FramesUntil(milliseconds(60000)), QByteArrayList());
    QCOMPARE(test.StatusAt(milliseconds(60000)), QByteArray("0af4"));
}

void TestRcdTest::PreparesAgain()
{
    WatchedTest test;
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QVERIFY(test->Prepare(Iec, At(milliseconds(100)))); // while preparing
    QCOMPARE(test.StatusAt(milliseconds(249)), QByteArray("0bf1"));
    QCOMPARE(test.StatusAt(milliseconds(250)), QByteArray("0bf4"));
    QVERIFY(test->Prepare(Iec, At(milliseconds(300)))); // when prepared
    QCOMPARE(test.StatusAt(milliseconds(300)), QByteArray("0bf1"));
    QCOMPARE(test.StatusAt(milliseconds(450)), QByteArray("0bf4"));
    QVERIFY(test->Start(At(milliseconds(500))));
    QCOMPARE(test.StatusAt(milliseconds(1400)), QByteArray("0bf2"));
    QVERIFY(test->Prepare(UbRe, At(milliseconds(1500)))); // when completed
    QCOMPARE(test.StatusAt(milliseconds(1650)), QByteArray("0af4"));
}

void TestRcdTest::UbReTellsProgressAndResult()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(UbRe));
    QVERIFY(test->IsUnderWay());
    QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af7"));
    QCOMPARE(test.FramesUntil(milliseconds(399)), QByteArrayList());
    QCOMPARE(test.FramesUntil(milliseconds(400)), QByteArrayList{Running});
    QCOMPARE(test.FramesUntil(milliseconds(1099)), (QByteArrayList{Running, Running, Running}));
    QCOMPARE(test.StatusAt(milliseconds(1099)), QByteArray("0af7"));
    const QByteArrayList last = test.FramesUntil(TrippedAt);
    QCOMPARE(last.size(), 1);
    QVERIFY(IsResult(last.first()));
    QVERIFY(last.first().left(4) != QByteArray(4, '\0'));
    QCOMPARE(last.first().mid(4, 4), QByteArray(4, '\0'));
    QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0af2"));
    QCOMPARE(test.FramesUntil(milliseconds(60000)), QByteArrayList());
    QCOMPARE(test.StatusAt(milliseconds(60000)), QByteArray("0af2"));
}

void TestRcdTest::IaTaTellsProgressAndResult()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(IaTa));
    const QByteArrayList frames = test.FramesUntil(milliseconds(60000)); // all at once, in its order
    QCOMPARE(frames.size(), 5);
    QCOMPARE(frames.mid(0, 4), (QByteArrayList{Running, Running, Running, Running}));
    QVERIFY(IsResult(frames.last()));
    QVERIFY(frames.last().mid(4, 2) != QByteArray(2, '\0'));
    QVERIFY(frames.last().mid(6, 2) != QByteArray(2, '\0'));
    QVERIFY(frames.last().mid(6, 2) != QByteArray::fromHex("eeee"));
}

void TestRcdTest::IecTellsProgressAndResult()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(Iec));
    const QByteArrayList frames = test.FramesUntil(TrippedAt);
    QCOMPARE(frames.mid(0, 4), (QByteArrayList{IecRunning, IecRunning, IecRunning, IecRunning}));
    QVERIFY(IsResult(frames.last()));
    QVERIFY(frames.last().mid(4, 2) != QByteArray(2, '\0'));
    QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0bf2"));
}

void TestRcdTest::CleanUpHasNoResult()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(CleanUp));
    QCOMPARE(test.StatusAt(CleanedAt - milliseconds(1)), QByteArray("0bf7"));
    QCOMPARE(test.StatusAt(CleanedAt), QByteArray("0bf2"));
    QCOMPARE(test.FramesUntil(milliseconds(60000)), (QByteArrayList{IecRunning, IecRunning, IecRunning}));
}

void TestRcdTest::StartWhenNothingIsPrepared()
{
    WatchedTest test;
    QVERIFY(!test->Start(At(milliseconds(0))));
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QVERIFY(!test->Start(At(milliseconds(0))));
    QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af4"));
    QVERIFY(test->Start(At(StartedAt)));
    QVERIFY(!test->Start(At(StartedAt)));
    QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0af2"));
    QVERIFY(!test->Start(At(TrippedAt)));
    test->Stop();
    QVERIFY(!test->Start(At(TrippedAt)));
}

void TestRcdTest::NoPreparationDuringARun()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(UbRe));
    QVERIFY(!test->Prepare(Iec, At(StartedAt)));
    QCOMPARE(test.StatusAt(milliseconds(1099)), QByteArray("0af7"));
    QVERIFY(!test->Prepare(Iec, At(milliseconds(1099))));
    QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0af2"));
}

void TestRcdTest::StopEndsItAnyTime_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("change");
    QTest::newRow("preparing") << 100 << "function 10 deselected";
    QTest::newRow("prepared") << 199 << "function 10 deselected";
    QTest::newRow("running") << 700 << "function 10 stopped by request";
    QTest::newRow("completed") << 1100 << "function 10 deselected";
}

void TestRcdTest::StopEndsItAnyTime()
{
    QFETCH(int, time);
    QFETCH(QString, change);
    WatchedTest test;
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    test->Advance(At(std::min(milliseconds(time), StartedAt)));
    if (milliseconds(time) > StartedAt) {
        QVERIFY(test->Start(At(StartedAt)));
    }
    test->Advance(At(milliseconds(time)));
    test->Stop();
    QVERIFY(!test->IsSelected());
    QVERIFY(!test->IsUnderWay());
    QVERIFY(!test->NextChangeAt().has_value());
    QCOMPARE(test->TakeChanges().last(), change);
    QCOMPARE(test.FramesUntil(milliseconds(60000)), QByteArrayList());
    QCOMPARE(test->TakeChanges(), QStringList());
    test->Stop();
    QCOMPARE(test->TakeChanges(), QStringList());
}

/// What was due before the stop, but not yet sent, must not come behind its acknowledge.
void TestRcdTest::StopLeavesNothingToSend()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(UbRe));
    test->Advance(At(milliseconds(600)));
    test->Stop();
    QVERIFY(test->TakeFrames().empty());
}

void TestRcdTest::EndsForAReason()
{
    WatchedTest test;
    test->Deselect("ended");
    QCOMPARE(test->TakeChanges(), QStringList());
    QVERIFY(test.BringToRun(UbRe));
    test->Deselect("ended by a restart");
    QVERIFY(!test->IsSelected());
    QCOMPARE(test->TakeChanges().last(), QStringLiteral("function 10 ended by a restart"));
    QCOMPARE(test.FramesUntil(milliseconds(60000)), QByteArrayList());
}

void TestRcdTest::LineIsQuietBeforeAFrame()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(UbRe));
    test->Advance(At(TrippedAt));
    const std::vector<FramePiece> frames = test->TakeFrames();
    QCOMPARE(frames.size(), std::size_t(5));
    for (const FramePiece& frame : frames) {
        QVERIFY(frame.pauseBefore == milliseconds(20));
    }
}

void TestRcdTest::TellsWhenItGoesOn()
{
    WatchedTest test;
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QVERIFY(test->NextChangeAt() == At(PreparedAt));
    test->Advance(At(PreparedAt));
    QVERIFY(!test->NextChangeAt().has_value());
    QVERIFY(test->Start(At(StartedAt)));
    for (const int time : {400, 600, 800, 1000, 1100}) {
        QVERIFY(test->NextChangeAt() == At(milliseconds(time)));
        test->Advance(At(milliseconds(time)));
    }
    QVERIFY(!test->NextChangeAt().has_value());
}

void TestRcdTest::TellsItsChanges()
{
    WatchedTest test;
    QVERIFY(test.BringToRun(Iec));
    test->Advance(At(TrippedAt));
    QCOMPARE(test->TakeChanges(),
             (QStringList{QStringLiteral("function 11 preparing"), QStringLiteral("function 11 prepared"),
                          QStringLiteral("function 11 running"), QStringLiteral("function 11 completed")}));
    QCOMPARE(test->TakeChanges(), QStringList());
}

void TestRcdTest::RefusesPrepare()
{
    WatchedTest test(Scenario::RefusesPrepare);
    QVERIFY(!test->Prepare(UbRe, At(milliseconds(0))));
    QVERIFY(!test->IsSelected());
    QCOMPARE(test->TakeChanges(), QStringList());
}

/// Without a check object, so that there is nothing that could become clean.
void TestRcdTest::PrepareError()
{
    WatchedTest test(Scenario::PrepareError);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("0af3"));
    QCOMPARE(test->TakeChanges().last(), QStringLiteral("function 10 failed to prepare"));
    QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
    QVERIFY(!test->Start(At(StartedAt)));
    QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af3"));
}

void TestRcdTest::NeverPrepared()
{
    WatchedTest test(Scenario::NeverPrepared);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(milliseconds(3600000)), QByteArray("0af1"));
    QVERIFY(!test->NextChangeAt().has_value());
}

void TestRcdTest::StartError()
{
    WatchedTest test(Scenario::StartError);
    QVERIFY(!test.BringToRun(UbRe));
    QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af4"));
}

void TestRcdTest::EndsWithoutResult()
{
    WatchedTest test(Scenario::EndsWithoutResult);
    QVERIFY(test.BringToRun(UbRe));
    QCOMPARE(test.FramesUntil(milliseconds(60000)),
             (QByteArrayList{Running, Running, Running, Running, QByteArray::fromHex("0af9fd91")}));
    QCOMPARE(test.StatusAt(milliseconds(60000)), QByteArray("0af9"));
    QCOMPARE(test->TakeChanges().last(), QStringLiteral("function 10 terminated without a result"));
    QVERIFY(test->Prepare(UbRe, At(milliseconds(60000))));
}

void TestRcdTest::OtherFunction()
{
    WatchedTest test(Scenario::RcdOtherFunction);
    QVERIFY(test->Prepare(Iec, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(milliseconds(149)), QByteArray("0bf1"));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("01f4"));
    QVERIFY(test->IsSelected());
    QVERIFY(test->Start(At(StartedAt)));
    QCOMPARE(test.StatusAt(StartedAt), QByteArray("0bf7"));
}

void TestRcdTest::CleanCheck()
{
    WatchedTest test(Scenario::RcdCheck, 0);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
    QVERIFY(!test->Start(At(StartedAt))); // nobody has looked
    QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
    QCOMPARE(test->TakeChanges().last(), QStringLiteral("function 10 checked: 0"));
    QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af3"));
    QVERIFY(test->Start(At(StartedAt)));
    QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0af2"));
    QVERIFY(!test->Start(At(TrippedAt)));
}

void TestRcdTest::BadCheck()
{
    WatchedTest test(Scenario::RcdCheck, 10);
    QVERIFY(test->Prepare(Iec, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8bf3"));
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(test.ReadCheckObject(), CheckObject("0a"));
        QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8bf3"));
        QVERIFY(!test->Start(At(StartedAt)));
    }
    QCOMPARE(test->TakeChanges().last(), QStringLiteral("function 11 checked: 10"));
    test->Stop();
    QVERIFY(!test->IsSelected());
}

void TestRcdTest::CheckOnce()
{
    WatchedTest test(Scenario::RcdCheckOnce, 3);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
    QCOMPARE(test.ReadCheckObject(), CheckObject("03"));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
    QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
    QVERIFY(test->Start(At(StartedAt)));

    test->SetScenario(Scenario::RcdCheckOnce, 4); // once again
    test->Advance(At(TrippedAt));
    QVERIFY(test->Prepare(UbRe, At(TrippedAt)));
    test->Advance(At(milliseconds(2000)));
    QCOMPARE(test.ReadCheckObject(), CheckObject("04"));
    QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
}

void TestRcdTest::CheckLost()
{
    WatchedTest test(Scenario::RcdCheckLost);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
    QCOMPARE(test.ReadCheckObject(), QByteArray());
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
    QVERIFY(!test->Start(At(StartedAt)));
}

void TestRcdTest::CheckIsForgottenByAPreparation()
{
    WatchedTest test(Scenario::RcdCheck, 0);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    test->Advance(At(PreparedAt));
    QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
    QVERIFY(test->Prepare(UbRe, At(StartedAt)));
    QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af1"));
    QVERIFY(!test->Start(At(StartedAt)));
    QCOMPARE(test.StatusAt(milliseconds(350)), QByteArray("8af3"));
    QVERIFY(!test->Start(At(milliseconds(350))));
}

void TestRcdTest::ErrorAllTheTime()
{
    WatchedTest test(Scenario::RcdError, 3);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    QCOMPARE(test.StatusAt(PreparedAt), QByteArray("0a34"));
    QVERIFY(test->Start(At(StartedAt)));
    const QByteArray running = QByteArray::fromHex("0a377fa9");
    QCOMPARE(test.FramesUntil(milliseconds(60000)),
             (QByteArrayList{running, running, running, running, QByteArray::fromHex("0a39b148")}));
    QCOMPARE(test.StatusAt(milliseconds(60000)), QByteArray("0a39"));
    test->SetScenario(Scenario::None, 1);
    QCOMPARE(test.StatusAt(milliseconds(60000)), QByteArray("0af9"));
}

void TestRcdTest::ErrorOnce()
{
    WatchedTest test(Scenario::RcdErrorOnce, 5);
    QVERIFY(test.BringToRun(Iec));
    QCOMPARE(test.FramesUntil(TrippedAt), (QByteArrayList{IecRunning, IecRunning, IecRunning, IecRunning,
                                                          QByteArray::fromHex("0b592617")}));
    QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0b59"));

    QVERIFY(test->Prepare(Iec, At(milliseconds(2000))));
    QCOMPARE(test.StatusAt(milliseconds(2150)), QByteArray("0bf4"));
    QVERIFY(test->Start(At(milliseconds(2200))));
    QCOMPARE(test.StatusAt(milliseconds(3100)), QByteArray("0bf2"));
    QVERIFY(IsResult(test.FramesUntil(milliseconds(3100)).last()));
}

void TestRcdTest::Silent()
{
    WatchedTest test(Scenario::RcdSilent);
    QVERIFY(test.BringToRun(UbRe));
    QCOMPARE(test->TakeChanges().last(), QStringLiteral("function 10 does not start"));
    QVERIFY(test->Start(At(milliseconds(1300))));
    QCOMPARE(test.FramesUntil(milliseconds(60000)), QByteArrayList());
    QCOMPARE(test.StatusAt(milliseconds(60000)), QByteArray("0af4"));
}

void TestRcdTest::SilentOnce()
{
    WatchedTest test(Scenario::RcdSilentOnce);
    QVERIFY(test.BringToRun(IaTa));
    QCOMPARE(test.FramesUntil(milliseconds(1300)), QByteArrayList());
    QVERIFY(test->Start(At(milliseconds(1300))));
    QCOMPARE(test.FramesUntil(milliseconds(2200)).size(), 5);
    QCOMPARE(test.StatusAt(milliseconds(2200)), QByteArray("0af2"));
}

void TestRcdTest::SilentStartAfterACheck()
{
    WatchedTest test(Scenario::RcdCheck, 0);
    QVERIFY(test->Prepare(UbRe, At(milliseconds(0))));
    test->Advance(At(PreparedAt));
    QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
    test->SetScenario(Scenario::RcdSilentOnce, 1);
    QVERIFY(test->Start(At(StartedAt)));
    QVERIFY(!test->IsUnderWay());
    QVERIFY(test->Start(At(StartedAt)));
    QVERIFY(test->IsUnderWay());
}

void TestRcdTest::NoTa()
{
    WatchedTest test(Scenario::RcdNoTa);
    QVERIFY(test.BringToRun(IaTa));
    const QByteArray result = test.FramesUntil(TrippedAt).last();
    QVERIFY(IsResult(result));
    QVERIFY(result.mid(4, 2) != QByteArray::fromHex("eeee"));
    QCOMPARE(result.mid(6, 2), QByteArray::fromHex("eeee"));
}

void TestRcdTest::Glued()
{
    WatchedTest test(Scenario::RcdGlued);
    QVERIFY(test.BringToRun(UbRe));
    const QByteArrayList frames = test.FramesUntil(TrippedAt);
    QCOMPARE(frames.size(), 5);
    QCOMPARE(frames.at(3), Running);
    QCOMPARE(frames.last().left(8), Running + Running);
    QVERIFY(IsResult(frames.last().mid(8)));
}

void TestRcdTest::Pieces()
{
    WatchedTest test(Scenario::RcdPieces, 700);
    QVERIFY(test.BringToRun(UbRe));
    test->Advance(At(TrippedAt));
    const std::vector<FramePiece> pieces = test->TakeFrames();
    QCOMPARE(pieces.size(), std::size_t(15));
    QCOMPARE(pieces.at(0).bytes + '|' + pieces.at(1).bytes + '|' + pieces.at(2).bytes,
             QByteArray::fromHex("0a7cf77c3370"));
    QCOMPARE(pieces.at(12).bytes.size(), 8);
    QCOMPARE(pieces.at(13).bytes.size(), 8);
    QVERIFY(IsResult(pieces.at(12).bytes + pieces.at(13).bytes + pieces.at(14).bytes));
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        QVERIFY(pieces.at(index).pauseBefore == (index % 3 == 0 ? microseconds(20000) : microseconds(700)));
    }
}

void TestRcdTest::Garbage()
{
    WatchedTest test(Scenario::RcdGarbage);
    QVERIFY(test.BringToRun(UbRe));
    const QByteArrayList frames = test.FramesUntil(TrippedAt);
    QCOMPARE(frames.at(3), Running);
    QCOMPARE(frames.last().left(2).toHex(), QByteArray("55aa"));
    QVERIFY(IsResult(frames.last().mid(2)));
}

QTEST_APPLESS_MAIN(TestRcdTest)
#include "tst_rcdtest.moc"
