#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QWidget>

#include "panel/kit/failurecard.h"
#include "panel/session/session.h"

namespace Panel
{

/// What is at the other end of the line, and how the line is.
class ConnectionPage : public QWidget
{
    Q_OBJECT

public:
    explicit ConnectionPage(Session& session);

private:
    void showIdentity();

    Session& _session;
    QLabel* _serialNumber;
    FailureCard _failure;
};

} // namespace Panel
