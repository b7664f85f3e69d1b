#include "panel/measure/optionform.h"

#include <QGridLayout>

#include "panel/kit/widgets.h"

namespace Panel
{

using VesmarClient::FunctionInfo;
using VesmarClient::Option;
using VesmarClient::Settings;
using VesmarClient::SettingsProblem;

namespace
{

constexpr int Columns = 2;

QString titleOf(const Option& option)
{
    return option.unit.isEmpty() ? option.title : QStringLiteral("%1 (%2)").arg(option.title, option.unit);
}

} // namespace

OptionForm::OptionForm(const FunctionInfo& function) : _function(function.identifier)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const content = new QWidget;
    auto* const grid = new QGridLayout(content);
    grid->setContentsMargins(0, 0, 8, 0);
    grid->setHorizontalSpacing(16);
    int place = 0;
    for (const Option& option : function.options) {
        const bool isWide = !option.choices.isEmpty() && option.choices.first().title.size() > 3;
        place += isWide ? place % Columns : 0;
        grid->addWidget(createRow(option), place / Columns, place % Columns, 1, isWide ? Columns : 1);
        place += isWide ? Columns : 1;
    }
    for (int column = 0; column < Columns; ++column) {
        grid->setColumnStretch(column, 1);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    fillScrollArea(this, content);
    scrollByTouch(this);
    showProblems();
}

QWidget* OptionForm::createRow(const Option& option)
{
    auto* const row = new QWidget;
    row->setToolTip(option.description);
    auto* const column = new QVBoxLayout(row);
    column->setContentsMargins(0, 0, 0, 4);
    column->setSpacing(2);
    OptionField* const field = OptionField::create(option);
    field->setObjectName(QStringLiteral("option-") + option.identifier);
    QLabel* const problem = createText("problem");
    problem->setObjectName(QStringLiteral("problem-") + option.identifier);
    column->addWidget(createLabel("muted", titleOf(option)));
    column->addWidget(field);
    column->addWidget(problem);
    column->addStretch();
    _rows.insert(option.identifier, {field, problem});
    connect(field, &OptionField::changed, this, &OptionForm::showProblems);
    return row;
}

Settings OptionForm::settings() const
{
    Settings settings(_function);
    for (auto row = _rows.cbegin(); row != _rows.cend(); ++row) {
        settings.set(row.key(), row->field->value());
    }
    return settings;
}

void OptionForm::showProblems()
{
    for (const Row& row : _rows) {
        row.problem->hide();
    }
    for (const SettingsProblem& problem : settings().validate()) {
        if (_rows.contains(problem.option)) {
            _rows.value(problem.option).problem->setText(problem.message);
            _rows.value(problem.option).problem->show();
        }
    }
    Q_EMIT changed();
}

} // namespace Panel
