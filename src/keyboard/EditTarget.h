#pragma once
// The edit box that the keyboard types into.

#include <QPointer>
#include <QWidget>

namespace Tactil
{
/// GUI thread.
class EditTarget : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether text can be typed into a widget: a line edit, text box or spin box that can be changed.
    static bool isEditBox(const QWidget *widget);

    QWidget *box() const { return m_box; }
    void setBox(QWidget *box);
    /// Whether the box takes only numbers and their signs.
    bool wantsNumbers() const;
    /// Whether Chinese may be composed: not for secrets and not where Latin or numbers are asked for.
    bool takesChinese() const;
    /// Sends a key with its text as a hardware keyboard would.
    void type(int key, const QString &text = {});
    /// Ends a line: a new line in a text box, else on to the next edit box. False when there is none.
    bool finishLine();

signals:
    void lost(); ///< the box was hidden, disabled or destroyed

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *nextBox() const;

    QPointer<QWidget> m_box;
};
} // namespace Tactil
