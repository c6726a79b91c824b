#pragma once
// Touches and keys as a person gives them: real events, only where a person could reach. Each gives the
// reason why not, or nothing once the events are posted. GUI thread.
#include <QRect>
#include <QString>

class QAbstractItemView;
class QWidget;

/// Presses and releases in the middle of what is seen of `area`.
QString touch(QWidget *widget, const QRect &area);
/// Brings the cell into view and touches it.
QString touchCell(QAbstractItemView *view, int row, int column);
/// Touches the widget and replaces its text.
QString typeInto(QWidget *widget, const QString &text);
/// The program's window.
QWidget *mainWindow();
