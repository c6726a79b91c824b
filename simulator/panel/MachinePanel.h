#pragma once
// The window of the simulated machine: shows it about five times a second and works it by its own commands.
// It lives on the machine's thread, so a look is kept short.

#include "Commands.h"

#include <QTimer>
#include <QWidget>

class ClimateView;
class CommandPanel;
class FigureBar;
class InkView;
class MachineView;
class QuickControls;
class ViolationList;

class MachinePanel : public QWidget
{
    Q_OBJECT
public:
    explicit MachinePanel(const CommandContext &context, QWidget *parent = nullptr);

    CommandPanel &commandPanel() { return *m_commands; }
    ViolationList &violationList() { return *m_violations; }
    /// Saves what the window shows at this moment. Null on success, else what is wrong.
    QString savePicture(const QString &path);

public slots:
    void refresh();
    void run(const QStringList &words);

private:
    QWidget *makeShow();
    QWidget *makeControls();
    QStringList suggest(const QString &name) const;

    CommandContext m_context;
    FigureBar *m_figures;
    MachineView *m_machine;
    InkView *m_ink;
    ClimateView *m_climate;
    QuickControls *m_quick;
    CommandPanel *m_commands;
    ViolationList *m_violations;
    QTimer m_timer;
};
