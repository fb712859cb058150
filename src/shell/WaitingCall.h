#pragma once
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <vector>

namespace shell {

/// The call that waits in the main window, with who it is and how many have come since the last one was
/// taken. A window of the program that stands beside the main one (a preview) shows the number as well.
class WaitingCall : public QObject {
    Q_OBJECT
  public:
    struct Panel {
        QPushButton& number;
        QLabel& caller;
        QLabel& key;
        std::vector<QWidget*> lights;
    };

    /// The panel's widgets belong to the main window and outlive this object. No call waits at first.
    WaitingCall(const Panel& panel, QObject* parent);
    ~WaitingCall() override;

    /// A call came: its number takes the place of the one before.
    void show(const QString& number);
    /// Who calls; "" for nobody that is known.
    void setCaller(const QString& name);
    /// Another station has taken it: it stays in sight for some seconds and goes by itself.
    void setTaken(const QString& station);
    void clear();

    /// The other station that has taken it; "" where none has.
    const QString& takenBy() const { return m_takenBy; }

    bool waits() const { return !m_panel.number.isHidden(); }

    QString number() const { return m_panel.number.text(); }

  Q_SIGNALS:
    /// The number was clicked, here or in another window.
    void clicked();
    /// A call that another station has taken has gone.
    void left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void setVisible(bool on);
    void setLook(const QString& look);
    QString bannerText() const;
    void fitNumber();
    void showBanners();
    void place(QPushButton& banner);

    Panel m_panel;
    QFont m_font;
    int m_count = 0;
    QString m_takenBy;
    QTimer m_leaving{this};
    QList<QPointer<QPushButton>> m_banners;
};

} // namespace shell
