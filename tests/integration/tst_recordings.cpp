#include <QJsonArray>

#include "integration/programrun.h"

/// A run of `vesmar` at an instrument with faults, and how it ends.
struct RecordedKind {
    QByteArray name;
    QByteArray faults;  ///< A file of faults.
    QString arguments;  ///< Of `vesmar`; it finds the files "image" and "confirmation".
    int status;         ///< The exit status.
    QByteArray told;    ///< A part of the output.
    QByteArray decoded; ///< What the decoded log contains.
    bool isCut = false; ///< Only the second half of the log is left.
};
Q_DECLARE_METATYPE(RecordedKind)

namespace
{

using RecordedKinds = QVector<RecordedKind>;

constexpr char NoFaults[] = R"({"faults": []})";

QByteArray Scenario(const char* name)
{
    return ContentOf(QStringLiteral(SCENARIO_FOLDER "/%1.json").arg(QLatin1String(name)));
}

/// `vesmar` run at an instrument with faults, its log decoded, and `vesmar` run again at an instrument that
/// plays the recording: one after the other. Both runs are in virtual time.
class RecordedRun
{
public:
    explicit RecordedRun(const RecordedKind& kind) : _kind(kind)
    {
        WriteFile("faults", kind.faults);
        WriteFile("image", QByteArray(2560, '\x55'));
        const QString vesmar = QStringLiteral("'%1' %2 --json").arg(Program(), kind.arguments);
        const QString cut = QStringLiteral("sed -i \"1,$(($(wc -l < log) / 2))d\" log; ");
        const QString script = QStringLiteral("cd '%1'; '%2' confirmation image > confirmation; '%2' run "
                                              "--faults faults -- %3 --trace > first 2> log; "
                                              "echo $? > first.status; %4"
                                              "'%5' decode log --scenario recording > decoded 2> complaints; "
                                              "echo $? > decoded.status; "
                                              "'%2' run --playback recording -- %3 > second 2> errors; "
                                              "echo $? > second.status")
                                   .arg(_folder.path(), QStringLiteral(VIRTUAL_PROGRAMS), vesmar,
                                        kind.isCut ? cut : QString(), Program());
        WriteFile("script", script.toUtf8());
        ProgramRun run(QStringLiteral("sh"), {Path("script")});
        run.VerifySuccess();
    }

    /// What is wrong; empty where nothing is.
    QByteArray Problem() const
    {
        if (StatusOf("first") != _kind.status || !Content("first").contains(_kind.told)) {
            return "the first run ends otherwise: " + LastLine("first") + Content("log").right(500);
        }
        for (const char* step : {"first", "second"}) {
            const QString problem = ProblemOfRun(Content(step), StatusOf(step));
            if (!problem.isEmpty()) {
                return problem.toUtf8();
            }
        }
        if (StatusOf("decoded") != 0 || !Content("complaints").isEmpty()) {
            return "the log is not decoded: " + Content("complaints");
        }
        if (!Content("decoded").contains(_kind.decoded)) {
            return "the decoded log does not tell it: " + Content("decoded").right(2000);
        }
        if (StatusOf("second") != _kind.status || ResultOf("second") != ResultOf("first") ||
            !Content("second").contains(_kind.told)) {
            return "the second run ends otherwise: " + LastLine("first") + "\n" + LastLine("second") +
                   Content("errors").right(500);
        }
        return {};
    }

private:
    static QString Program() { return QStringLiteral(VESMAR_PROGRAM); }

    QString Path(const char* name) const { return _folder.filePath(QLatin1String(name)); }
    QByteArray Content(const char* name) const { return ContentOf(Path(name)); }

    void WriteFile(const char* name, const QByteArray& content) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write a file");
        }
    }

    int StatusOf(const QByteArray& step) const
    {
        return Content((step + ".status").constData()).trimmed().toInt();
    }

    QByteArray LastLine(const char* step) const { return Content(step).trimmed().split('\n').last(); }

    /// The last object that a run has written, without what depends on the time.
    QJsonObject ResultOf(const char* step) const
    {
        QJsonObject told = ObjectOf(LastLine(step));
        told.remove(QStringLiteral("time"));
        const int gaps = ValueOf(told, "gaps").toArray().size(); // their durations depend on the time, too
        told.insert(QStringLiteral("gaps"), gaps);
        return told;
    }

    const RecordedKind _kind;
    const QTemporaryDir _folder;
};

constexpr char Damaged[] = R"({"faults": [{"fault": "flip", "position": 1, "mask": 4}]})";
constexpr char LostAndBack[] =
    R"({"faults": [{"fault": "silent", "when": {"request": "s", "from": 40}, "count": 8}]})";
constexpr char HungUp[] =
    R"({"faults": [{"fault": "hang-up", "when": {"request": "s", "from": 40}, "count": 1}]})";
