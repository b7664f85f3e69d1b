#pragma once

#include <QStringList>
#include <QWidget>

/// Every widget of a window that can be seen and whose text does not fit into it, that lies over another one
/// beside it, or that a finger cannot hit, in words.
QStringList Misfits(const QWidget& window);
