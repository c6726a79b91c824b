#pragma once
// Pinyin letters in, Chinese words out.

#include <QString>
#include <QVector>

namespace Tactil
{
/// The process's one composition: the decoder below is global and knows no threads. GUI thread.
class PinyinEngine
{
public:
    ~PinyinEngine();
    PinyinEngine() = default;
    PinyinEngine(const PinyinEngine &) = delete;
    PinyinEngine &operator=(const PinyinEngine &) = delete;

    /// The dictionary: the delivered one, else the system's; empty when there is none.
    static QString dictionary();
    /// Opens the dictionary and the user's own, config/pinyin_user.dat, which gets the trade's words when it
    /// lacks them. False when there is no dictionary.
    bool open();

    bool isEmpty() const { return m_letters.isEmpty() && m_choices.isEmpty(); }
    /// Adds a letter a to z or the mark ' between syllables; nothing when there is no more room.
    void add(char letter);
    /// Takes the last choice back, else the last letter.
    void backspace();
    void clear();
    /// What is chosen and the letters of the rest by syllables.
    QString preedit() const;
    int count() const { return m_count; }
    QString candidate(int index) const;
    /// Takes a candidate. The whole text once nothing is left to choose, else empty.
    QString choose(int index);
    /// The whole text with the rest as letters; ends the composition.
    QString takeLetters();
    /// Writes what the user's dictionary has learnt.
    void save();

private:
    struct Choice {
        QString word;
        QByteArray letters;
    };
    bool openFiles();
    void addTradeWords();
    bool knows(const QByteArray &letters, const QString &word);
    void search();
    void searchAnew();
    void dropLetter();
    bool isTooLong() const;
    void learn(int index, const QString &word);
    QString takeChosen();

    bool m_open = false;
    QByteArray m_letters; ///< not yet chosen
    QVector<Choice> m_choices;
    int m_count = 0;
};
} // namespace Tactil
