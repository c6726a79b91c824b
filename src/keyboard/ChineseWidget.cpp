#include "keyboard/ChineseWidget.h"

#include "keyboard/KeyButton.h"

#include <QLabel>
#include <QVariant>

namespace Tactil
{
namespace
{
constexpr int preeditHeight = 28;
constexpr int stripWidth = 600, arrowWidth = 60, wordsWidth = stripWidth - 2 * arrowWidth;
constexpr int leastWordWidth = 64, wordPadding = 30;
constexpr int wordPlaces = wordsWidth / leastWordWidth;
} // namespace

ChineseWidget::ChineseWidget(QWidget *parent) : QWidget(parent), m_preedit(new QLabel(this))
{
    setFocusPolicy(Qt::NoFocus);
    resize(stripWidth, stripHeight);
    m_preedit->setObjectName(QStringLiteral("label_preedit"));
    m_preedit->setProperty("role", QStringLiteral("preedit"));
    m_preedit->setGeometry(14, 0, stripWidth - 28, preeditHeight);
    for (int place = 0; place < wordPlaces; ++place) {
        m_words << addButton("word", 0, leastWordWidth);
        connect(m_words.last(), &KeyButton::struck, this, [this, place] { choose(place); });
    }
    m_previous = addButton("previousWords", wordsWidth, arrowWidth);
    m_next = addButton("nextWords", wordsWidth + arrowWidth, arrowWidth);
    m_previous->setKeyIcon(QStringLiteral("left"));
    m_next->setKeyIcon(QStringLiteral("right"));
    connect(m_previous, &KeyButton::struck, this, [this] { turnPage(-1); });
    connect(m_next, &KeyButton::struck, this, [this] { turnPage(1); });
    showNew();
}

KeyButton *ChineseWidget::addButton(const char *name, int x, int width)
{
    auto *button = new KeyButton(KeyStroke::AtRelease, this);
    button->setObjectName(QStringLiteral("key_") + QLatin1String(name));
    button->setProperty("role", QStringLiteral("word"));
    button->setGeometry(x, preeditHeight, width, stripHeight - preeditHeight);
    return button;
}

void ChineseWidget::add(QChar letter)
{
    m_engine.add(letter.toLatin1());
    showNew();
}

void ChineseWidget::backspace()
{
    m_engine.backspace();
    showNew();
}

void ChineseWidget::chooseFirst()
{
    QString text;
    while (isComposing() && text.isEmpty())
        text = m_engine.count() > 0 ? m_engine.choose(0) : m_engine.takeLetters();
    showNew();
    if (!text.isEmpty())
        emit completed(text);
}

void ChineseWidget::takeLetters()
{
    const QString text = m_engine.takeLetters();
    showNew();
    emit completed(text);
}

void ChineseWidget::cancel()
{
    m_engine.clear();
    showNew();
}

void ChineseWidget::choose(int place)
{
    const QString text = m_engine.choose(m_starts.last() + place);
    showNew();
    if (!text.isEmpty())
        emit completed(text);
}

void ChineseWidget::turnPage(int step)
{
    if (step > 0)
        m_starts.append(m_starts.last() + m_shown);
    else
        m_starts.removeLast();
    showCandidates();
}

void ChineseWidget::showNew()
{
    m_starts = {0};
    m_preedit->setText(m_engine.preedit());
    showCandidates();
}

/// As many words as have room; each is as wide as its text.
void ChineseWidget::showCandidates()
{
    int x = 0;
    m_shown = 0;
    for (KeyButton *button : m_words) {
        const QString word = m_engine.candidate(m_starts.last() + m_shown);
        const int width = qMin(
            wordsWidth, qMax(leastWordWidth, button->fontMetrics().horizontalAdvance(word) + wordPadding));
        if (word.isEmpty() || x + width > wordsWidth) {
            button->hide();
            continue;
        }
        button->setText(word);
        button->setGeometry(x, button->y(), width, button->height());
        button->show();
        x += width;
        ++m_shown;
    }
    m_previous->setEnabled(m_starts.size() > 1);
    m_next->setEnabled(m_starts.last() + m_shown < m_engine.count());
    m_previous->setVisible(m_engine.count() > 0);
    m_next->setVisible(m_engine.count() > 0);
}
} // namespace Tactil
