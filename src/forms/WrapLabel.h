#pragma once
// A label for texts that come from outside: it breaks words that are too long for a line, and ends in dots
// when the text is too long for the label. text() stays the whole text. With the text
// format "auto" a text that begins with "<table" is a table of captions and values.

#include <QLabel>

class WrapLabel : public QLabel
{
    Q_OBJECT
public:
    explicit WrapLabel(QWidget *parent = nullptr);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool isTable() const;
    void paintTable(const QRect &area);
};
