#pragma once
#include <QDialog>
#include <QEvent>
#include <QVBoxLayout>

namespace shell {

/// A screen as a modal dialog, which closes with it.
class ModalFrame : public QDialog {
    Q_OBJECT
  public:
    ModalFrame(QWidget* screen, QWidget* parent) : QDialog(parent), m_screen(screen) {
        setWindowTitle(screen->windowTitle());
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(screen);
        screen->installEventFilter(this);
    }

    void reject() override { m_screen->close(); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == m_screen && event->type() == QEvent::Close)
            QMetaObject::invokeMethod(
                this, [this] { QDialog::reject(); }, Qt::QueuedConnection);
        return QDialog::eventFilter(watched, event);
    }

  private:
    QWidget* m_screen;
};

} // namespace shell
