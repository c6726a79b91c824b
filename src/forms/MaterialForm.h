#pragma once
// The page of the four bottles: what is in them, which ones are drawn on, and the choice of another.

#include "forms/IMsgForm.h"
#include "material/BottleAccount.h"

#include <QWidget>
#include <array>
#include <memory>

namespace Ui
{
class MaterialForm;
}
class QFrame;
class QLabel;
class QProgressBar;

/// Widgets 3 and 4 are the support bottles, 5 and 6 the structure bottles: the table's rows from 2 on. GUI
/// thread.
class MaterialForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    MaterialForm();
    ~MaterialForm() override;

    /// Shows the service's bottles.
    void refresh();
    /// Shows these bottles. A touch tells about what was shown last.
    void refresh(const Bottles &bottles);

public slots:
    void on_pushButton_3_clicked();
    void on_pushButton_4_clicked();
    void on_pushButton_5_clicked();
    void on_pushButton_6_clicked();

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct BottleWidgets {
        QFrame *card;
        QProgressBar *bar;
        QLabel *rest;
        QLabel *type;
        QLabel *status;
    };
    void showBottle(const BottleWidgets &widgets, int row);
    bool isInUse(int row) const;
    QString statusText(int row) const;
    QString details(int row) const;
    void touch(int row);

    std::unique_ptr<Ui::MaterialForm> ui;
    std::array<BottleWidgets, 4> m_widgets;
    Bottles m_bottles; ///< as shown
};

/// The process's one material page. GUI thread.
MaterialForm *materialForm();
