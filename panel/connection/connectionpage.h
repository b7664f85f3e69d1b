#pragma once

#include <QFormLayout>
#include <QFrame>
#include <QLabel>

#include "panel/connection/mainscard.h"
#include "panel/kit/failurecard.h"
#include "panel/session/session.h"

namespace Panel
{

/// What the line is doing, what is at its other end, and how good it is.
class ConnectionPage : public QWidget
{
    Q_OBJECT

public:
    explicit ConnectionPage(Session& session);

private:
    QWidget* createState();
    QWidget* createIdentity();
    QWidget* createStatistics();
    void showState();
    void showIdentity();
    void showStatistics(const VesmarClient::LinkStatistics& statistics);
    VesmarClient::Failure failure() const;

    Session& _session;
    QLabel* _state;
    QLabel* _sentence;
    FailureCard _failure;
    QFormLayout* _identity = nullptr;
    QFormLayout* _statistics = nullptr;
    MainsCard _mains;
};

} // namespace Panel
