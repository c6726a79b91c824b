#include "forms/MaterialForm.h"

#include "events/OperatorMessage.h"
#include "forms/BottleBar.h"
#include "forms/StyleProperty.h"
#include "frame/Singleton.h"
#include "material/BackgroundService.h"
#include "ui_MaterialForm.h"

#include <QDate>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
constexpr int firstRow = bottlePair(SupportInk).first;
constexpr int firstStructureRow = bottlePair(StructureInk).first;
constexpr quint32 fullBottleGrams = 3000; ///< when no card tells

/// The number yyyyMMdd as a date; one that is none stays as it is.
QString dateText(quint32 number)
{
    const QString digits = QString::number(number);
    const QDate date = QDate::fromString(digits, QStringLiteral("yyyyMMdd"));
    return date.isValid() ? date.toString(QStringLiteral("yyyy-MM-dd")) : digits;
}

QString gramsText(quint32 grams)
{
    return QStringLiteral("%1 g").arg(grams);
}

QString percentText(const CardInfo &bottle)
{
    const double total = bottle.weight ? bottle.weight : fullBottleGrams;
    return QStringLiteral("%1 %").arg(bottle.rest_weight * 100.0 / total, 0, 'f', 1);
}
} // namespace

MaterialForm *materialForm()
{
    return singleton<MaterialForm>();
}

MaterialForm::MaterialForm() : ui(new Ui::MaterialForm)
{
    ui->setupUi(this);
    m_widgets = {{
        {ui->frame_3, ui->progressBar_3, ui->label_rest_3, ui->label_type_3, ui->label_status_3},
        {ui->frame_4, ui->progressBar_4, ui->label_rest_4, ui->label_type_4, ui->label_status_4},
        {ui->frame_5, ui->progressBar_5, ui->label_rest_5, ui->label_type_5, ui->label_status_5},
        {ui->frame_6, ui->progressBar_6, ui->label_rest_6, ui->label_type_6, ui->label_status_6},
    }};
}

MaterialForm::~MaterialForm() = default;

void MaterialForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void MaterialForm::refresh()
{
    refresh(backgroundService()->cards());
}

void MaterialForm::refresh(const Bottles &bottles)
{
    m_bottles = bottles;
    int row = firstRow;
    for (const BottleWidgets &widgets : m_widgets)
        showBottle(widgets, row++);
    ui->jobNeeds->refresh(bottles);
}

bool MaterialForm::isInUse(int row) const
{
    return row == m_bottles.strUse || row == m_bottles.supUse;
}

QString MaterialForm::statusText(int row) const
{
    if (!m_bottles.cards[size_t(row)].type[0])
        return tr("缺失");
    return isInUse(row) ? tr("使用中") : tr("已安装");
}

void MaterialForm::showBottle(const BottleWidgets &widgets, int row)
{
    const CardInfo &bottle = m_bottles.cards[size_t(row)];
    const bool isThere = bottle.type[0];
    widgets.status->setText(statusText(row));
    widgets.type->setText(isThere ? cardText(bottle.type) : tr("未安装"));
    widgets.rest->setText(isThere ? gramsText(bottle.rest_weight) : QString());
    if (isThere)
        showBar(widgets.bar, bottleBar(bottle, fullBottleGrams));
    widgets.bar->setEnabled(isThere);
    widgets.bar->setVisible(isThere);
    const char *state = !isThere ? "missing" : isInUse(row) ? "inUse" : "installed";
    setStyleProperty(widgets.card, "state", state);
    setStyleProperty(widgets.status, "state", state);
}

/// The rows of the message about a bottle, as a table of captions and values.
QString MaterialForm::details(int row) const
{
    const CardInfo &bottle = m_bottles.cards[size_t(row)];
    const std::pair<QString, QString> lines[] = {
        {tr("剩余重量"), gramsText(bottle.rest_weight)},
        {tr("剩余比例"), percentText(bottle)},
        {tr("批号"), cardText(bottle.sn)},
        {tr("过期日期"), dateText(bottle.date)},
        {tr("型号"), cardText(bottle.type)},
        {tr("材料状态"), statusText(row)},
    };
    QString text = QStringLiteral("<table width=\"100%\">");
    for (const auto &line : lines)
        text += QStringLiteral("<tr><td>") + line.first + QStringLiteral("</td><td align=\"right\">") +
                line.second.toHtmlEscaped() + QStringLiteral("</td></tr>");
    return text + QStringLiteral("</table>");
}

void MaterialForm::touch(int row)
{
    QJsonObject message = {{"text", details(row)}};
    int buttons = MessageButtons::close;
    if (!isInUse(row)) {
        message.insert("Yes", tr("激活"));
        message.insert("No", tr("关闭"));
        buttons = MessageButtons::yesNo;
    }
    const QString text = QString::fromUtf8(QJsonDocument(message).toJson(QJsonDocument::Compact));
    if (!execMessageForm(text, MessageIcon::information, buttons, objectName()))
        return;
    const Bottles now = backgroundService()->cards(); // the service may have switched while the form was up
    if (row < firstStructureRow)
        backgroundService()->setBottleInUse(now.strUse, quint8(row));
    else
        backgroundService()->setBottleInUse(quint8(row), now.supUse);
    refresh();
}

void MaterialForm::on_pushButton_3_clicked()
{
    touch(2);
}

void MaterialForm::on_pushButton_4_clicked()
{
    touch(3);
}

void MaterialForm::on_pushButton_5_clicked()
{
    touch(4);
}

void MaterialForm::on_pushButton_6_clicked()
{
    touch(5);
}
