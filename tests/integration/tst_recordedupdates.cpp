#include <QtTest>

#include "integration/recordedrun.h"

namespace
{

RecordedKinds Kinds()
{
    const QString update = QStringLiteral("update image --confirmation confirmation");
    const char* const mode = "UpdateModeChangeFailed (300)";
    const char* const sector = "UpdateInitializationFailed (303)";
    const char* const confirmation = "UpdateConfirmationFailed (304)";
    const QByteArray refused = Scenario("300-update-mode-refused");
    const QByteArray lost = Scenario("303-firmware-sector-lost");
    const QByteArray twice = Scenario("304-sector-stored-twice");
    return {
        {"update mode refused", refused, update, 4, mode, mode},
        {"update mode refused, from the middle", refused, update, 4, mode, mode, true},
        {"sector lost", lost, update, 4, sector, sector},
        {"sector lost, from the middle", lost, update, 4, sector, sector, true},
        {"sector stored twice", twice, update, 4, confirmation, confirmation},
        {"sector stored twice, from the middle", twice, update, 4, confirmation, confirmation, true},
        {"good", NoFaults, update, 0, "done", "finish update"},
    };
}

} // namespace

/// A firmware update at an instrument that plays what it recorded of another one.
class TestRecordedUpdates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EndsAsTheFirstOneDid_data() { _runs.AddRows(); }
    void EndsAsTheFirstOneDid();

private:
    RecordedRuns _runs{Kinds()};
};

void TestRecordedUpdates::EndsAsTheFirstOneDid()
{
    QFETCH(const int, kind);
    const QByteArray problem = _runs.Problem(kind);
    QVERIFY2(problem.isEmpty(), problem.constData());
}

QTEST_GUILESS_MAIN(TestRecordedUpdates)
#include "tst_recordedupdates.moc"
