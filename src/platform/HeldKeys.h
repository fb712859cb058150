#pragma once
#include <QDialog>
#include <QPointer>

namespace platform {

/// Keeps the keys that were pressed behind the one that answered a dialog until whoever asked has gone on,
/// which is when this object goes: the toolkit would deal them out first, to the field that had the focus
/// before. They are handed on in their order, once the window below has the focus again.
class HeldKeys {
  public:
    /// A dialog that asks nothing, such as the progress of work, has the keys wait from the beginning: of
    /// them only Esc goes to it.
    enum class Since { Answer, Beginning };

    explicit HeldKeys(QDialog& dialog, Since since = Since::Answer);
    ~HeldKeys();
    HeldKeys(const HeldKeys&) = delete;
    /// The keys that wait are not wanted any more: the work that they were typed for was given up.
    void drop();
    HeldKeys& operator=(const HeldKeys&) = delete;

  private:
    QPointer<QDialog> m_dialog;
    QPointer<QWidget> m_below;
    Since m_since;
    bool m_answered = false;
    QMetaObject::Connection m_onAnswer;
};

} // namespace platform
