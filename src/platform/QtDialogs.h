#pragma once
#include "platform/Dialogs.h"
#include <QDialog>

namespace platform {

/// The dialogs of the running program, above its active window, with German buttons.
class QtDialogs : public Dialogs {
  public:
    int MsgBox(const QString& text, int style = kOk, const QString& title = {}) override;
    QString InputBox(const QString& prompt, const QString& title = {}, const QString& preset = {}) override;
    std::optional<PrinterChoice> ChoosePrinter(const PrinterChoice& current) override;
    QString SaveFile(const QString& title, const QString& name, const QStringList& suffixes) override;
    QString OpenFile(const QString& title, const QString& filter) override;
    std::optional<int> ChooseColor(int current) override;
    bool WaitForServer(const std::function<bool()>& stillExecuting, const QString& text = {}) override;
    Progress ShowProgress(const QString& text) override;
};

/// Puts the window into the middle of the screen.
void centreOnScreen(QWidget& window);

/// A screen in its frame, or by itself.
void maximiseScreen(QWidget& screen);

/// Runs a modal dialog; what its event loop starts is guarded by itself.
int execModal(QDialog& dialog);

} // namespace platform
