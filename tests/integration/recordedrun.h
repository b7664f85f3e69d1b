#pragma once

#include <memory>
#include <vector>

#include "integration/programrun.h"

/// Something that becomes of `vesmar` at an instrument with faults.
struct RecordedKind {
    QByteArray name;
    QByteArray faults;      ///< A file of faults.
    QString arguments;      ///< Of `vesmar`; it finds the files "image" and "confirmation".
    int status;             ///< What it ends with.
    QByteArray told;        ///< What it tells on the way or at the end.
    QByteArray decoded;     ///< What the decoded log contains.
    bool isCut = false;     ///< Only the second half of the log is left.
    bool isLasting = false; ///< The time decides which reading is the last one.
};

using RecordedKinds = std::vector<RecordedKind>;

constexpr char NoFaults[] = R"({"faults": []})";

inline QByteArray Scenario(const char* name)
{
    return ContentOf(QStringLiteral(SCENARIO_FOLDER "/%1.json").arg(QLatin1String(name)));
}

/// `vesmar` run at an instrument with faults, its log decoded, and `vesmar` run again at an instrument that
/// plays the recording: one after the other.
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
                                   .arg(_folder.path(), QStringLiteral(SIMULATOR_PROGRAM), vesmar,
                                        kind.isCut ? cut : QString(), Program());
        WriteFile("script", script.toUtf8());
        _run = std::make_unique<ProgramRun>(QStringLiteral("sh"), QStringList{Path("script")});
    }

    /// What is not as it should be, when all is over; empty where all is.
    QByteArray Problem()
    {
        if (_run->Finish() != 0 || !_run->Errors().isEmpty()) {
            return "the script fails: " + _run->Errors();
        }
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
        if (StatusOf("second") != _kind.status || Told("second") != Told("first") ||
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

    /// The last object that a run has told, without what depends on the time.
    QJsonObject Told(const char* step) const
    {
        QJsonObject told = ObjectOf(LastLine(step));
        told.remove(QStringLiteral("time"));
        if (_kind.isLasting) {
            told.remove(QStringLiteral("readings"));
        }
        return told;
    }

    const RecordedKind _kind;
    const QTemporaryDir _folder; // Before the run: everything is in it.
    std::unique_ptr<ProgramRun> _run;
};

/// All kinds side by side, and a row for each.
class RecordedRuns
{
public:
    explicit RecordedRuns(const RecordedKinds& kinds) : _kinds(kinds)
    {
        for (const RecordedKind& kind : kinds) {
            _runs.push_back(std::make_unique<RecordedRun>(kind));
        }
    }

    void AddRows() const
    {
        QTest::addColumn<int>("kind");
        for (size_t i = 0; i < _kinds.size(); ++i) {
            QTest::newRow(_kinds.at(i).name.constData()) << static_cast<int>(i);
        }
    }

    /// Empty where there is none. What goes wrong is repeated alone: on a busy machine an answer can be too
    /// late.
    QByteArray Problem(int kind)
    {
        constexpr int MostRepetitions = 2;
        const auto index = static_cast<size_t>(kind);
        QByteArray problem = _runs.at(index)->Problem();
        for (int i = 0; i < MostRepetitions && !problem.isEmpty(); ++i) {
            qInfo("once more, for %s", problem.constData());
            problem = RecordedRun(_kinds.at(index)).Problem();
        }
        return problem;
    }

private:
    const RecordedKinds _kinds;
    std::vector<std::unique_ptr<RecordedRun>> _runs;
};
