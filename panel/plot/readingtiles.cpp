#include "panel/plot/readingtiles.h"

#include <QGridLayout>

#include "panel/kit/theme.h"
#include "panel/kit/widgets.h"
#include "panel/kit/words.h"

namespace Panel
{

using VesmarClient::FunctionInfo;
using VesmarClient::Reading;
using VesmarClient::ReadingInfo;
using VesmarClient::Result;

ReadingTiles::ReadingTiles(const FunctionInfo& function, Size size) : _function(function)
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    const int columns = size == Size::Small ? 2 : 1;
    for (int i = 0; i < function.readings.size(); ++i) {
        grid->addWidget(createTile(i, size), i / columns, i % columns);
        grid->setColumnStretch(i % columns, 1);
    }
    show({});
}

QWidget* ReadingTiles::createTile(int number, Size size)
{
    const ReadingInfo& reading = _function.readings.at(number);
    const bool isLarge = size == Size::Large;
    QPushButton* const tile = createButton({}, "reading", "tile");
    tile->setObjectName(QStringLiteral("reading-") + reading.identifier);
    tile->setAccessibleName(reading.title);
    tile->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    tile->setMinimumHeight(TouchTarget);
    tile->setMaximumHeight(140);
    auto* const lines = new QVBoxLayout(tile);
    lines->setContentsMargins(8, 4, 8, 4);
    lines->setSpacing(0);
    QLabel* const value = createLabel(isLarge ? "largeReading" : "reading");
    value->setObjectName(QStringLiteral("value-") + reading.identifier);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel* const label : {createLabel("readingTitle", reading.title), value}) {
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        lines->addWidget(label);
    }
    lines->setStretchFactor(value, 1);
    _values.append(value);
    connect(tile, &QPushButton::clicked, this, [this, number] { Q_EMIT chosen(number); });
    return tile;
}

void ReadingTiles::show(const Result& result)
{
    for (int i = 0; i < _values.size(); ++i) {
        const ReadingInfo& info = _function.readings.at(i);
        const Reading reading = result.reading(info.identifier);
        const double value = reading.isPresent ? reading.value : qQNaN();
        _values.at(i)->setText(shownValue(value, info.unit, info.decimals));
    }
}

} // namespace Panel
