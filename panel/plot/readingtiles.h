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
    /// Small ones stand in two columns.
    enum class Size { Small, Large };

    ReadingTiles(const VesmarClient::FunctionInfo& function, Size size);

    void show(const VesmarClient::Result& result);

Q_SIGNALS:
    void chosen(int reading);

private:
    QWidget* createTile(int number, Size size);

    VesmarClient::FunctionInfo _function;
    QVector<QLabel*> _values;
};

} // namespace Panel
