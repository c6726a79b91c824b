#pragma once
// One model's details, and its start.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class PrintInfoForm;
}

/// GUI thread.
class PrintInfoForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    PrintInfoForm();
    ~PrintInfoForm() override;

    /// Fills the page with a model of the queue, as far as its files tell.
    void showModel(const QString &modelName);

public slots:
    /// Starts this model, with all questions of the Home page, and goes there.
    void on_pushButton_printImage_clicked();
    void on_pushButton_back_clicked();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void showPicture();
    void showValues();
    void enableStart();

    QString m_modelName;
    bool m_starting = false;
    std::unique_ptr<Ui::PrintInfoForm> ui;
};

/// The process's one such page. GUI thread.
PrintInfoForm *printInfoForm();
