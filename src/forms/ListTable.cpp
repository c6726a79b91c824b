#include "forms/ListTable.h"

#include <QHeaderView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <cstdio>

namespace
{
constexpr int rowHeight = 64;
constexpr int markWidth = 4;
const QColor markColour(0xf2, 0xa3, 0x3c);
const QColor lineColour(0x2b, 0x33, 0x3d);

/// A line under each row, a mark before the selected one, and an icon alone where a cell has one.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const QRect cell = option.rect;
        const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
        if (!icon.isNull())
            icon.paint(painter, cell);
        painter->fillRect(cell.left(), cell.bottom(), cell.width(), 1, lineColour);
        const auto *table = qobject_cast<const QTableView *>(option.widget);
        if (index.column() == 0 && option.state & QStyle::State_Selected && table)
            painter->fillRect(qMax(cell.left(), -table->x()), cell.top(), markWidth, cell.height(),
                              markColour);
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
        option->text = option->text.trimmed(); // texts of several lines may begin and end with an empty one
        if (index.data(Qt::DecorationRole).isNull())
            return;
        option->text.clear(); // the number behind an icon is for the program
        option->icon = QIcon();
        option->features &= ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration);
    }
};
} // namespace

PageState readPage(const QString &label)
{
    PageState page;
    if (std::sscanf(label.toLatin1().constData(), "%d/%d", &page.current, &page.total) != 2)
        return {};
    return page;
}

QString pageText(int startIndex, int rowCount)
{
    const int current = rowCount > 0 ? startIndex / rowsPerPage + 1 : 0;
    return QStringLiteral("%1/%2").arg(current).arg((rowCount + rowsPerPage - 1) / rowsPerPage);
}

int nextPageStart(const PageState &page)
{
    return page.current < page.total ? page.current * rowsPerPage : -1;
}

int previousPageStart(const PageState &page)
{
    return page.current >= 2 ? (page.current - 2) * rowsPerPage : -1;
}

void setUpList(QTableView *table, QStandardItemModel *model, std::initializer_list<int> widths)
{
    model->setColumnCount(int(widths.size()));
    table->setModel(model);
    table->setItemDelegate(new RowDelegate(table));
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setMinimumSectionSize(1); // the style's own would widen the narrow ones
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->setShowGrid(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setTextElideMode(Qt::ElideMiddle); // both the part's name and its ending tell files apart
    table->setWordWrap(false);
    table->setIconSize(QSize(32, 32));
    int column = 0;
    for (int width : widths)
        table->setColumnWidth(column++, width);
}

QStandardItem *quietItem(const QString &text)
{
    auto *item = new QStandardItem(text);
    item->setForeground(QColor(0x88, 0x92, 0x9a));
    return item;
}
