#pragma once

#include <QStringList>
#include <QWidget>

/// Every widget of a window that can be seen and whose text does not fit into it, or that lies over another
/// one beside it, in words.
QStringList Misfits(const QWidget& window);
