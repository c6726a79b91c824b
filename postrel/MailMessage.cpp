#include "MailMessage.h"

#include <QDateTime>
#include <QUuid>
#include <algorithm>

namespace
{
constexpr int base64Line = 76; // characters of a body line
constexpr int headerLine = 78;
constexpr int encodedBytes = 39; // of a subject in one encoded word: 64 characters with its frame

bool isPlain(const QString &text)
{
    const bool printable = std::all_of(text.begin(), text.end(),
                                       [](QChar c) { return c >= QLatin1Char(' ') && c.unicode() < 127; });
    return printable && text.size() < headerLine - 10 && !text.contains(QLatin1String("=?"));
}

/// UTF-8 pieces of at most `limit` bytes; no character is cut.
QList<QByteArray> pieces(const QString &text, int limit)
{
    QList<QByteArray> result{QByteArray()};
    for (const uint character : text.toUcs4()) {
        const QByteArray bytes = QString::fromUcs4(&character, 1).toUtf8();
        if (result.last().size() + bytes.size() > limit)
            result << QByteArray();
        result.last() += bytes;
    }
    return result;
}

/// A header's text, as encoded words when it is more than short ASCII.
QByteArray headerText(const QString &text)
{
    if (isPlain(text))
        return text.toLatin1();
    QList<QByteArray> words;
    for (const QByteArray &piece : pieces(text, encodedBytes))
        words << "=?UTF-8?B?" + piece.toBase64() + "?=";
    return words.join("\r\n ");
}

/// Addresses on as many lines as they need.
QByteArray addressList(const QStringList &addresses, int used)
{
    QByteArray list;
    for (const QString &address : addresses) {
        const QByteArray bytes = address.toUtf8();
        const bool first = list.isEmpty();
        const bool breaks = !first && used + bytes.size() + 3 > headerLine;
        list += first ? "" : breaks ? ",\r\n " : ", ";
        used = (breaks ? 1 : used + 2) + bytes.size();
        list += bytes;
    }
    return list;
}

QByteArray messageId(const QString &from)
{
    const QString domain = from.section(QLatin1Char('@'), -1);
    return '<' + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '@' + domain.toUtf8() + '>';
}

QByteArray encodedBody(QString body)
{
    body.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    body.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    const QByteArray encoded = body.toUtf8().toBase64();
    QByteArray lines;
    for (int at = 0; at < encoded.size(); at += base64Line)
        lines += encoded.mid(at, base64Line) + "\r\n";
    return lines;
}
} // namespace

QByteArray mailMessage(const MailText &mail)
{
    const QList<QByteArray> lines{"Date: " +
                                      QDateTime::currentDateTime().toString(Qt::RFC2822Date).toLatin1(),
                                  "From: " + mail.from.toUtf8(),
                                  "To: " + addressList(mail.to, int(qstrlen("To: "))),
                                  "Subject: " + headerText(mail.subject),
                                  "Message-ID: " + messageId(mail.from),
                                  "MIME-Version: 1.0",
                                  "Content-Type: text/plain; charset=utf-8",
                                  "Content-Transfer-Encoding: base64",
                                  ""};
    return lines.join("\r\n") + "\r\n" + encodedBody(mail.body);
}
