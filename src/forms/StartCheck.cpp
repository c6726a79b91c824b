#include "forms/StartCheck.h"

#include "engine/HibLibrary.h"
#include "events/OperatorMessage.h"
#include "forms/IMsgForm.h"
#include "forms/MsgForm.h"
#include "frame/ProgramVersion.h"

#include <QCoreApplication>
#include <QtConcurrent>

namespace
{
const QString slicerTool = QStringLiteral("Lamorel/lamorel.exe");
const QString neededSlicer = QStringLiteral("Lamorel vesion: 1.3.2"); // the tool's own spelling
constexpr int answerLimitMs = 60000;                                  // half to start, half to answer

QString toldSlicerVersion; ///< GUI thread

bool isFirstStartAfterUpdate()
{
    const QStringList arguments = QCoreApplication::arguments();
    return arguments.size() == 2 && arguments.at(1) == QLatin1String("updateSuccess");
}
} // namespace

bool isSlicerTooOld(const QString &answer)
{
    return answer < neededSlicer;
}

QString slicerVersion()
{
    return toldSlicerVersion;
}

QString headLibraryVersion()
{
    int major = 0, minor = 0, revision = 0, build = 0, variant = 0;
    lockHibGetHibLibVersion(&major, &minor, &revision, &build, &variant);
    return QStringLiteral("%1.%2\r\n").arg(major).arg(minor);
}

StartCheck::StartCheck(IMsgForm *form, QObject *parent) : QObject(parent), m_form(form)
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, &m_slicer, &QProcess::kill);
    connect(&m_slicer, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &StartCheck::slicerAnswered);
    connect(&m_slicer, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) // every other error ends in finished()
            slicerAnswered();
    });
    connect(&m_headLibrary, &QFutureWatcher<QString>::finished, this, [this] {
        tell(tr("更新完成请核对一下版本号，当前版本为") + QLatin1Char('\n') + programVersion() +
                 QStringLiteral("\nHibVer:") + m_headLibrary.result(),
             MessageIcon::information);
    });
}

void StartCheck::start()
{
    m_limit.start(answerLimitMs);
    m_slicer.start(slicerTool, {QStringLiteral("-V")});
}

void StartCheck::slicerAnswered()
{
    m_limit.stop();
    const QString answer = QString::fromUtf8(m_slicer.readAllStandardOutput());
    toldSlicerVersion = answer.section(QLatin1Char(':'), -1).trimmed(); // "Lamorel vesion: 1.4.0"
    if (isSlicerTooOld(answer))
        tell(tr("请确保切片软件版本大于V1.3.2"), MessageIcon::critical);
    if (isFirstStartAfterUpdate())
        askHeadLibrary();
}

/// Off this thread: the library's lock can be held for long by the set-up of the boards.
void StartCheck::askHeadLibrary()
{
    m_headLibrary.setFuture(QtConcurrent::run(headLibraryVersion));
}

/// Waits for its turn when a service's alarm is on the form: these messages come once.
void StartCheck::tell(const QString &text, int icon)
{
    if (m_form->showMessageForm(text, icon, MessageButtons::close, QString()))
        return;
    auto *turn = new QObject(this);
    connect(
        msgForm(), &MsgForm::closed, turn,
        [=] {
            turn->deleteLater();
            tell(text, icon);
        },
        Qt::QueuedConnection);
}
