#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

namespace Panel
{

/// Says to the style sheet what the widget is, and shows that at once.
void setLook(QWidget* widget, const char* look);

QLabel* createLabel(const char* look, const QString& text = {});
/// A label of several lines, as many as its text needs.
QLabel* createText(const char* look, const QString& text = {});
QPushButton* createButton(const QString& text, const char* name, const char* look = "");
QComboBox* createComboBox(const char* name);
/// Has a finger scroll it that moves over what is shown. Nothing in it can then be dragged.
void scrollByTouch(QAbstractScrollArea* area);
/// Fills the area with what is to be scrolled.
void fillScrollArea(QScrollArea* area, QWidget* content);
/// A framed area on which things stand below each other.
QFrame* createCard();
/// Removes everything from a layout, and deletes its widgets.
void clear(QLayout* layout);

} // namespace Panel
