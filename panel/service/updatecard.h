#pragma once

#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include <optional>

#include "panel/service/jobstatus.h"
#include "panel/session/session.h"

namespace Panel
{

/// New firmware for the instrument: its two files, the progress, and both versions.
class UpdateCard : public QFrame
{
    Q_OBJECT

public:
    explicit UpdateCard(Session& session);

    /// Whether it can be begun now.
    void allow(bool isAllowed);

Q_SIGNALS:
    void begun();
    void failed(const VesmarClient::Failure& failure);

private:
    QWidget* createFile(QLineEdit* path, const QString& title, const char* name);
    void begin();
    void watch(VesmarClient::UpdateJob* job);
    std::optional<QByteArray> read(const QLineEdit* path);

    Session& _session;
    QLineEdit* _image;
    QLineEdit* _confirmation;
    QPushButton* _begin;
    QProgressBar* _progress;
    QLabel* _details;
    FailureCard _unreadable;
    JobStatus* _status;
};

} // namespace Panel
