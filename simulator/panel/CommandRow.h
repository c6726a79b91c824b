#pragma once
// One command with its inputs and its button.

#include "CommandForm.h"

#include <QFrame>
#include <functional>

struct Command;

class CommandRow : public QFrame
{
    Q_OBJECT
public:
    /// `suggest` offers the words for an argument name such as SENSOR, as far as it knows any.
    using Suggest = std::function<QStringList(const QString &name)>;
    CommandRow(const Command &command, const CommandForm &form, const Suggest &suggest,
               QWidget *parent = nullptr);

    const QString &name() const { return m_name; }
    bool fault() const { return m_fault; }
    /// Fields of the person; fixed words are none.
    int inputs() const;
    /// What the inputs say now, the command's name first. Optional fields that are empty end the list.
    QStringList words() const;
    bool matches(const QString &filter) const;

signals:
    void run(const QStringList &words);

private:
    QWidget *makeInput(const CommandField &field, const Suggest &suggest);
    QString value(size_t place) const;

    QString m_name;
    QString m_searched;
    bool m_fault;
    CommandForm m_form;
    std::vector<QWidget *> m_inputs; ///< by field; null for a fixed word
};
