#include "forms/SetupForm.h"

#include "events/OperatorMessage.h"
#include "forms/EmailForm.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/NetForm.h"
#include "frame/Singleton.h"
#include "platform/Log.h"
#include "platform/SystemControl.h"
#include "ui_SetupForm.h"

#include <QFile>

namespace
{
const QString chosenFile = QStringLiteral("lan.qm"); // what the start loads
const QString buttonPrefix = QStringLiteral("pushButton_");
const QString sourceLanguage = QStringLiteral("Chinese"); // that of a program without a translation

QString languageFile(const QString &language)
{
    return QStringLiteral("translations/%1.qm").arg(language);
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool chooseLanguage(const QString &language)
{
    QFile::remove(chosenFile);
    return QFile::copy(languageFile(language), chosenFile);
}
} // namespace

SetupForm *setupForm()
{
    return singleton<SetupForm>();
}

SetupForm::SetupForm() : ui(new Ui::SetupForm)
{
    ui->setupUi(this);
    ui->pushButton_Net->setIcon(pageIcon("network"));
    ui->pushButton_Email->setIcon(pageIcon("email"));
    ui->pushButton_Language->setIcon(pageIcon("language"));
    for (QPushButton *button : ui->widget_Language->findChildren<QPushButton *>())
        connect(button, &QPushButton::clicked, this, &SetupForm::switchLanguage);
    for (QLabel *name : ui->widget_Language->findChildren<QLabel *>())
        name->setAttribute(Qt::WA_TransparentForMouseEvents);
    ui->widget_Language->hide();
}

SetupForm::~SetupForm() = default;

void SetupForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    markLanguage();
}

void SetupForm::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    ui->widget_Language->hide();
}

/// The chosen language is the one whose file lan.qm is a copy of.
void SetupForm::markLanguage()
{
    const QByteArray chosen = fileBytes(chosenFile);
    for (QPushButton *button : ui->widget_Language->findChildren<QPushButton *>()) {
        const QString language = button->objectName().mid(buttonPrefix.size());
        button->setChecked(chosen.isEmpty() ? language == sourceLanguage
                                            : chosen == fileBytes(languageFile(language)));
    }
}

void SetupForm::switchLanguage()
{
    const QObject *button = sender();
    if (!button) {
        LOG_WARNING(QStringLiteral("no sender"));
        return;
    }
    const bool done = chooseLanguage(button->objectName().mid(buttonPrefix.size()));
    markLanguage();
    if (!done)
        showMessageForm(tr("资源文件拷贝失败"), MessageIcon::critical, MessageButtons::close, QString());
    else if (execMessageForm(tr("即将重启?"), MessageIcon::information, MessageButtons::yesNo, QString()))
        restartSystem();
}

void SetupForm::on_pushButton_Net_clicked()
{
    mainWindow()->showWidgetInStacked(netForm());
}

void SetupForm::on_pushButton_Language_clicked()
{
    ui->widget_Language->setVisible(ui->widget_Language->isHidden());
}

void SetupForm::on_pushButton_Email_clicked()
{
    mainWindow()->showWidgetInStacked(emailForm());
}
