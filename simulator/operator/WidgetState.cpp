#include "WidgetState.h"

#include "WidgetFinder.h"

#include <QAbstractItemView>
#include <QVariant>
#include <QWidget>

namespace
{
// Properties in which widgets keep what they show, in the order of preference.
const char *const textProperties[] = {"text", "plainText", "currentText", "title", "windowTitle"};

const struct {
    const char *name, *widget;
} messageButtons[] = {{"Yes", "pushButton_Yes"}, {"No", "pushButton_No"}, {"close", "pushButton_close"}};
} // namespace

QString textOf(const QWidget *widget)
{
    for (const char *name : textProperties) {
        const QVariant value = widget->property(name);
        if (value.isValid())
            return value.toString();
    }
    return {};
}

QJsonObject stateOf(QWidget *widget)
{
    QJsonObject state{
        {"visible", isSeen(widget)}, {"enabled", widget->isEnabled()}, {"text", textOf(widget)}};
    for (const char *name : {"checked", "value", "minimum", "maximum"}) {
        const QVariant value = widget->property(name);
        if (value.isValid())
            state[name] = QJsonValue::fromVariant(value);
    }
    return state;
}

QJsonObject summaryOf(QWidget *widget)
{
    const QPoint corner = widget->mapTo(widget->window(), QPoint());
    return {{"name", widget->objectName()},
            {"class", widget->metaObject()->className()},
            {"x", corner.x()},
            {"y", corner.y()},
            {"width", widget->width()},
            {"height", widget->height()},
            {"enabled", widget->isEnabled()},
            {"text", textOf(widget)}};
}

QJsonArray tableOf(const QAbstractItemView *view)
{
    QJsonArray rows;
    const QAbstractItemModel *model = view->model();
    for (int row = 0; model && row < model->rowCount(view->rootIndex()); ++row) {
        QJsonArray cells;
        for (int column = 0; column < model->columnCount(view->rootIndex()); ++column)
            cells << model->index(row, column, view->rootIndex()).data().toString();
        rows << cells;
    }
    return rows;
}

QJsonObject messageOf(const QWidget *form)
{
    const auto text = [form](const char *name) {
        const auto *label = form->findChild<QWidget *>(name);
        return label ? textOf(label) : QString();
    };
    QJsonArray buttons;
    for (const auto &button : messageButtons) {
        auto *widget = form->findChild<QWidget *>(button.widget);
        if (widget && widget->isVisible() && widget->isEnabled())
            buttons << button.name;
    }
    return {{"title", text("label_title")}, {"text", text("label_text")}, {"buttons", buttons}};
}
