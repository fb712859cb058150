#pragma once
#include <QDialog>
#include <QKeyEvent>
#include <QPointer>
#include <QWindow>
#include <vector>

namespace platform {

/// Keeps the keys that were pressed behind the one that answered a dialog until whoever asked has gone on:
/// the toolkit would deal them out first, to the field that had the focus before. Deletes itself.
class HeldKeys : public QObject {
    Q_OBJECT
  public:
    /// Keeps them from the moment that the dialog is answered.
    explicit HeldKeys(QDialog& dialog);
    /// Hands them on in the next round of the event loop, in their order.
    void giveBack();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QPointer<QWindow> m_dialog, m_below;
    std::vector<std::function<void()>> m_keys;
};

} // namespace platform
