#include "forms/MsgForm.h"

#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/StyleProperty.h"
#include "frame/Singleton.h"
#include "platform/Log.h"
#include "ui_MsgForm.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <limits>
#include <optional>

struct MsgForm::Kind {
    int icon;
    const char *word;
    const char *image;

    static const Kind all[3];
};

const MsgForm::Kind MsgForm::Kind::all[3] = {
    {MessageIcon::information, QT_TRANSLATE_NOOP("MsgForm", "提示"),
     "#label_backImage{background-image: url(:/icon/Information.png)}"},
    {MessageIcon::warning, QT_TRANSLATE_NOOP("MsgForm", "警告"),
     "#label_backImage{background-image: url(:/icon/Warning.png)}"},
    {MessageIcon::critical, QT_TRANSLATE_NOOP("MsgForm", "错误"),
     "#label_backImage{background-image: url(:/icon/Critical.png)}"},
};

namespace
{
constexpr quint32 faultBit = 0x80000000; // ids of faults that also belong in the program's log

/// `value` cut to an integer of a bar's range.
int barValue(float value)
{
    const double limit = std::numeric_limits<int>::max();
    return int(qBound(0.0, double(value), limit));
}
} // namespace

MsgForm *msgForm()
{
    return singleton<MsgForm>();
}

MsgForm::MsgForm() : ui(new Ui::MsgForm)
{
    ui->setupUi(this);
    m_key.clear(); // here the key is that of the message on screen
    setAttribute(Qt::WA_StyledBackground);
    setMessageWaiter([this] { return waitMessageForm(); });
}

MsgForm::~MsgForm()
{
    setMessageWaiter(nullptr);
}

/// True when the form is the key's: taken now, or its own already. A worker holds the mutex only for the
/// moment of reading an answer, so the lock does not wait for the operator.
bool MsgForm::take(const QString &key)
{
    if (m_taken && key != m_key)
        return false;
    if (!m_taken)
        m_mutex.lock();
    m_taken = true;
    return true;
}

void MsgForm::finish(int answer)
{
    if (!m_taken)
        m_mutex.lock();
    m_result = answer;
    lower();
    m_taken = false;
    m_mutex.unlock();
    emit closed(answer);
}

int MsgForm::waitMessageForm()
{
    QMetaObject::invokeMethod(
        this, [this] { setEnabled(true); }, Qt::QueuedConnection);
    QCoreApplication::processEvents();
    MutexLock untilClosed(m_mutex);
    return m_result;
}

void MsgForm::bringUp()
{
    update();
    raise();
    setFocus();
}

void MsgForm::showKind(const Kind &kind)
{
    m_word = tr(kind.word);
    ui->label_title->setText(m_word);
    showImage(kind);
}

void MsgForm::showImage(const Kind &kind)
{
    const QString image = QString::fromLatin1(kind.image);
    if (ui->label_backImage->styleSheet() != image) // each setting polishes anew, and progress comes often
        ui->label_backImage->setStyleSheet(image);
    setStyleProperty(ui->frame_msg, "icon", kind.icon); // the style sheet outlines warnings and errors
}

QString MsgForm::readInfo(const QString &info)
{
    const QJsonDocument document = QJsonDocument::fromJson(info.toUtf8());
    const QJsonObject object = document.object();
    ui->pushButton_Yes->setText(object.value(QStringLiteral("Yes")).toString(tr("是")));
    ui->pushButton_No->setText(object.value(QStringLiteral("No")).toString(tr("否")));
    return document.isObject() ? object.value(QStringLiteral("text")).toString() : info;
}

void MsgForm::showButtons(int btn)
{
    const bool question = (btn & MessageButtons::yesNo) == MessageButtons::yesNo;
    for (QWidget *button : {ui->pushButton_Yes, ui->pushButton_No}) {
        button->setVisible(question);
        button->setEnabled(question);
    }
    ui->pushButton_close->setVisible(btn & MessageButtons::close);
}

/// A message under an event's number is a row of event.csv; that of a fault is a line of the log too.
void MsgForm::record(const QString &title, const QString &text) const
{
    bool isNumber = false;
    const quint32 id = title.toUInt(&isNumber, 16);
    if (!isNumber)
        return;
    EventHandler::logEvent(id, text);
    if (id & faultBit)
        LOG_WARNING(title + QStringLiteral(" : ") + text);
}

bool MsgForm::showMessageForm(QString _title, QString info, int icon, int btn, QString key)
{
    if (!take(key))
        return false;
    if (btn == MessageButtons::dismiss) {
        finish(1);
        return false;
    }
    m_key = key;
    ui->progressBar->hide();
    const QString text = readInfo(info);
    for (const Kind &kind : Kind::all)
        if (kind.icon == icon)
            showKind(kind);
    if (icon == MessageIcon::information)
        _title.clear(); // what merely informs has no number and leaves no row
    showButtons(btn);
    if (!_title.isEmpty()) {
        ui->label_title->setText(m_word + QStringLiteral(" (") + _title + QLatin1Char(')'));
        record(_title, text);
    }
    ui->label_text->setText(text);
    bringUp();
    return true;
}

bool MsgForm::execMessageForm(QString title, QString text, int icon, int btn, QString key)
{
    if (!showMessageForm(title, text, icon, btn, key))
        return false;
    // A loop and an answer of its own: the owner may ask again while its first question is still open.
    QEventLoop loop;
    std::optional<int> answer;
    connect(this, &MsgForm::closed, &loop, [&](int closedWith) {
        if (!answer)
            answer = closedWith;
        loop.quit();
    });
    loop.exec();
    return answer.value_or(0) != 0;
}

bool MsgForm::MessageFormProgress(QString title, QString text, float value, float maxval, QString key)
{
    if (!take(key))
        return false;
    m_key = key;
    ui->label_title->setText(title);
    ui->label_text->setText(text);
    showButtons(MessageButtons::close);
    ui->progressBar->show();
    if (ui->progressBar->maximum() != barValue(maxval))
        ui->progressBar->setRange(0, barValue(maxval)); // setting it anew would empty the bar for a moment
    showImage(Kind::all[0]);
    bringUp();
    ui->progressBar->setValue(barValue(value)); // paints at once: a copy leaves no time for events
    return true;
}

void MsgForm::on_pushButton_Yes_clicked()
{
    finish(1);
}

void MsgForm::on_pushButton_No_clicked()
{
    finish(0);
}

void MsgForm::on_pushButton_close_clicked()
{
    finish(0);
}

void MsgForm::closeMessageForm()
{
    finish(1);
}
