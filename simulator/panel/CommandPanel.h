#pragma once
// Every command of the machine's table as a form: what works the machine, then the faults, with a filter.
// Shows the machine's answer to the last one.

#include "CommandRow.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QVBoxLayout;

struct Command;

class CommandPanel : public QFrame
{
    Q_OBJECT
public:
    explicit CommandPanel(const CommandRow::Suggest &suggest, QWidget *parent = nullptr);

    const std::vector<CommandRow *> &rows() const { return m_rows; }
    void showAnswer(const QStringList &words, const QJsonObject &answer);
    /// The answer as it is shown.
    QString answer() const;
    void showFaults(const QStringList &active);

public slots:
    void filter(const QString &text);

signals:
    void run(const QStringList &words);

private:
    void addGroup(QVBoxLayout *list, bool fault, const CommandRow::Suggest &suggest);
    void addForms(QVBoxLayout *list, const Command &command, const CommandRow::Suggest &suggest);

    std::vector<CommandRow *> m_rows;
    QLabel *m_headings[2] = {}; ///< by fault
    QLabel *m_faults = nullptr;
    QPlainTextEdit *m_answer = nullptr;
};
