#pragma once

#include <QWidget>

#include "panel/session/record.h"

class QLabel;

namespace Panel
{

/// The latest readings, large, each on a button.
class ReadingTiles : public QWidget
{
    Q_OBJECT

public:
    explicit ReadingTiles(const VesmarClient::FunctionInfo& function);

    void show(const VesmarClient::Result& result);

Q_SIGNALS:
    void chosen(int reading);

private:
    QWidget* createTile(int number);

    VesmarClient::FunctionInfo _function;
    QVector<QLabel*> _values;
};

} // namespace Panel
