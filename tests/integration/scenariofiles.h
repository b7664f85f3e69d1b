#pragma once

#include <functional>
#include <map>
#include <vector>

#include <QByteArrayList>
#include <QStringList>

#include "integration/rcdmeasuring.h"
#include "simulator/faults/faultentry.h"

/// The files of simulator/scenarios, each of which brings about the error whose number its name begins with.
namespace ScenarioFiles
{

/// What has to be done at the instrument for a file's error to come; each is the matter of a test of its own.
enum class Occasion { Status, Silence, Damage, Recovery, Measurement, Update, Rcd, RcdCheck, RcdError };

/// The errors for which there has to be a file.
const std::map<int, Occasion>& Expected();

/// The names of the files that are in the folder now.
QStringList Names();
QByteArray Content(const QString& name);
int ErrorOf(const QString& name);

/// A row for each file of the folder with an error of this occasion; the column is "file".
void AddRows(Occasion occasion);

/// One try to bring about an error with these faults. It tells the errors that were signalled until this one
/// came, or was sure not to come any more.
using Play = std::function<QByteArrayList(const std::vector<Simulator::FaultEntry>& faults, int error)>;

/// Plays a file and sees its error come.
void VerifyArrival(const QString& name, const Play& play);

/// The errors signalled until this one was, or until there is none any more, or until the play is over.
QByteArrayList ToldUntil(
    const WatchedTester& tester, int error, const std::function<bool()>& isOver = [] { return false; });

/// Plays a file that loses the link, and sees that it stays lost.
void VerifyLoss(const QString& name);

/// Plays a file while this test is run, and sees its error come.
void VerifyRcd(const QString& name, const RcdKind& kind);

} // namespace ScenarioFiles
