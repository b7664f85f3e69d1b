#include "panel/service/updatecard.h"

#include "panel/kit/filechooser.h"
#include "panel/kit/files.h"
#include "panel/kit/widgets.h"
#include "panel/kit/words.h"

namespace Panel
{

using VesmarClient::Failure;
using VesmarClient::UpdateJob;

namespace
{

constexpr qint64 LargestFile = qint64{64} * 1024 * 1024; // Far more than any instrument takes.

QString detailsOf(const UpdateJob& job)
{
    QStringList details;
    if (!job.versionBefore().isEmpty()) {
        details.append(UpdateCard::tr("Version before: %1").arg(job.versionBefore()));
    }
    if (!job.versionAfter().isEmpty()) {
        details.append(UpdateCard::tr("version now: %1").arg(job.versionAfter()));
    } else {
        details.append(UpdateCard::tr("sector %1 of %2").arg(job.sectorsConfirmed()).arg(job.sectors()));
    }
    if (job.timeLeft() > 0) {
        details.append(UpdateCard::tr("about %1 left").arg(duration(job.timeLeft())));
    }
    return details.join(QStringLiteral(", "));
}

} // namespace

UpdateCard::UpdateCard(Session& session)
    : _session(session),
      _image(new QLineEdit),
      _confirmation(new QLineEdit),
      _begin(createButton(tr("Update the firmware"), "update")),
      _progress(new QProgressBar),
      _details(createText("muted")),
      _status(new JobStatus)
{
    setLook(this, "card");
    _details->setObjectName(QStringLiteral("updateDetails"));
    _progress->setObjectName(QStringLiteral("updateProgress"));
    auto* const column = new QVBoxLayout(this);
    column->addWidget(createLabel("title", tr("Firmware")));
    column->addWidget(createFile(_image, tr("Image"), "image"));
    column->addWidget(createFile(_confirmation, tr("Confirmation"), "confirmation"));
    column->addWidget(_begin);
    column->addWidget(&_unreadable);
    column->addWidget(_progress);
    column->addWidget(_details);
    column->addWidget(_status);
    _progress->hide();
    _details->hide();
    connect(_begin, &QPushButton::clicked, this, &UpdateCard::begin);
    connect(_status, &JobStatus::failed, this, &UpdateCard::failed);
}

QWidget* UpdateCard::createFile(QLineEdit* path, const QString& title, const char* name)
{
    path->setObjectName(QLatin1String(name));
    path->setAccessibleName(title);
    path->setPlaceholderText(title);
    QPushButton* const choose = createButton(tr("Choose …"), "");
    choose->setObjectName(QLatin1String(name) + QStringLiteral("Choose"));
    connect(choose, &QPushButton::clicked, this, [this, path, title] {
        auto* const chooser = new FileChooser(this, title);
        connect(chooser, &FileChooser::chosen, path, &QLineEdit::setText);
    });
    auto* const file = new QWidget;
    auto* const row = new QHBoxLayout(file);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(path, 1);
    row->addWidget(choose);
    return file;
}

void UpdateCard::allow(bool isAllowed)
{
    _begin->setEnabled(isAllowed);
}

/// Nothing where it cannot be read, which is told.
std::optional<QByteArray> UpdateCard::read(const QLineEdit* path)
{
    const FileContent file = readFile(path->text(), LargestFile);
    if (file.problem.isEmpty()) {
        return file.bytes;
    }
    const Failure failure{VesmarClient::Error::NoErrors,
                          QStringLiteral("firmware-unreadable"),
                          tr("The file \"%1\" cannot be read: %2.").arg(path->text(), file.problem),
                          {},
                          tr("Choose the file again.")};
    _unreadable.show(failure);
    Q_EMIT failed(failure);
    return std::nullopt;
}

void UpdateCard::begin()
{
    _unreadable.show({});
    const auto image = read(_image);
    const auto confirmation = image ? read(_confirmation) : std::nullopt;
    if (confirmation) {
        watch(_session.update(*image, *confirmation));
    }
}

void UpdateCard::watch(UpdateJob* job)
{
    const auto showProgress = [this, job] {
        _progress->setRange(0, job->sectors());
        _progress->setValue(job->sectorsConfirmed());
        _details->setText(detailsOf(*job));
    };
    connect(job, &UpdateJob::progressChanged, this, showProgress);
    connect(job, &UpdateJob::elapsedChanged, this, showProgress);
    connect(job, &UpdateJob::versionAfterChanged, this, showProgress);
    showProgress();
    _progress->show();
    _details->show();
    _status->watch(job, tr("The firmware is installed."));
    Q_EMIT begun();
}

} // namespace Panel
