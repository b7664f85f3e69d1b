#pragma once

#include <QLabel>

#include "panel/session/session.h"

class QPushButton;

namespace Panel
{

/// How a measurement has ended: the outcome, whether the instrument is confirmed to have stopped, and a way
/// to stop it again where it is not.
class ResultCard : public QWidget
{
    Q_OBJECT

public:
    explicit ResultCard(Session& session);

    void show(const RecordPointer& record);

private:
    void showStop();
    void stopAgain();

    Session& _session;
    RecordPointer _record;
    QLabel* _outcome;
    QLabel* _stop;
    QPushButton* _again;
};

} // namespace Panel
