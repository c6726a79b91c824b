#pragma once
// How every page shows a message on the one message form. GUI thread.

#include <QString>

class IMsgForm
{
public:
    IMsgForm(); ///< m_key becomes a fresh UUID
    virtual ~IMsgForm() = default;

    /// Shows and blocks in a local event loop; true is Yes. A refused form reads as No.
    virtual bool execMessageForm(QString text, int icon, int buttons, QString key);
    virtual bool execMessageForm(QString title, QString text, int icon, int buttons, QString key);
    virtual bool execMessageForm(quint32 id, QString text, int icon, int buttons, QString key);
    /// Shows and returns; false when the form belongs to someone else.
    virtual bool showMessageForm(QString text, int icon, int buttons, QString key);
    virtual bool showMessageForm(QString title, QString text, int icon, int buttons, QString key);
    virtual bool showMessageForm(quint32 id, QString text, int icon, int buttons, QString key);
    virtual void closeMessageForm();

    /// Shows or updates a progress bar under this form's own key; false when the form belongs to someone
    /// else.
    bool showProgress(QString title, QString text, float value, float maxval);

protected:
    QString m_key;

private:
    const QString &ownKeyFor(const QString &key) const { return key.isEmpty() ? m_key : key; }
};
