#pragma once
// What the waiting jobs will need of both waxes, against what the bottles hold.

#include "material/BottleAccount.h"

#include <QString>
#include <QWidget>

class QLabel;
class QProgressBar;

/// One wax, in grams.
struct WaxBalance {
    double need = 0;
    int unknown = 0; ///< waiting jobs that do not tell
    double have = 0; ///< in both bottles of the pair
    double missing() const { return need > have ? need - have : 0; }
};

/// Two cards side by side, support and structure. GUI thread.
class JobNeeds : public QWidget
{
    Q_OBJECT
public:
    explicit JobNeeds(QWidget *parent = nullptr);
    /// Asks the queue only while it can be seen.
    void refresh(const Bottles &bottles);

private:
    struct Card {
        QLabel *verdict;
        QProgressBar *bar;
        QLabel *grams;
    };
    Card makeCard(int x, const char *barRole);
    void show(const Card &card, const WaxBalance &balance);

    Card m_support, m_structure;
};
