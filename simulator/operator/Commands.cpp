#include "Commands.h"

#include "Touch.h"
#include "WidgetFinder.h"
#include "WidgetState.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QRegularExpression>
#include <QTimer>

namespace
{
using Command = QJsonObject (*)(const QJsonObject &);

QString widgetName(const QJsonObject &request)
{
    return request["widget"].toString();
}

QJsonObject noWidget(const QJsonObject &request)
{
    return failure("there is no widget " + widgetName(request));
}

QJsonObject done(const QString &problem)
{
    return problem.isEmpty() ? success() : failure(problem);
}

QJsonObject widgets(const QJsonObject &)
{
    QJsonArray list;
    for (QWidget *widget : QApplication::allWidgets())
        if (!widget->objectName().isEmpty() && isSeen(widget))
            list << summaryOf(widget);
    return success({{"widgets", list}});
}

QJsonObject state(const QJsonObject &request)
{
    QWidget *widget = findWidget(widgetName(request));
    return widget ? success({{"state", stateOf(widget)}}) : noWidget(request);
}

QJsonObject click(const QJsonObject &request)
{
    QWidget *widget = findWidget(widgetName(request));
    return widget ? done(touch(widget, widget->rect())) : noWidget(request);
}

QAbstractItemView *tableWidget(const QJsonObject &request)
{
    return qobject_cast<QAbstractItemView *>(findWidget(widgetName(request)));
}

QJsonObject cell(const QJsonObject &request)
{
    QAbstractItemView *view = tableWidget(request);
    return view ? done(touchCell(view, request["row"].toInt(-1), request["column"].toInt(-1)))
                : failure("there is no table " + widgetName(request));
}

QJsonObject table(const QJsonObject &request)
{
    QAbstractItemView *view = tableWidget(request);
    return view ? success({{"rows", tableOf(view)}}) : failure("there is no table " + widgetName(request));
}

QJsonObject type(const QJsonObject &request)
{
    QWidget *widget = findWidget(widgetName(request));
    return widget ? done(typeInto(widget, request["text"].toString())) : noWidget(request);
}

QJsonObject message(const QJsonObject &)
{
    const QWidget *form = openMessageForm();
    return success({{"message", form ? QJsonValue(messageOf(form)) : QJsonValue()}});
}

QJsonObject answerMessage(const QJsonObject &request)
{
    const QString button = request["button"].toString();
    const QWidget *form = openMessageForm();
    if (!form)
        return failure("there is no message to answer");
    if (!messageOf(form)["buttons"].toArray().contains(button))
        return failure("the message does not offer " + button);
    auto *widget = form->findChild<QWidget *>("pushButton_" + button);
    return done(touch(widget, widget->rect()));
}

QJsonObject shot(const QJsonObject &request)
{
    QWidget *widget = request.contains("widget") ? findWidget(widgetName(request)) : mainWindow();
    if (!widget || !widget->isVisible())
        return failure("there is nothing to take a picture of");
    const QString file = request["file"].toString();
    return widget->grab().save(file, "PNG") ? success() : failure("cannot write " + file);
}

QJsonObject close(const QJsonObject &)
{
    QWidget *window = mainWindow();
    if (!window)
        return failure("there is no window");
    // After the answer, since the program may end at once.
    QTimer::singleShot(0, window, [window] { window->close(); });
    return success();
}

const struct {
    const char *op;
    Command run;
} commands[] = {{"widgets", widgets}, {"state", state}, {"click", click},     {"cell", cell},
                {"table", table},     {"type", type},   {"message", message}, {"answer", answerMessage},
                {"shot", shot},       {"close", close}};
} // namespace

QJsonObject success(QJsonObject answer)
{
    answer["ok"] = true;
    return answer;
}

QJsonObject failure(const QString &why)
{
    return {{"ok", false}, {"error", why}};
}

QJsonObject runCommand(const QJsonObject &request)
{
    const QString op = request["op"].toString();
    for (const auto &command : commands)
        if (op == command.op)
            return command.run(request);
    return failure("unknown op " + op);
}

QString badWait(const QJsonObject &request)
{
    if (request.contains("widget") == request.contains("message"))
        return "name a widget or the message";
    if (request.contains("visible") == request.contains("text"))
        return "wait for visible or for a text";
    if (!QRegularExpression(request["text"].toString()).isValid())
        return "the text is no regular expression";
    return {};
}

bool waitIsMet(const QJsonObject &request)
{
    QString text;
    bool visible = false;
    if (request.contains("message")) {
        const QWidget *form = openMessageForm();
        visible = form;
        text = form ? messageOf(form)["text"].toString() : QString();
    } else if (QWidget *widget = findWidget(widgetName(request))) {
        visible = isSeen(widget);
        text = textOf(widget);
    }
    if (request.contains("visible"))
        return visible == request["visible"].toBool();
    return visible && QRegularExpression(request["text"].toString()).match(text).hasMatch();
}
