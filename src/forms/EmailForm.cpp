#include "forms/EmailForm.h"

#include "events/OperatorMessage.h"
#include "events/SendEmail.h"
#include "forms/EditBoxes.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/OffThread.h"
#include "forms/SetupForm.h"
#include "frame/JsonConfig.h"
#include "frame/Singleton.h"
#include "ui_EmailForm.h"

#include <QJsonDocument>

namespace
{
QIcon switchIcon()
{
    QIcon icon = pageIcon("disable");
    icon.addPixmap(QPixmap(QStringLiteral(":/icon/enable.png")), QIcon::Normal, QIcon::On);
    return icon;
}
} // namespace

EmailForm *emailForm()
{
    return singleton<EmailForm>();
}

EmailForm::EmailForm() : ui(new Ui::EmailForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    for (QPushButton *toggle : {ui->pushButton_1, ui->pushButton_2, ui->pushButton_3, ui->pushButton_4})
        toggle->setIcon(switchIcon());
    setUpEditBoxes(this);
    connect(this, &EmailForm::showKeyBoard, this, [](int x, int y) { mainWindow()->showKeyBoard(x, y); });
}

EmailForm::~EmailForm() = default;

void EmailForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    fill();
    showPassword(false);
}

bool EmailForm::eventFilter(QObject *watched, QEvent *event)
{
    if (isEditBoxPress(watched, event))
        emit showKeyBoard(0, 0);
    return QWidget::eventFilter(watched, event);
}

void EmailForm::fill()
{
    const QJsonObject account = emailConfig()->object();
    ui->lineEdit_host->setText(account.value("Host").toString());
    ui->lineEdit_emailFrom->setText(account.value("From").toString());
    ui->lineEdit_passwd->setText(account.value("Password").toString());
    ui->checkBox_ssl->setChecked(account.value("SslOnConnect").toBool());
    ui->textEdit_emailCc->setPlainText(account.value("Cc").toString());
    ui->pushButton_1->setChecked(account.value("Ink").toBool());
    ui->pushButton_2->setChecked(account.value("PrintStop").toBool());
    ui->pushButton_3->setChecked(account.value("Error").toBool());
    ui->pushButton_4->setChecked(account.value("Maintain").toBool());
}

void EmailForm::save()
{
    const QJsonObject account = {
        {"Host", ui->lineEdit_host->text()},          {"From", ui->lineEdit_emailFrom->text()},
        {"Password", ui->lineEdit_passwd->text()},    {"SslOnConnect", ui->checkBox_ssl->isChecked()},
        {"Cc", ui->textEdit_emailCc->toPlainText()},  {"Ink", ui->pushButton_1->isChecked()},
        {"PrintStop", ui->pushButton_2->isChecked()}, {"Error", ui->pushButton_3->isChecked()},
        {"Maintain", ui->pushButton_4->isChecked()},
    };
    emailConfig()->syncFile(QString::fromUtf8(QJsonDocument(account).toJson()));
}

void EmailForm::on_pushButton_apply_clicked()
{
    if (m_sending)
        return;
    save();
    m_sending = true;
    setEnabled(false);
    showMessageForm(tr("正在发送测试邮件，请稍候"), MessageIcon::information, MessageButtons::none,
                    QString());
    const QByteArray output =
        offThread([] { return SendEmail(QStringLiteral("TestEmail"), QStringLiteral("Test  email")); });
    setEnabled(true);
    m_sending = false;
    showMessageForm(tr("保存成功") + QString::fromUtf8(output), MessageIcon::information,
                    MessageButtons::close, QString());
}

void EmailForm::on_pushButton_reset_clicked()
{
    emailConfig()->syncFile(QStringLiteral("{}"));
    fill();
    showMessageForm(tr("保存成功"), MessageIcon::information, MessageButtons::close, QString());
}

void EmailForm::showPassword(bool visible)
{
    ui->lineEdit_passwd->setEchoMode(visible ? QLineEdit::Normal : QLineEdit::Password);
    ui->pushButton_visible->setIcon(pageIcon(visible ? "visible" : "hidden"));
}

void EmailForm::on_pushButton_visible_clicked()
{
    showPassword(ui->lineEdit_passwd->echoMode() == QLineEdit::Password);
}

void EmailForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(setupForm());
}
