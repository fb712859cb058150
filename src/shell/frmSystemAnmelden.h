#pragma once
#include "platform/Services.h"
#include <QDialog>
#include <memory>

class frmMDI;

namespace Ui {
class frmSystemAnmelden;
}

/// The log-in: modal at the start, and later for a change of user. However it closes, it closes all open
/// screens, so that none of the former user's stays. Three wrong attempts end the program; an end after a
/// wrong one takes no settings over.
///
/// At the start there is no way past it: leaving it without a log-in asks to end the program.
class frmSystemAnmelden : public QDialog {
    Q_OBJECT
  public:
    /// The window outlives the dialog.
    frmSystemAnmelden(const platform::Services& services, frmMDI& window);
    ~frmSystemAnmelden() override;

    void done(int result) override;
    void reject() override;

  private:
    void cmdAnmelden_Click();
    void cmdEnd_Click();
    void endProgram();

    std::unique_ptr<Ui::frmSystemAnmelden> m_ui;
    platform::Services m_services;
    frmMDI& m_window;
    qint16 m_attempts = 3;
    bool m_refused = false;
};
