#include "panel/window/pages.h"

#include "panel/connection/connectionpage.h"
#include "panel/measure/measurepage.h"

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
