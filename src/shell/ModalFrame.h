#pragma once
#include <QDialog>
#include <QEvent>
#include <QPushButton>
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

    /// The keys and the frame close what the screen's own button may close.
    void reject() override {
        const auto* button = m_screen->findChild<QPushButton*>(QStringLiteral("cmdClose"));
        if (!button || button->isEnabled())
            m_screen->close();
    }

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
