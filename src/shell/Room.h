#pragma once
#include <QKeySequence>
#include <QMdiArea>
#include <vector>

namespace shell {

/// The room for the child windows. While none is open it tells the keys that lead on.
class Room : public QMdiArea {
    Q_OBJECT
  public:
    struct Hint {
        QKeySequence key;
        QString leadsTo;
    };

    explicit Room(QWidget* parent = nullptr);
    void setHints(std::vector<Hint> hints);

  protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void takeBackground();

    std::vector<Hint> m_hints;
};

} // namespace shell
