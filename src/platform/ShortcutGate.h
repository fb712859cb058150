#pragma once
#include <QObject>

namespace platform {

/// While one lives, no shortcut, mnemonic or menu key acts in a window below the modal dialog. The toolkit
/// keeps the keys themselves away from such a window, but not the shortcuts that a key means which was
/// pressed before the dialog had the focus.
class ShortcutGate : public QObject {
    Q_OBJECT
  public:
    ShortcutGate();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace platform
