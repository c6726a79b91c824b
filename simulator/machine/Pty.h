#pragma once
// One end of a pseudo terminal; the other is what the program opens as its serial port.

#include <QObject>
#include <QSocketNotifier>
#include <memory>

class Pty : public QObject
{
    Q_OBJECT
public:
    explicit Pty(QObject *parent = nullptr) : QObject(parent) {}
    ~Pty() override;

    /// Opens the pair and makes `link` point at the program's end.
    bool open(const QString &link, QString *error);
    void write(const QByteArray &bytes);

signals:
    void received(const QByteArray &bytes);

private:
    void readAll();

    int m_master = -1;
    int m_slave = -1; ///< kept open, so that the line survives a program that closes its end
    QString m_link;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
