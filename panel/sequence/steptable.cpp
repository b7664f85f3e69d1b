#include "panel/sequence/steptable.h"

#include <QHeaderView>

#include "panel/kit/theme.h"
#include "panel/kit/widgets.h"
#include "panel/plan/planwords.h"

namespace Panel
{

namespace
{

enum Column { NameColumn, StateColumn, ReadingsColumn, ColumnCount };

/// None for the plain text, whose colour is that of the theme.
QVariant colourOf(StepState state)
{
    switch (state) {
    case StepState::Passed:
        return colours().good;
    case StepState::Failed:
    case StepState::NotMeasured:
        return colours().danger;
    case StepState::AwaitingHold:
        return colours().warning;
    case StepState::Running:
        return colours().accent;
    default:
        return {};
    }
}

} // namespace

StepTable::StepTable() : QTableWidget(0, ColumnCount)
{
    setObjectName(QStringLiteral("steps"));
    setHorizontalHeaderLabels({tr("Step"), tr("Result"), tr("Readings")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    verticalHeader()->setMinimumSectionSize(TouchTarget);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setVerticalScrollMode(ScrollPerPixel);
    scrollByTouch(this);
}

void StepTable::showPlan(const Plan& plan)
{
    setRowCount(plan.steps.size());
    for (int step = 0; step < plan.steps.size(); ++step) {
        for (int column = 0; column < ColumnCount; ++column) {
            setItem(step, column, new QTableWidgetItem);
        }
        showStep(step, {plan.steps.at(step), StepState::Waiting, {}, {}});
    }
}

void StepTable::showStep(int step, const StepRecord& record)
{
    item(step, NameColumn)->setText(record.step.name);
    item(step, StateColumn)->setText(words(record.state));
    item(step, StateColumn)->setData(Qt::ForegroundRole, colourOf(record.state));
    QString text = readingsOf(record);
    if (record.state == StepState::NotMeasured) {
        text = record.record->failure.whatHappened + QLatin1Char(' ') + record.record->failure.nextStep;
    } else if (!record.misses.isEmpty()) {
        text = record.misses.join(QLatin1Char(' '));
    }
    item(step, ReadingsColumn)->setText(text.trimmed());
    scrollToItem(item(step, NameColumn));
}

} // namespace Panel
