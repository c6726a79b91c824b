#pragma once
// The one message box of the program. It belongs to one key at a time; what does not get it is lost.

#include "forms/IMsgForm.h"
#include "platform/Mutex.h"

#include <QWidget>
#include <atomic>
#include <memory>

namespace Ui
{
class MsgForm;
}

/// A child of the main window in its full size: raised to show, lowered to hide, so that nothing under it can
/// be touched meanwhile. GUI thread, except waitMessageForm().
class MsgForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    MsgForm();
    ~MsgForm() override;

    using IMsgForm::execMessageForm;
    using IMsgForm::showMessageForm;
    /// Takes the form down with the answer Yes.
    void closeMessageForm() override;
    /// Blocks until the form on screen is closed; its answer. Any thread but the GUI thread.
    int waitMessageForm();
    bool isTaken() const { return m_taken; }

public slots:
    void on_pushButton_Yes_clicked();
    void on_pushButton_No_clicked();
    void on_pushButton_close_clicked();
    /// Shows or updates a progress bar; it has a close button and stays until it is closed.
    bool MessageFormProgress(QString title, QString text, float value, float maxval, QString key);
    bool execMessageForm(QString title, QString text, int icon, int btn, QString key) override;
    /// `info` is the text, or a JSON object with `text` and the button words `Yes` and `No`.
    bool showMessageForm(QString _title, QString info, int icon, int btn, QString key) override;

signals:
    /// The form became free.
    void closed(int answer);

private:
    struct Kind;
    bool take(const QString &key) PELORA_NO_ANALYSIS; // held from one call to the next
    void finish(int answer) PELORA_NO_ANALYSIS;
    void bringUp();
    void showKind(const Kind &kind);
    void showImage(const Kind &kind);
    QString readInfo(const QString &info);
    void showButtons(int btn);
    void record(const QString &title, const QString &text) const;

    std::unique_ptr<Ui::MsgForm> ui;
    // Held by the GUI thread while the form is taken; worker threads that need the answer wait for it.
    Mutex m_mutex;
    bool m_taken = false; ///< the GUI thread holds m_mutex; GUI thread only
    std::atomic<int> m_result{0};
    QString m_word; ///< the header's word without a title
};

/// The process's one message form. GUI thread.
MsgForm *msgForm();
