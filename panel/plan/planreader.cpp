#include "panel/plan/planreader.h"

#include <QCoreApplication>

#include "panel/kit/files.h"
#include "panel/plan/plantext.h"

namespace Panel
{

using VesmarClient::Error;
using VesmarClient::Failure;

namespace
{

constexpr qint64 LargestFile = qint64{1024} * 1024;

QString translated(const char* text)
{
    return QCoreApplication::translate("Panel::Plan", text);
}

Failure unreadable(const QString& path, const QString& reason)
{
    return {Error::NoErrors,
            QStringLiteral("plan-unreadable"),
            translated(QT_TRANSLATE_NOOP("Panel::Plan", "The plan %1 cannot be read: %2.")).arg(path, reason),
            {},
            translated(QT_TRANSLATE_NOOP("Panel::Plan", "Check its path and its permissions."))};
}

Failure damaged(const QString& path, const PlanText& text)
{
    return {Error::NoErrors,
            QStringLiteral("plan-damaged"),
            translated(QT_TRANSLATE_NOOP("Panel::Plan", "The plan %1 is damaged, line %2: %3"))
                .arg(path, QString::number(text.line), text.damage),
            {},
            translated(QT_TRANSLATE_NOOP("Panel::Plan", "Mend the file; nothing is measured with it."))};
}

} // namespace

PlanFile readPlan(const QString& path)
{
    const FileContent file = readFile(path, LargestFile);
    if (!file.problem.isEmpty()) {
        return {{}, unreadable(path, file.problem)};
    }
    const PlanText text = readPlanText(file.bytes);
    return text.damage.isEmpty() ? PlanFile{text.plan, {}} : PlanFile{{}, damaged(path, text)};
}

} // namespace Panel
