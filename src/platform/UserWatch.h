#pragma once
#include <QElapsedTimer>
#include <QObject>

class QWidget;

namespace platform {

/// Sees when the user last pressed a key or a mouse button, in whichever window of the program. One at a
/// time.
class UserWatch : public QObject {
    Q_OBJECT
  public:
    explicit UserWatch(QObject* parent = nullptr);
    ~UserWatch() override;

    /// How long the user has to be at rest.
    int milliseconds = 5000;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    friend bool mayInterrupt(const QWidget* window);

    bool isAtRest() const { return !m_pressed.isValid() || m_pressed.hasExpired(milliseconds); }

    /// Not valid before the first key.
    QElapsedTimer m_pressed;
};

/// Whether something may come by itself before the user: he keys nothing, and no dialog but that window
/// stands and no list is open.
bool mayInterrupt(const QWidget* window = nullptr);

} // namespace platform
