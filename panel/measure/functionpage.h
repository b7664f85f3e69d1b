#pragma once

#include <QStackedWidget>

#include "panel/kit/holdbutton.h"
#include "panel/measure/liveview.h"
#include "panel/measure/optionform.h"
#include "panel/measure/resultcard.h"
#include "panel/report/reportbar.h"

namespace Panel
{

/// One function from its options to its result.
class FunctionPage : public QWidget
{
    Q_OBJECT

public:
    FunctionPage(Session& session, const VesmarClient::FunctionInfo& function);

Q_SIGNALS:
    /// The person wants to see all functions again.
    void left();

private:
    QWidget* createHeader();
    QWidget* createButtons();
    QPushButton* createStart();
    void start();
    void watch(VesmarClient::Measurement* measurement);
    void showTimes();
    void showEnd(const RecordPointer& record);
    void enableButtons();
    bool isMeasuring() const;

    Session& _session;
    VesmarClient::FunctionInfo _function;
    QStackedWidget _views; // has the next two as its children, and so outlives them
    OptionForm _form;
    LiveView _live;
    ResultCard _result;
    ReportBar _report;
    QLabel* _phase;
    QLabel* _times;
    QPushButton* _back;
    QPushButton* _start = nullptr;
    QPushButton* _stop = nullptr;
    QPushButton* _options = nullptr;
};

} // namespace Panel
