#pragma once

#include <QElapsedTimer>
#include <QVBoxLayout>
#include <QWidget>

#include "panel/session/session.h"

namespace Panel
{

/// What went wrong since the program was started, the latest first: what happened, likely causes, the next
/// step.
class ErrorsPage : public QWidget
{
    Q_OBJECT

public:
    explicit ErrorsPage(Session& session);

private:
    QWidget* createHeader() const;
    void add(const VesmarClient::Failure& failure);
    void removeAll();

    static constexpr int MostErrors = 100; ///< Those before them are forgotten.

    QVBoxLayout* _errors;
    QWidget* _none;
    VesmarClient::Failure _latest;
    QElapsedTimer _sinceLatest;
};

} // namespace Panel
