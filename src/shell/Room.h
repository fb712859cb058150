#pragma once
#include <QMdiArea>

namespace shell {

/// The room for the child windows. While none is open it tells the keys that lead on.
class Room : public QMdiArea {
    Q_OBJECT
  public:
    explicit Room(QWidget* parent = nullptr);

  protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void takeBackground();
};

} // namespace shell
