#pragma once

#include <QTableWidget>

#include "panel/plan/planrecord.h"

namespace Panel
{

/// The steps of a plan, each with what has become of it.
class StepTable : public QTableWidget
{
    Q_OBJECT

public:
    StepTable();

    void showPlan(const Plan& plan);
    void showStep(int step, const StepRecord& record);
};

} // namespace Panel
