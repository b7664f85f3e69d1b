#include "panel/measure/measurepage.h"

#include "panel/measure/functionpage.h"

namespace Panel
{

MeasurePage::MeasurePage(Session& session) : _session(session)
{
    addWidget(&_tiles);
    connect(&_tiles, &Tiles::chosen, this, &MeasurePage::open);
}

void MeasurePage::open(const VesmarClient::FunctionInfo& function)
{
    auto* const page = new FunctionPage(_session, function);
    connect(page, &FunctionPage::left, this, &MeasurePage::leave);
    addWidget(page);
    setCurrentWidget(page);
}

void MeasurePage::leave()
{
    currentWidget()->deleteLater();
    setCurrentWidget(&_tiles);
}

} // namespace Panel
