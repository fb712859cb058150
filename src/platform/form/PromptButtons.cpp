#include "platform/form/PromptButtons.h"
#include <QAbstractButton>
#include <QApplication>
#include <QShortcutEvent>

namespace platform {
namespace {

class PromptButtons : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous())
            return false;
        auto* button = qobject_cast<QAbstractButton*>(watched);
        if (!button)
            return false;
        // As the toolkit does: the field that is left may have something to do.
        if (button->isCheckable() && (button->focusPolicy() & Qt::ClickFocus) != 0)
            button->setFocus();
        button->click();
        return true;
    }
};

} // namespace

void makeButtonsPrompt(QApplication& application) {
    application.installEventFilter(new PromptButtons(&application));
}

} // namespace platform
