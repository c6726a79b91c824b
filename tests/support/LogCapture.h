#pragma once
// Takes every log text of the program for as long as it lives. One at a time.

#include <QStringList>
#include <QtGlobal>

#include <functional>
#include <mutex>

class LogCapture
{
public:
    LogCapture()
    {
        current() = this;
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { current()->take(text); });
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    /// Called with each text on the thread that logs. Set it while nothing logs.
    std::function<void(const QString &text)> onText;
    /// Lines that hold `part`. Any thread.
    int count(const QString &part) const
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_texts.filter(part).size();
    }
    QString text() const
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_texts.join('\n');
    }
    void clear()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_texts.clear();
    }

private:
    static LogCapture *&current()
    {
        static LogCapture *instance = nullptr;
        return instance;
    }
    void take(const QString &text)
    {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_texts.append(text);
        }
        if (onText)
            onText(text);
    }

    QtMessageHandler m_previous = nullptr;
    mutable std::mutex m_mutex; // threads of the program against the test
    QStringList m_texts;
};
