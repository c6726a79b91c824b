#pragma once
// The list of the queue pages: rows for a gloved finger, seven to a page, and the "1/2" label that is the
// only memory of the page shown. GUI thread.

#include <QString>
#include <initializer_list>

class QStandardItem;
class QStandardItemModel;
class QTableView;

constexpr int rowsPerPage = 7;

struct PageState {
    int current = 0; ///< from 1; 0 when the list is empty
    int total = 0;
};

/// Reads the label of a list page.
PageState readPage(const QString &label);
/// Words it: the page that begins at row `startIndex` of `rowCount`.
QString pageText(int startIndex, int rowCount);
/// The first row of the page after or before; -1 when there is none.
int nextPageStart(const PageState &page);
int previousPageStart(const PageState &page);

/// Gives a table its model, look and column widths.
void setUpList(QTableView *table, QStandardItemModel *model, std::initializer_list<int> widths);
/// A cell of quiet colour.
QStandardItem *quietItem(const QString &text);
