// Every text that the program shows has its English, with the same place holders.

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>

namespace
{
QStringList placeHolders(const QString &text)
{
    static const QRegularExpression number("%\\d+");
    QStringList found;
    for (auto it = number.globalMatch(text); it.hasNext();)
        found << it.next().captured();
    found.sort();
    return found;
}
} // namespace

class TestTranslation : public QObject
{
    Q_OBJECT
private slots:
    void everyTextIsTranslated()
    {
        QFile file(TRANSLATION_SOURCE);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        QString source;
        int count = 0;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() && xml.name() == QLatin1String("source"))
                source = xml.readElementText();
            if (!xml.isStartElement() || xml.name() != QLatin1String("translation"))
                continue;
            const bool unfinished = xml.attributes().hasAttribute("type");
            const QString english = xml.readElementText();
            QVERIFY2(!unfinished && !english.trimmed().isEmpty(), qPrintable(source));
            QVERIFY2(placeHolders(source) == placeHolders(english), qPrintable(source));
            const bool chinese =
                std::any_of(english.begin(), english.end(), [](QChar c) { return c.unicode() > 0x2e80; });
            QVERIFY2(!chinese, qPrintable(source));
            ++count;
        }
        QVERIFY(!xml.hasError());
        QVERIFY(count > 100);
    }

    /// The program's sources hold no text that the translation does not know, and no longer lack one it
    /// knows.
    void nothingIsForgotten()
    {
        QTemporaryDir folder;
        const QString copy = folder.filePath("English.ts");
        QVERIFY(QFile::copy(TRANSLATION_SOURCE, copy));
        QProcess lupdate;
        lupdate.setProcessChannelMode(QProcess::MergedChannels);
        lupdate.start(LUPDATE, {"-locations", "none", "-no-ui-lines", "-no-obsolete", "-source-language",
                                "zh_CN", "-target-language", "en", SOURCES, "-ts", copy});
        QVERIFY(lupdate.waitForFinished());
        QFile before(TRANSLATION_SOURCE), after(copy);
        QVERIFY(before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly));
        QVERIFY2(before.readAll() == after.readAll(), lupdate.readAll().constData());
    }
};

QTEST_GUILESS_MAIN(TestTranslation)
#include "test_translation.moc"
