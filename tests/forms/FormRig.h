#pragma once
// An installation folder with scripted boards and a slicer that only answers, and the main window in it.

#include "forms/MainWindow.h"
#include "scripted/FakeBridge.h"
#include "tests/printdata/Samples.h"

#include <QImage>

class FormRig
{
public:
    FormRig();

    FakeBridge bridge; ///< the boards, when the main window's services have opened it
    /// What the disk of the program has left, of 500 GB.
    void setDiskSpace(double availableGB);
    void setPlatformInPlace(bool inPlace);
    /// Puts a model into the queue's folder and to the head of the queue.
    static void addModel(const QString &name, const QImage &picture = {}, const char *machine = "Pelora620");
    /// Makes the folder of a disk with these model files.
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
    static void press(const QString &button);
    static QString text(const QString &label);
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
