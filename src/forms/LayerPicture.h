#pragma once
// The layer that is being printed, small. It finds out for itself what there is to show: nothing else knows
// it.

#include <QFutureWatcher>
#include <QImage>
#include <QThreadPool>
#include <QTimer>
#include <QWidget>
#include <memory>

class LayerThumbnail;

/// Hidden while no job runs. The picture is made by a thread that runs when nothing else does, at most once a
/// layer and one at a time. GUI thread.
class LayerPicture : public QWidget
{
    Q_OBJECT
public:
    explicit LayerPicture(QWidget *parent = nullptr);
    ~LayerPicture() override;

    /// Looks whether a new layer has begun; every 2 s by itself.
    void look();
    /// The layer whose picture is shown; -1: none.
    int layer() const { return m_layer; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void begin(const QString &model);
    void forget();
    void take();
    QRect plate() const;

    QTimer m_timer;
    QThreadPool m_worker;
    QFutureWatcher<QImage> m_watcher;
    std::shared_ptr<LayerThumbnail> m_thumbnail; ///< of the running job; shared with the worker
    QString m_model;
    QImage m_picture;
    int m_layer = -1;
    int m_wanted = -1; ///< the layer that the worker is at
};
