#pragma once
// An installation folder for tests of pages: models for the queue, a slicer that tells a good version, and
// the main window without the services' alarms.

#include "forms/MainWindow.h"
#include "scripted/FakeBridge.h"
#include "tests/support/TestInstall.h"

#include <QImage>
#include <QJsonValue>
#include <QString>

class FormRig
{
public:
    FormRig();

    FakeBridge bridge; ///< the boards, when the main window's services have opened it
    /// What the disk of the program has left, of 500 GB.
    void setDiskSpace(double availableGB);
    void setPlatformInPlace(bool inPlace);
    /// Bytes of a model file with these settings and picture; the settings say what the list and home page
    /// show.
    static QByteArray modelBytes(int printTime, const QImage &picture = {});
    /// Puts a model into the queue's folder and the queue.
    static void addModel(const QString &name, int printTime = 9300, const QImage &picture = {});
    /// Makes the folder of a disk with these model files; its letter is E once the window has found it.
    QString plugDisk(const QStringList &names);

    /// The main window, shown, with the form free. The services' threads run but cannot show their alarms.
    static MainWindow *showWindow();
    /// A named widget of the window, the one that is seen where there are several; or null.
    template <class T> static T *find(const QString &name)
    {
        const QList<T *> all = mainWindow()->findChildren<T *>(name);
        for (T *widget : all)
            if (widget->isVisible())
                return widget;
        return all.isEmpty() ? nullptr : all.first();
    }
    /// Presses a button of the message form once the event loop runs and the form shows this text, or any.
    static void answerLater(const QString &button, const QString &text = {});
    /// The text of the message on screen; null when there is none.
    static QString message();
    /// Sets a value of the running job's public state.
    static void setJobState(const QString &key, const QJsonValue &value);

private:
    TestInstall m_install;
};

/// Runs a test of pages. The services' threads never end, so the process ends without waiting for them.
int runFormTest(int argc, char **argv, QObject *(*makeTest)());

#define FORM_TEST_MAIN(TestClass)                                                                            \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return runFormTest(argc, argv, []() -> QObject * { return new TestClass; });                         \
    }
