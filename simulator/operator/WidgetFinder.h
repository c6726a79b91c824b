#pragma once
// Which widget a name means, and whether a person could touch it. GUI thread.
#include <QRect>
#include <QString>

class QWidget;

/// The widget of this name that is seen; else one that is not; null when there is none.
QWidget *findWidget(const QString &name);
/// Whether it is shown and the middle of its visible part is not covered by something else.
bool isSeen(QWidget *widget);
/// The point in the middle of what is left of `area` after clipping by the widget's parents; in the widget.
QPoint visibleMiddle(QWidget *widget, const QRect &area);
/// Why a person could not touch the widget at this point of its own; empty when they could.
QString whyOutOfReach(QWidget *widget, const QPoint &at);
/// The message form when it is up.
QWidget *openMessageForm();
