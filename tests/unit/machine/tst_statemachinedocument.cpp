#include <QFile>
#include <QMap>
#include <QSet>
#include <QTest>

#include "context/statemachinecontext.h"
#include "machine/statemachinerunner.h"
#include "unit/machine/runnerview.h"

using Vesmar::StateMachineContext;
using Vesmar::StateMachineRunner;

/// Holds the page that draws the tree and the map against the machine itself.
class TestStateMachineDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void EveryGuardHasItsNameOnce();
    void TreeIsThatOfTheMachine();
    void MapIsThatOfTheMachine();
    void RowsAreNumberedInOrder();
    void KindsAreExternalOrInternal();

private:
    QList<QStringList> RowsOf(const QString& section) const;

    QStringList _lines;
};

namespace
{

/// The cells of a table's line, without blanks and backticks around them.
QStringList CellsOf(const QString& line)
{
    QStringList cells;
    for (const QString& cell : line.mid(1, line.size() - 2).split(QLatin1Char('|'))) {
        cells += QString(cell).remove(QLatin1Char('`')).trimmed();
    }
    return cells;
}

QString Describe(const QString& source, const QStringList& rows)
{
    return QStringLiteral("%1: [%2]").arg(source, rows.join(QStringLiteral("; ")));
}

} // namespace

void TestStateMachineDocument::initTestCase()
{
    QFile file(QStringLiteral(VESMAR_STATE_MACHINE_DOCUMENT));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        _lines += line.trimmed();
    }
}

/// The rows of the first table of a section, without its head.
QList<QStringList> TestStateMachineDocument::RowsOf(const QString& section) const
{
    QList<QStringList> rows;
    int line = _lines.indexOf(QStringLiteral("## ") + section) + 1;
    while (line > 0 && line < _lines.size() && !_lines.at(line).startsWith(QLatin1Char('|')) &&
           !_lines.at(line).startsWith(QStringLiteral("## "))) {
        ++line;
    }
    for (; line > 0 && line < _lines.size() && _lines.at(line).startsWith(QLatin1Char('|')); ++line) {
        rows += CellsOf(_lines.at(line));
    }
    return rows.mid(2);
}

void TestStateMachineDocument::EveryGuardHasItsNameOnce()
{
    QSet<QString> names;
    QSet<const void*> guards;
    for (const NamedGuard& row : GuardTable()) {
        names += QLatin1String(row.name);
        guards += reinterpret_cast<const void*>(row.guard);
    }
    QCOMPARE(names.size(), 38);
    QCOMPARE(guards.size(), 38);
}

void TestStateMachineDocument::TreeIsThatOfTheMachine()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const StateMachineRunner runner(&context, nullptr);
    const QMap<QString, QString> tree = RunnerView::TreeOf(runner);
    QMap<QString, QString> documented;
    for (const QStringList& row : RowsOf(QStringLiteral("Tree"))) {
        QVERIFY2(row.size() == 2, qPrintable(row.join(QLatin1Char('|'))));
        QVERIFY2(!documented.contains(row.at(0)),
                 qPrintable(QStringLiteral("documented twice: ") + row.at(0)));
        documented.insert(row.at(0), row.at(1));
        QVERIFY2(tree.contains(row.at(0)), qPrintable(QStringLiteral("not in the machine: ") + row.at(0)));
    }
    for (auto state = tree.cbegin(); state != tree.cend(); ++state) {
        QVERIFY2(documented.contains(state.key()),
                 qPrintable(QStringLiteral("not documented: ") + state.key()));
        QVERIFY2(documented.value(state.key()) == state.value(),
                 qPrintable(QStringLiteral("%1 under %2 in the document, under %3 in the machine")
                                .arg(state.key(), documented.value(state.key()), state.value())));
    }
}

void TestStateMachineDocument::MapIsThatOfTheMachine()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const StateMachineRunner runner(&context, nullptr);
    const QMap<QString, Vesmar::State*> states = RunnerView::StatesOf(runner);
    QMap<QString, QStringList> documented;
    const QList<QStringList> rows = RowsOf(QStringLiteral("Transitions"));
    for (const QString& kind : {QStringLiteral("external"), QStringLiteral("internal")}) {
        for (const QStringList& row : rows) {
            QVERIFY2(row.size() == 5, qPrintable(row.join(QLatin1Char('|'))));
            QVERIFY2(
                states.contains(row.at(1)),
                qPrintable(
                    QStringLiteral("row %1 leaves no state of the machine: %2").arg(row.at(0), row.at(1))));
            if (row.at(4) == kind) {
                documented[row.at(1)] += RunnerView::TransitionText(row.at(2), row.at(3), kind);
            }
        }
    }
    for (auto state = states.cbegin(); state != states.cend(); ++state) {
        const QStringList present = RunnerView::TransitionsOf(runner, state.value());
        const QStringList written = documented.value(state.key());
        QVERIFY2(present == written,
                 qPrintable(QStringLiteral("machine %1, document %2")
                                .arg(Describe(state.key(), present), Describe(state.key(), written))));
    }
}

void TestStateMachineDocument::RowsAreNumberedInOrder()
{
    const QList<QStringList> rows = RowsOf(QStringLiteral("Transitions"));
    QVERIFY(!rows.isEmpty());
    for (int row = 0; row < rows.size(); ++row) {
        QCOMPARE(rows.at(row).constFirst(), QString::number(row + 1));
    }
}

void TestStateMachineDocument::KindsAreExternalOrInternal()
{
    for (const QStringList& row : RowsOf(QStringLiteral("Transitions"))) {
        QVERIFY2(row.constLast() == QLatin1String("external") || row.constLast() == QLatin1String("internal"),
                 qPrintable(row.join(QLatin1Char('|'))));
    }
}

QTEST_GUILESS_MAIN(TestStateMachineDocument)
#include "tst_statemachinedocument.moc"
