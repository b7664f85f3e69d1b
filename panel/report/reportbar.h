#pragma once

#include <QFutureWatcher>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "panel/kit/failurecard.h"
#include "panel/report/reportfiles.h"

namespace Panel
{

/// Writes the report of what was measured: the folder, the buttons, and what has become of it.
class ReportBar : public QWidget
{
    Q_OBJECT

public:
    ReportBar();
    ~ReportBar() override;

    /// From now on there is this to report. Only what has ended is.
    void offer(const PlanRecord& plan);
    /// From now on there is nothing to report.
    void withdraw();

Q_SIGNALS:
    void failed(const VesmarClient::Failure& failure);

private:
    void askForFolder();
    void enableWrite();
    void write();
    void tell();

    PlanRecord _plan;
    bool _isAsked = false; // whether what is being written, or was, is the report of this plan
    QLineEdit* _folder;
    QPushButton* _write;
    QLabel* _written;
    FailureCard _failure;
    QFutureWatcher<WrittenReport> _writing;
};

} // namespace Panel
