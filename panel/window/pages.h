#pragma once

#include <QWidget>

#include "panel/session/session.h"

namespace Panel
{

/// A page of the window: what it is called in programs and for people, and how it is made.
struct PageEntry {
    const char* name;
    const char* title; ///< Translated in the context "Pages".
    QWidget* (*create)(Session& session);
};

/// All pages, in their order from top to bottom.
const QVector<PageEntry>& pages();
QStringList pageNames();

} // namespace Panel
