#pragma once
// What is checked once the window is on screen: the slicer's version, and whether an update has just been
// made.

#include <QFutureWatcher>
#include <QProcess>
#include <QTimer>

class IMsgForm;

/// Whether the slicer's answer to -V is below what this program needs. Compared as plain texts.
bool isSlicerTooOld(const QString &answer);

/// What the slicer said its version is; empty before it has answered, or when it did not. GUI thread.
QString slicerVersion();
/// "1.2\r\n": asks the head library, which can be held for long by a pass. Any thread.
QString headLibraryVersion();

/// Holds nobody up: the slicer and the head library are asked in the background. GUI thread.
class StartCheck : public QObject
{
    Q_OBJECT
public:
    StartCheck(IMsgForm *form, QObject *parent);
    void start();

private:
    void slicerAnswered();
    void askHeadLibrary();
    void tell(const QString &text, int icon);

    IMsgForm *const m_form;
    QProcess m_slicer;
    QTimer m_limit;
    QFutureWatcher<QString> m_headLibrary;
};
