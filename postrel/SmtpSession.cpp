#include "SmtpSession.h"

#include <curl/curl.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace
{
constexpr long connectLimit = 10; // seconds

/// Follows the session's commands and replies. The login's lines are not kept.
class Dialogue
{
public:
    void sent(const QByteArray &line)
    {
        m_over = m_over || line.startsWith("QUIT"); // the answer to it is no answer to the mail
        m_command = line.startsWith("RCPT ") ? line.trimmed() : QByteArray();
    }
    void received(const QByteArray &line)
    {
        if (m_over)
            return;
        m_reply = QString::fromUtf8(line).simplified();
        const bool refused = m_reply.startsWith(QLatin1Char('4')) || m_reply.startsWith(QLatin1Char('5'));
        if (refused && !m_command.isEmpty())
            m_refused << QStringLiteral("%1 (%2)").arg(address(), m_reply);
        m_isRefused = refused;
    }
    QString reply() const { return m_reply; }
    /// The last reply was a refusal.
    bool isRefused() const { return m_isRefused; }
    QStringList refusedRecipients() const { return m_refused; }

private:
    QString address() const
    {
        const int from = m_command.indexOf('<') + 1;
        return QString::fromUtf8(m_command.mid(from, m_command.indexOf('>') - from));
    }

    QByteArray m_command; ///< of one recipient, else empty
    bool m_over = false;
    QString m_reply;
    bool m_isRefused = false;
    QStringList m_refused;
};

int trace(CURL *, curl_infotype type, char *data, size_t size, void *user)
{
    auto *dialogue = static_cast<Dialogue *>(user);
    const QByteArray bytes(data, int(size));
    if (type == CURLINFO_HEADER_OUT)
        dialogue->sent(bytes);
    else if (type == CURLINFO_HEADER_IN)
        dialogue->received(bytes);
    return 0;
}

struct Upload {
    const QByteArray &message;
    int at = 0;
};

size_t readUpload(char *buffer, size_t size, size_t count, void *user)
{
    auto *upload = static_cast<Upload *>(user);
    const int length = int(std::min(size * count, size_t(upload->message.size() - upload->at)));
    std::memcpy(buffer, upload->message.constData() + upload->at, size_t(length));
    upload->at += length;
    return size_t(length);
}

size_t ignoreReply(char *, size_t size, size_t count, void *)
{
    return size * count;
}

using Curl = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using AddressList = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

AddressList addressList(const QStringList &addresses)
{
    AddressList list(nullptr, &curl_slist_free_all);
    for (const QString &address : addresses)
        list.reset(curl_slist_append(list.release(), address.toUtf8().constData()));
    return list;
}

void setServer(CURL *curl, const Account &account, const QString &authorities)
{
    const char *scheme = account.sslOnConnect ? "smtps://" : "smtp://";
    curl_easy_setopt(curl, CURLOPT_URL, (scheme + account.place().toUtf8()).constData());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    curl_easy_setopt(curl, CURLOPT_PROXY, ""); // not through what the environment may name for the web
    curl_easy_setopt(curl, CURLOPT_USE_SSL, long(account.sslOnConnect ? CURLUSESSL_ALL : CURLUSESSL_TRY));
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 2L);
    if (!authorities.isEmpty()) // the system's stay in force through their folder
        curl_easy_setopt(curl, CURLOPT_CAINFO, authorities.toLocal8Bit().constData());
    if (!account.password.isEmpty()) {
        curl_easy_setopt(curl, CURLOPT_USERNAME, account.from.toUtf8().constData());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, account.password.toUtf8().constData());
    }
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, connectLimit);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, sessionLimit);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
}

struct FailureText {
    CURLcode code;
    Exit exit;
    const char *text; ///< %1 host and port, %2 the server's or the library's own words
};

