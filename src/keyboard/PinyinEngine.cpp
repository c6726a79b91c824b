#include "keyboard/PinyinEngine.h"

#include "DictionaryFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <pinyinime.h>
#include <sync.h>

namespace Tactil
{
namespace
{
using ime_pinyin::char16;

const QString userDictionary = QStringLiteral("config/pinyin_user.dat");
constexpr int maxLetters = 32;
constexpr int maxSyllables = 10; // the decoder ends the process beyond about 14 syllables of one letter each
constexpr int maxWord = 63;      // characters of a candidate; there are no more than syllables
constexpr int candidatesSearched = 20;
constexpr int tradeFrequency = 60000; // of 65535, so that they come before words that merely sound alike

struct TradeWord {
    QString syllables, word;
};

QVector<TradeWord> tradeWords()
{
    QVector<TradeWord> words;
    QFile file(QStringLiteral(":/keyboard/trade_words.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return words;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        const int comma = line.indexOf(QLatin1Char(','));
        if (comma > 0 && !line.startsWith(QLatin1Char('#')))
            words.append({line.left(comma), line.mid(comma + 1)});
    }
    return words;
}

int syllableStarts(const ime_pinyin::uint16 *&starts)
{
    return int(ime_pinyin::im_get_spl_start_pos(starts));
}

int decodedLetters()
{
    size_t decoded = 0;
    ime_pinyin::im_get_sps_str(&decoded);
    return int(decoded);
}
} // namespace

PinyinEngine::~PinyinEngine()
{
    if (m_open)
        ime_pinyin::im_close_decoder();
}

QString PinyinEngine::dictionary()
{
    for (const char *path : {"keyboard/dict_pinyin.dat", systemDictionary}) {
        const QString name = QString::fromUtf8(path);
        if (QFileInfo(name).size() == dictionarySize) // the decoder trusts what it reads
            return name;
    }
    return {};
}

bool PinyinEngine::openFiles()
{
    return ime_pinyin::im_open_decoder(QFile::encodeName(dictionary()).constData(),
                                       QFile::encodeName(userDictionary).constData());
}

bool PinyinEngine::open()
{
    if (m_open || dictionary().isEmpty())
        return m_open;
    m_open = openFiles();
    if (!m_open)
        qWarning() << "the pinyin dictionary cannot be read";
    else
        addTradeWords();
    clear();
    return m_open;
}

bool PinyinEngine::knows(const QByteArray &letters, const QString &word)
{
    m_letters = letters;
    searchAnew();
    for (int i = 0; i < qMin(m_count, candidatesSearched); ++i)
        if (candidate(i) == word)
            return true;
    return false;
}

/// A file that was damaged or made by an older program lacks words: all are put then.
void PinyinEngine::addTradeWords()
{
    QString lacking, all;
    for (const TradeWord &entry : tradeWords()) {
        if (!knows(QString(entry.syllables).remove(QLatin1Char(' ')).toLatin1(), entry.word))
            lacking += entry.word;
        all += QStringLiteral("%1,%2,%3,0;").arg(entry.syllables, entry.word).arg(tradeFrequency);
    }
    if (lacking.isEmpty())
        return;
    ime_pinyin::Sync sync;
    if (sync.begin(QFile::encodeName(userDictionary).constData())) {
        QVector<char16> text(all.size());
        std::copy_n(all.utf16(), all.size(), text.begin());
        sync.put_lemmas(text.data(), text.size());
        sync.finish();
    }
    ime_pinyin::im_close_decoder();
    m_open = openFiles();
}

void PinyinEngine::search()
{
    m_count = m_open && !m_letters.isEmpty()
                  ? int(ime_pinyin::im_search(m_letters.constData(), size_t(m_letters.size())))
                  : 0;
}

/// For letters that were not only added to: shortened searches leak in the decoder.
void PinyinEngine::searchAnew()
{
    ime_pinyin::im_reset_search();
    search();
}

bool PinyinEngine::isTooLong() const
{
    const ime_pinyin::uint16 *starts = nullptr;
    return m_letters.size() > maxLetters ||
           syllableStarts(starts) + m_letters.size() - decodedLetters() > maxSyllables;
}

void PinyinEngine::add(char letter)
{
    if (!m_open || (letter == '\'' && m_letters.isEmpty()))
        return;
    m_letters += letter;
    search();
    if (isTooLong())
        dropLetter();
}

void PinyinEngine::dropLetter()
{
    m_letters.chop(1);
    searchAnew();
}

void PinyinEngine::backspace()
{
    if (m_letters.isEmpty() && m_choices.isEmpty())
        return;
    if (m_choices.isEmpty())
        return dropLetter();
    m_letters.prepend(m_choices.takeLast().letters);
    searchAnew();
}

void PinyinEngine::clear()
{
    m_letters.clear();
    m_choices.clear();
    m_count = 0;
    if (m_open)
        ime_pinyin::im_reset_search();
}

QString PinyinEngine::preedit() const
{
    QString text;
    for (const Choice &choice : m_choices)
        text += choice.word;
    const ime_pinyin::uint16 *starts = nullptr;
    const int syllables = m_letters.isEmpty() ? 0 : syllableStarts(starts);
    int from = 0;
    for (int i = 1; i <= syllables; from = starts[i++])
        text += QLatin1String(m_letters.mid(from, starts[i] - from)) + QLatin1Char(' ');
    return (text + QLatin1String(m_letters.mid(from))).trimmed();
}

QString PinyinEngine::candidate(int index) const
{
    char16 word[maxWord + 1] = {};
    if (index < 0 || index >= m_count || !ime_pinyin::im_get_candidate(size_t(index), word, maxWord))
        return {};
    return QString::fromUtf16(word);
}

/// The decoder weighs words by what was chosen. It is asked anew, since a second choice in one search can end
/// the process.
void PinyinEngine::learn(int index, const QString &word)
{
    searchAnew();
    if (candidate(index) == word)
        ime_pinyin::im_choose(size_t(index));
}

QString PinyinEngine::choose(int index)
{
    const QString word = candidate(index);
    if (word.isEmpty())
        return {};
    const ime_pinyin::uint16 *starts = nullptr;
    const int syllables = syllableStarts(starts);
    const int used = starts[qMin(word.size(), syllables)]; // a character is a syllable
    learn(index, word);
    m_choices.append({word, m_letters.left(used)});
    m_letters.remove(0, used);
    searchAnew();
    return m_letters.isEmpty() ? takeChosen() : QString();
}

QString PinyinEngine::takeChosen()
{
    QString text;
    for (const Choice &choice : m_choices)
        text += choice.word;
    clear();
    return text;
}

QString PinyinEngine::takeLetters()
{
    const QString rest = QString::fromLatin1(m_letters);
    return takeChosen() + rest;
}

void PinyinEngine::save()
{
    if (m_open)
        ime_pinyin::im_flush_cache();
}
} // namespace Tactil
