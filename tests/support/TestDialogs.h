#pragma once
#include "platform/Dialogs.h"
#include <QList>
#include <QQueue>
#include <QString>
#include <functional>

namespace test {

/// Answers the dialogs in the order of the queued answers and keeps what was said.
///
/// A box that nobody queued an answer for is answered by its harmless button (OK, else No or Cancel) and
/// counted in `unexpected`, which a test checks to be 0 where questions must not come.
class TestDialogs : public platform::Dialogs {
  public:
    struct Said {
        QString text;
        int style = 0;
        QString title;
    };

    int MsgBox(const QString& text, int style = platform::kOk, const QString& title = {}) override;
    QString InputBox(const QString& prompt, const QString& title = {}, const QString& preset = {}) override;
    /// Takes the suggestion over, or `chosenPrinter` where a test set it; cancels while `cancelPrinter`.
    std::optional<platform::PrinterChoice> ChoosePrinter(const platform::PrinterChoice& current) override;
    /// Gives `savePath`.
    QString SaveFile(const QString& title, const QString& name, const QStringList& suffixes) override;
    QString OpenFile(const QString& title, const QString& filter) override;

    /// Gives `color`.
    std::optional<int> ChooseColor(int) override { return color; }

    /// Runs the event loop until the server has answered, and counts how often it was waited for; after
    /// `duringWait` it is given up while `giveUp` is set.
    bool WaitForServer(const std::function<bool()>& stillExecuting, const QString& text = {}) override;
    /// Gives long work up at its first word while `giveUp` is set; lets `duringWork` come in between, as an
    /// event of the progress would.
    platform::Progress ShowProgress(const QString& text) override;

    /// Queues the answer of the next unanswered message box; `before` runs while the box stands open.
    void answer(int boxAnswer, std::function<void()> before = {});
    void answerInput(const QString& text);
    /// Queues the file of the next file dialog.
    void answerFile(const QString& path);

    /// The last thing said; empty texts when nothing was.
    Said last() const { return said.isEmpty() ? Said() : said.last(); }

    QList<Said> said;
    /// Questions (more than an OK button) without a queued answer.
    int unexpected = 0;
    QList<platform::PrinterChoice> primed; ///< what the printer dialogs opened with
    std::optional<platform::PrinterChoice> chosenPrinter;
    bool cancelPrinter = false;
    bool giveUp = false;
    std::function<void()> duringWork, duringWait;
    QString waitedWith;    ///< what the last dialog that waited for a server told
    QStringList suggested; ///< file names that were suggested for saving
    QString savePath;
    std::optional<int> color;
    int serverCalls = 0;

  private:
    struct Answer {
        int value = 0;
        std::function<void()> before;
    };

    QQueue<Answer> m_answers;
    QQueue<QString> m_inputs;
    QQueue<QString> m_files;
};

} // namespace test
