#include "panel/measure/tiles.h"

#include <QGridLayout>

#include "panel/kit/widgets.h"

namespace Panel
{

using VesmarClient::FunctionInfo;
using VesmarClient::FunctionKind;
using VesmarClient::Functions;

namespace
{

constexpr int Columns = 4;

QString words(FunctionKind kind)
{
    switch (kind) {
    case FunctionKind::Single:
        return Tiles::tr("one result");
    case FunctionKind::Continuous:
        return Tiles::tr("continuous");
    case FunctionKind::HighVoltage:
        return Tiles::tr("⚡ high voltage");
    case FunctionKind::Rcd:
        return Tiles::tr("one test");
    }
    return {};
}

} // namespace

Tiles::Tiles()
{
    auto* const grid = new QGridLayout(this);
    grid->setSpacing(8);
    for (const FunctionInfo& function : Functions::all()) {
        const int place = grid->count();
        grid->addWidget(createTile(function), place / Columns, place % Columns);
    }
    for (int column = 0; column < Columns; ++column) {
        grid->setColumnStretch(column, 1);
    }
}

QWidget* Tiles::createTile(const FunctionInfo& function)
{
    QPushButton* const tile = createButton({}, "tile", "tile");
    tile->setObjectName(QStringLiteral("tile-") + function.identifier);
    tile->setAccessibleName(function.title);
    tile->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* const column = new QVBoxLayout(tile);
    column->setContentsMargins(8, 8, 4, 8);
    QLabel* const title = createText("tileTitle", function.title);
    QLabel* const kind = createLabel(function.isDangerous ? "problem" : "muted", words(function.kind));
    for (QLabel* const label : {title, kind}) {
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        column->addWidget(label);
    }
    column->setStretchFactor(title, 1);
    connect(tile, &QPushButton::clicked, this, [this, function] { Q_EMIT chosen(function); });
    return tile;
}

} // namespace Panel
