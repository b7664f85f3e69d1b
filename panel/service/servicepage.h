#pragma once

#include "panel/service/datecard.h"
#include "panel/service/updatecard.h"

namespace Panel
{

/// What is done to the instrument itself: its dates, a restart, new firmware.
class ServicePage : public QWidget
{
    Q_OBJECT

public:
    explicit ServicePage(Session& session);

private:
    void layOut();
    void connectJobs();
    void showDates();
    void showAllowed();

    Session& _session;
    DateCard* _clock;
    DateCard* _calibration;
    QPushButton* _restart;
    UpdateCard* _update;
    JobStatus* _status;
};

} // namespace Panel
