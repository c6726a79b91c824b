#pragma once
// The strip over the pinyin keys: the letters typed and the words that they may mean, by pages.

#include "keyboard/PinyinEngine.h"

#include <QWidget>

class QLabel;

namespace Tactil
{
class KeyButton;

/// Holds the composition until its text is complete. GUI thread.
class ChineseWidget : public QWidget
{
    Q_OBJECT
public:
    static constexpr int stripHeight = 88;

    explicit ChineseWidget(QWidget *parent);
    /// Reads the dictionary. False when there is none.
    bool open() { return m_engine.open(); }
    bool isComposing() const { return !m_engine.isEmpty(); }
    void add(QChar letter);
    void backspace();
    /// Completes the text with the first words, as far as the letters have any.
    void chooseFirst();
    /// Completes the text with the letters as they were typed.
    void takeLetters();
    void cancel();
    void save() { m_engine.save(); }

signals:
    void completed(const QString &text);

private:
    void choose(int place);
    void turnPage(int step);
    void showNew();
    void showCandidates();
    KeyButton *addButton(const char *name, int x, int width);

    PinyinEngine m_engine;
    QLabel *m_preedit;
    QVector<KeyButton *> m_words;
    KeyButton *m_previous, *m_next;
    QVector<int> m_starts; ///< the first candidate of each page up to the one shown
    int m_shown = 0;       ///< candidates on the page
};
} // namespace Tactil
