#pragma once
#include "platform/Progress.h"
#include "platform/report/Reports.h"
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace platform {

/// Style numbers of the message boxes: buttons plus icon.
enum BoxStyle : int { kOk = 0, kYesNo = 4, kRetryCancel = 5, kStop = 16, kInformation = 64 };

/// Answers of the message boxes.
enum BoxAnswer : int { kAnswerOk = 1, kAnswerCancel = 2, kAnswerRetry = 4, kAnswerYes = 6, kAnswerNo = 7 };

/// A printer, and how its paper lies (ReportJob::Orientation).
struct PrinterChoice {
    Printer printer;
    int orientation = ReportJob::kPortrait;
};

/// The only way to a modal dialog, so that a test answers it and reads what was said.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    /// `style` is a sum of BoxStyle; gives a BoxAnswer.
    virtual int MsgBox(const QString& text, int style = kOk, const QString& title = {}) = 0;
    /// "" when cancelled.
    virtual QString InputBox(const QString& prompt, const QString& title = {},
                             const QString& preset = {}) = 0;

    /// Nothing when cancelled, as where there is no such dialog.
    virtual std::optional<PrinterChoice> ChoosePrinter(const PrinterChoice&) { return {}; }

    /// Path of the file to write, "" when cancelled; whether an existing one is replaced has been asked by
    /// then. `name` and the first of the suffixes ("pdf") make the suggestion, the user may choose another
    /// one; what no file name can hold is replaced in it.
    virtual QString SaveFile(const QString& /*title*/, const QString& /*name*/,
                             const QStringList& /*suffixes*/) {
        return {};
    }

    /// Path of an existing file that the user picks; "" when cancelled. `filter` as in "Images (*.gif
    /// *.jpg)".
    virtual QString OpenFile(const QString& title, const QString& filter) = 0;

    /// A colour as 0xBBGGRR, red in the lowest byte; nothing when cancelled. `current` in the same form.
    virtual std::optional<int> ChooseColor(int /*current*/) { return {}; }

    /// Stands above the window while `stillExecuting` gives true, with a text that tells what is waited for.
    /// False when the user closed it before.
    virtual bool WaitForServer(const std::function<bool()>& stillExecuting, const QString& text = {}) = 0;

    /// Shows how far long work is, from the moment that it takes noticeably long until the last copy of the
    /// result goes. The screens keep painting meanwhile, the user can only give the work up.
    virtual Progress ShowProgress(const QString& /*text*/) { return unwatched; }
};

} // namespace platform
