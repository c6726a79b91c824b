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

private:
    std::unique_ptr<Ui::ToolForm> ui;
};

/// The process's one such page. GUI thread.
ToolForm *toolForm();
