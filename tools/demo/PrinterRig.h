#pragma once
// An installation with its simulated machine and the unchanged program on it, worked by real clicks. Used by the demo
// and by the end-to-end tests. Not thread-safe: one thread owns a rig.

#include "JsonLineClient.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <functional>

struct RigOptions
{
    QString install;               ///< installation folder, complete
    double scale = 100;            ///< time scale of product and machine
    QString platform = "offscreen"; ///< Qt platform of the product's window
    QStringList productArguments;  ///< further arguments of the product
    QString panelPlatform;         ///< Qt platform of the machine's panel; empty: the machine has no window
    QStringList machineArguments;  ///< further options of pelora-machine
    QStringList environment;       ///< further "NAME=value" of the product
};

class PrinterRig
{
public:
    explicit PrinterRig(const RigOptions &options);
    ~PrinterRig(); ///< ends what is still running

    bool startMachine();
    bool startProduct();
    /// Closes the window as a window manager would and waits for the process' end.
    bool stopProduct();
    bool stopMachine();
    /// They look at the process itself: nobody's event loop runs here.
    bool productRuns() { return runs(m_product); }
    bool machineRuns() { return runs(m_machine); }
    qint64 productPid() const { return m_product.processId(); }
    /// What went wrong last, for a person.
    QString error() const { return m_error; }

    /// One operation of the operator; the answer's "ok" tells.
    QJsonObject operate(const QString &op, QJsonObject arguments = {}, int timeoutMs = 30000);
    bool click(const QString &widget);
    bool clickCell(const QString &table, int row, int column);
    QJsonObject state(const QString &widget);
    QString text(const QString &widget);
    QStringList column(const QString &table, int column);
    /// The message on screen: title, text, buttons; empty when there is none.
    QJsonObject message();
    bool answer(const QString &button);
    bool shot(const QString &file);
    /// The longest that the window took to answer since the last call, in ms: its event loop was held no longer.
    qint64 takeSlowestAnswer();
    /// The program's greatest resident memory so far, in MB.
    double peakMemoryMB() const;
    /// Waits for a message whose text matches; its text, or an empty string after `timeoutMs`.
    QString waitMessage(const QString &pattern, int timeoutMs);
    /// Waits until `condition` holds, asking again every 20 ms.
    bool waitFor(const std::function<bool()> &condition, int timeoutMs);

    /// A command of machinectl, for example {"door","inkbox","open"}.
    QJsonObject machine(const QStringList &command);

    /// Plugs a USB folder in, adds the model by the pages and waits until it stands in the queue.
    bool bringFromUsb(const QString &usbFolder, const QString &modelName);
    /// Home page, Start, and Yes to both questions. The job's thread runs when this returns true.
    bool startPrint();
    /// Layer, pass and total from the Home page; all 0 while nothing prints.
    struct Progress
    {
        int layer = 0, pass = 0, total = 0;
    };
    Progress progress();
    /// Waits for the job's last message ("打印完成" or another), closes it and returns its text; empty on time-out.
    QString waitPrintEnd(int timeoutMs, const std::function<void(const Progress &)> &onProgress = {});

    QString path(const QString &relative) const { return m_options.install + "/" + relative; }
    QString tempPath(const QString &relative) const { return m_options.install + "/../.PeloraTemp/" + relative; }

private:
    static bool runs(QProcess &process)
    {
        return process.state() == QProcess::Running && !process.waitForFinished(0);
    }
    bool fail(const QString &what);
    /// Waits while a message that closes itself lies over the widget, such as the one while cards are read.
    bool touch(const QString &op, const QJsonObject &arguments);
    bool addMarkedModel(const QString &modelName);
    bool answerQuestion(const QString &pattern);

    RigOptions m_options;
    QProcess m_machine;
    QProcess m_product;
    JsonLineClient m_operator;
    JsonLineClient m_control;
    QString m_operatorSocket;
    QString m_error;
    qint64 m_slowestAnswerMs = 0;
};

/// Runs a program to its end; its exit code, or -1 when it did not start or end in time. Output is kept in `output`.
int runProgram(const QString &program, const QStringList &arguments, const QString &folder, QByteArray *output,
               int timeoutMs = 300000);
