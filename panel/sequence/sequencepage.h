#pragma once

#include <QComboBox>
#include <QPointer>

#include "panel/kit/holdbutton.h"
#include "panel/measure/resultcard.h"
#include "panel/plan/planrun.h"
#include "panel/report/reportbar.h"
#include "panel/sequence/steptable.h"

namespace Panel
{

/// Runs a test plan: choose it, start it, see what becomes of each step, write the report.
class SequencePage : public QWidget
{
    Q_OBJECT

public:
    explicit SequencePage(Session& session);

    /// Shows the plan in this file, or why it is refused.
    void openPlan(const QString& path);

private:
    void layOut();
    QLayout* createButtons();
    void connectButtons();
    void askForPlan();
    void reset();
    void start();
    void end();
    void showStep(int step);
    void showButtons();
    void showReadings();
    bool isRunning() const { return !_run.isNull() && !_run->isFinished(); }

    Session& _session;
    QComboBox* _plans;
    QPushButton* _open;
    FailureCard _failure;
    StepTable* _steps;
    ResultCard _result; // of the step after which the instrument is not known to have stopped
    QLabel* _verdict;
    QPushButton* _start;
    HoldButton* _hold;
    QPushButton* _stop;
    ReportBar* _report;
    Plan _plan;
    QPointer<PlanRun> _run;
};

} // namespace Panel
