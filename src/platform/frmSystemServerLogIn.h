#pragma once
#include <QDialog>
#include <QTimer>
#include <functional>

class QLabel;

namespace platform {

/// The dialog that stands while a server is asked, or waited for. It closes by itself once the answer is
/// there; the user closes it to give the request up.
class frmSystemServerLogIn : public QDialog {
    Q_OBJECT
  public:
    /// Without a text it tells that the connection is made.
    frmSystemServerLogIn(std::function<bool()> stillExecuting, const QString& text, QWidget* parent);

  private:
    void Timer1_Timer();

    std::function<bool()> m_stillExecuting;
    QLabel* lbl_Progress;
    QTimer Timer1{this};
};

} // namespace platform