/// What a failure means to the person who has set the account up.
constexpr FailureText failureTexts[] = {
    {CURLE_COULDNT_RESOLVE_HOST, Exit::NoConnection,
     "The mail server %1 is not known (%2). Check the server's name and the machine's network."},
    {CURLE_COULDNT_CONNECT, Exit::NoConnection,
     "No connection to the mail server %1 (%2). Check name, port and network."},
    {CURLE_OPERATION_TIMEDOUT, Exit::NoConnection,
     "The mail server %1 did not answer in time (%2). Check port and SSL; try again later."},
    {CURLE_PEER_FAILED_VERIFICATION, Exit::Tls,
     "The certificate of the mail server %1 is not trusted (%2). Check the server's name, or put your own "
     "authority's certificate beside the mail tool as ca.pem."},
    {CURLE_SSL_CACERT_BADFILE, Exit::Tls, "The file ca.pem beside the mail tool is no certificate (%2)."},
    {CURLE_SSL_CONNECT_ERROR, Exit::Tls,
     "No TLS with the mail server %1 (%2). Check port and SSL: 465 with SSL, 587 without."},
    {CURLE_USE_SSL_FAILED, Exit::Tls, "The mail server %1 does not come to TLS (%2)."},
    {CURLE_LOGIN_DENIED, Exit::Login,
     "The mail server %1 refused the login (%2). Check sender address and password."},
};
constexpr FailureText recipientRefused = {CURLE_SEND_ERROR, Exit::Refused,
                                          "The mail server %1 refused the recipient %2. Check the address."};
constexpr FailureText mailRefused = {
    CURLE_SEND_ERROR, Exit::Refused,
    "The mail server %1 refused the mail: %2. Check sender address, password and recipients."};
constexpr FailureText connectionBroke = {
    CURLE_SEND_ERROR, Exit::NoConnection,
    "The connection to the mail server %1 broke (%2). Check port and SSL; try again later."};

Failure failureOf(CURLcode code, const QString &place, const Dialogue &dialogue, const QString &detail)
{
    const auto failure = [&place](const FailureText &row, const QString &words) {
        return Failure{row.exit, QString::fromUtf8(row.text).arg(place, words)};
    };
    for (const FailureText &row : failureTexts) {
        if (row.code == code)
            return failure(row, code == CURLE_LOGIN_DENIED ? dialogue.reply() : detail);
    }
    const QStringList refused = dialogue.refusedRecipients();
    if (!refused.isEmpty())
        return failure(recipientRefused, refused.join(QStringLiteral(", ")));
    return dialogue.isRefused() ? failure(mailRefused, dialogue.reply()) : failure(connectionBroke, detail);
}
} // namespace

QStringList sendMail(const Account &account, const QByteArray &message, const QString &authorities)
{
    const Curl curl(curl_easy_init(), &curl_easy_cleanup);
    if (!curl)
        throw Failure{Exit::NoConnection, QStringLiteral("The mail library does not start.")};
    const AddressList recipients = addressList(account.recipients);
    Dialogue dialogue;
    Upload upload{message};
    char detail[CURL_ERROR_SIZE] = "";

    setServer(curl.get(), account, authorities);
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_FROM, account.from.toUtf8().constData());
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_RCPT, recipients.get());
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_RCPT_ALLLOWFAILS, 1L); // the others shall have it
    curl_easy_setopt(curl.get(), CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_READFUNCTION, &readUpload);
    curl_easy_setopt(curl.get(), CURLOPT_READDATA, &upload);
    curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, &ignoreReply);
    curl_easy_setopt(curl.get(), CURLOPT_DEBUGFUNCTION, &trace);
    curl_easy_setopt(curl.get(), CURLOPT_DEBUGDATA, &dialogue);
    curl_easy_setopt(curl.get(), CURLOPT_VERBOSE, 1L); // to `trace` alone
    curl_easy_setopt(curl.get(), CURLOPT_ERRORBUFFER, detail);

    const CURLcode code = curl_easy_perform(curl.get());
    if (code != CURLE_OK)
        throw failureOf(code, account.place(), dialogue,
                        QString::fromUtf8(*detail ? detail : curl_easy_strerror(code)));
    return dialogue.refusedRecipients();
}
