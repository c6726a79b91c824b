#pragma once
// The one window of the touch screen: page buttons, clock, page container, message form.

#include "forms/IMsgForm.h"
#include "platform/Volumes.h"

#include <QMainWindow>
#include <memory>

namespace Ui
{
class MainWindow;
}
class QToolButton;
namespace Tactil
{
class Keyboard;
}

/// Its construction builds the pages and starts the remote link and the background service. GUI thread.
class MainWindow : public QMainWindow, public IMsgForm
{
    Q_OBJECT
public:
    MainWindow();
    ~MainWindow() override;

    /// Enables or disables all that can be touched but the message form, which must stay answerable.
    void setPagesEnabled(bool enabled);

public slots:
    /// Puts a page into the container in place of the one that is there.
    void showWidgetInStacked(QWidget *page);
    /// Brings the keyboard up along the window's lower edge. Both arguments are without effect.
    void showKeyBoard(int x, int y);
    void on_pushButton_home_clicked();
    void on_pushButton_fileList_clicked();
    void on_pushButton_material_clicked();
    void on_pushButton_tool_clicked();
    void on_pushButton_setup_clicked();

signals:
    /// The letter's code of a disk that came, 0xFF when one went.
    void sigUDiskChange(uint8_t code);

protected:
    /// Ends the process at once, with no clean-up.
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpButtons();
    void connectPages();
    void startClock();
    void startServices();
    void watchVolumes();
    void choose(QToolButton *button, QWidget *page);

    std::unique_ptr<Ui::MainWindow> ui;
    Tactil::Keyboard *m_keyboard = nullptr; ///< a child as large as its keys need
    VolumeWatcher m_volumes;
};

/// The process's one window. GUI thread.
MainWindow *mainWindow();
