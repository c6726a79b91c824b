#include "forms/LayerPicture.h"

#include "engine/XdmControl.h"
#include "frame/Folders.h"
#include "frame/PrintStatus.h"
#include "printdata/LayerThumbnail.h"
#include "printdata/SliceToImage.h"

#include <QJsonObject>
#include <QPainter>
#include <QPainterPath>
#include <QThread>
#include <QtConcurrent>

namespace
{
constexpr int lookPeriodMs = 2000;
constexpr int captionHeight = 24;
constexpr int radius = 10;
const QColor ground(0x12, 0x16, 0x1b);
const QColor quietText(0x9a, 0xa5, 0xb1);
const QColor structureColour(0xf2, 0xa3, 0x3c);
const QColor supportColour(0x4a, 0xa3, 0xdf);

/// The job's tip is "layer-pass layers"; -1 before the first pass.
int printedLayer()
{
    const QString tips = xdmControl()->printState().value(QLatin1String("Tips")).toString();
    bool isNumber = false;
    const int layer = tips.section(QLatin1Char('-'), 0, 0).toInt(&isNumber);
    return isNumber && layer >= 0 ? layer : -1;
}

/// Worker. The idle class gets no time that the job, the slicer or the services could use.
QImage drawLayer(const std::shared_ptr<LayerThumbnail> &thumbnail, int layer, const QSize &size)
{
    QThread::currentThread()->setPriority(QThread::IdlePriority);
    return thumbnail->picture(layer, size);
}
} // namespace

LayerPicture::LayerPicture(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_worker.setMaxThreadCount(1);
    connect(&m_watcher, &QFutureWatcher<QImage>::finished, this, &LayerPicture::take);
    connect(&m_timer, &QTimer::timeout, this, &LayerPicture::look);
    m_timer.start(lookPeriodMs);
    hide();
}

LayerPicture::~LayerPicture()
{
    m_watcher.waitForFinished();
}

QRect LayerPicture::plate() const
{
    return rect().adjusted(0, 0, 0, -captionHeight);
}

void LayerPicture::look()
{
    const QString model = printStatus() == PrintStatusIdle ? QString() : sliceToImage()->fileName();
    const int layer = model.isEmpty() ? -1 : printedLayer();
    setVisible(layer >= 0);
    if (layer < 0)
        return forget();
    if (!isVisible() || m_watcher.isRunning() || layer == m_layer)
        return;
    if (!m_thumbnail || model != m_model)
        begin(model);
    m_wanted = layer;
    m_watcher.setFuture(QtConcurrent::run(&m_worker, drawLayer, m_thumbnail, layer, plate().size()));
}

void LayerPicture::begin(const QString &model)
{
    const ModelInfo info = sliceToImage()->modelInfo();
    LayerSource source;
    source.folder = sliceFolder(model);
    source.columns = sliceToImage()->passWidth();
    source.rows = int(info.pixelsY);
    source.rowPitch = info.dpiX > 0 && info.dpiY > 0 ? double(info.dpiX / info.dpiY) : 1;
    source.structure = structureColour;
    source.support = supportColour;
    m_model = model;
    m_thumbnail = std::make_shared<LayerThumbnail>(source);
}

/// With the job go its pictures' buffers.
void LayerPicture::forget()
{
    m_thumbnail.reset();
    m_picture = QImage();
    m_layer = -1;
}

void LayerPicture::take()
{
    const QImage picture = m_watcher.result();
    if (!m_thumbnail ||
        picture.isNull()) // the job is over, or its layer is not to be had: the next look asks
        return;
    m_picture = picture;
    m_layer = m_wanted;
    update();
}

void LayerPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(plate(), radius, radius);
    painter.fillPath(shape, ground);
    painter.setClipPath(shape);
    painter.drawImage(plate(), m_picture);
    painter.setClipping(false);
    if (m_layer < 0)
        return;
    painter.setPen(quietText);
    QFont caption = font();
    caption.setPixelSize(15);
    painter.setFont(caption);
    const QRect line = rect().adjusted(0, rect().height() - captionHeight, 0, 0);
    painter.drawText(line, Qt::AlignHCenter | Qt::AlignBottom, tr("第 %1 层").arg(m_layer));
}
