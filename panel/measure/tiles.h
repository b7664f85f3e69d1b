#pragma once

#include <QWidget>

#include <VesmarClient/functions.h>

namespace Panel
{

/// A tile for each function of the catalogue.
class Tiles : public QWidget
{
    Q_OBJECT

public:
    Tiles();

Q_SIGNALS:
    void chosen(const VesmarClient::FunctionInfo& function);

private:
    QWidget* createTile(const VesmarClient::FunctionInfo& function);
};

} // namespace Panel
