#pragma once
// What can be seen of a widget. GUI thread.
#include <QJsonArray>
#include <QJsonObject>

class QAbstractItemView;
class QWidget;

QString textOf(const QWidget *widget);
/// visible, enabled, and of checked, text, value, minimum and maximum what the widget has.
QJsonObject stateOf(QWidget *widget);
/// One row of the list of visible widgets.
QJsonObject summaryOf(QWidget *widget);
/// All cells' texts, row by row.
QJsonArray tableOf(const QAbstractItemView *view);
/// Title, text and offered buttons of the message form.
QJsonObject messageOf(const QWidget *form);