constexpr char HungUpForAWhile[] =
    R"({"faults": [{"fault": "hang-up", "line-back-in": 1500, "when": {"request": "s", "from": 40}, "count": 1}]})";

RecordedKinds LinkKinds()
{
    const QString measure = QStringLiteral("measure rpe --time 6");
    const QString measureBriefly = QStringLiteral("measure rpe --time 6 --stop-timeout 5");
    const QString info = QStringLiteral("info --timeout 30");
    const char* const damaged = "arrive damaged";
    return {
        {"damaged", Damaged, info, 2, damaged, "InvalidResponse (102)"},
        {"damaged, from the middle", Damaged, info, 2, damaged, "damaged checksum", true},
        {"lost and back", LostAndBack, measure, 7, "It is back", "CommunicationRecovery (103)"},
        {"hung up", HungUp, measureBriefly, 7, "Link lost, the state of the instrument is unknown",
         "CommunicationRecovery (103)"},
        {"hung up for a while", HungUpForAWhile, measureBriefly, 7, "Link lost",
         "CommunicationRecovery (103)"},
    };
}

RecordedKinds RcdKinds()
{
    const QString ubRe = QStringLiteral("measure rcd --mode ub-re");
    const QString iaTa = QStringLiteral("measure rcd --mode ia-ta-1");
    const QString iecIaTa = QStringLiteral("measure rcd-iec --mode ia-ta-1");
    const char* const check2 = "RCDCheckObject2 (501)";
    const char* const check10 = "RCDCheckObjectULNIECInvalid (507)";
    const char* const error2 = "RCDDeviceError2 (522)";
    return {
        {"Ub/Re", NoFaults, ubRe, 0, "done", "sent unasked           RCD (10): Re "},
        {"Ia/Ta", NoFaults, iaTa, 0, "done", "sent unasked           RCD (10): Re "},
        {"IEC", NoFaults, iecIaTa, 0, "done", "sent unasked           RCDIEC (11): Ia "},
        {"check object 2", Scenario("501-rcd-check-object-2"), iecIaTa, 4, check2, check2},
        {"check object 10", Scenario("507-rcd-check-object-10"), ubRe, 4, check10, check10},
        {"silent", Scenario("520-rcd-silent"), ubRe, 4, "RCDDeviceError0 (520)", "start measurement"},
        {"device error 2", Scenario("522-rcd-device-error-2"), ubRe, 4, error2, error2},
        {"device error 2, from the middle", Scenario("522-rcd-device-error-2"), ubRe, 4, error2,
         "in an RCD test, RCDDeviceError2", true},
    };
}

RecordedKinds MeasurementKinds()
{
    const QString measure = QStringLiteral("measure rpe --time 2");
    const char* const preparation = "PrepareFailed (200)";
    const char* const start = "StartFailed (201)";
    const char* const run = "MeasurementFailed (202)";
    return {
        {"good", NoFaults, measure, 0, "done", "stop measurement"},
        {"good, single", NoFaults, QStringLiteral("measure rln"), 0, "done", "RLN (1), Completed (2)"},
        {"preparation", Scenario("200-preparation-fails"), measure, 4, preparation, preparation},
        {"preparation, from the middle", Scenario("200-preparation-fails"), measure, 4, preparation,
         "PrepareError (3)", true},
        {"start", Scenario("201-start-fails"), measure, 4, start, start},
        {"run", Scenario("202-no-result"), measure, 4, run, run},
        {"identity", NoFaults, QStringLiteral("info"), 0, "204815", "read version"},
    };
}

RecordedKinds UpdateKinds()
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

void AddRows(const RecordedKinds& kinds)
{
    QTest::addColumn<RecordedKind>("kind");
    for (const RecordedKind& kind : kinds) {
        QTest::newRow(kind.name.constData()) << kind;
    }
}

void VerifyRow()
{
    QFETCH(const RecordedKind, kind);
    const QByteArray problem = RecordedRun(kind).Problem();
    QVERIFY2(problem.isEmpty(), problem.constData());
}

} // namespace

/// Runs of `vesmar` end at an instrument that plays a recording as they did at the recorded one.
class TestRecordings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LinkTroubleEndsAsItDid_data() { AddRows(LinkKinds()); }
    void LinkTroubleEndsAsItDid() { VerifyRow(); }
    void RcdTestEndsAsItDid_data() { AddRows(RcdKinds()); }
    void RcdTestEndsAsItDid() { VerifyRow(); }
    void MeasurementEndsAsItDid_data() { AddRows(MeasurementKinds()); }
    void MeasurementEndsAsItDid() { VerifyRow(); }
    void UpdateEndsAsItDid_data() { AddRows(UpdateKinds()); }
    void UpdateEndsAsItDid() { VerifyRow(); }
};

QTEST_GUILESS_MAIN(TestRecordings)
#include "tst_recordings.moc"
