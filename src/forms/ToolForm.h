#pragma once
// The tool page: logs and updates by USB disk, power off, and the doors to its sub-pages.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class ToolForm;
}

/// GUI thread.
class ToolForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    ToolForm();
    ~ToolForm() override;

public slots:
    /// A disk came (its letter's code) or went (0xFF).
    void uDiskChange(uint8_t code);
    void on_pushButton_machineInfo_clicked();
    void on_pushButton_UserInfo_clicked();
    void on_pushButton_Debug_clicked();
    /// The maintenance page.
    void on_pushButton_3_clicked();
    /// Copies the logs and their generations to the disk.
    void on_pushButton_Log_clicked();
    /// Takes update packages from the disk; the launcher unpacks them at the next start.
    void on_pushButton_update_clicked();
    void on_pushButton_Trend_clicked();
    /// Cools the heads for ten minutes and powers off. There is no way back.
    void on_pushButton_Power_clicked();

private:
    void setUpTiles();
    QString diskFolder() const;
    void exportLogs(const QString &disk);
    bool takePackage(const QString &source);
    void takeUpdates(const QString &disk);
    void coolHeads();
    void waitForCooling();
    void showCooling(int round);

    std::unique_ptr<Ui::ToolForm> ui;
    quint8 m_disk;
    bool m_busy = false; ///< a copy or the power-off runs; presses are dropped
};

/// The process's one such page. GUI thread.
ToolForm *toolForm();
