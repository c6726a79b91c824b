#include "TankView.h"

#include "Look.h"

#include <QPainter>

TankView::TankView(const QString &title, QRgb colour, QWidget *parent)
    : QWidget(parent), m_title(title), m_colour(colour)
{
}

void TankView::set(double share, const QString &words, const QString &note)
{
    share = qBound(0.0, share, 1.0);
    const bool same = qAbs(share - m_share) < 0.002 && words == m_words && note == m_note;
    m_share = share;
    m_words = words;
    m_note = note;
    if (!same)
        update();
}

void TankView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int titleHeight = 18, lineHeight = 15;
    const int lines = 3;
    look::drawText(painter, QRectF(0, 0, width(), titleHeight), Qt::AlignCenter, look::quiet, 11, m_title);
    const QRectF bar(width() / 2.0 - 13, titleHeight + 2, 26,
                     height() - titleHeight - lines * lineHeight - 6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(look::line));
    painter.drawRoundedRect(bar, 5, 5);
    painter.setBrush(QColor(m_colour));
    painter.drawRoundedRect(bar.adjusted(0, bar.height() * (1 - m_share), 0, 0), 5, 5);
    const QStringList words = m_words.split('\n');
    const double top = bar.bottom() + 4;
    for (int line = 0; line < words.size() && line < lines - 1; ++line)
        look::drawText(painter, QRectF(0, top + line * lineHeight, width(), lineHeight), Qt::AlignCenter,
                       look::text, 11, words[line]);
    look::drawText(painter, QRectF(0, top + (lines - 1) * lineHeight, width(), lineHeight), Qt::AlignCenter,
                   look::warning, 11, m_note);
}
