// A window that connects, measures any function of the catalogue, shows live readings, and aborts.
#include <QApplication>

#include "measurementwindow.h"

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    MeasurementWindow window;
    window.show();
    return QApplication::exec();
}
