#include "forms/IMsgForm.h"

#include "events/OperatorMessage.h"
#include "forms/MsgForm.h"

#include <QUuid>

IMsgForm::IMsgForm() : m_key(QUuid::createUuid().toString()) {}

bool IMsgForm::execMessageForm(QString text, int icon, int buttons, QString key)
{
    return execMessageForm(QString(), text, icon, buttons, key);
}

bool IMsgForm::execMessageForm(QString title, QString text, int icon, int buttons, QString key)
{
    return msgForm()->execMessageForm(title, text, icon, buttons, ownKeyFor(key));
}

bool IMsgForm::execMessageForm(quint32 id, QString text, int icon, int buttons, QString key)
{
    return execMessageForm(messageTitle(id), text, icon, buttons, key);
}

bool IMsgForm::showMessageForm(QString text, int icon, int buttons, QString key)
{
    return showMessageForm(QString(), text, icon, buttons, key);
}

bool IMsgForm::showMessageForm(QString title, QString text, int icon, int buttons, QString key)
{
    return msgForm()->showMessageForm(title, text, icon, buttons, ownKeyFor(key));
}

bool IMsgForm::showMessageForm(quint32 id, QString text, int icon, int buttons, QString key)
{
    return showMessageForm(messageTitle(id), text, icon, buttons, key);
}

void IMsgForm::closeMessageForm()
{
    msgForm()->closeMessageForm();
}

bool IMsgForm::showProgress(QString title, QString text, float value, float maxval)
{
    return msgForm()->MessageFormProgress(title, text, value, maxval, m_key);
}
