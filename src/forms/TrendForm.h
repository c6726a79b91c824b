#pragma once
// The last 24 hours of temperatures and air pressures as curves, with set-points and events.

#include "forms/IMsgForm.h"
#include "forms/TrendData.h"

#include <QButtonGroup>
#include <QFutureWatcher>
#include <QThreadPool>
#include <QTimer>
#include <QWidget>
#include <memory>

namespace Ui
{
class TrendForm;
}

/// Reads the logs off this thread when it is shown, and each minute while it is. GUI thread.
class TrendForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    TrendForm();
    ~TrendForm() override;

    /// What is shown is of `data` from now on.
    void show24Hours(const TrendData &data);

public slots:
    void on_pushButton_back_clicked();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void read();
    void showTemps();
    void showAir();
    void touch(qint64 timeMs);

    std::unique_ptr<Ui::TrendForm> ui;
    QButtonGroup m_zones, m_airs;
    QTimer m_timer;
    QThreadPool m_worker;
    QFutureWatcher<TrendData> m_watcher;
    TrendData m_data;
};

/// The process's one such page. GUI thread.
TrendForm *trendForm();
