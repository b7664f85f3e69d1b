#include "panel/window/pages.h"

#include "panel/connection/connectionpage.h"
#include "panel/errors/errorspage.h"
#include "panel/log/logpage.h"
#include "panel/measure/measurepage.h"
#include "panel/sequence/sequencepage.h"
#include "panel/service/servicepage.h"

namespace Panel
{

namespace
{

template <typename Page>
QWidget* create(Session& session)
{
    return new Page(session);
}

} // namespace

const QVector<PageEntry>& pages()
{
    static const QVector<PageEntry> all{
        {"connection", QT_TRANSLATE_NOOP("Pages", "Connection"), create<ConnectionPage>},
        {"measure", QT_TRANSLATE_NOOP("Pages", "Measure"), create<MeasurePage>},
        {"sequence", QT_TRANSLATE_NOOP("Pages", "Sequence"), create<SequencePage>},
        {"service", QT_TRANSLATE_NOOP("Pages", "Service"), create<ServicePage>},
        {"log", QT_TRANSLATE_NOOP("Pages", "Log"), create<LogPage>},
        {"errors", QT_TRANSLATE_NOOP("Pages", "Errors"), create<ErrorsPage>},
    };
    return all;
}

QStringList pageNames()
{
    QStringList names;
    for (const PageEntry& page : pages()) {
        names.append(QLatin1String(page.name));
    }
    return names;
}

} // namespace Panel
